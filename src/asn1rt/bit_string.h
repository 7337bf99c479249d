// BER of BIT STRING (X.690, 8.6), and operations on single bits.
//
// Bit 0 is the top bit of the first octet. Encoders return octets written or a negative status, decoders a
// status.
#ifndef MIRVANE_ASN1RT_BIT_STRING_H
#define MIRVANE_ASN1RT_BIT_STRING_H

#include <cstdint>

#include "asn1rt/context.h"
#include "asn1rt/value_types.h"

extern "C" {

// Writes `numbits` bits; unused bits of the last octet go out as they stand. No bits are the one octet 00,
// whatever `data` is. Bits without data write nothing, not even a tag, and give 0, unlike an OCTET STRING:
// this is meant.
MIRVANE_API int xe_bitstr(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t numbits,
                          ASN1TagType tagging);

// BIT STRING into memory of the context or, under ASN1_NO_COPY and primitive, as a pointer into the message.
// Content of no octets is accepted as no bits. `*numbits` is 0 on failure and `*data` null where no bits were
// found. RTS_BAD_VALUE for more than 7 unused bits; RTS_BAD_LENGTH for unused bits without an octet, a
// missing end-of-contents, and more than 0x1FFFFFFF octets. Recorded: a wrong header, failed memory, a
// missing end-of-contents, and what xd_bitstr_s records.
MIRVANE_API int xd_bitstr(ASN1CTXT* ctxt, const unsigned char** data, std::uint32_t* numbits,
                          ASN1TagType tagging, int length);

// BIT STRING into the caller's buffer: `*numbits` is its capacity in bits, then the bits got, 0 on failure.
// With ASN1EXPL only the primitive form is taken. In the constructed form the octet of unused bits is taken
// from the last segment alone; those of earlier segments stay in the data as ordinary octets, which is meant.
// Under ASN1_INDEFLEN the end-of-contents is left in place. RTS_BUFFER_TOO_SMALL if the octets pass the
// capacity. Recorded: a wrong header and, in the constructed form, RTS_BUFFER_TOO_SMALL and a length that the
// segments do not add up to.
MIRVANE_API int xd_bitstr_s(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t* numbits,
                            ASN1TagType tagging, int length);

// Set or clear a bit. Its former value as a mask within its octet, 0 if it was clear; RTS_BAD_INDEX, with
// nothing changed, for an index not below `numbits`.
MIRVANE_API int rtSetBit(unsigned char* bits, std::uint32_t numbits, std::uint32_t index);
MIRVANE_API int rtClearBit(unsigned char* bits, std::uint32_t numbits, std::uint32_t index);

// The bit as a mask within its octet; 0 if it is clear or `index` is not below `numbits`.
MIRVANE_API int rtTestBit(const unsigned char* bits, std::uint32_t numbits, std::uint32_t index);

// The bits that an octet needs once its trailing zero bits are cut, 0 to 8, as DER asks of named bits
// (X.690, 11.2.2).
MIRVANE_API int rtOctetBitLen(unsigned char octet);

}  // extern "C"

#endif
