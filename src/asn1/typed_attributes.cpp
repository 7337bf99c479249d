#include "asn1/typed_attributes.h"

#include <utility>

#include "asn1/bridge.h"
#include "asn1/octet_string.h"
#include "asn1/primitive_traits.h"
#include "asn1/time_choice_traits.h"

namespace Mirvane::ASN1 {
namespace {

constexpr char kContentType[] = "1.2.840.113549.1.9.3";
constexpr char kMessageDigest[] = "1.2.840.113549.1.9.4";
constexpr char kSigningTime[] = "1.2.840.113549.1.9.5";

}  // namespace

CAttrContentType::CAttrContentType(char const* contentType) : CAttrValue(kContentType) {
    put_contentType(contentType);
}

CAttrContentType::CAttrContentType(CBlob const& encoded) : CAttrValue(kContentType, encoded) {
    decode();
}

void CAttrContentType::put_contentType(char const* contentType) {
    contentType_ = CStringProxy(contentType);
    encode();
}

void CAttrContentType::encode() {
    value() = asn1Encode<ASN1TObjId_traits>(contentType_.c_str());
}

void CAttrContentType::decode() {
    asn1Decode<ASN1TObjId_traits>(get_value(), contentType_);
}

CAttrMessageDigest::CAttrMessageDigest() : CAttrValue(kMessageDigest) {}

CAttrMessageDigest::CAttrMessageDigest(CBlob const& encoded) : CAttrValue(kMessageDigest, encoded) {
    decode();
}

void CAttrMessageDigest::put_messageDigest(CBlob const& digest) {
    messageDigest_ = digest;
    encode();
}

void CAttrMessageDigest::encode() {
    value() = toOctetString(messageDigest_);
}

void CAttrMessageDigest::decode() {
    messageDigest_ = fromOctetString(get_value());
}

CAttrSigningTime::CAttrSigningTime(CDateTime const& time)
    : CAttrValue(kSigningTime), time_(std::make_unique<CTimeChoice>(time)) {
    encode();
}

CAttrSigningTime::CAttrSigningTime(CBlob const& encoded)
    : CAttrValue(kSigningTime, encoded), time_(std::make_unique<CTimeChoice>()) {
    decode();
}

CAttrSigningTime::CAttrSigningTime(CAttrSigningTime const& other)
    : CAttrValue(other), time_(std::make_unique<CTimeChoice>(*other.time_)) {}

CAttrSigningTime::~CAttrSigningTime() = default;

CAttrSigningTime& CAttrSigningTime::operator=(CAttrSigningTime const& other) {
    CAttrSigningTime copied(other);
    CAttrValue::operator=(static_cast<CAttrValue&&>(copied));
    time_.swap(copied.time_);
    return *this;
}

CDateTime CAttrSigningTime::get_time() const {
    return *time_->get_time();
}

void CAttrSigningTime::put_time(CDateTime const& time) {
    time_->put_time(time);
    encode();
}

void CAttrSigningTime::encode() {
    value() = asn1Encode<ASN1T_Time_traits>(*time_);
}

void CAttrSigningTime::decode() {
    asn1Decode<ASN1T_Time_traits>(get_value(), *time_);
}

}  // namespace Mirvane::ASN1
