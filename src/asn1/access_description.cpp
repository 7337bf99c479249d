#include "asn1/access_description.h"

#include <string_view>

#include "asn1/access_description_traits.h"
#include "asn1/bridge.h"

namespace Mirvane::ASN1 {

CAccessDescription::CAccessDescription() = default;
CAccessDescription::CAccessDescription(char const* accessMethod, CGeneralName const& accessLocation)
    : accessMethod_(accessMethod), accessLocation_(accessLocation) {}

void CAccessDescription::put_accessMethod(char const* accessMethod) {
    accessMethod_ = accessMethod;
}

void CAccessDescription::put_accessLocation(CGeneralName const& accessLocation) {
    accessLocation_ = accessLocation;
}

CBlob CAccessDescription::encode() const {
    return asn1Encode<ASN1T_AccessDescription_traits>(*this);
}

void CAccessDescription::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_AccessDescription_traits>(encoded, *this);
}

bool CAccessDescription::operator==(CAccessDescription const& other) const {
    return std::string_view(get_accessMethod()) == other.get_accessMethod() &&
           accessLocation_ == other.accessLocation_;
}

CBlob CAuthorityInfoAccessSyntax::encode() const {
    return asn1Encode<ASN1T_AuthorityInfoAccessSyntax_traits>(*this);
}

void CAuthorityInfoAccessSyntax::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_AuthorityInfoAccessSyntax_traits>(encoded, *this);
}

}  // namespace Mirvane::ASN1
