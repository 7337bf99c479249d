#include "asn1/policy_information.h"

#include "asn1/bridge.h"
#include "asn1/policy_information_traits.h"
#include "asn1/primitive_traits.h"

namespace Mirvane::ASN1 {

CPolicyInformation::CPolicyInformation() = default;
CPolicyInformation::CPolicyInformation(char const* policyIdentifier) : policyIdentifier_(policyIdentifier) {}

void CPolicyInformation::put_policyIdentifier(char const* policyIdentifier) {
    policyIdentifier_ = CStringProxy(policyIdentifier);
}

CBlob CPolicyInformation::encode() const {
    return asn1Encode<ASN1T_PolicyInformation_traits>(*this);
}

void CPolicyInformation::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_PolicyInformation_traits>(encoded, *this);
}

void ASN1T_PolicyInformation_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CPolicyInformation const& value) {
    ASN1TObjId_traits::set(ctxt, rec.policyIdentifier, value.get_policyIdentifier());
    rec.m = {};  // qualifiers are meant never to be written
}

void ASN1T_PolicyInformation_traits::get(ASN1_T const& rec, CPolicyInformation& value) {
    CStringProxy policyIdentifier;
    ASN1TObjId_traits::get(rec.policyIdentifier, policyIdentifier);
    value.put_policyIdentifier(policyIdentifier.c_str());
}

}  // namespace Mirvane::ASN1
