// CAttributeTypeAndValue, the bottom of a distinguished name (RFC 5280, 4.1.2.4): the identifier of an
// attribute with one value of it, kept as it is encoded. Which names stand for identifiers in text, and how a
// value becomes text, CATAVRegister tells (asn1/attribute_register.h).
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException unless told otherwise, and leave the object as it was; only an assignment
// that memory fails may have replaced a part of it.
#ifndef MIRVANE_ASN1_ATTRIBUTE_TYPE_AND_VALUE_H
#define MIRVANE_ASN1_ATTRIBUTE_TYPE_AND_VALUE_H

#include <list>

#include "asn1/attribute_value.h"
#include "asn1/character_string.h"
#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CAttributeTypeAndValue {
  public:
    // The empty text and an empty blob.
    CAttributeTypeAndValue();
    CAttributeTypeAndValue(CAttrValue const& value);
    // The dotted text as it is, null as the empty text, and the complete encoding of the value: neither is
    // looked at before it is encoded.
    CAttributeTypeAndValue(char const* oid, CBlob const& value);
    // As CATAVRegister::makeATAV.
    CAttributeTypeAndValue(wchar_t const* type, wchar_t const* value, StringType stringType);
    CAttributeTypeAndValue(wchar_t const* text, StringType stringType = StringTypeDefault);

    // The dotted text, never null. It is valid until the object changes or dies.
    char const* get_type() const { return type_.c_str(); }
    void put_type(char const* oid);
    // The identifier as CATAVRegister::typeToStr and typeFromStr translate it.
    CWStringProxy get_type_str() const;
    void put_type_str(wchar_t const* type);

    // The complete encoding of the value, tag and length included.
    CBlob get_value() const { return value_; }
    void put_value(CBlob const& value);
    // The value as CATAVRegister::valueToStr and valueFromStr translate it for the present identifier, with
    // what they throw.
    CWStringProxy get_value_str() const;
    void put_value_str(wchar_t const* text, StringType stringType = StringTypeDefault);

    // The two texts with "=" between them: "CN=Ivan", or "1.2.3=#0C0141" for an identifier that has no name.
    CWStringProxy toString() const;
    // As the constructor from one text, but always in the string type that the register names: the argument
    // is ignored, which is meant.
    void fromString(wchar_t const* text, StringType stringType = StringTypeDefault);

    // The DER form. Throws 0x80070057 for a text that is no object identifier; 0x80093101 for one that cannot
    // be encoded, and for a value that is not what an attribute of this identifier has. Values of unknown
    // identifiers are not looked at; those of known ones are written in DER.
    CBlob encode() const;
    // Reads what stands at the start of the blob. Throws 0x80093101 for what is none, and for a value as
    // above.
    void decode(CBlob const& encoded);

    // The same text and the same bytes. Nothing is normalised, which is meant: case, blanks and string types
    // all make a difference.
    bool operator==(CAttributeTypeAndValue const& other) const;
    bool operator!=(CAttributeTypeAndValue const& other) const { return !(*this == other); }

  private:
    CStringProxy type_;
    CBlob value_;
};

// Neither sorted nor free of duplicates, in spite of the name: the order is that of insertion.
class MIRVANE_API CAttributeTypeAndValueSet : public std::list<CAttributeTypeAndValue> {
  public:
    using std::list<CAttributeTypeAndValue>::list;

    // Equal elements in the same order: another order is another set, which is meant.
    bool operator==(CAttributeTypeAndValueSet const& other) const;
    bool operator!=(CAttributeTypeAndValueSet const& other) const { return !(*this == other); }
};

}  // namespace Mirvane::ASN1

#endif
