// BER of character strings: texts of 8-bit characters that end with a zero, and strings of 16-bit (BMPString)
// and 32-bit units (UniversalString) in host byte order.
//
// A string type passes its tag in, since strings have many. Segments of a constructed string are OCTET
// STRINGs whatever the outer tag is (X.690, 8.23.6). Encoders return octets written or a negative status and
// record nothing. Decoders return a status; what they find goes to typeMemHeap, and ASN1_NO_COPY has no
// effect on it.
#ifndef MIRVANE_ASN1RT_CHAR_STRING_H
#define MIRVANE_ASN1RT_CHAR_STRING_H

#include <cstdint>

#include "asn1rt/context.h"

struct Asn116BitCharString {
    std::uint32_t nchars;  // units in `data`
    std::uint16_t* data;
};

struct Asn132BitCharString {
    std::uint32_t nchars;
    std::uint32_t* data;
};

extern "C" {

// Writes the text without its terminator. RTS_BAD_VALUE for null.
MIRVANE_API int xe_charstr(ASN1CTXT* ctxt, const char* text, ASN1TagType tagging, ASN1TAG tag);

// A text with a terminator behind it. Zero octets inside are kept, and its user sees it end at the first.
// Once tag and length are read, `*text` is stored in any case but RTS_NO_MEMORY, and is empty on failure;
// before that it is left alone. Recorded.
MIRVANE_API int xd_charstr(ASN1CTXT* ctxt, const char** text, ASN1TagType tagging, ASN1TAG tag, int length);

// RTS_BAD_VALUE for null, and for units without data.
MIRVANE_API int xe_16BitCharStr(ASN1CTXT* ctxt, const Asn116BitCharString* value, ASN1TagType tagging,
                                ASN1TAG tag);
MIRVANE_API int xe_32BitCharStr(ASN1CTXT* ctxt, const Asn132BitCharString* value, ASN1TagType tagging,
                                ASN1TAG tag);

// Octets behind the last whole unit are dropped without a word. An empty string has null data. On failure
// `nchars` is 0. Recorded.
MIRVANE_API int xd_16BitCharStr(ASN1CTXT* ctxt, Asn116BitCharString* value, ASN1TagType tagging, ASN1TAG tag,
                                int length);
MIRVANE_API int xd_32BitCharStr(ASN1CTXT* ctxt, Asn132BitCharString* value, ASN1TagType tagging, ASN1TAG tag,
                                int length);

}  // extern "C"

#endif
