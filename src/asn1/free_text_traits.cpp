#include "asn1/free_text_traits.h"

#include <cstdint>
#include <string>

#include "asn1/context_memory.h"
#include "asn1rt/text.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

// A language in front of a text is written in characters of this block of 256, between the two markers.
constexpr std::uint32_t tagBlock = 0x0E00;
constexpr std::uint32_t tagBlockMask = 0xFF00;
constexpr std::uint32_t tagStart = 0x0E01;
constexpr std::uint32_t tagEnd = 0x0E7E;

// What goes on the wire, before it becomes UTF-8.
std::wstring markedText(CPKIFreeTextString const& text) {
    if (text.get_language() == CLanguageTagDefaultRead()) return text.get_value();
    const CStringProxy tag = text.get_language().tostring();
    std::wstring marked(1, static_cast<wchar_t>(tagStart));
    for (char const* next = tag.c_str(); *next != '\0'; ++next) {
        marked += static_cast<wchar_t>(tagBlock | static_cast<unsigned char>(*next));
    }
    marked += static_cast<wchar_t>(tagEnd);
    return marked + text.get_value();
}

char const* utf8In(ASN1CTXT* ctxt, std::wstring const& text) {
    std::uint64_t size = 1;
    for (const wchar_t character : text) {
        size += static_cast<std::uint64_t>(rtUTF8CharSize(static_cast<std::uint32_t>(character)));
    }
    auto* const utf8 = static_cast<char*>(allocate(ctxt, size));
    const int written = rtWCSToUTF8(ctxt, text.data(), text.size(), utf8, size);
    if (written < 0) failure::raise(failure::asn1);
    utf8[written] = '\0';
    return utf8;
}

std::wstring wideFrom(ASN1CTXT* ctxt, char const* utf8) {
    const int count = rtUTF8Len(utf8);
    if (count < 0) failure::raise(failure::badUtf8);
    std::wstring wide(static_cast<std::size_t>(count), L'\0');
    const int converted = rtUTF8ToWCS(ctxt, utf8, wide.data(), wide.size());
    if (converted < 0) failure::raise(failure::badUtf8);
    wide.resize(static_cast<std::size_t>(converted));
    return wide;
}

CLanguageTag languageOf(std::wstring const& text) {
    if (text.empty() || static_cast<std::uint32_t>(text[0]) != tagStart) return CLanguageTagDefaultRead();
    std::string tag;
    for (std::size_t index = 1; index < text.size(); ++index) {
        // wchar_t is no signed char. NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
        const auto character = static_cast<std::uint32_t>(text[index]);
        if (character == tagEnd) return tag.c_str();
        if ((character & tagBlockMask) != tagBlock) break;
        tag += static_cast<char>(character & 0xFF);
    }
    failure::raise(failure::invalidArgument);
}

}  // namespace

void CPKIFreeText_Encode(ASN1CTXT* ctxt, asn1data::ASN1T_PKIFreeText& rec, CPKIFreeText const& text) {
    auto** const elements =
        static_cast<char const**>(allocate(ctxt, std::uint64_t{text.size()} * sizeof(char const*)));
    std::uint32_t count = 0;
    for (CPKIFreeTextString const& element : text) {
        elements[count++] = utf8In(ctxt, markedText(element));
    }
    rec.n = count;
    rec.elem = elements;
}

void CPKIFreeText_Parse(ASN1CTXT* ctxt, CPKIFreeText& text, asn1data::ASN1T_PKIFreeText const& rec) {
    CPKIFreeText read;
    for (std::uint32_t index = 0; index < rec.n; ++index) {
        const std::wstring value = wideFrom(ctxt, rec.elem[index]);
        // The markers are meant to stay in the value.
        read.push_back(CPKIFreeTextString(value.c_str(), languageOf(value)));
    }
    text.splice(text.end(), read);
}

}  // namespace Mirvane::ASN1
