#include "asn1data/response_envelope.h"

#include <new>

#include "asn1rt/copy.h"
#include "asn1rt/cursor.h"
#include "asn1rt/universal_tags.h"

namespace asn1data {
namespace {

constexpr ASN1TAG kSequence = TM_CONSTRUCTED | TAG_SEQUENCE;
constexpr ASN1TAG kResponseBytes = TM_CONTEXT | TM_CONSTRUCTED | 0;
constexpr std::uint32_t kStatusBound = 9;  // 4, 7 and 8 have no meaning in RFC 6960 and pass

// Where the content of a constructed value began, and its length or ASN1_INDEFLEN.
struct Content {
    std::uint32_t start;
    int length;
};

int enterSequence(ASN1CTXT* ctxt, ASN1TagType tagging, int length, Content* content) {
    if (tagging == ASN1EXPL) {
        if (int status = xd_match1(ctxt, TAG_SEQUENCE, &length); status != RTS_OK) return status;
    }
    *content = {ctxt->buffer.byteIndex, length};
    return RTS_OK;
}

bool hasEnded(const ASN1CTXT* ctxt, const Content& content) {
    if (content.length == ASN1_INDEFLEN) return asn1rt::room(ctxt) < 2 || asn1rt::atEndOfContents(ctxt);
    return static_cast<std::int64_t>(ctxt->buffer.byteIndex - content.start) >= content.length ||
           asn1rt::room(ctxt) == 0;
}

int readStatus(ASN1CTXT* ctxt, std::uint32_t* value) {
    std::int32_t number = 0;
    if (int status = xd_enum(ctxt, &number, ASN1EXPL, 0); status != RTS_OK)
        return asn1rt::record(ctxt, status);
    if (static_cast<std::uint32_t>(number) >= kStatusBound) return asn1rt::record(ctxt, RTS_BAD_ENUM);
    *value = static_cast<std::uint32_t>(number);
    return RTS_OK;
}

int writeStatus(ASN1CTXT* ctxt, std::uint32_t value) {
    if (value >= kStatusBound) return RTS_BAD_ENUM;
    const auto number = static_cast<std::int32_t>(value);
    return xe_enum(ctxt, &number, ASN1EXPL);
}

}  // namespace

int asn1E_ResponseBytes(ASN1CTXT* pctxt, ASN1T_ResponseBytes* pvalue, ASN1TagType tagging) {
    const int response = xe_octstr(pctxt, pvalue->response.data, pvalue->response.numocts, ASN1EXPL);
    if (response < 0) return asn1rt::record(pctxt, response);
    const int type = xe_objid(pctxt, &pvalue->responseType, ASN1EXPL);
    if (type < 0) return asn1rt::record(pctxt, type);
    const int length = response + type;
    return tagging == ASN1EXPL ? xe_tag_len(pctxt, kSequence, length) : length;
}

int asn1D_ResponseBytes(ASN1CTXT* pctxt, ASN1T_ResponseBytes* pvalue, ASN1TagType tagging, int length) {
    Content content;
    if (int status = enterSequence(pctxt, tagging, length, &content); status != RTS_OK) return status;
    if (hasEnded(pctxt, content)) return asn1rt::record(pctxt, RTS_MISSING_ELEMENT);
    if (int status = xd_objid(pctxt, &pvalue->responseType, ASN1EXPL, 0); status != RTS_OK) {
        return asn1rt::record(pctxt, status);
    }
    if (hasEnded(pctxt, content)) return asn1rt::record(pctxt, RTS_MISSING_ELEMENT);
    auto& response = pvalue->response;
    if (int status = xd_octstr(pctxt, &response.data, &response.numocts, ASN1EXPL, 0); status != RTS_OK) {
        return asn1rt::record(pctxt, status);
    }
    return hasEnded(pctxt, content) ? int{RTS_OK} : asn1rt::record(pctxt, RTS_EXTRA_ELEMENT);
}

int asn1E_OCSPResponse(ASN1CTXT* pctxt, ASN1T_OCSPResponse* pvalue, ASN1TagType tagging) {
    int length = 0;
    if (pvalue->m.responseBytesPresent) {
        length =
            xe_tag_len(pctxt, kResponseBytes, asn1E_ResponseBytes(pctxt, &pvalue->responseBytes, ASN1EXPL));
        if (length < 0) return asn1rt::record(pctxt, length);
    }
    const int status = writeStatus(pctxt, pvalue->responseStatus);
    if (status < 0) return asn1rt::record(pctxt, status);
    length += status;
    return tagging == ASN1EXPL ? xe_tag_len(pctxt, kSequence, length) : length;
}

int asn1D_OCSPResponse(ASN1CTXT* pctxt, ASN1T_OCSPResponse* pvalue, ASN1TagType tagging, int length) {
    Content content;
    if (int status = enterSequence(pctxt, tagging, length, &content); status != RTS_OK) return status;
    pvalue->m = {};
    if (hasEnded(pctxt, content)) return asn1rt::record(pctxt, RTS_MISSING_ELEMENT);
    if (int status = readStatus(pctxt, &pvalue->responseStatus); status != RTS_OK) return status;
    if (!hasEnded(pctxt, content) && (*asn1rt::cursor(pctxt) & 0xDF) == 0x80) {
        int wrapperLength = 0;
        if (int status = xd_Tag1AndLen(pctxt, &wrapperLength); status != RTS_OK)
            return asn1rt::record(pctxt, status);
        // The value's own length rules; the wrapper's is not compared with it.
        const int status = asn1D_ResponseBytes(pctxt, &pvalue->responseBytes, ASN1EXPL, wrapperLength);
        if (status != RTS_OK) return asn1rt::record(pctxt, status);
        pvalue->m.responseBytesPresent = 1;
    }
    return hasEnded(pctxt, content) ? int{RTS_OK} : asn1rt::record(pctxt, RTS_EXTRA_ELEMENT);
}

void asn1Copy_OCSPResponse(ASN1CTXT* pctxt, const ASN1T_OCSPResponse* src, ASN1T_OCSPResponse* dst) {
    if (src == dst) return;
    dst->m = src->m;
    dst->responseStatus = src->responseStatus;
    if (!src->m.responseBytesPresent) return;
    rtCopyOID(pctxt, &src->responseBytes.responseType, &dst->responseBytes.responseType);
    const auto& from = src->responseBytes.response;
    if (!rtCopyDynOctStr(pctxt, &from, &dst->responseBytes.response)) throw std::bad_alloc();
}

int ASN1C_OCSPResponse::EncodeTo(ASN1MessageBufferIF& buffer) {
    if (int status = prepare(buffer, ASN1MessageBufferIF::BEREncode); status != RTS_OK) return status;
    return asn1E_OCSPResponse(buffer.getCtxtPtr(), msgData, ASN1EXPL);
}

int ASN1C_OCSPResponse::DecodeFrom(ASN1MessageBufferIF& buffer) {
    if (int status = prepare(buffer, ASN1MessageBufferIF::BERDecode); status != RTS_OK) return status;
    return asn1D_OCSPResponse(buffer.getCtxtPtr(), msgData, ASN1EXPL, 0);
}

}  // namespace asn1data
