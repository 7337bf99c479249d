#include "asn1/revocation_announcement.h"

#include <utility>

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/revocation_announcement_traits.h"

namespace Mirvane::ASN1 {

class CRevAnnContentImpl {
  public:
    CRevAnnContentImpl() = default;
    CRevAnnContentImpl(CRevAnnContentImpl const& other)
        : status(other.status),
          certId(other.certId),
          willBeRevokedAt(other.willBeRevokedAt),
          badSinceDate(other.badSinceDate) {
        copy_to_auto_ptr(crlDetails, other.crlDetails.get());
    }

    PKIStatusEnum status = accepted;
    CCertId certId;
    CDateTime willBeRevokedAt = CDateTime(0, 0);
    CDateTime badSinceDate = CDateTime(0, 0);
    std::unique_ptr<CExtensions> crlDetails;
};

CCertId::CCertId() = default;
CCertId::CCertId(CGeneralName const& issuer, CBigInteger const& serialNumber)
    : issuer_(issuer), serialNumber_(serialNumber) {}
CCertId::CCertId(CCertId const& other) = default;

CCertId& CCertId::operator=(CCertId const& other) {
    CCertId copied(other);
    issuer_ = std::move(copied.issuer_);
    serialNumber_ = std::move(copied.serialNumber_);
    return *this;
}

CRevAnnContent::CRevAnnContent() : impl_(std::make_unique<CRevAnnContentImpl>()) {}

CRevAnnContent::CRevAnnContent(PKIStatusEnum const& status, CCertId const& certId,
                               CDateTime const& willBeRevokedAt, CDateTime const& badSinceDate)
    : CRevAnnContent() {
    put_status(status);
    put_certId(certId);
    put_willBeRevokedAt(willBeRevokedAt);
    put_badSinceDate(badSinceDate);
}

CRevAnnContent::CRevAnnContent(CRevAnnContent const& other) : impl_(copyOfImpl(other.impl_)) {}
CRevAnnContent::~CRevAnnContent() = default;

CRevAnnContent& CRevAnnContent::operator=(CRevAnnContent const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}

PKIStatusEnum const& CRevAnnContent::get_status() const {
    return impl_->status;
}

CCertId const& CRevAnnContent::get_certId() const {
    return impl_->certId;
}

CDateTime const& CRevAnnContent::get_willBeRevokedAt() const {
    return impl_->willBeRevokedAt;
}

CDateTime const& CRevAnnContent::get_badSinceDate() const {
    return impl_->badSinceDate;
}

CExtensions const* CRevAnnContent::get_crlDetails() const {
    return impl_->crlDetails.get();
}

void CRevAnnContent::put_status(PKIStatusEnum const& status) {
    impl_->status = status;
}

void CRevAnnContent::put_certId(CCertId const& certId) {
    impl_->certId = certId;
}

void CRevAnnContent::put_willBeRevokedAt(CDateTime const& willBeRevokedAt) {
    impl_->willBeRevokedAt = willBeRevokedAt;
}

void CRevAnnContent::put_badSinceDate(CDateTime const& badSinceDate) {
    impl_->badSinceDate = badSinceDate;
}

void CRevAnnContent::put_crlDetails(CExtensions const* crlDetails) {
    copy_to_auto_ptr(impl_->crlDetails, crlDetails);
}

CBlob CRevAnnContent::encode() const {
    return asn1Encode<ASN1T_RevAnnContent_traits>(*this);
}

void CRevAnnContent::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_RevAnnContent_traits>(encoded, *this);
}

}  // namespace Mirvane::ASN1
