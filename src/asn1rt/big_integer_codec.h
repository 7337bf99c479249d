// BER of INTEGERs without bounds, which value records hold as text.
//
// A decoder makes 0x and the hexadecimal digits of the content; the encoder takes such a text back without
// arithmetic, and decimal, 0b and 0o texts too. Encoders return octets written or a negative status, decoders
// a status.
#ifndef MIRVANE_ASN1RT_BIG_INTEGER_CODEC_H
#define MIRVANE_ASN1RT_BIG_INTEGER_CODEC_H

#include "asn1rt/context.h"

extern "C" {

// INTEGER in the shortest form. 0x and 0b texts are two's complement patterns: one whose digits fill whole
// octets with the top bit set is negative, any other is positive. The rest is read as by rtBigIntSetStr with
// radix 0. RTS_BAD_VALUE for null, an empty text and what is no number. Recorded.
MIRVANE_API int xe_bigint(ASN1CTXT* ctxt, const char* text, ASN1TagType tagging);

// INTEGER that is never negative, from the text 0 or one behind 0x or 0b; decimal texts are RTS_BAD_VALUE.
// Recorded.
MIRVANE_API int xe_biguint(ASN1CTXT* ctxt, const char* text, ASN1TagType tagging);

// INTEGER as text: 0x and two lower-case digits for every octet behind leading 00 octets, with a digit 0 in
// front where a 00 was left out that kept the number positive. So 00 80 is 0x080, 80 is 0x80, and 00 or no
// content is 0x0. Recorded: a wrong header and a negative length.
MIRVANE_API int xd_bigint(ASN1CTXT* ctxt, const char** text, ASN1TagType tagging, int length);

}  // extern "C"

#endif
