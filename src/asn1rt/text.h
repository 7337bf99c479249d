// Conversions between UTF-8, wide text and strings of 32-bit characters. No locale and no platform call takes
// part.
//
// UTF-8 is the six-octet form here: values up to 0x7FFFFFFF are legal, surrogates are not looked at and
// over-long forms are not refused. Texts end with a zero. Results below 0 are statuses: RTS_BAD_UTF8 for bad
// input, and RTS_ENCODE_OVERFLOW where the output is too small; neither is recorded in errInfo, which is left
// to callers. Nothing keeps state.
#ifndef MIRVANE_ASN1RT_TEXT_H
#define MIRVANE_ASN1RT_TEXT_H

#include <cstddef>
#include <cstdint>

#include "asn1rt/char_string.h"
#include "asn1rt/context.h"

static_assert(sizeof(wchar_t) == sizeof(std::uint32_t), "wide texts are made of 32-bit units");

// Which characters a string may have: those between the two bounds that are also on the list, if there is
// one.
struct ASN1CharRestriction {
    std::uint32_t nchars;  // length of the list, 0 for no list
    const std::uint32_t* data;
    std::uint32_t firstChar;
    std::uint32_t lastChar;
};

extern "C" {

// Characters of UTF-8, counted by lead octets alone: what follows a lead octet is passed by unseen, and the
// last character may be cut. 0 for null.
MIRVANE_API int rtUTF8Len(const char* text);

// Octets before the terminator; 0 for null.
MIRVANE_API std::size_t rtUTF8LenBytes(const char* text);

// The octets that a character takes in UTF-8, 1 to 6.
MIRVANE_API int rtUTF8CharSize(std::uint32_t character);

// Writes one character, no terminator, and returns its octets. RTS_ENCODE_OVERFLOW, with nothing written, if
// `room` octets are too few and for a character above 0x7FFFFFFF.
MIRVANE_API int rtUTF8EncodeChar(std::uint32_t character, char* buffer, std::size_t room);

// Reads one character out of `*size` octets; `*size` becomes the octets that it took. A cut or malformed
// character, no room, and null are RTS_BAD_UTF8, and `*size` stays.
MIRVANE_API int rtUTF8DecodeChar(ASN1CTXT* ctxt, const char* utf8, std::size_t* size);

// A copy from typeMemHeap, of the empty text for null; null if memory fails.
MIRVANE_API char* rtUTF8Strdup(ASN1CTXT* ctxt, const char* text);

// Converts to wide text, without a terminator, and returns the count of units. A character that the text cuts
// short counts as what is there of it. With a null `wide` the text is only checked and the result is 0.
MIRVANE_API int rtUTF8ToWCS(ASN1CTXT* ctxt, const char* utf8, wchar_t* wide, std::size_t capacity);

// Converts `count` units, zeros included, to UTF-8 without a terminator, and returns the octets written.
// Characters of several octets leave the last octet of the output free for a terminator; those of one octet
// may use it. A unit with its top bit set is RTS_BAD_UTF8.
MIRVANE_API int rtWCSToUTF8(ASN1CTXT* ctxt, const wchar_t* wide, std::size_t count, char* utf8,
                            std::size_t capacity);

// Make a string, on typeMemHeap, out of the octets of a text or the low 16 bits of each unit of a wide text,
// whatever they mean. Characters that the restriction, null for none, doesn't allow are dropped without a
// word. A null text is empty. Return `ucs`, or null if memory fails: it is empty then.
MIRVANE_API Asn132BitCharString* rtCToUCSString(ASN1CTXT* ctxt, const char* text, Asn132BitCharString* ucs,
                                                const ASN1CharRestriction* restriction);
MIRVANE_API Asn132BitCharString* rtWCSToUCSString(ASN1CTXT* ctxt, const wchar_t* wide,
                                                  Asn132BitCharString* ucs,
                                                  const ASN1CharRestriction* restriction);

// Copies the characters below 0x10000 and drops the others. Once `capacity` units are stored there is no
// terminator: a text that fills its room has none. Returns `wide`.
MIRVANE_API wchar_t* rtUCSToWCSString(const Asn132BitCharString* ucs, wchar_t* wide, std::size_t capacity);

}  // extern "C"

#endif
