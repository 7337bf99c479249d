// The traits of PrivateKeyUsagePeriod, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_PRIVATE_KEY_USAGE_PERIOD_TRAITS_H
#define MIRVANE_ASN1_PRIVATE_KEY_USAGE_PERIOD_TRAITS_H

#include "asn1/record_traits.h"
#include "asn1/typed_extensions.h"
#include "asn1data/x509_extensions.h"

namespace Mirvane::ASN1 {

struct ASN1T_PrivateKeyUsagePeriod_traits
    : RecordTraits<asn1data::ASN1T_PrivateKeyUsagePeriod, asn1data::ASN1C_PrivateKeyUsagePeriod,
                   asn1data::asn1Copy_PrivateKeyUsagePeriod> {
    // Throws as ASN1GeneralizedTime_traits does.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CExtPrivateKeyUsagePeriod const& period);
    // Goes through the put_ operations, each of which encodes the extension anew. Throws what
    // CDateTime(char const*) throws, and `period` is then as it was.
    static void get(ASN1_T const& rec, CExtPrivateKeyUsagePeriod& period);
};

}  // namespace Mirvane::ASN1

#endif
