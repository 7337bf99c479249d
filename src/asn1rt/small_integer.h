// BER of INTEGERs that fit 16 bits unsigned.
#ifndef MIRVANE_ASN1RT_SMALL_INTEGER_H
#define MIRVANE_ASN1RT_SMALL_INTEGER_H

#include <cstdint>

#include "asn1rt/context.h"

extern "C" {

// INTEGER in the shortest form. RTS_BAD_VALUE for null. Octets written or a status; not recorded.
MIRVANE_API int xe_uint16(ASN1CTXT* ctxt, const std::uint16_t* value, ASN1TagType tagging);

// INTEGER with no regard to its sign. RTS_INT_TOO_LARGE for 4 octets or more, the long form of a length, or 3
// octets that do not begin with 00. A length of 0 takes the following octet as the value all the same: this
// is meant. Recorded: an element cut short in front of its content.
MIRVANE_API int xd_uint16(ASN1CTXT* ctxt, std::uint16_t* value, ASN1TagType tagging, int length);

}  // extern "C"

#endif
