#include "asn1/attribute_type_and_value.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "asn1/attribute_register.h"
#include "asn1/bridge.h"
#include "asn1/name_traits.h"

namespace Mirvane::ASN1 {

CAttributeTypeAndValue::CAttributeTypeAndValue() = default;
CAttributeTypeAndValue::CAttributeTypeAndValue(CAttrValue const& value)
    : CAttributeTypeAndValue(value.get_oid(), value.get_value()) {}
CAttributeTypeAndValue::CAttributeTypeAndValue(char const* oid, CBlob const& value)
    : type_(oid), value_(value) {}
CAttributeTypeAndValue::CAttributeTypeAndValue(wchar_t const* type, wchar_t const* value,
                                               StringType stringType)
    : CAttributeTypeAndValue(CATAVRegister::makeATAV(type, value, stringType)) {}
CAttributeTypeAndValue::CAttributeTypeAndValue(wchar_t const* text, StringType stringType)
    : CAttributeTypeAndValue(CATAVRegister::makeATAV(text, stringType)) {}

void CAttributeTypeAndValue::put_type(char const* oid) {
    type_ = CStringProxy(oid);
}

CWStringProxy CAttributeTypeAndValue::get_type_str() const {
    return CATAVRegister::typeToStr(get_type());
}

void CAttributeTypeAndValue::put_type_str(wchar_t const* type) {
    type_ = CATAVRegister::typeFromStr(type);
}

void CAttributeTypeAndValue::put_value(CBlob const& value) {
    value_ = value;
}

CWStringProxy CAttributeTypeAndValue::get_value_str() const {
    return CATAVRegister::valueToStr(get_type(), value_);
}

void CAttributeTypeAndValue::put_value_str(wchar_t const* text, StringType stringType) {
    value_ = CATAVRegister::valueFromStr(get_type(), text, stringType);
}

CWStringProxy CAttributeTypeAndValue::toString() const {
    const std::wstring type = get_type_str().c_str();
    return (type + L'=' + get_value_str().c_str()).c_str();
}

void CAttributeTypeAndValue::fromString(wchar_t const* text, StringType) {
    *this = CATAVRegister::makeATAV(text, StringTypeDefault);
}

CBlob CAttributeTypeAndValue::encode() const {
    return asn1Encode<ASN1T_AttributeTypeAndValue_traits>(*this);
}

void CAttributeTypeAndValue::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_AttributeTypeAndValue_traits>(encoded, *this);
}

bool CAttributeTypeAndValue::operator==(CAttributeTypeAndValue const& other) const {
    return std::string_view(get_type()) == other.get_type() && value_ == other.value_;
}

bool CAttributeTypeAndValueSet::operator==(CAttributeTypeAndValueSet const& other) const {
    return size() == other.size() && std::equal(begin(), end(), other.begin());
}

}  // namespace Mirvane::ASN1
