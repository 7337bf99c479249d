#include "ocsp/request_certificate.h"

#include <utility>

#include "asn1/bridge.h"
#include "asn1/context_memory.h"
#include "asn1/record_traits.h"
#include "asn1data/ocsp.h"
#include "asn1data/x509_matching.h"

namespace Mirvane::PKI::OCSP {

// The choice is the dynamic type; what it does not hold answers with null.
class CReqCert::Impl {
  public:
    virtual ~Impl() = default;
    virtual CCertID const* get_certID() const { return nullptr; }
    virtual CBlob const* get_fullCert() const { return nullptr; }
    virtual fullCertificateType const* get_fullCertType() const { return nullptr; }
    virtual CCertIdWithSignature const* get_certIdWithSignature() const { return nullptr; }
    virtual std::unique_ptr<Impl> clone() const = 0;
};

class MIRVANE_HIDDEN CReqCert::Impl_CertID final : public Impl {
  public:
    Impl_CertID() = default;
    explicit Impl_CertID(CCertID const& certID) : certID_(certID) {}
    CCertID& certID() { return certID_; }
    CCertID const* get_certID() const override { return &certID_; }
    std::unique_ptr<Impl> clone() const override { return std::make_unique<Impl_CertID>(*this); }

  private:
    CCertID certID_;
};

class MIRVANE_HIDDEN CReqCert::Impl_FullCertificate final : public Impl {
  public:
    Impl_FullCertificate(fullCertificateType type, CBlob const& fullCert)
        : fullCert_(fullCert), type_(type) {}
    CBlob const* get_fullCert() const override { return &fullCert_; }
    fullCertificateType const* get_fullCertType() const override { return &type_; }
    std::unique_ptr<Impl> clone() const override { return std::make_unique<Impl_FullCertificate>(*this); }

  private:
    CBlob fullCert_;
    fullCertificateType type_;
};

class MIRVANE_HIDDEN CReqCert::Impl_CertIdWithSignature final : public Impl {
  public:
    explicit Impl_CertIdWithSignature(CCertIdWithSignature const& identifier) : identifier_(identifier) {}
    CCertIdWithSignature const* get_certIdWithSignature() const override { return &identifier_; }
    std::unique_ptr<Impl> clone() const override { return std::make_unique<Impl_CertIdWithSignature>(*this); }

