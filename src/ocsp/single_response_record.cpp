#include "ocsp/single_response_record.h"

#include <utility>

#include "asn1/extension_traits.h"
#include "asn1/time_traits.h"

namespace Mirvane::PKI::OCSP {

char const* preciseTimeText(ASN1CTXT* ctxt, CDateTime const& time, CClockPrecision const& precision) {
    return ASN1::DateToASN1GeneralizedTime(ctxt, precision.truncateDigits(time),
                                           precision.isSecondPrecision());
}

void fillASN1T_SingleResponse(ASN1CTXT* ctxt, asn1data::ASN1T_SingleResponse& record,
                              CSingleResponse const& entry, CClockPrecision const& precision) {
    ASN1T_ReqCert_set(ctxt, record.reqCert, entry.get_reqCert());
    ASN1T_CertStatus_traits::set(ctxt, record.certStatus, entry.get_certStatus());
    record.thisUpdate = preciseTimeText(ctxt, entry.get_thisUpdate(), precision);
    if (CDateTime const* const nextUpdate = entry.get_nextUpdate()) {
        record.m.nextUpdatePresent = 1;
        record.nextUpdate = preciseTimeText(ctxt, *nextUpdate, precision);
    }
    ASN1::CExtensions const* const extensions = entry.get_singleExtensions();
    if (extensions != nullptr && !extensions->empty()) {
        record.m.singleExtensionsPresent = 1;
        ASN1::ASN1T_Extensions_traits::set(ctxt, record.singleExtensions, *extensions);
    }
}

CSingleResponse readASN1T_SignleResponse(asn1data::ASN1T_SingleResponse const& record) {
    CReqCert reqCert = readASN1T_ReqCert(record.reqCert);
    CCertStatus certStatus;
    ASN1T_CertStatus_traits::get(record.certStatus, certStatus);
    CSingleResponse entry(std::move(reqCert), std::move(certStatus), CDateTime(record.thisUpdate));
    char const* const nextUpdate = record.m.nextUpdatePresent ? record.nextUpdate : nullptr;
    if (nextUpdate != nullptr && *nextUpdate != '\0') {
        const CDateTime date(nextUpdate);
        entry.put_nextUpdate(&date);
    }
    if (record.m.singleExtensionsPresent) {
        ASN1::CExtensions extensions;
        ASN1::ASN1T_Extensions_traits::get(record.singleExtensions, extensions);
        entry.put_singleExtensions(&extensions);
    }
    return entry;
}

}  // namespace Mirvane::PKI::OCSP
