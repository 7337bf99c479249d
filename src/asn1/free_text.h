// CPKIFreeText, the texts for a human reader that certificate management and time-stamp messages carry
// (PKIFreeText of RFC 4210, 5.1.1), each a CPKIFreeTextString with the tag of its language.
//
//   CPKIFreeText text(L"The key is too short", CLanguageTagEnUs());
//   text.push_back(CPKIFreeTextString(L"Короткий ключ", CLanguageTagRuRu()));
//
//   CPKIFreeTextString const& shown = received.get_statusString();  // throws if there is none
//   std::wcout << shown.get_value();
//
// On the wire a language stands in front of the text as characters U+0E01, U+0E00 + each character of the
// tag, and U+0E7E. Reading takes the tag from them but leaves them in the value too, which is meant: a value
// that is read and written again has them twice.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_FREE_TEXT_H
#define MIRVANE_ASN1_FREE_TEXT_H

#include <list>

#include "asn1/language_tag.h"
#include "asn1rt/export.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

// Not movable, so that a CPKIFreeText converts to it without ambiguity.
class MIRVANE_API CPKIFreeTextString {
  public:
    // The empty value.
    explicit CPKIFreeTextString(CLanguageTag language);
    // Null gives the empty value. Narrow text is of the platform's code page.
    CPKIFreeTextString(wchar_t const* value, CLanguageTag language);
    CPKIFreeTextString(char const* value, CLanguageTag language);
    CPKIFreeTextString(CPKIFreeTextString const& other);

    // A failure leaves the object as it was.
    CPKIFreeTextString& operator=(CPKIFreeTextString const& other);
    void assign(CPKIFreeTextString const& other);

    // Never null.
    wchar_t const* get_value() const { return value_.c_str(); }
    CLanguageTag const& get_language() const { return language_; }
    // Null gives the empty value.
    void set_value(wchar_t const* value) { value_ = CWStringProxy(value); }

    // The same language and the same value.
    bool operator==(CPKIFreeTextString const& other) const;
    bool operator!=(CPKIFreeTextString const& other) const { return !(*this == other); }

  private:
    CWStringProxy value_;
    CLanguageTag language_;
};

class MIRVANE_API CPKIFreeText : public std::list<CPKIFreeTextString> {
  public:
    using std::list<CPKIFreeTextString>::insert;

    CPKIFreeText();
    CPKIFreeText(wchar_t const* value, CLanguageTag language);
    CPKIFreeText(CPKIFreeTextString const& text);

    // The first element. An empty list throws 0x80070057.
    operator CPKIFreeTextString();
    operator CPKIFreeTextString const&() const;

    // For the tag "*" the first element. For any other the first element of that language whose value is
    // EMPTY, which is meant: texts that say something are not found by their language. end() if there is
    // none.
    iterator find(CLanguageTag language);
    const_iterator find(CLanguageTag language) const;

    // Erases all that find() finds: for "*" everything, else the empty values of that language.
    void remove(CLanguageTag const& language);

    // Overwrites the element that find() finds for the text's language; appends if there is none, and always
    // for "*".
    void insert(CPKIFreeTextString const& text);
};

}  // namespace Mirvane::ASN1

#endif
