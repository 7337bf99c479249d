#include "asn1/free_text.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "asn1/text_conversion.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

bool isAny(CLanguageTag const& language) {
    return language == CLanguageTagDefaultRead();
}

// Finds in a list that is constant or not.
template <typename List>
auto findIn(List& list, CLanguageTag const& language) {
    if (isAny(language)) return list.begin();
    // Meant to compare with the empty value, so that only an empty text is found.
    return std::find(list.begin(), list.end(), CPKIFreeTextString(language));
}

CPKIFreeTextString const& firstOf(CPKIFreeText const& text) {
    const auto found = text.find(CLanguageTagDefaultRead());
    if (found == text.end()) failure::raise(failure::invalidArgument);
    return *found;
}

}  // namespace

CPKIFreeTextString::CPKIFreeTextString(CLanguageTag language) : language_(language) {}
CPKIFreeTextString::CPKIFreeTextString(wchar_t const* value, CLanguageTag language)
    : value_(value), language_(language) {}
CPKIFreeTextString::CPKIFreeTextString(char const* value, CLanguageTag language)
    : value_(towstring(value).c_str()), language_(language) {}
CPKIFreeTextString::CPKIFreeTextString(CPKIFreeTextString const& other) = default;

CPKIFreeTextString& CPKIFreeTextString::operator=(CPKIFreeTextString const& other) {
    assign(other);
    return *this;
}

void CPKIFreeTextString::assign(CPKIFreeTextString const& other) {
    CWStringProxy value(other.value_);
    language_.assign(other.language_);
    value_ = std::move(value);  // no step behind one that changed something fails
}

bool CPKIFreeTextString::operator==(CPKIFreeTextString const& other) const {
    return language_ == other.language_ && std::wcscmp(get_value(), other.get_value()) == 0;
}

CPKIFreeText::CPKIFreeText() = default;

CPKIFreeText::CPKIFreeText(wchar_t const* value, CLanguageTag language)
    : CPKIFreeText(CPKIFreeTextString(value, language)) {}

CPKIFreeText::CPKIFreeText(CPKIFreeTextString const& text) {
    push_back(text);
}

CPKIFreeText::operator CPKIFreeTextString() {
    return firstOf(*this);
}

CPKIFreeText::operator CPKIFreeTextString const&() const {
    return firstOf(*this);
}

CPKIFreeText::iterator CPKIFreeText::find(CLanguageTag language) {
    return findIn(*this, language);
}

CPKIFreeText::const_iterator CPKIFreeText::find(CLanguageTag language) const {
    return findIn(*this, language);
}

void CPKIFreeText::remove(CLanguageTag const& language) {
    if (isAny(language)) return clear();
    std::list<CPKIFreeTextString>::remove(CPKIFreeTextString(language));
}

void CPKIFreeText::insert(CPKIFreeTextString const& text) {
    const auto found = isAny(text.get_language()) ? end() : find(text.get_language());
    if (found != end()) {
        found->assign(text);
    } else {
        push_back(text);
    }
}

}  // namespace Mirvane::ASN1
