#include "asn1/revocation_announcement_traits.h"

#include "asn1/big_integer_text.h"
#include "asn1/extension_traits.h"
#include "asn1/general_name_traits.h"
#include "asn1/time_traits.h"

namespace Mirvane::ASN1 {
namespace {

CDateTime dateOf(char const* text) {
    CDateTime date(0, 0);
    ASN1GeneralizedTime_traits::get(text, date);
    return date;
}

}  // namespace

void ASN1T_CertId_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CCertId const& id) {
    ASN1T_GeneralName_traits::set(ctxt, rec.issuer, id.get_issuer());
    rec.serialNumber = BigIntegerToASN1String(ctxt, id.get_serialNumber());
}

void ASN1T_CertId_traits::get(ASN1_T const& rec, CCertId& id) {
    CGeneralName issuer;
    ASN1T_GeneralName_traits::get(rec.issuer, issuer);
    CBigInteger serialNumber;
    ASN1StringToBigInteger(rec.serialNumber, serialNumber);
    id = CCertId(issuer, serialNumber);
}

void ASN1T_RevAnnContent_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CRevAnnContent const& content) {
    rec.m = {};
    rec.status = content.get_status();
    ASN1T_CertId_traits::set(ctxt, rec.certId, content.get_certId());
    ASN1GeneralizedTime_traits::set(ctxt, rec.willBeRevokedAt, content.get_willBeRevokedAt());
    ASN1GeneralizedTime_traits::set(ctxt, rec.badSinceDate, content.get_badSinceDate());
    CExtensions const* const crlDetails = content.get_crlDetails();
    if (crlDetails != nullptr && !crlDetails->empty()) {
        rec.m.crlDetailsPresent = 1;
        ASN1T_Extensions_traits::set(ctxt, rec.crlDetails, *crlDetails);
    }
}

void ASN1T_RevAnnContent_traits::get(ASN1_T const& rec, CRevAnnContent& content) {
    CCertId certId;
    ASN1T_CertId_traits::get(rec.certId, certId);
    CRevAnnContent read(static_cast<PKIStatusEnum>(rec.status), certId, dateOf(rec.willBeRevokedAt),
                        dateOf(rec.badSinceDate));
    if (rec.m.crlDetailsPresent) {
        CExtensions crlDetails;
        ASN1T_Extensions_traits::get(rec.crlDetails, crlDetails);
        read.put_crlDetails(&crlDetails);
    }
    content = read;
}

}  // namespace Mirvane::ASN1
