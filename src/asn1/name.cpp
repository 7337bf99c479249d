#include "asn1/name.h"

#include <string>
#include <string_view>
#include <vector>

#include "asn1/bridge.h"
#include "asn1/name_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

unsigned short const* asUnits(wchar_t const* text) {
    return reinterpret_cast<unsigned short const*>(text);
}

wchar_t const* asWideText(unsigned short const* text) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    return reinterpret_cast<wchar_t const*>(text);
}

// The pieces between the separators: one more than there are separators.
std::vector<std::wstring> split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == text.npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

// At least one attribute: the empty text is refused.
CRelativeDistinguishedName parsedPart(std::wstring_view text) {
    CRelativeDistinguishedName part;
    for (const std::wstring& piece : split(text, L'+'))
        part.emplace_back(piece.c_str());
    return part;
}

template <typename List>
CWStringProxy joined(List const& elements, wchar_t separator) {
    std::wstring text;
    for (auto const& element : elements) {
        if (&element != &elements.front()) text += separator;
        text += element.toString().c_str();
    }
    return text.c_str();
}

}  // namespace

CRelativeDistinguishedName::CRelativeDistinguishedName() = default;
CRelativeDistinguishedName::CRelativeDistinguishedName(wchar_t const* text) {
    fromString(text);
}

void CRelativeDistinguishedName::fromString(wchar_t const* text) {
    ASN1::fromString(*this, asUnits(text));
}

CWStringProxy CRelativeDistinguishedName::toString() const {
    return joined(*this, L'+');
}

CBlob CRelativeDistinguishedName::encode() const {
    return asn1Encode<ASN1T_RelativeDistinguishedName_traits>(*this);
}

void CRelativeDistinguishedName::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_RelativeDistinguishedName_traits>(encoded, *this);
}

bool CRelativeDistinguishedName::operator==(CRelativeDistinguishedName const& other) const {
    return CAttributeTypeAndValueSet::operator==(other);
}

CName::CName() = default;
CName::CName(wchar_t const* text) {
    fromString(text);
}

void CName::fromString(wchar_t const* text) {
    ASN1::fromString(*this, asUnits(text));
}

CWStringProxy CName::toString() const {
    return joined(*this, L',');
}

CBlob CName::encode() const {
    return asn1Encode<ASN1T_Name_traits>(*this);
}

void CName::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_Name_traits>(encoded, *this);
}

void fromString(CRelativeDistinguishedName& name, unsigned short const* text) {
    const std::wstring_view wide = asWideText(text);
    if (!wide.empty()) name.splice(name.end(), parsedPart(wide));
}

void fromString(CName& name, unsigned short const* text) {
    const std::wstring_view wide = asWideText(text);
    if (wide.empty()) return;
    CName parsed;
    for (const std::wstring& piece : split(wide, L','))
        parsed.push_back(parsedPart(piece));
    name.splice(name.end(), parsed);
}

}  // namespace Mirvane::ASN1
