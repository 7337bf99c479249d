#include "asn1/attribute_string_value.h"

#include "asn1/attribute_register.h"
#include "asn1/standard_attributes.h"
#include "asn1/text_conversion.h"

namespace Mirvane::ASN1 {

CAttrStringValue::CAttrStringValue(char const* oid, char const* text)
    : CAttrStringValue(oid, towstring(text).c_str()) {}
CAttrStringValue::CAttrStringValue(char const* oid, wchar_t const* text)
    : CAttrValue(oid, CATAVRegister::valueFromStr(oid, text, StringTypeDefault)) {}

CAttrCommonName::CAttrCommonName(char const* text) : CAttrStringValue(commonNameAttribute.type, text) {}
CAttrSurname::CAttrSurname(char const* text) : CAttrStringValue(surnameAttribute.type, text) {}
CAttrSerialNumber::CAttrSerialNumber(char const* text) : CAttrStringValue(serialNumberAttribute.type, text) {}
CAttrCountry::CAttrCountry(char const* text) : CAttrStringValue(countryNameAttribute.type, text) {}
CAttrLocality::CAttrLocality(char const* text) : CAttrStringValue(localityNameAttribute.type, text) {}
CAttrStateOrProvinceName::CAttrStateOrProvinceName(char const* text)
    : CAttrStringValue(stateOrProvinceNameAttribute.type, text) {}
CAttrOrganizationName::CAttrOrganizationName(char const* text)
    : CAttrStringValue(organizationNameAttribute.type, text) {}
CAttrOrganizationalUnitName::CAttrOrganizationalUnitName(char const* text)
    : CAttrStringValue(organizationUnitNameAttribute.type, text) {}
CAttrTitle::CAttrTitle(char const* text) : CAttrStringValue(titleAttribute.type, text) {}
CAttrGivenName::CAttrGivenName(char const* text) : CAttrStringValue(givenNameAttribute.type, text) {}
CAttrInitials::CAttrInitials(char const* text) : CAttrStringValue(initialsAttribute.type, text) {}
CAttrPseudonym::CAttrPseudonym(char const* text) : CAttrStringValue(pseudonymAttribute.type, text) {}
CAttrEmailAddress::CAttrEmailAddress(char const* text) : CAttrStringValue(emailAddressAttribute.type, text) {}

}  // namespace Mirvane::ASN1
