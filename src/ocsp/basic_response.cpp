#include "ocsp/basic_response.h"

#include <exception>

#include "asn1/algorithm_identifier_traits.h"
#include "asn1/certificate_traits.h"
#include "asn1/choice.h"
#include "asn1/context_memory.h"
#include "asn1/extension_traits.h"
#include "asn1/primitive_traits.h"
#include "asn1data/engine_elementwise.h"
#include "asn1data/ocsp.h"
#include "ocsp/message_road.h"
#include "ocsp/message_signature.h"
#include "ocsp/message_version.h"
#include "ocsp/single_response_record.h"

namespace Mirvane::PKI::OCSP {
namespace {

using RecordTraits = ASN1::RecordTraits<asn1data::ASN1T_BasicOCSPResponse, asn1data::ASN1C_BasicOCSPResponse,
                                        asn1data::asn1Copy_BasicOCSPResponse>;

// Reads the entries of a response while they are decoded, so that their records are never all there at once.
// A failure waits: a message that does not decode is told first, and so is what stands in front.
class EntryReader {
  public:
    asn1data::ElementTaker takerOf(asn1data::ASN1T_BasicOCSPResponse const& record) {
        return {&record.tbsResponseData.responses, take, this};
    }

    // Gives the entries that were read out, and then throws what stopped the reading.
    void moveTo(CSingleResponseList& responses) {
        responses.splice(responses.end(), entries_);
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    static void take(void* reader, void const* element) {
        static_cast<EntryReader*>(reader)->read(*static_cast<asn1data::ASN1T_SingleResponse const*>(element));
    }

    void read(asn1data::ASN1T_SingleResponse const& record) {
        if (failure_) return;
        try {
            entries_.push_back(readASN1T_SignleResponse(record));
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    CSingleResponseList entries_;
    std::exception_ptr failure_;
};

}  // namespace

class CBasicResponse::Impl {
  public:
    Impl() = default;
    Impl(CDateTime const& time, CResponderID const& responder) : producedAt(time), responderID(responder) {}
    Impl(Impl const& other)
        : version(other.version),
          producedAt(other.producedAt),
          responderID(other.responderID),
          responses(other.responses),
          clockPrecision(other.clockPrecision) {
        ASN1::copy_to_auto_ptr(signatureAlgorithm, other.signatureAlgorithm.get());
        ASN1::copy_to_auto_ptr(signature, other.signature.get());
        ASN1::copy_to_auto_ptr(certs, other.certs.get());
        ASN1::copy_to_auto_ptr(responseExtensions, other.responseExtensions.get());
    }

    void clear();
    void fillASN1T_BasicOCSPResponse(ASN1CTXT* ctxt, asn1data::ASN1T_BasicOCSPResponse& record) const;
    void fillASN1T_ResponseData(ASN1CTXT* ctxt, asn1data::ASN1T_ResponseData& record) const;
    void readASN1T_BasicOCSPResponse(asn1data::ASN1T_BasicOCSPResponse const& record, EntryReader& entries);
    CBlob tbsResponseDataEncode() const;

    std::uint32_t version = 0;
    CDateTime producedAt{0, 0};
    CResponderID responderID;
    // Both null or both not, but while a response is read.
    std::unique_ptr<ASN1::CAlgorithmIdentifierEx> signatureAlgorithm;
    std::unique_ptr<CBlob> signature;
    CSingleResponseList responses;
    std::unique_ptr<CBlobList> certs;
    std::unique_ptr<ASN1::CExtensions> responseExtensions;
    CBlob tbsBlob;  // the part that is signed, as received; empty if the response was not decoded
    CClockPrecision clockPrecision;

  private:
    void readASN1T_ResponseData(asn1data::ASN1T_ResponseData const& record, EntryReader& entries);
};

// Meant to keep version, time, responder, precision and the received octets.
void CBasicResponse::Impl::clear() {
    signatureAlgorithm.reset();
    signature.reset();
    certs.reset();
    responseExtensions.reset();
    responses.clear();
}

void CBasicResponse::Impl::fillASN1T_ResponseData(ASN1CTXT* ctxt,
                                                  asn1data::ASN1T_ResponseData& record) const {
    if (version != 0) {
        record.m.versionPresent = 1;
        record.version = version;
    }
    ASN1T_ResponderID_traits::set(ctxt, record.responderID, responderID);
    record.producedAt = preciseTimeText(ctxt, producedAt, clockPrecision);
    for (CSingleResponse const& response : responses) {
        auto* const entry = ASN1::newRecord<asn1data::ASN1T_SingleResponse>(ctxt);
        fillASN1T_SingleResponse(ctxt, *entry, response, clockPrecision);
        ASN1::append(ctxt, record.responses, entry);
    }
    if (responseExtensions && !responseExtensions->empty()) {
        record.m.responseExtensionsPresent = 1;
        ASN1::ASN1T_Extensions_traits::set(ctxt, record.responseExtensions, *responseExtensions);
    }
}

void CBasicResponse::Impl::fillASN1T_BasicOCSPResponse(ASN1CTXT* ctxt,
                                                       asn1data::ASN1T_BasicOCSPResponse& record) const {
    fillASN1T_ResponseData(ctxt, record.tbsResponseData);
    ASN1::ASN1T_AlgorithmIdentifier_traits::set(ctxt, record.signatureAlgorithm, *signatureAlgorithm);
    ASN1::ASN1TDynBitStr_traits::set(ctxt, record.signature, *signature);
    if (!certs || certs->empty()) return;
    record.m.certsPresent = 1;
    ASN1::CertificateSequence_traits::set(ctxt, record.certs, *certs);
}

void CBasicResponse::Impl::readASN1T_ResponseData(asn1data::ASN1T_ResponseData const& record,
                                                  EntryReader& entries) {
    version = record.m.versionPresent ? record.version : 0;
    ASN1T_ResponderID_traits::get(record.responderID, responderID);
    producedAt = CDateTime(record.producedAt);
    entries.moveTo(responses);
    if (!record.m.responseExtensionsPresent) return;
    auto extensions = std::make_unique<ASN1::CExtensions>();
    ASN1::ASN1T_Extensions_traits::get(record.responseExtensions, *extensions);
    responseExtensions = std::move(extensions);
}

void CBasicResponse::Impl::readASN1T_BasicOCSPResponse(asn1data::ASN1T_BasicOCSPResponse const& record,
                                                       EntryReader& entries) {
    clear();
    readASN1T_ResponseData(record.tbsResponseData, entries);
    auto algorithm = std::make_unique<ASN1::CAlgorithmIdentifierEx>();
    ASN1::ASN1T_AlgorithmIdentifier_get(*algorithm, record.signatureAlgorithm);
    auto value = std::make_unique<CBlob>();
    ASN1::ASN1TDynBitStr_traits::get(record.signature, *value);
    signatureAlgorithm = std::move(algorithm);
    signature = std::move(value);
    if (!record.m.certsPresent) return;
    auto certificates = std::make_unique<CBlobList>();
    ASN1::CertificateSequence_traits::get(record.certs, *certificates);
    certs = std::move(certificates);
}

CBlob CBasicResponse::Impl::tbsResponseDataEncode() const {
    return road::encode<asn1data::ASN1C_ResponseData, asn1data::ASN1T_ResponseData>(
        [this](ASN1CTXT* ctxt, asn1data::ASN1T_ResponseData& record) {
            fillASN1T_ResponseData(ctxt, record);
        });
}

CBasicResponse::CBasicResponse() : impl_(std::make_unique<Impl>()) {}
CBasicResponse::CBasicResponse(CDateTime const& producedAt, CResponderID const& responderID)
    : impl_(std::make_unique<Impl>(producedAt, responderID)) {}
CBasicResponse::CBasicResponse(CBasicResponse const& other) : impl_(ASN1::copyOfImpl(other.impl_)) {}
CBasicResponse::~CBasicResponse() = default;

CBasicResponse& CBasicResponse::operator=(CBasicResponse const& other) {
    if (this == &other) return *this;
    clear();
    impl_ = ASN1::copyOfImpl(other.impl_);
    return *this;
}

void CBasicResponse::clear() {
    impl_.reset();
}

CBlob CBasicResponse::encode() const {
    if (!impl_->signature) failure::raise(failure::general);
    return road::encode<asn1data::ASN1C_BasicOCSPResponse, asn1data::ASN1T_BasicOCSPResponse>(
        [this](ASN1CTXT* ctxt, asn1data::ASN1T_BasicOCSPResponse& record) {
            impl_->fillASN1T_BasicOCSPResponse(ctxt, record);
        });
}

void CBasicResponse::decode(CBlob const& blob) {
    // One copy of all octets, which the record points into, instead of one for each string. The blob may be
    // one that the response holds until it is read.
    const CBlob message(blob);
    EntryReader entries;
    road::decodeBy<asn1data::ASN1T_BasicOCSPResponse>(
        message, failure::invalidArgument,
        [&](ASN1BERDecodeBuffer& buffer, asn1data::ASN1T_BasicOCSPResponse& record) {
            buffer.init();
            rtCtxtSetFlag(buffer.getCtxtPtr(), ASN1_NO_COPY);
            return asn1data::decodeElementwise(buffer.getCtxtPtr(), asn1data::types::BasicOCSPResponse,
                                               &record, entries.takerOf(record));
        },
        [&](asn1data::ASN1T_BasicOCSPResponse const& record) {
            // Octets of an earlier response must not stay beside a new signature if reading fails.
            impl_->tbsBlob = CBlob();
            CBlob received = extractTbsBlob(message);
            impl_->readASN1T_BasicOCSPResponse(record, entries);
            // Meant to come last: what was read stays.
            if (received.cbData() == 0) failure::raise(failure::asn1);
            impl_->tbsBlob = std::move(received);
        });
}

void CBasicResponse::sign(unsigned long long provider, unsigned int keySpecification,
                          ASN1::CAlgorithmIdentifierEx const& signatureAlgorithm) {
    const CBlob tbs = impl_->tbsResponseDataEncode();
    TbsSigner signer(provider);
    // An unknown algorithm goes on as number 0, which the provider refuses.
    CBlob value = signer.sign(signatureAlgorithm.get_algId(), keySpecification, tbs);
    // Both copies are made before a field changes: the argument may be the response's own.
    auto newAlgorithm = std::make_unique<ASN1::CAlgorithmIdentifierEx>(signatureAlgorithm);
    impl_->signature = std::make_unique<CBlob>(std::move(value));
    impl_->signatureAlgorithm = std::move(newAlgorithm);
    signer.release();
}

bool CBasicResponse::verify(CBlob const& certificate) const {
    if (!impl_->signature || !impl_->signatureAlgorithm) failure::raise(failure::general);
    const CBlob tbs = impl_->tbsBlob.cbData() != 0 ? impl_->tbsBlob : impl_->tbsResponseDataEncode();
    return verifyTbs(tbs, *impl_->signatureAlgorithm, *impl_->signature, certificate);
}

std::uint32_t CBasicResponse::get_version() const {
    return impl_->version;
}

CDateTime const& CBasicResponse::get_producedAt() const {
    return impl_->producedAt;
}

CResponderID const& CBasicResponse::get_responderID() const {
    return impl_->responderID;
}

CSingleResponseList const& CBasicResponse::get_responses() const {
    return impl_->responses;
}

ASN1::CAlgorithmIdentifierEx const* CBasicResponse::get_signatureAlgorithm() const {
    return impl_->signatureAlgorithm.get();
}

CBlob const* CBasicResponse::get_signature() const {
    return impl_->signature.get();
}

CBlobList const* CBasicResponse::get_certs() const {
    return impl_->certs.get();
}

ASN1::CExtensions const* CBasicResponse::get_responseExtensions() const {
    return impl_->responseExtensions.get();
}

void CBasicResponse::put_responses(CSingleResponseList const& responses) {
    impl_->version = determineVersion(responses);
    impl_->responses = responses;
}

void CBasicResponse::put_certs(CBlobList const* certificates) {
    ASN1::copy_to_auto_ptr(impl_->certs, certificates);
}

void CBasicResponse::put_responseExtensions(ASN1::CExtensions const* extensions) {
    ASN1::copy_to_auto_ptr(impl_->responseExtensions, extensions);
}

void CBasicResponse::put_clockPrecisionDigits(int digits) {
    impl_->clockPrecision.put_clockPrecisionDigits(digits);
}

void ASN1T_BasicOCSPResponse_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CBlob const& response) {
    ASN1::asn1DecodeT<ASN1T_BasicOCSPResponse_traits>(response, ctxt, record);
}

void ASN1T_BasicOCSPResponse_traits::get(ASN1_T const& record, CBlob& response) {
    response = ASN1::asn1EncodeT<ASN1T_BasicOCSPResponse_traits>(record);
}

void ASN1T_BasicOCSPResponse_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    RecordTraits::copy(ctxt, source, target);
}

int ASN1T_BasicOCSPResponse_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record) {
    return RecordTraits::encode(buffer, record);
}

int ASN1T_BasicOCSPResponse_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record) {
    return RecordTraits::decode(buffer, record);
}

}  // namespace Mirvane::PKI::OCSP
