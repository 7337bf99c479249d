#include "asn1/signer_info.h"

namespace Mirvane::ASN1 {

CSignerInfo::CSignerInfo() = default;
CSignerInfo::CSignerInfo(CSignerInfo const& other) = default;

CSignerInfo& CSignerInfo::operator=(CSignerInfo const& other) {
    if (this == &other) return *this;
    signatureAlgorithm_ = other.signatureAlgorithm_;
    digestAlgorithm_ = other.digestAlgorithm_;
    issuer_ = other.issuer_;
    serialNumber_ = other.serialNumber_;
    signature_ = other.signature_;
    version_ = other.version_;
    return *this;
}

bool CSignerInfo::operator==(CSignerInfo const& other) const {
    return version_ == other.version_ && digestAlgorithm_ == other.digestAlgorithm_ &&
           issuer_ == other.issuer_ && serialNumber_.compare(other.serialNumber_) == 0 &&
           signature_ == other.signature_ && signatureAlgorithm_ == other.signatureAlgorithm_;
}

}  // namespace Mirvane::ASN1
