#include "asn1/content_info_traits.h"

#include "asn1/bridge.h"
#include "asn1/certificate_traits.h"
#include "asn1/primitive_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

void ASN1T_ContentInfo_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& encoded) {
    // The bridge would read the start of a blob that no record can hold.
    if (encoded.cbData() > RT_MH_MAX_SIZE) failure::raise(failure::contextMemory);
    asn1DecodeT<ASN1T_ContentInfo_traits>(encoded, ctxt, rec);
}

void ASN1T_ContentInfo_traits::get(ASN1_T const& rec, CBlob& encoded) {
    encoded = asn1EncodeT<ASN1T_ContentInfo_traits>(rec);
}

void ASN1T_ContentInfo_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CContentInfo const& info) {
    ASN1BERDecodeBuffer memory;  // nothing is decoded from it: the local record lives in its context
    ASN1_T local;
    ASN1TObjId_traits::set(memory.getCtxtPtr(), local.contentType, info.get_contentType());
    ASN1TOpenType_traits::set(memory.getCtxtPtr(), local.content, info.get_content());
    if (asn1data::asn1DTC_ContentInfo(memory.getCtxtPtr(), &local) != RTS_OK) failure::raise(failure::asn1);
    copy(ctxt, local, rec);
}

void ASN1T_ContentInfo_traits::get(ASN1_T const& rec, CContentInfo& info) {
    CStringProxy contentType;
    ASN1TObjId_traits::get(rec.contentType, contentType);
    CBlob content;
    ASN1TOpenType_traits::get(rec.content, content);
    info = CContentInfo(contentType.c_str(), content);
}

}  // namespace Mirvane::ASN1
