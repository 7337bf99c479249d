#include "asn1/distribution_point.h"

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/distribution_point_traits.h"
#include "asn1/optional_member.h"

namespace Mirvane::ASN1 {

class CDistributionPointNameImpl : public ChoiceOf<ChoiceValueTraitsT<CGeneralNames, 1>> {};

class CDistributionPointImpl {
  public:
    CDistributionPointImpl() = default;
    CDistributionPointImpl(CDistributionPointImpl const& other) {
        copy_to_auto_ptr(distributionPoint, other.distributionPoint.get());
        copy_to_auto_ptr(reasons, other.reasons.get());
        copy_to_auto_ptr(cRLIssuer, other.cRLIssuer.get());
    }

    std::unique_ptr<CDistributionPointName> distributionPoint;
    std::unique_ptr<CReasonFlags> reasons;
    std::unique_ptr<CGeneralNames> cRLIssuer;
};

CDistributionPointName::CDistributionPointName() : impl_(std::make_unique<CDistributionPointNameImpl>()) {}

CDistributionPointName::CDistributionPointName(CGeneralNames const& names) : CDistributionPointName() {
    put_fullName(names);
}

CDistributionPointName::CDistributionPointName(CDistributionPointName const& other)
    : impl_(copyOfImpl(other.impl_)) {}
CDistributionPointName::CDistributionPointName(CDistributionPointName&& other) noexcept = default;

CDistributionPointName::~CDistributionPointName() {
    clear();
}

CDistributionPointName& CDistributionPointName::operator=(CDistributionPointName const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}
CDistributionPointName& CDistributionPointName::operator=(CDistributionPointName&& other) noexcept = default;

void CDistributionPointName::clear() {
    impl_.reset();
}

unsigned int CDistributionPointName::get_type() const {
    return impl_->type();
}

CGeneralNames const* CDistributionPointName::get_fullName() const {
    return impl_->get<CGeneralNames, fullName>();
}

void CDistributionPointName::put_fullName(CGeneralNames const& names) {
    impl_->put<CGeneralNames, fullName>(names);
}

CBlob CDistributionPointName::encode() const {
    return asn1Encode<ASN1T_DistributionPointName_traits>(*this);
}

void CDistributionPointName::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_DistributionPointName_traits>(encoded, *this);
}

bool CDistributionPointName::operator==(CDistributionPointName const& other) const {
    return get_type() == other.get_type() && sameOptional(get_fullName(), other.get_fullName());
}

CDistributionPoint::CDistributionPoint() : impl_(std::make_unique<CDistributionPointImpl>()) {}
CDistributionPoint::CDistributionPoint(CDistributionPoint const& other) : impl_(copyOfImpl(other.impl_)) {}
CDistributionPoint::CDistributionPoint(CDistributionPoint&& other) noexcept = default;

CDistributionPoint::~CDistributionPoint() {
    clear();
}

CDistributionPoint& CDistributionPoint::operator=(CDistributionPoint const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}
CDistributionPoint& CDistributionPoint::operator=(CDistributionPoint&& other) noexcept = default;

void CDistributionPoint::clear() {
    impl_.reset();
}

CDistributionPointName const* CDistributionPoint::get_distributionPoint() const {
    return impl_->distributionPoint.get();
}

CReasonFlags const* CDistributionPoint::get_reasons() const {
    return impl_->reasons.get();
}

CGeneralNames const* CDistributionPoint::get_cRLIssuer() const {
    return impl_->cRLIssuer.get();
}

void CDistributionPoint::put_distributionPoint(CDistributionPointName const* name) {
    copy_to_auto_ptr(impl_->distributionPoint, name);
}

void CDistributionPoint::put_reasons(CReasonFlags const* reasons) {
    copy_to_auto_ptr(impl_->reasons, reasons);
}

void CDistributionPoint::put_cRLIssuer(CGeneralNames const* issuer) {
    copy_to_auto_ptr(impl_->cRLIssuer, issuer);
}

CBlob CDistributionPoint::encode() const {
    return asn1Encode<ASN1T_DistributionPoint_traits>(*this);
}

void CDistributionPoint::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_DistributionPoint_traits>(encoded, *this);
}

bool CDistributionPoint::operator==(CDistributionPoint const& other) const {
    return sameOptional(get_cRLIssuer(), other.get_cRLIssuer()) &&
           sameOptional(get_distributionPoint(), other.get_distributionPoint()) &&
           sameOptional(get_reasons(), other.get_reasons());
}

}  // namespace Mirvane::ASN1
