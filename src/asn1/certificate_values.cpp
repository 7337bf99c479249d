#include "asn1/certificate_values.h"

#include "asn1/bridge.h"
#include "asn1/certificate_values_traits.h"

namespace Mirvane::ASN1 {

CBlob CCertificateValue::encode() const {
    return asn1Encode<ASN1T_Certificate_traits>(*this);
}

void CCertificateValue::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_Certificate_traits>(encoded, *this);
}

CBlob CCertificateValues::encode() const {
    return asn1Encode<ASN1T_CertificateValues_traits>(*this);
}

void CCertificateValues::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_CertificateValues_traits>(encoded, *this);
}

void ASN1T_CertificateValues_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CCertificateValues const& values) {
    CertificateSequence_traits::set(ctxt, rec, values);
}

void ASN1T_CertificateValues_traits::get(ASN1_T const& rec, CCertificateValues& values) {
    CertificateSequence_traits::get(rec, values);
}

}  // namespace Mirvane::ASN1
