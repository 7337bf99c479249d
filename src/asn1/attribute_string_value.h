// The attributes whose value is a character string, each made from its identifier and a text: what
// CAttributeTypeAndValue and the attributes of messages take.
//
//   CAttributeTypeAndValue const name(CAttrCommonName("Ivan"));
//
// The value is what CATAVRegister::valueFromStr makes of the text, with what it throws. Narrow text is of the
// platform's code page.
#ifndef MIRVANE_ASN1_ATTRIBUTE_STRING_VALUE_H
#define MIRVANE_ASN1_ATTRIBUTE_STRING_VALUE_H

#include "asn1/attribute_value.h"
#include "asn1rt/export.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CAttrStringValue : public CAttrValue {
  public:
    CAttrStringValue(char const* oid, char const* text);
    CAttrStringValue(char const* oid, wchar_t const* text);
};

class MIRVANE_API CAttrCommonName : public CAttrStringValue {
  public:
    explicit CAttrCommonName(char const* text);
};

class MIRVANE_API CAttrSurname : public CAttrStringValue {
  public:
    explicit CAttrSurname(char const* text);
};

class MIRVANE_API CAttrSerialNumber : public CAttrStringValue {
  public:
    explicit CAttrSerialNumber(char const* text);
};

class MIRVANE_API CAttrCountry : public CAttrStringValue {
  public:
    explicit CAttrCountry(char const* text);
};

class MIRVANE_API CAttrLocality : public CAttrStringValue {
  public:
    explicit CAttrLocality(char const* text);
};

class MIRVANE_API CAttrStateOrProvinceName : public CAttrStringValue {
  public:
    explicit CAttrStateOrProvinceName(char const* text);
};

class MIRVANE_API CAttrOrganizationName : public CAttrStringValue {
  public:
    explicit CAttrOrganizationName(char const* text);
};

class MIRVANE_API CAttrOrganizationalUnitName : public CAttrStringValue {
  public:
    explicit CAttrOrganizationalUnitName(char const* text);
};

class MIRVANE_API CAttrTitle : public CAttrStringValue {
  public:
    explicit CAttrTitle(char const* text);
};

class MIRVANE_API CAttrGivenName : public CAttrStringValue {
  public:
    explicit CAttrGivenName(char const* text);
};

class MIRVANE_API CAttrInitials : public CAttrStringValue {
  public:
    explicit CAttrInitials(char const* text);
};

class MIRVANE_API CAttrPseudonym : public CAttrStringValue {
  public:
    explicit CAttrPseudonym(char const* text);
};

class MIRVANE_API CAttrEmailAddress : public CAttrStringValue {
  public:
    explicit CAttrEmailAddress(char const* text);
};

}  // namespace Mirvane::ASN1

#endif
