#include "asn1/pki_status.h"

#include "asn1/bridge.h"
#include "asn1/pki_status_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

std::uint32_t bit(unsigned int i) {
    if (i >= 32) failure::raise(failure::invalidArgument);
    return std::uint32_t{1} << i;
}

}  // namespace

bool CPKIFailureInfo::get_bit(unsigned int i) const {
    return (value_ & bit(i)) != 0;
}

void CPKIFailureInfo::put_bit(unsigned int i, bool set) {
    value_ = set ? value_ | bit(i) : value_ & ~bit(i);
}

CBlob CPKIFailureInfo::encode() const {
    return asn1Encode<ASN1T_PKIFailureInfo_traits>(*this);
}

void CPKIFailureInfo::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_PKIFailureInfo_traits>(encoded, *this);
}

CPKIStatusInfo::CPKIStatusInfo(PKIStatusEnum pkiStatus) : pkiStatus_(pkiStatus), failureInfo_(0) {}
CPKIStatusInfo::CPKIStatusInfo(CPKIStatusInfo const& other) = default;

CPKIStatusInfo& CPKIStatusInfo::operator=(CPKIStatusInfo const& other) {
    if (this == &other) return *this;
    put_statusString(other.statusString_);  // the one step that may fail
    pkiStatus_ = other.pkiStatus_;
    failureInfo_ = other.failureInfo_;
    return *this;
}

void CPKIStatusInfo::put_statusString(CPKIFreeText const& statusString) {
    CPKIFreeText copied(statusString);
    statusString_.swap(copied);
}

CBlob CPKIStatusInfo::encode() const {
    return asn1Encode<ASN1T_PKIStatusInfo_traits>(*this);
}

void CPKIStatusInfo::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_PKIStatusInfo_traits>(encoded, *this);
}

}  // namespace Mirvane::ASN1
