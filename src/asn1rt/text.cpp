#include "asn1rt/text.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>

#include "asn1rt/allocate.h"

namespace {

constexpr std::uint32_t kLargestCharacter = 0x7FFFFFFF;

// The top bits of a lead octet, by the octets of the character.
constexpr unsigned char encoding_byte[] = {0, 0, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};

// The octets of the character that a lead octet starts; 0 if it starts none.
constexpr int sizeByLead(unsigned char lead) {
    if (lead < 0x80) return 1;
    for (int size = 2; size <= 6; ++size) {
        const int marker = 0xFF00 >> (size + 1) & 0xFF;  // the size in one-bits and a zero bit
        if ((lead & marker) == encoding_byte[size]) return size;
    }
    return 0;
}

// The value bits of a lead octet.
constexpr std::uint32_t leadBits(unsigned char lead, int size) {
    return size == 1 ? lead : lead & (0x7F >> size);
}

struct DecodedCharacter {
    std::uint32_t value;
    std::size_t used;  // octets; 0 for a malformed character
    bool isWhole;
};

// Reads from at least one octet and never more than `size`. A character that is well formed as far as it
// goes, but cut, has the value of the bits that are there.
DecodedCharacter decode(const char* utf8, std::size_t size) {
    const auto lead = static_cast<unsigned char>(utf8[0]);
    const int length = sizeByLead(lead);
    const std::size_t available = std::min(static_cast<std::size_t>(length), size);
    DecodedCharacter result = {leadBits(lead, length), available,
                               available == static_cast<std::size_t>(length)};
    for (std::size_t i = 1; i < available; ++i) {
        const auto octet = static_cast<unsigned char>(utf8[i]);
        if ((octet & 0xC0) != 0x80) return {};
        result.value = result.value << 6 | (octet & 0x3F);
    }
    return result;
}

// Writes a character whose size is known to fit.
void encode(std::uint32_t character, char* buffer, int size) {
    for (int i = size - 1; i > 0; --i, character >>= 6)
        buffer[i] = static_cast<char>(0x80 | (character & 0x3F));
    buffer[0] = static_cast<char>(encoding_byte[size] | character);
}

bool passes(std::uint32_t character, const ASN1CharRestriction* restriction) {
    if (!restriction) return true;
    if (character < restriction->firstChar || character > restriction->lastChar) return false;
    const std::uint32_t* end = restriction->data + restriction->nchars;
    return restriction->nchars == 0 || std::find(restriction->data, end, character) != end;
}

// Takes the characters that pass from `count` units, each read as an unsigned `Low`.
template <typename Low, typename Unit>
Asn132BitCharString* makeString(ASN1CTXT* ctxt, const Unit* units, std::size_t count,
                                Asn132BitCharString* ucs, const ASN1CharRestriction* restriction) {
    *ucs = {};
    if (count > RT_MH_MAX_SIZE) return nullptr;
    auto* data =
        static_cast<std::uint32_t*>(asn1rt::allocate(ctxt, std::uint64_t{count} * sizeof(std::uint32_t)));
    if (!data) return nullptr;
    ucs->data = data;
    for (std::size_t i = 0; i < count; ++i) {
        // wchar_t is no signed char. NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
        const auto character = static_cast<Low>(units[i]);
        if (passes(character, restriction)) data[ucs->nchars++] = character;
    }
    return ucs;
}

}  // namespace

