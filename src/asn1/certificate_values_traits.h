// The traits of CertificateValues, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_CERTIFICATE_VALUES_TRAITS_H
#define MIRVANE_ASN1_CERTIFICATE_VALUES_TRAITS_H

#include "asn1/certificate_traits.h"
#include "asn1/certificate_values.h"
#include "asn1/record_traits.h"
#include "asn1data/signature_attributes.h"

namespace Mirvane::ASN1 {

struct ASN1T_CertificateValues_traits
    : RecordTraits<asn1data::ASN1T_CertificateValues, asn1data::ASN1C_CertificateValues,
                   asn1data::asn1Copy_CertificateValues> {
    // Both throw what ASN1T_Certificate_traits throws; `values` is then as it was.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CCertificateValues const& values);
    static void get(ASN1_T const& rec, CCertificateValues& values);
};

}  // namespace Mirvane::ASN1

#endif
