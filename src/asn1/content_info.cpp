#include "asn1/content_info.h"

#include "asn1/bridge.h"
#include "asn1/content_info_traits.h"

namespace Mirvane::ASN1 {

CContentInfo::CContentInfo() = default;
CContentInfo::CContentInfo(char const* contentType, CBlob const& content)
    : contentType_(contentType), content_(content) {}
CContentInfo::CContentInfo(CContentInfo const& other) = default;
CContentInfo::CContentInfo(CContentInfo&& other) = default;
CContentInfo::~CContentInfo() = default;

CContentInfo& CContentInfo::operator=(CContentInfo const& other) {
    return *this = CContentInfo(other);
}
CContentInfo& CContentInfo::operator=(CContentInfo&& other) = default;

CBlob CContentInfo::encode() const {
    return asn1Encode<ASN1T_ContentInfo_traits>(*this);
}

void CContentInfo::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_ContentInfo_traits>(encoded, *this);
}

}  // namespace Mirvane::ASN1
