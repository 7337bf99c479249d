// The field of a value whose type an identifier beside it tells.
#ifndef MIRVANE_ASN1DATA_TABLE_OBJECT_H
#define MIRVANE_ASN1DATA_TABLE_OBJECT_H

#include <cstdint>

#include "asn1rt/value_types.h"

namespace asn1data {

// The raw encoding and, where the identifier is known, the record of the value: both live in the context's
// heap. An encoder writes `decoded` if it is not null, and the raw octets otherwise.
struct Asn1TObject : ASN1OpenType {
    Asn1TObject() : ASN1OpenType{} {}

    void* decoded = nullptr;
    std::uint64_t reserved = 0;
};

using Asn1Object = Asn1TObject;

}  // namespace asn1data

#endif
