#include "ocsp/certificate_status.h"

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/context_memory.h"
#include "asn1/record_traits.h"
#include "asn1/time_traits.h"
#include "asn1data/ocsp.h"

namespace Mirvane::PKI::OCSP {
namespace {

enum Type : std::uint32_t { good = 0, revoked = 1, unknown = 2 };

using CertStatusRecord =
    ASN1::RecordTraits<asn1data::ASN1T_CertStatus, asn1data::ASN1C_CertStatus, asn1data::asn1Copy_CertStatus>;

}  // namespace

class CCertStatus::Impl {
  public:
    Impl() = default;
    Impl(Impl const& other) : type(other.type), revocationTime(other.revocationTime) {
        ASN1::copy_to_auto_ptr(revocationReason, other.revocationReason.get());
    }

    std::uint32_t type = unknown;
    CDateTime revocationTime{0, 0};
    std::unique_ptr<ASN1::CrlReason> revocationReason;
};

CCertStatus::CCertStatus() : impl_(std::make_unique<Impl>()) {}
CCertStatus::CCertStatus(CDateTime const& revocationTime, ASN1::CrlReason const* revocationReason)
    : CCertStatus() {
    put_revoked(revocationTime, revocationReason);
}
CCertStatus::CCertStatus(CCertStatus const& other) : impl_(ASN1::copyOfImpl(other.impl_)) {}
CCertStatus::CCertStatus(CCertStatus&& other) noexcept = default;
CCertStatus::~CCertStatus() = default;

CCertStatus& CCertStatus::operator=(CCertStatus const& other) {
    ASN1::assignImpl(impl_, other.impl_);
    return *this;
}
CCertStatus& CCertStatus::operator=(CCertStatus&& other) noexcept = default;

void CCertStatus::clear() {
    impl_.reset();
}

bool CCertStatus::isGood() const {
    return impl_->type == good;
}

bool CCertStatus::isRevoked() const {
    return impl_->type == revoked;
}

bool CCertStatus::isUnknown() const {
    return impl_->type == unknown;
}

std::uint32_t CCertStatus::get_type() const {
    return impl_->type;
}

CDateTime const* CCertStatus::get_revocationTime() const {
    return isRevoked() ? &impl_->revocationTime : nullptr;
}

ASN1::CrlReason const* CCertStatus::get_revocationReason() const {
    return isRevoked() ? impl_->revocationReason.get() : nullptr;
}

void CCertStatus::put_good() {
    impl_->type = good;
}

void CCertStatus::put_unknown() {
    impl_->type = unknown;
}

void CCertStatus::put_revoked(CDateTime const& revocationTime, ASN1::CrlReason const* revocationReason) {
    ASN1::copy_to_auto_ptr(impl_->revocationReason, revocationReason);  // all that may fail
    impl_->revocationTime = revocationTime;
    impl_->type = revoked;
}

void ASN1T_CertStatus_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CCertStatus const& value) {
    if (value.isRevoked()) {
        record.t = asn1data::T_CertStatus_revoked;
        auto* const info = record.u.revoked = ASN1::newRecord<asn1data::ASN1T_RevokedInfo>(ctxt);
        info->revocationTime = ASN1::DateToASN1GeneralizedTime(ctxt, *value.get_revocationTime(), true);
        if (ASN1::CrlReason const* const reason = value.get_revocationReason()) {
            info->m.revocationReasonPresent = 1;
            info->revocationReason = *reason;
        }
    } else if (value.isGood()) {
        record.t = asn1data::T_CertStatus_good;
    } else {
        record.t = asn1data::T_CertStatus_unknown;
    }
}

void ASN1T_CertStatus_traits::get(ASN1_T const& record, CCertStatus& value) {
    if (record.t == asn1data::T_CertStatus_good) {
        value.put_good();
    } else if (record.t == asn1data::T_CertStatus_revoked) {
        const auto reason = static_cast<ASN1::CrlReason>(record.u.revoked->revocationReason);
        value.put_revoked(CDateTime(record.u.revoked->revocationTime),
                          record.u.revoked->m.revocationReasonPresent ? &reason : nullptr);
    } else if (record.t == asn1data::T_CertStatus_unknown) {
        value.put_unknown();
    }
}

void ASN1T_CertStatus_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    CertStatusRecord::copy(ctxt, source, target);
}

}  // namespace Mirvane::PKI::OCSP