  private:
    CCertIdWithSignature identifier_;
};

CReqCert::CReqCert() : CReqCert(CCertID()) {}
CReqCert::CReqCert(CCertID const& certID) : impl_(std::make_unique<Impl_CertID>(certID)) {}
CReqCert::CReqCert(fullCertificateType type, CBlob const& fullCert)
    : impl_(std::make_unique<Impl_FullCertificate>(type, fullCert)) {}
CReqCert::CReqCert(CCertIdWithSignature const& certIdWithSignature)
    : impl_(std::make_unique<Impl_CertIdWithSignature>(certIdWithSignature)) {}
CReqCert::CReqCert(std::unique_ptr<Impl> impl) noexcept : impl_(std::move(impl)) {}
CReqCert::CReqCert(CReqCert const& other) : impl_(other.impl_ ? other.impl_->clone() : nullptr) {}
CReqCert::CReqCert(CReqCert&& other) noexcept = default;
CReqCert::~CReqCert() = default;

CReqCert& CReqCert::operator=(CReqCert const& other) {
    if (impl_ == other.impl_) return *this;
    clear();
    if (other.impl_) impl_ = other.impl_->clone();
    return *this;
}
CReqCert& CReqCert::operator=(CReqCert&& other) noexcept = default;

void CReqCert::clear() {
    impl_.reset();
}

CCertID const* CReqCert::get_certID() const {
    return impl_->get_certID();
}

CBlob const* CReqCert::get_fullCert() const {
    return impl_->get_fullCert();
}

CReqCert::fullCertificateType const* CReqCert::get_fullCertType() const {
    return impl_->get_fullCertType();
}

CCertIdWithSignature const* CReqCert::get_certIdWithSignature() const {
    return impl_->get_certIdWithSignature();
}

// The former choice goes last, since the argument may be a part of it.

void CReqCert::put_certID(CCertID const& certID) {
    const std::unique_ptr<Impl> former = std::move(impl_);
    impl_ = std::make_unique<Impl_CertID>(certID);
}

void CReqCert::put_fullCert(fullCertificateType type, CBlob const& fullCert) {
    const std::unique_ptr<Impl> former = std::move(impl_);
    impl_ = std::make_unique<Impl_FullCertificate>(type, fullCert);
}

void CReqCert::put_certIdWithSignature(CCertIdWithSignature const& certIdWithSignature) {
    const std::unique_ptr<Impl> former = std::move(impl_);
    impl_ = std::make_unique<Impl_CertIdWithSignature>(certIdWithSignature);
}

void ASN1T_ReqCert_set(ASN1CTXT* ctxt, asn1data::ASN1T_ReqCert& record, CReqCert const& value) {
    if (CCertID const* const certID = value.get_certID()) {
        record.t = asn1data::T_ReqCert_certID;
        record.u.certID = ASN1::newRecord<asn1data::ASN1T_CertID>(ctxt);
        ASN1T_CertID_traits::set(ctxt, *record.u.certID, *certID);
    } else if (auto const* const type = value.get_fullCertType()) {
        record.t = asn1data::T_ReqCert_fullCert;
        record.u.fullCert = ASN1::newRecord<asn1data::ASN1T_FullCertificate>(ctxt);
        ASN1T_FullCertificate_set(ctxt, *record.u.fullCert, *type, *value.get_fullCert());
    } else if (CCertIdWithSignature const* const identifier = value.get_certIdWithSignature()) {
        record.t = asn1data::T_ReqCert_certIdWithSignature;
        record.u.certIdWithSignature = ASN1::newRecord<asn1data::ASN1T_CertIdWithSignature>(ctxt);
        ASN1T_CertIdWithSignature_set(ctxt, *record.u.certIdWithSignature, *identifier);
    }
}

CReqCert readASN1T_ReqCert(asn1data::ASN1T_ReqCert const& record) {
    switch (record.t) {
        case asn1data::T_ReqCert_certID: {
            auto identifier = std::make_unique<CReqCert::Impl_CertID>();
            ASN1T_CertID_traits::get(*record.u.certID, identifier->certID());
            return CReqCert(std::move(identifier));
        }
        case asn1data::T_ReqCert_fullCert: {
            auto type = CReqCert::certificate;
            CBlob fullCert;
            ASN1T_FullCertificate_get(*record.u.fullCert, type, fullCert);
            return {type, fullCert};
        }
        case asn1data::T_ReqCert_certIdWithSignature: {
            CCertIdWithSignature identifier;
            ASN1T_CertIdWithSignature_get(*record.u.certIdWithSignature, identifier);
            return identifier;
        }
        default:
            return {CReqCert::certificate, CBlob()};
    }
}

void ASN1T_ReqCert_get(asn1data::ASN1T_ReqCert const& record, CReqCert& value) {
    if (record.t >= asn1data::T_ReqCert_certID && record.t <= asn1data::T_ReqCert_certIdWithSignature)
        value = readASN1T_ReqCert(record);
}

namespace {

using CertificateRecord = ASN1::RecordTraits<asn1data::ASN1T_Certificate, asn1data::ASN1C_Certificate,
                                             asn1data::asn1Copy_Certificate>;
using AttributeCertificateRecord =
    ASN1::RecordTraits<asn1data::ASN1T_AttributeCertificate, asn1data::ASN1C_AttributeCertificate,
                       asn1data::asn1Copy_AttributeCertificate>;

// A record in memory of the context, filled from the bytes.
template <typename Traits>
typename Traits::ASN1_T* decoded(ASN1CTXT* ctxt, CBlob const& encoded) {
    auto* const record = ASN1::newRecord<typename Traits::ASN1_T>(ctxt);
    ASN1::asn1DecodeT<Traits>(encoded, ctxt, *record);
    return record;
}

}  // namespace

void ASN1T_FullCertificate_set(ASN1CTXT* ctxt, asn1data::ASN1T_FullCertificate& record,
                               CReqCert::fullCertificateType const& type, CBlob const& fullCert) {
    if (type == CReqCert::certificate) {
        record.u.certificate = decoded<CertificateRecord>(ctxt, fullCert);
        record.t = asn1data::T_FullCertificate_certificate;
    } else if (type == CReqCert::attributeCertificate) {
        record.u.attributeCertificate = decoded<AttributeCertificateRecord>(ctxt, fullCert);
        record.t = asn1data::T_FullCertificate_attributeCertificate;
    }
}

void ASN1T_FullCertificate_get(asn1data::ASN1T_FullCertificate const& record,
                               CReqCert::fullCertificateType& type, CBlob& fullCert) {
    if (record.t == asn1data::T_FullCertificate_attributeCertificate) {
        type = CReqCert::attributeCertificate;
        fullCert = ASN1::asn1EncodeT<AttributeCertificateRecord>(*record.u.attributeCertificate);
    } else if (record.t == asn1data::T_FullCertificate_certificate) {
        type = CReqCert::certificate;
        fullCert = ASN1::asn1EncodeT<CertificateRecord>(*record.u.certificate);
    } else {
        failure::raise(failure::asn1);
    }
}

}  // namespace Mirvane::PKI::OCSP
