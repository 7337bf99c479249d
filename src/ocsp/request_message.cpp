#include "ocsp/request_message.h"

#include "asn1/algorithm_identifier_traits.h"
#include "asn1/certificate_traits.h"
#include "asn1/choice.h"
#include "asn1/context_memory.h"
#include "asn1/extension_traits.h"
#include "asn1/general_name_traits.h"
#include "asn1/primitive_traits.h"
#include "asn1data/ocsp.h"
#include "ocsp/message_road.h"
#include "ocsp/message_signature.h"
#include "ocsp/message_version.h"

namespace Mirvane::PKI::OCSP {
namespace {

// Encodes the part that is signed of a record that holds a whole message.
class TbsControl : public asn1data::ASN1C_TBSRequest {
  public:
    TbsControl(ASN1MessageBufferIF& buffer, asn1data::ASN1T_OCSPRequest& record)
        : ASN1C_TBSRequest(buffer, record.tbsRequest) {}
};

void fillASN1T_Request(ASN1CTXT* ctxt, asn1data::ASN1T_Request& record, CSingleRequest const& request) {
    ASN1T_ReqCert_set(ctxt, record.reqCert, request.get_reqCert());
    ASN1::CExtensions const* extensions = request.get_singleRequestExtensions();
    if (!extensions || extensions->empty()) return;
    record.m.singleRequestExtensionsPresent = 1;
    ASN1::ASN1T_Extensions_traits::set(ctxt, record.singleRequestExtensions, *extensions);
}

CSingleRequest readASN1T_Request(asn1data::ASN1T_Request const& record) {
    CSingleRequest request(readASN1T_ReqCert(record.reqCert));
    if (record.m.singleRequestExtensionsPresent) {
        ASN1::CExtensions extensions;
        ASN1::ASN1T_Extensions_traits::get(record.singleRequestExtensions, extensions);
        request.put_singleRequestExtensions(&extensions);
    }
    return request;
}

void fillRequestorName(ASN1CTXT* ctxt, asn1data::ASN1T_GeneralName& record, CBlob const& directoryName) {
    ASN1::CGeneralName name;
    name.put_directoryName(directoryName);
    ASN1::ASN1T_GeneralName_traits::set(ctxt, record, name);
}

std::unique_ptr<CBlob> readRequestorName(asn1data::ASN1T_GeneralName const& record) {
    // The record tells, and not the value: that shows an iPAddress as a directory name too.
    if (record.t != asn1data::T_GeneralName_directoryName) failure::raise(failure::invalidArgument);
    ASN1::CGeneralName name;
    ASN1::ASN1T_GeneralName_traits::get(record, name);
    return std::make_unique<CBlob>(*name.get_directoryName());
}

}  // namespace

class CRequestMessage::Impl {
  public:
    Impl() = default;
    Impl(Impl const& other) : version(other.version), requestList(other.requestList) {
        ASN1::copy_to_auto_ptr(requestorName, other.requestorName.get());
        ASN1::copy_to_auto_ptr(requestExtensions, other.requestExtensions.get());
        ASN1::copy_to_auto_ptr(signatureAlgorithm, other.signatureAlgorithm.get());
        ASN1::copy_to_auto_ptr(signature, other.signature.get());
        ASN1::copy_to_auto_ptr(signatureCerts, other.signatureCerts.get());
    }

    void clear();
    void fillASN1T_OCSPRequest(ASN1CTXT* ctxt, asn1data::ASN1T_OCSPRequest& record) const;
    void readASN1T_OCSPRequest(asn1data::ASN1T_OCSPRequest const& record);
    CBlob tbsRequestEncode() const;
    void storeSignature(ASN1::CAlgorithmIdentifierEx const& algorithm, CBlob value, CBlobList const* certs);

    std::uint32_t version = 0;
    CSingleRequestList requestList;
    std::unique_ptr<CBlob> requestorName;
    std::unique_ptr<ASN1::CExtensions> requestExtensions;
    std::unique_ptr<ASN1::CAlgorithmIdentifierEx> signatureAlgorithm;
    std::unique_ptr<CBlob> signature;
    std::unique_ptr<CBlobList> signatureCerts;
    CBlob tbsBlob;  // the part that is signed, as received; empty if the message was not decoded

