#include "asn1/extensions.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "asn1/bridge.h"
#include "asn1/extension_traits.h"
#include "asn1/find_by_identifier.h"

namespace Mirvane::ASN1 {

CExtValue::CExtValue() = default;
CExtValue::CExtValue(char const* oid) : oid_(oid) {}
CExtValue::CExtValue(char const* oid, CBlob const& value) : oid_(oid), value_(value) {}
CExtValue::CExtValue(CExtValue const& other) = default;
CExtValue::CExtValue(CExtValue&& other) = default;
CExtValue::~CExtValue() = default;

CExtValue& CExtValue::operator=(CExtValue const& other) {
    return *this = CExtValue(other);
}
CExtValue& CExtValue::operator=(CExtValue&& other) = default;

CExtension::CExtension() = default;
CExtension::CExtension(CExtValue const& value, bool critical) : CExtValue(value), critical_(critical) {}

CBlob CExtension::encode() const {
    return asn1Encode<ASN1T_Extension_traits>(*this);
}

void CExtension::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_Extension_traits>(encoded, *this);
}

bool CExtension::operator==(CExtension const& other) const {
    return critical_ == other.critical_ && std::string_view(get_extnID()) == other.get_extnID() &&
           get_extnValue() == other.get_extnValue();
}

CExtensions::iterator CExtensions::find(char const* oid) {
    return findByIdentifier(*this, &CExtension::get_extnID, oid);
}

CExtensions::const_iterator CExtensions::find(char const* oid) const {
    return findByIdentifier(*this, &CExtension::get_extnID, oid);
}

void CExtensions::insert(CExtension const& extension) {
    putByIdentifier(*this, extension.get_extnID(), extension);
}

void CExtensions::erase(char const* oid) {
    eraseByIdentifier(*this, oid);
}

CBlob CExtensions::encode() const {
    return asn1Encode<ASN1T_Extensions_traits>(*this);
}

void CExtensions::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_Extensions_traits>(encoded, *this);
}

bool CExtensions::operator==(CExtensions const& other) const {
    return size() == other.size() && std::equal(begin(), end(), other.begin());
}

}  // namespace Mirvane::ASN1
