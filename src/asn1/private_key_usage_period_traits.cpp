#include "asn1/private_key_usage_period_traits.h"

#include "asn1/time_traits.h"

namespace Mirvane::ASN1 {

void ASN1T_PrivateKeyUsagePeriod_traits::set(ASN1CTXT* ctxt, ASN1_T& rec,
                                             CExtPrivateKeyUsagePeriod const& period) {
    rec.m = {};
    if (CDateTime const* const notBefore = period.get_notBefore()) {
        ASN1GeneralizedTime_traits::set(ctxt, rec.notBefore, *notBefore);
        rec.m.notBeforePresent = 1;
    }
    if (CDateTime const* const notAfter = period.get_notAfter()) {
        ASN1GeneralizedTime_traits::set(ctxt, rec.notAfter, *notAfter);
        rec.m.notAfterPresent = 1;
    }
}

void ASN1T_PrivateKeyUsagePeriod_traits::get(ASN1_T const& rec, CExtPrivateKeyUsagePeriod& period) {
    CDateTime notBefore(0, 0);
    CDateTime notAfter(0, 0);
    if (rec.m.notBeforePresent) ASN1GeneralizedTime_traits::get(rec.notBefore, notBefore);
    if (rec.m.notAfterPresent) ASN1GeneralizedTime_traits::get(rec.notAfter, notAfter);
    period.put_notBefore(rec.m.notBeforePresent ? &notBefore : nullptr);
    period.put_notAfter(rec.m.notAfterPresent ? &notAfter : nullptr);
}

}  // namespace Mirvane::ASN1
