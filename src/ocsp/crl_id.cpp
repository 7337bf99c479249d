#include "ocsp/crl_id.h"

#include <cstdint>

#include "asn1/context_memory.h"
#include "asn1/time_traits.h"
#include "asn1data/ocsp.h"
#include "ocsp/message_road.h"

namespace Mirvane::PKI::OCSP {

CCrlIDImpl::CCrlIDImpl(CCrlIDImpl const& other) {
    ASN1::copy_to_auto_ptr(crlUrl, other.crlUrl.get());
    ASN1::copy_to_auto_ptr(crlNum, other.crlNum.get());
    ASN1::copy_to_auto_ptr(crlTime, other.crlTime.get());
}

CBlob CCrlIDImpl::encode() const {
    return road::encode<asn1data::ASN1C_CrlID, asn1data::ASN1T_CrlID>(
        [this](ASN1CTXT* ctxt, asn1data::ASN1T_CrlID& record) { fillASN1T_CrlID(ctxt, record); });
}

void CCrlIDImpl::decode(CBlob const& encoded) {
    // No bytes are one more thing that is no CrlID.
    road::decode<asn1data::ASN1C_CrlID, asn1data::ASN1T_CrlID>(
        encoded, failure::asn1, [this](asn1data::ASN1T_CrlID const& record) { readASN1T_CrlID(record); });
}

void CCrlIDImpl::fillASN1T_CrlID(ASN1CTXT* ctxt, asn1data::ASN1T_CrlID& record) const {
    record.m = {};
    if (crlUrl) {
        record.m.crlUrlPresent = 1;
        record.crlUrl = ASN1::copyText(ctxt, crlUrl->c_str());
    }
    if (crlNum) {
        record.m.crlNumPresent = 1;
        record.crlNum = static_cast<std::int32_t>(*crlNum);  // meant: the schema's number is signed
    }
    if (crlTime) {
        record.m.crlTimePresent = 1;
        record.crlTime = ASN1::DateToASN1GeneralizedTime(ctxt, *crlTime, true);
    }
}

void CCrlIDImpl::readASN1T_CrlID(asn1data::ASN1T_CrlID const& record) {
    crlUrl.reset();
    crlNum.reset();
    crlTime.reset();
    if (record.m.crlUrlPresent) crlUrl = std::make_unique<std::string>(record.crlUrl);
    if (record.m.crlNumPresent) crlNum = std::make_unique<unsigned int>(record.crlNum);
    if (record.m.crlTimePresent) crlTime = std::make_unique<CDateTime>(record.crlTime);
}

}  // namespace Mirvane::PKI::OCSP
