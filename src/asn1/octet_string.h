// A blob wrapped as an OCTET STRING, and unwrapped.
#ifndef MIRVANE_ASN1_OCTET_STRING_H
#define MIRVANE_ASN1_OCTET_STRING_H

#include "base/blob.h"

namespace Mirvane::ASN1 {

// Both throw ATL::CAtlException: 0x80093106 if a context cannot be had, 0x80093101 for what else fails.

// The DER form of an OCTET STRING with these bytes; without bytes it is 04 00.
CBlob toOctetString(CBlob const& blob);

// The content of the OCTET STRING at the start of the blob. Only the primitive form is read, which is meant.
// An empty blob gives an empty one. Bytes behind the element are ignored.
CBlob fromOctetString(CBlob const& blob);

}  // namespace Mirvane::ASN1

#endif
