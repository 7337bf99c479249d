#include "asn1/attribute_value.h"

#include <algorithm>
#include <string_view>

namespace Mirvane::ASN1 {

CAttrValue::CAttrValue() = default;
CAttrValue::CAttrValue(char const* oid) : oid_(oid) {}
CAttrValue::CAttrValue(char const* oid, CBlob const& value) : oid_(oid), value_(value) {}

bool CAttrValue::operator==(CAttrValue const& other) const {
    return std::string_view(get_oid()) == other.get_oid() && value_ == other.value_;
}

bool CAttrValueList::operator==(CAttrValueList const& other) const {
    return size() == other.size() && std::equal(begin(), end(), other.begin());
}

}  // namespace Mirvane::ASN1
