#include "asn1/character_string.h"

#include <cwchar>
#include <string>

#include "asn1/bridge.h"
#include "asn1/context_handle.h"
#include "asn1/context_memory.h"
#include "asn1/primitive_traits.h"
#include "asn1/text_conversion.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/char_string.h"
#include "asn1rt/text.h"
#include "asn1rt/universal_tags.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

void start(ctxt_handle& context) {
    if (!context.init()) failure::raise(failure::contextMemory);
}

void require(bool condition) {
    if (!condition) failure::raise(failure::asn1);
}

char const* utf8Text(ASN1CTXT* ctxt, wchar_t const* text) {
    const std::wstring_view characters(text, std::wcslen(text) + 1);  // the terminator is converted too
    std::uint64_t size = 0;
    for (const wchar_t character : characters) {
        size += static_cast<std::uint64_t>(rtUTF8CharSize(static_cast<std::uint32_t>(character)));
    }
    auto* const utf8 = static_cast<char*>(allocate(ctxt, size));
    require(rtWCSToUTF8(ctxt, characters.data(), characters.size(), utf8, size) >= 0);
    return utf8;
}

int encodeNarrow(ASN1CTXT* ctxt, wchar_t const* text, ASN1TAG tag) {
    return xe_charstr(ctxt, tostring(text).c_str(), ASN1EXPL, tag);
}

int encodeBmp(ASN1CTXT* ctxt, wchar_t const* text) {
    const std::uint64_t count = std::wcslen(text);
    auto* const units = static_cast<std::uint16_t*>(allocate(ctxt, count * sizeof(std::uint16_t)));
    for (std::uint64_t i = 0; i < count; ++i)
        // wchar_t is no signed char. NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
        units[i] = static_cast<std::uint16_t>(text[i]);
    const Asn116BitCharString value{static_cast<std::uint32_t>(count), units};
    return xe_16BitCharStr(ctxt, &value, ASN1EXPL, TAG_BMP_STRING);
}

int encodeUniversal(ASN1CTXT* ctxt, wchar_t const* text) {
    Asn132BitCharString value{};
    require(rtWCSToUCSString(ctxt, text, &value, nullptr) != nullptr);
    return xe_32BitCharStr(ctxt, &value, ASN1EXPL, TAG_UNIVERSAL_STRING);
}

// The encoded length, or a negative status.
int encodeText(ASN1CTXT* ctxt, wchar_t const* text, StringType syntax) {
    switch (syntax) {
        case StringTypeUTF8:
            return xe_charstr(ctxt, utf8Text(ctxt, text), ASN1EXPL, TAG_UTF8_STRING);
        case StringTypePrintable:
            return encodeNarrow(ctxt, text, TAG_PRINTABLE_STRING);
        case StringTypeT61:
            return encodeNarrow(ctxt, text, TAG_TELETEX_STRING);
        case StringTypeBMP:
            return encodeBmp(ctxt, text);
        case StringTypeIA5:
            return encodeNarrow(ctxt, text, TAG_IA5_STRING);
        case StringTypeUniversal:
            return encodeUniversal(ctxt, text);
        default:
            return RTS_BAD_VALUE;
    }
}

char const* decodeOctets(ASN1CTXT* ctxt, ASN1TAG tag) {
    char const* text = nullptr;
    require(xd_charstr(ctxt, &text, ASN1EXPL, tag, 0) == RTS_OK);
    return text;
}

CWStringProxy decodeUtf8(ASN1CTXT* ctxt) {
    CWStringProxy text;
    ASN1UTF8String_traits::get(decodeOctets(ctxt, TAG_UTF8_STRING), text);
    return text;
}

CWStringProxy decodeUniversal(ASN1CTXT* ctxt) {
    Asn132BitCharString value{};
    require(xd_32BitCharStr(ctxt, &value, ASN1EXPL, TAG_UNIVERSAL_STRING, 0) == RTS_OK);
    std::wstring text(std::size_t{value.nchars} + 1, 0);
    return rtUCSToWCSString(&value, text.data(), text.size());
}

CWStringProxy decodeBmp(ASN1CTXT* ctxt) {
    Asn116BitCharString value{};
    require(xd_16BitCharStr(ctxt, &value, ASN1EXPL, TAG_BMP_STRING, 0) == RTS_OK);
    return std::wstring(value.data, value.data + value.nchars).c_str();
}

}  // namespace

CBlob encodeCharString(wchar_t const* text, StringType syntax) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    ctxt_handle context;
    start(context);
    require(xe_setp(context.get(), nullptr, 0) == RTS_OK);
    const int length = encodeText(context.get(), text, syntax);
    require(length >= 0);
    return CBlob(xe_getp(context.get()), static_cast<unsigned long>(length));
}

CWStringProxy decodeCharString(CBlob const& value) {
    ctxt_handle context;
    start(context);
    ASN1CTXT* const ctxt = context.get();
    require(value.cbData() != 0);
    require(xd_setp(ctxt, value.pbData(), road::messageLength(value), nullptr, nullptr) == RTS_OK);
    ASN1TAG tag = 0;
    int length = 0;
    require(xd_tag_len(ctxt, &tag, &length, 0) == RTS_OK);
    switch (tag & TM_NUMBER) {
        case TAG_UTF8_STRING:
            return decodeUtf8(ctxt);
        case TAG_NUMERIC_STRING:
        case TAG_PRINTABLE_STRING:
        case TAG_TELETEX_STRING:
        case TAG_IA5_STRING:
            return towstring(decodeOctets(ctxt, tag & TM_NUMBER)).c_str();
        case TAG_UNIVERSAL_STRING:
            return decodeUniversal(ctxt);
        case TAG_BMP_STRING:
            return decodeBmp(ctxt);
        default:
            failure::raise(failure::asn1);
    }
}

}  // namespace Mirvane::ASN1