extern "C" {

int rtUTF8Len(const char* text) {
    const std::size_t length = rtUTF8LenBytes(text);
    int count = 0;
    for (std::size_t index = 0; index < length; ++count) {
        const int size = sizeByLead(static_cast<unsigned char>(text[index]));
        if (size == 0 || count == INT_MAX) return RTS_BAD_UTF8;
        index += static_cast<std::size_t>(size);
    }
    return count;
}

std::size_t rtUTF8LenBytes(const char* text) {
    return text ? std::strlen(text) : 0;
}

int rtUTF8CharSize(std::uint32_t character) {
    if (character < 0x80) return 1;
    if (character < 0x800) return 2;
    if (character < 0x10000) return 3;
    if (character < 0x200000) return 4;
    return character < 0x4000000 ? 5 : 6;
}

int rtUTF8EncodeChar(std::uint32_t character, char* buffer, std::size_t room) {
    const int size = rtUTF8CharSize(character);
    if (room < static_cast<std::size_t>(size) || character > kLargestCharacter) return RTS_ENCODE_OVERFLOW;
    encode(character, buffer, size);
    return size;
}

int rtUTF8DecodeChar(ASN1CTXT*, const char* utf8, std::size_t* size) {
    if (!utf8 || !size || *size == 0) return RTS_BAD_UTF8;
    const DecodedCharacter character = decode(utf8, *size);
    if (character.used == 0 || !character.isWhole) return RTS_BAD_UTF8;
    *size = character.used;
    return static_cast<int>(character.value);
}

char* rtUTF8Strdup(ASN1CTXT* ctxt, const char* text) {
    const std::size_t length = rtUTF8LenBytes(text);
    auto* copy = static_cast<char*>(asn1rt::allocate(ctxt, std::uint64_t{length} + 1));
    if (copy) *std::copy_n(text, length, copy) = '\0';
    return copy;
}

int rtUTF8ToWCS(ASN1CTXT*, const char* utf8, wchar_t* wide, std::size_t capacity) {
    const std::size_t length = rtUTF8LenBytes(utf8);
    const int limit = static_cast<int>(std::min<std::size_t>(capacity, INT_MAX));
    int count = 0;
    for (std::size_t index = 0; index < length;) {
        if (wide && count == limit) return RTS_ENCODE_OVERFLOW;
        const DecodedCharacter character = decode(utf8 + index, length - index);
        if (character.used == 0) return RTS_BAD_UTF8;
        if (wide) wide[count++] = static_cast<wchar_t>(character.value);
        index += character.used;
    }
    return count;
}

int rtWCSToUTF8(ASN1CTXT*, const wchar_t* wide, std::size_t count, char* utf8, std::size_t capacity) {
    const int limit = static_cast<int>(std::min<std::size_t>(capacity, INT_MAX));
    int written = 0;
    for (std::size_t i = 0; i < count; ++i) {
        // wchar_t is no signed char. NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
        const auto character = static_cast<std::uint32_t>(wide[i]);
        if (character > kLargestCharacter) return RTS_BAD_UTF8;
        const int size = rtUTF8CharSize(character);
        // Only a character of one octet may take the last place.
        const int reserved = size == 1 ? 0 : 1;
        if (size + reserved > limit - written) return RTS_ENCODE_OVERFLOW;
        encode(character, utf8 + written, size);
        written += size;
    }
    return written;
}

Asn132BitCharString* rtCToUCSString(ASN1CTXT* ctxt, const char* text, Asn132BitCharString* ucs,
                                    const ASN1CharRestriction* restriction) {
    return makeString<unsigned char>(ctxt, text, rtUTF8LenBytes(text), ucs, restriction);
}

Asn132BitCharString* rtWCSToUCSString(ASN1CTXT* ctxt, const wchar_t* wide, Asn132BitCharString* ucs,
                                      const ASN1CharRestriction* restriction) {
    return makeString<std::uint16_t>(ctxt, wide, wide ? std::wcslen(wide) : 0, ucs, restriction);
}

wchar_t* rtUCSToWCSString(const Asn132BitCharString* ucs, wchar_t* wide, std::size_t capacity) {
    std::size_t stored = 0;
    for (std::uint32_t i = 0; i < ucs->nchars && stored < capacity; ++i) {
        if (ucs->data[i] < 0x10000) wide[stored++] = static_cast<wchar_t>(ucs->data[i]);
    }
    if (stored < capacity) wide[stored] = L'\0';
    return wide;
}

}  // extern "C"
