// Records for the values that BER carries as octets: OCTET STRING, BIT STRING and open types.
//
// They are plain: no constructors, nothing owned. `data` lives on the typeMemHeap of the context that decoded
// or copied the value, or, under ASN1_NO_COPY, in the message itself; for encoding it may point anywhere.
#ifndef MIRVANE_ASN1RT_VALUE_TYPES_H
#define MIRVANE_ASN1RT_VALUE_TYPES_H

#include <cstdint>

struct ASN1TDynOctStr {
    std::uint32_t numocts;
    const unsigned char* data;
};

// One whole encoded element, header included.
struct ASN1OpenType {
    std::uint32_t numocts;
    const unsigned char* data;
};

using ASN1TOpenType = ASN1OpenType;

// Bit 0 is the top bit of the first octet; bits past `numbits` in the last octet have no meaning.
struct ASN1TDynBitStr {
    std::uint32_t numbits;
    const unsigned char* data;
};

// The contents of the constructed element that a decoder is in.
struct ASN1CCB {
    const unsigned char* ptr;  // their first octet
    std::int64_t len;          // octets, or ASN1_INDEFLEN
};

#endif
