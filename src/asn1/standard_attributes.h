// The attribute types that are known from the start: X.520, PKCS #9, RFC 4519, and the types of Russian state
// registers. Not part of the interface.
#ifndef MIRVANE_ASN1_STANDARD_ATTRIBUTES_H
#define MIRVANE_ASN1_STANDARD_ATTRIBUTES_H

#include "asn1/character_string.h"

namespace Mirvane::ASN1 {

struct StandardAttribute {
    char const* type;
    wchar_t const* name;
    StringType stringType = StringTypeUTF8;
    unsigned long maxLength = 32768;
};

inline constexpr StandardAttribute commonNameAttribute{"2.5.4.3", L"CN"};
inline constexpr StandardAttribute countryNameAttribute{"2.5.4.6", L"C", StringTypePrintable};
inline constexpr StandardAttribute localityNameAttribute{"2.5.4.7", L"L"};
inline constexpr StandardAttribute stateOrProvinceNameAttribute{"2.5.4.8", L"ST"};
inline constexpr StandardAttribute emailAddressAttribute{"1.2.840.113549.1.9.1", L"E", StringTypeIA5};
inline constexpr StandardAttribute organizationNameAttribute{"2.5.4.10", L"O"};
inline constexpr StandardAttribute organizationUnitNameAttribute{"2.5.4.11", L"OU"};
inline constexpr StandardAttribute titleAttribute{"2.5.4.12", L"T"};
inline constexpr StandardAttribute givenNameAttribute{"2.5.4.42", L"GN"};
inline constexpr StandardAttribute initialsAttribute{"2.5.4.43", L"I"};
inline constexpr StandardAttribute surnameAttribute{"2.5.4.4", L"SN"};
inline constexpr StandardAttribute pseudonymAttribute{"2.5.4.65", L"PS"};
inline constexpr StandardAttribute ogrnAttribute{"1.2.643.100.1", L"OGRN"};
inline constexpr StandardAttribute ogrnipAttribute{"1.2.643.100.5", L"OGRNIP"};
inline constexpr StandardAttribute snilsAttribute{"1.2.643.100.3", L"SNILS"};
inline constexpr StandardAttribute innleAttribute{"1.2.643.100.4", L"INNLE"};
inline constexpr StandardAttribute innAttribute{"1.2.643.3.131.1.1", L"INN"};
inline constexpr StandardAttribute streetAddressAttribute{"2.5.4.9", L"STREET"};
inline constexpr StandardAttribute domainComponentAttribute{"0.9.2342.19200300.100.1.25", L"DC",
                                                            StringTypeIA5};
inline constexpr StandardAttribute unstructuredNameAttribute{"1.2.840.113549.1.9.2", L"UnstructuredName"};
inline constexpr StandardAttribute PostalCodeAttribute{"2.5.4.17", L"PostalCode"};
inline constexpr StandardAttribute serialNumberAttribute{"2.5.4.5", L"SERIALNUMBER", StringTypePrintable};

// In the order in which they are searched.
inline constexpr StandardAttribute const* standardAttributes[] = {
    &commonNameAttribute,
    &countryNameAttribute,
    &localityNameAttribute,
    &stateOrProvinceNameAttribute,
    &emailAddressAttribute,
    &organizationNameAttribute,
    &organizationUnitNameAttribute,
    &titleAttribute,
    &givenNameAttribute,
    &initialsAttribute,
    &surnameAttribute,
    &pseudonymAttribute,
    &ogrnAttribute,
    &ogrnipAttribute,
    &snilsAttribute,
    &innleAttribute,
    &innAttribute,
    &streetAddressAttribute,
    &domainComponentAttribute,
    &unstructuredNameAttribute,
    &PostalCodeAttribute,
    &serialNumberAttribute,
};

}  // namespace Mirvane::ASN1

#endif
