#include "asn1/issuer_serial.h"

#include <algorithm>

#include "asn1/bridge.h"
#include "asn1/ess_identifier_traits.h"

namespace Mirvane::ASN1 {

CIssuerSerial::CIssuerSerial() = default;

CIssuerSerial::CIssuerSerial(CGeneralNames const& issuer, CBigInteger const& serialNumber)
    : issuer_(issuer), serialNumber_(serialNumber) {}

CIssuerSerial::CIssuerSerial(CIssuerSerial const& other) = default;
CIssuerSerial::~CIssuerSerial() = default;

CIssuerSerial& CIssuerSerial::operator=(CIssuerSerial const& other) {
    if (this != &other) {
        CIssuerSerial copied(other);
        issuer_.swap(copied.issuer_);
        serialNumber_.swap(copied.serialNumber_);
    }
    return *this;
}

CBlob CIssuerSerial::encode() const {
    return asn1Encode<ASN1T_IssuerSerial_traits>(*this);
}

void CIssuerSerial::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_IssuerSerial_traits>(encoded, *this);
}

bool CIssuerSerial::operator==(CIssuerSerial const& other) const {
    return issuer_.size() == other.issuer_.size() &&
           std::equal(issuer_.begin(), issuer_.end(), other.issuer_.begin()) &&
           serialNumber_.compare(other.serialNumber_) == 0;
}

}  // namespace Mirvane::ASN1
