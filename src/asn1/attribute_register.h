// CATAVRegister, the register of the attribute types that names are made of: the short name that stands for
// each in text, the string type in which its values are written, and their greatest length. All translation
// between the text of a name and its encoding goes through it.
//
//   CAttributeTypeAndValue const country = CATAVRegister::makeATAV(L"C=RU");
//   CATAVRegister::valueToStr("2.5.4.6", country.get_value());  // L"RU"
//
// The register holds 22 types from the start, and is there for code that runs before and after main. A
// program may add types by static objects of its own; later, while other threads may look something up, it
// must not. Failures are ATL::CAtlException unless told otherwise. Null is taken as the empty text unless
// told otherwise.
#ifndef MIRVANE_ASN1_ATTRIBUTE_REGISTER_H
#define MIRVANE_ASN1_ATTRIBUTE_REGISTER_H

#include <list>
#include <string>

#include "asn1/attribute_type_and_value.h"
#include "asn1/character_string.h"
#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

struct StandardAttribute;

class MIRVANE_API CATAVRegister {
  public:
    using const_iterator = std::list<CATAVRegister>::const_iterator;

    // Adds the type to the register, behind those that are there: the first one that matches is found. Copies
    // of the object do not add anything.
    CATAVRegister(char const* type, wchar_t const* name, StringType stringType, unsigned long maxLength);

    // The first entry with exactly this identifier or short name, upper and lower case told apart; end() if
    // there is none.
    static const_iterator find(char const* oid);
    static const_iterator find(wchar_t const* name);
    static const_iterator end();

    // The short name of an identifier, or its dotted text if it has none.
    static CWStringProxy typeToStr(char const* oid);
    // The identifier of a short name, or the text itself, unchecked, if it is none.
    static CStringProxy typeFromStr(wchar_t const* text);

    // The text of an encoded value: for a registered identifier that of decodeCharString, with what it
    // throws; for any other "#" and the upper-case hexadecimal digits of the value.
    static CWStringProxy valueToStr(char const* oid, CBlob const& value);
    // The encoded value. For a registered identifier the text is encoded, in its string type if the argument
    // is StringTypeDefault: throws 0x80070057 for more than maxLength characters, and what encodeCharString
    // throws. For any other, what stands behind the first character, whatever that is, is read as hexadecimal
    // digits, see CBlob::readFromHexString; the empty text throws std::out_of_range. Null throws 0x80070057.
    static CBlob valueFromStr(char const* oid, wchar_t const* text, StringType stringType);

    // An attribute from the texts of its type and its value, as typeFromStr and valueFromStr read them.
    static CAttributeTypeAndValue makeATAV(wchar_t const* type, wchar_t const* value, StringType stringType);
    // The same from one text, in which the first "=" stands between the two. Blanks count. Throws 0x80070057
    // for a text without "=" and for null.
    static CAttributeTypeAndValue makeATAV(wchar_t const* text, StringType stringType = StringTypeDefault);

    std::string type;         // dotted object identifier
    std::wstring name;        // short name
    StringType stringType;    // of values, unless another one is asked for
    unsigned long maxLength;  // of the text of a value, in characters

  private:
    explicit CATAVRegister(StandardAttribute const& attribute);
    static std::list<CATAVRegister>& registered_();
};

}  // namespace Mirvane::ASN1

#endif