  private:
    void fillTbsRequest(ASN1CTXT* ctxt, asn1data::ASN1T_TBSRequest& record) const;
    void fillSignature(ASN1CTXT* ctxt, asn1data::ASN1T_OCSPSignature& record) const;
    void readTbsRequest(asn1data::ASN1T_TBSRequest const& record);
    void readSignature(asn1data::ASN1T_OCSPSignature const& record);
};

// Meant to keep entries, version and the received octets.
void CRequestMessage::Impl::clear() {
    requestorName.reset();
    requestExtensions.reset();
    signatureAlgorithm.reset();
    signature.reset();
    signatureCerts.reset();
}

void CRequestMessage::Impl::fillTbsRequest(ASN1CTXT* ctxt, asn1data::ASN1T_TBSRequest& record) const {
    if (version != 0) {
        record.m.versionPresent = 1;
        record.version = version;
    }
    for (CSingleRequest const& request : requestList) {
        auto* const entry = ASN1::newRecord<asn1data::ASN1T_Request>(ctxt);
        fillASN1T_Request(ctxt, *entry, request);
        ASN1::append(ctxt, record.requestList, entry);
    }
    if (requestorName) {
        record.m.requestorNamePresent = 1;
        fillRequestorName(ctxt, record.requestorName, *requestorName);
    }
    if (requestExtensions && !requestExtensions->empty()) {
        record.m.requestExtensionsPresent = 1;
        ASN1::ASN1T_Extensions_traits::set(ctxt, record.requestExtensions, *requestExtensions);
    }
}

void CRequestMessage::Impl::fillSignature(ASN1CTXT* ctxt, asn1data::ASN1T_OCSPSignature& record) const {
    ASN1::ASN1TDynBitStr_traits::set(ctxt, record.signature, *signature);
    ASN1::ASN1T_AlgorithmIdentifier_traits::set(ctxt, record.signatureAlgorithm, *signatureAlgorithm);
    if (!signatureCerts || signatureCerts->empty()) return;
    record.m.certsPresent = 1;
    ASN1::CertificateSequence_traits::set(ctxt, record.certs, *signatureCerts);
}

void CRequestMessage::Impl::fillASN1T_OCSPRequest(ASN1CTXT* ctxt, asn1data::ASN1T_OCSPRequest& record) const {
    fillTbsRequest(ctxt, record.tbsRequest);
    if (!signature || signature->cbData() == 0) return;
    if (!signatureAlgorithm) failure::raise(failure::incompleteSignature);
    record.m.optionalSignaturePresent = 1;
    fillSignature(ctxt, record.optionalSignature);
}

void CRequestMessage::Impl::readTbsRequest(asn1data::ASN1T_TBSRequest const& record) {
    version = record.m.versionPresent ? record.version : 0;
    // Meant to append to the entries of an earlier message.
    for (auto const* node = record.requestList.head; node != nullptr; node = node->next) {
        requestList.push_back(readASN1T_Request(*static_cast<asn1data::ASN1T_Request const*>(node->data)));
    }
    if (record.m.requestorNamePresent) requestorName = readRequestorName(record.requestorName);
    if (record.m.requestExtensionsPresent) {
        auto extensions = std::make_unique<ASN1::CExtensions>();
        ASN1::ASN1T_Extensions_traits::get(record.requestExtensions, *extensions);
        requestExtensions = std::move(extensions);
    }
}

void CRequestMessage::Impl::readSignature(asn1data::ASN1T_OCSPSignature const& record) {
    auto value = std::make_unique<CBlob>();
    ASN1::ASN1TDynBitStr_traits::get(record.signature, *value);
    signature = std::move(value);
    auto algorithm = std::make_unique<ASN1::CAlgorithmIdentifierEx>();
    ASN1::ASN1T_AlgorithmIdentifier_get(*algorithm, record.signatureAlgorithm);
    signatureAlgorithm = std::move(algorithm);
    if (!record.m.certsPresent) return;
    auto certificates = std::make_unique<CBlobList>();
    ASN1::CertificateSequence_traits::get(record.certs, *certificates);
    signatureCerts = std::move(certificates);
}

void CRequestMessage::Impl::readASN1T_OCSPRequest(asn1data::ASN1T_OCSPRequest const& record) {
    clear();
    readTbsRequest(record.tbsRequest);
    if (record.m.optionalSignaturePresent) readSignature(record.optionalSignature);
}

// The record is filled whole, so that what is wrong with the signature's part is told here too.
CBlob CRequestMessage::Impl::tbsRequestEncode() const {
    return road::encode<TbsControl, asn1data::ASN1T_OCSPRequest>(
        [this](ASN1CTXT* ctxt, asn1data::ASN1T_OCSPRequest& record) { fillASN1T_OCSPRequest(ctxt, record); });
}

// All copies are made before the first field changes: the arguments may be the message's own, and a failure
// leaves it as it was.
void CRequestMessage::Impl::storeSignature(ASN1::CAlgorithmIdentifierEx const& algorithm, CBlob value,
                                           CBlobList const* certs) {
    auto newAlgorithm = std::make_unique<ASN1::CAlgorithmIdentifierEx>(algorithm);
    auto newSignature = std::make_unique<CBlob>(std::move(value));
    if (certs) ASN1::copy_to_auto_ptr(signatureCerts, certs);
    signatureAlgorithm = std::move(newAlgorithm);
    signature = std::move(newSignature);
}

CRequestMessage::CRequestMessage() : impl_(std::make_unique<Impl>()) {}
CRequestMessage::CRequestMessage(CRequestMessage const& other) : impl_(ASN1::copyOfImpl(other.impl_)) {}
CRequestMessage::~CRequestMessage() = default;

CRequestMessage& CRequestMessage::operator=(CRequestMessage const& other) {
    if (this == &other) return *this;
    clear();
    impl_ = ASN1::copyOfImpl(other.impl_);
    return *this;
}

void CRequestMessage::clear() {
    impl_.reset();
}

CBlob CRequestMessage::encode() const {
    return road::encode<asn1data::ASN1C_OCSPRequest, asn1data::ASN1T_OCSPRequest>(
        [this](ASN1CTXT* ctxt, asn1data::ASN1T_OCSPRequest& record) {
            impl_->fillASN1T_OCSPRequest(ctxt, record);
        });
}

void CRequestMessage::decode(CBlob const& blob) {
    road::decode<asn1data::ASN1C_OCSPRequest, asn1data::ASN1T_OCSPRequest>(
        blob, failure::emptyMessage, [&](asn1data::ASN1T_OCSPRequest const& record) {
            // Octets of an earlier message must not stay beside a new signature if reading fails.
            impl_->tbsBlob = CBlob();
            // Cut out first: the blob may be one that the message holds until it is read.
            CBlob received = extractTbsBlob(blob);
            impl_->readASN1T_OCSPRequest(record);
            // Meant to come last: what was read stays.
            if (received.cbData() == 0) failure::raise(failure::asn1);
            impl_->tbsBlob = std::move(received);
        });
}

void CRequestMessage::sign(unsigned long long provider, unsigned int keySpecification,
                           ASN1::CAlgorithmIdentifierEx const& signatureAlgorithm,
                           CBlobList const* certificates) {
    const CBlob tbs = impl_->tbsRequestEncode();
    PCCRYPT_OID_INFO const known = CryptFindOIDInfo(
        CRYPT_OID_INFO_OID_KEY, signatureAlgorithm.get_algorithm(), CRYPT_SIGN_ALG_OID_GROUP_ID);
    if (!known) failure::raise(failure::unknownAlgorithm);
    TbsSigner signer(provider);
    impl_->storeSignature(signatureAlgorithm, signer.sign(known->Algid, keySpecification, tbs), certificates);
    signer.release();
}

bool CRequestMessage::verify(CBlob const& certificate) const {
    if (!impl_->signature || !impl_->signatureAlgorithm) failure::raise(failure::invalidArgument);
    const CBlob tbs = impl_->tbsBlob.cbData() != 0 ? impl_->tbsBlob : impl_->tbsRequestEncode();
    return verifyTbs(tbs, *impl_->signatureAlgorithm, *impl_->signature, certificate);
}

std::uint32_t CRequestMessage::get_version() const {
    return impl_->version;
}

CBlob const* CRequestMessage::get_requestorName() const {
    return impl_->requestorName.get();
}

CSingleRequestList const& CRequestMessage::get_requestList() const {
    return impl_->requestList;
}

ASN1::CExtensions const* CRequestMessage::get_requestExtensions() const {
    return impl_->requestExtensions.get();
}

ASN1::CAlgorithmIdentifierEx const* CRequestMessage::get_signatureAlgorithm() const {
    return impl_->signatureAlgorithm.get();
}

CBlob const* CRequestMessage::get_signature() const {
    return impl_->signature.get();
}

CBlobList const* CRequestMessage::get_signatureCerts() const {
    return impl_->signatureCerts.get();
}

void CRequestMessage::put_requestorName(CBlob const* name) {
    ASN1::copy_to_auto_ptr(impl_->requestorName, name);
}

void CRequestMessage::put_requestExtensions(ASN1::CExtensions const* extensions) {
    ASN1::copy_to_auto_ptr(impl_->requestExtensions, extensions);
}

void CRequestMessage::put_requestList(CSingleRequestList const& requests) {
    impl_->version = determineVersion(requests);
    impl_->requestList = requests;
}

}  // namespace Mirvane::PKI::OCSP
