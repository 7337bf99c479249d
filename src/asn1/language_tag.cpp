#include "asn1/language_tag.h"

#include <cstring>

#include "asn1/text_conversion.h"

namespace Mirvane::ASN1 {

CLanguageTag::CLanguageTag() = default;
CLanguageTag::CLanguageTag(char const* tag) : tag_(normalize(tag).c_str()) {}
CLanguageTag::CLanguageTag(wchar_t const* tag) : CLanguageTag(ASN1::tostring(tag).c_str()) {}
CLanguageTag::CLanguageTag(CLanguageTag const& other) = default;
CLanguageTag& CLanguageTag::operator=(CLanguageTag const& other) = default;

void CLanguageTag::assign(CLanguageTag const& other) {
    tag_ = other.tag_;
}

bool CLanguageTag::operator==(CLanguageTag const& other) const {
    return std::strcmp(tag_.c_str(), other.tag_.c_str()) == 0;
}

std::string CLanguageTag::normalize(char const* tag) {
    std::string lowered(tag != nullptr ? tag : "");
    for (char& character : lowered) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    }
    return lowered;
}

CLanguageTagRuRu::CLanguageTagRuRu() : CLanguageTag("ru-ru") {}
CLanguageTagEnUs::CLanguageTagEnUs() : CLanguageTag("en-us") {}
CLanguageTagDefaultRead::CLanguageTagDefaultRead() : CLanguageTag("*") {}

}  // namespace Mirvane::ASN1
