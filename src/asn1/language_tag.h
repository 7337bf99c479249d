// CLanguageTag, the language of a text (RFC 3066) in lower case: "en-us". The tag "*" stands for any language
// where a text is searched for.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
#ifndef MIRVANE_ASN1_LANGUAGE_TAG_H
#define MIRVANE_ASN1_LANGUAGE_TAG_H

#include <string>

#include "asn1rt/export.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CLanguageTag {
  public:
    // The empty text.
    CLanguageTag();
    // The text in lower case; null gives the empty text. Nothing is checked. Wide text goes through the
    // platform's code page: what that refuses throws the last-error code as ATL::CAtlException.
    CLanguageTag(char const* tag);
    CLanguageTag(wchar_t const* tag);
    CLanguageTag(CLanguageTag const& other);

    // A failure leaves the object as it was.
    CLanguageTag& operator=(CLanguageTag const& other);
    void assign(CLanguageTag const& other);

    CStringProxy tostring() const { return tag_; }

    // The same text: "*" equals only itself.
    bool operator==(CLanguageTag const& other) const;
    bool operator!=(CLanguageTag const& other) const { return !(*this == other); }

    // The text with A to Z in lower case, whatever the locale; null gives the empty text.
    static std::string normalize(char const* tag);

  private:
    CStringProxy tag_;
};

// "ru-ru".
class MIRVANE_API CLanguageTagRuRu : public CLanguageTag {
  public:
    CLanguageTagRuRu();
};

// "en-us".
class MIRVANE_API CLanguageTagEnUs : public CLanguageTag {
  public:
    CLanguageTagEnUs();
};

// "*": any language.
class MIRVANE_API CLanguageTagDefaultRead : public CLanguageTag {
  public:
    CLanguageTagDefaultRead();
};

}  // namespace Mirvane::ASN1

#endif
