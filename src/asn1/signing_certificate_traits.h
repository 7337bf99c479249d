// The traits of the attributes of signing certificates, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_SIGNING_CERTIFICATE_TRAITS_H
#define MIRVANE_ASN1_SIGNING_CERTIFICATE_TRAITS_H

#include "asn1/ess_identifier_traits.h"
#include "asn1/policy_information_traits.h"
#include "asn1/signing_certificate_attributes.h"

namespace Mirvane::ASN1 {

// `Base` is what the record has in common with others, `CertsTraits` is of the list of `Certs`.
template <typename Base, typename CertsTraits, typename Certs>
struct SigningCertificateTraits : Base {
    using typename Base::ASN1_T;
    using Attribute = SigningCertificateAttribute<Certs>;

    // Leaves out policies without an element, which is meant. Throws what the traits of the identifiers and
    // of PolicyInformation throw.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, Attribute const& attribute) {
        rec.m = {};
        CertsTraits::set(ctxt, rec.certs, attribute.get_certs());
        CPolicyInformationList const* const policies = attribute.get_policies();
        if (policies == nullptr || policies->empty()) return;
        rec.m.policiesPresent = 1;
        PolicyInformationSequence_traits::set(ctxt, rec.policies, *policies);
    }

    // Goes through the put_ operations, the first of which encodes the attribute anew, without the policies
    // of the record. Throws what they throw, and what the traits of the identifiers throw.
    static void get(ASN1_T const& rec, Attribute& attribute) {
        Certs certs;
        CertsTraits::get(rec.certs, certs);
        attribute.put_certs(certs);
        if (!rec.m.policiesPresent) return attribute.put_policies(nullptr);
        CPolicyInformationList policies;
        PolicyInformationSequence_traits::get(rec.policies, policies);
        attribute.put_policies(&policies);
    }
};

struct ASN1T_SigningCertificate_traits
    : SigningCertificateTraits<
          RecordTraits<asn1data::ASN1T_SigningCertificate, asn1data::ASN1C_SigningCertificate,
                       asn1data::asn1Copy_SigningCertificate>,
          ESSCertIDSequence_traits, CESSCertIDList> {};

struct ASN1T_SigningCertificateV2_traits
    : SigningCertificateTraits<
          RecordTraits<asn1data::ASN1T_SigningCertificateV2, asn1data::ASN1C_SigningCertificateV2,
                       asn1data::asn1Copy_SigningCertificateV2>,
          ESSCertIDv2Sequence_traits, CESSCertIDv2List> {};

struct ASN1T_OtherSigningCertificate_traits
    : SigningCertificateTraits<
          RecordTraits<asn1data::ASN1T_OtherSigningCertificate, asn1data::ASN1C_OtherSigningCertificate,
                       asn1data::asn1Copy_OtherSigningCertificate>,
          OtherCertIDSequence_traits, COtherCertIDList> {};

}  // namespace Mirvane::ASN1

#endif
