#include "ocsp/response_message.h"

#include <string>
#include <utility>

#include "asn1/choice.h"
#include "asn1/object_identifier_text.h"
#include "asn1/primitive_traits.h"
#include "asn1/record_traits.h"
#include "asn1data/engine_elementwise.h"
#include "asn1data/ocsp.h"
#include "ocsp/message_road.h"

namespace Mirvane::PKI::OCSP {
namespace {

using RecordTraits = ASN1::RecordTraits<asn1data::ASN1T_OCSPResponse, asn1data::ASN1C_OCSPResponse,
                                        asn1data::asn1Copy_OCSPResponse>;

}  // namespace

class CResponseMessage::Impl {
  public:
    Impl() = default;
    Impl(Impl const& other) : responseStatus(other.responseStatus) {
        ASN1::copy_to_auto_ptr(responseType, other.responseType.get());
        ASN1::copy_to_auto_ptr(response, other.response.get());
    }

    ResponseStatus responseStatus = internalError;
    // Both null or both not; put_response alone writes them.
    std::unique_ptr<std::string> responseType;
    std::unique_ptr<CBlob> response;
};

CResponseMessage::CResponseMessage() : impl_(std::make_unique<Impl>()) {}
CResponseMessage::CResponseMessage(CResponseMessage const& other) : impl_(ASN1::copyOfImpl(other.impl_)) {}
CResponseMessage::~CResponseMessage() = default;

CResponseMessage& CResponseMessage::operator=(CResponseMessage const& other) {
    if (this == &other) return *this;
    clear();
    impl_ = ASN1::copyOfImpl(other.impl_);
    return *this;
}

void CResponseMessage::clear() {
    impl_.reset();
}

CBlob CResponseMessage::encode() const {
    return road::encode<asn1data::ASN1C_OCSPResponse, asn1data::ASN1T_OCSPResponse>(
        [this](ASN1CTXT* ctxt, asn1data::ASN1T_OCSPResponse& record) {
            ASN1T_OCSPResponse_traits::set(ctxt, record, *this);
        });
}

// A response of a known type must be one, but what it says is not read here.
void CResponseMessage::decode(CBlob const& blob) {
    road::decodeBy<asn1data::ASN1T_OCSPResponse>(
        blob, failure::invalidArgument,
        [](ASN1BERDecodeBuffer& buffer, asn1data::ASN1T_OCSPResponse& record) {
            buffer.init();
            // What is read is copied before it replaces anything, also where that is the blob itself.
            rtCtxtSetFlag(buffer.getCtxtPtr(), ASN1_NO_COPY);
            return asn1data::decodeUnresolved(buffer.getCtxtPtr(), asn1data::types::OCSPResponse, &record);
        },
        [this](asn1data::ASN1T_OCSPResponse const& record) {
            ASN1T_OCSPResponse_traits::get(record, *this);
        });
}

ResponseStatus CResponseMessage::get_responseStatus() const {
    return impl_->responseStatus;
}

void CResponseMessage::put_responseStatus(ResponseStatus status) {
    impl_->responseStatus = status;
}

char const* CResponseMessage::get_responseType() const {
    return impl_->responseType ? impl_->responseType->c_str() : nullptr;
}

CBlob const* CResponseMessage::get_response() const {
    return impl_->response.get();
}

void CResponseMessage::put_response(char const* type, CBlob const* response) {
    if (!type != !response) failure::raise(failure::invalidArgument);
    if (type) return put_response(type, CBlob(*response));
    impl_->responseType.reset();
    impl_->response.reset();
}

void CResponseMessage::put_response(char const* type, CBlob&& response) {
    if (!type) failure::raise(failure::invalidArgument);
    // Both are made before either is replaced: the type may point into the old one, and memory may fail.
    auto newType = std::make_unique<std::string>(type);
    auto newResponse = std::make_unique<CBlob>(std::move(response));
    impl_->responseType = std::move(newType);
    impl_->response = std::move(newResponse);
}

void ASN1T_OCSPResponse_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CResponseMessage const& value) {
    record.m = {};
    record.responseBytes.responseType.numids = 0;
    record.responseBytes.response = {};
    record.responseBytes.responseObject = {};
    record.responseStatus = value.get_responseStatus();
    if (!value.get_responseType()) return;
    record.m.responseBytesPresent = 1;
    ASN1::ASN1TObjId_traits::set(ctxt, record.responseBytes.responseType, value.get_responseType());
    ASN1::ASN1TDynOctStr_traits::set(ctxt, record.responseBytes.response, *value.get_response());
}

void ASN1T_OCSPResponse_traits::get(ASN1_T const& record, CResponseMessage& value) {
    value.put_responseStatus(static_cast<ResponseStatus>(record.responseStatus));
    if (!record.m.responseBytesPresent) {
        value.put_response(nullptr, nullptr);
        return;
    }
    const ASN1::ObjectIdentifierText type(record.responseBytes.responseType);
    CBlob response;
    ASN1::ASN1TDynOctStr_traits::get(record.responseBytes.response, response);
    value.put_response(type.c_str(), std::move(response));
}

void ASN1T_OCSPResponse_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    RecordTraits::copy(ctxt, source, target);
}

}  // namespace Mirvane::PKI::OCSP
