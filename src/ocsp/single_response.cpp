#include "ocsp/single_response.h"

#include <optional>
#include <utility>

#include "asn1/bridge.h"
#include "asn1/choice.h"

namespace Mirvane::PKI::OCSP {

class CSingleResponse::Impl {
  public:
    Impl() = default;
    Impl(CReqCert certificate, CCertStatus status, CDateTime const& time)
        : reqCert(std::move(certificate)), certStatus(std::move(status)), thisUpdate(time) {}
    Impl(Impl const& other)
        : reqCert(other.reqCert),
          certStatus(other.certStatus),
          thisUpdate(other.thisUpdate),
          nextUpdate(other.nextUpdate) {
        ASN1::copy_to_auto_ptr(singleExtensions, other.singleExtensions.get());
    }

    CReqCert reqCert{CReqCert::certificate, CBlob()};
    CCertStatus certStatus;
    CDateTime thisUpdate{0, 0};
    std::optional<CDateTime> nextUpdate;
    std::unique_ptr<ASN1::CExtensions> singleExtensions;
};

CSingleResponse::CSingleResponse() : impl_(std::make_unique<Impl>()) {}
CSingleResponse::CSingleResponse(CReqCert const& reqCert, CCertStatus const& certStatus,
                                 CDateTime const& thisUpdate)
    : impl_(std::make_unique<Impl>(reqCert, certStatus, thisUpdate)) {}
CSingleResponse::CSingleResponse(CReqCert&& reqCert, CCertStatus&& certStatus, CDateTime const& thisUpdate)
    : impl_(std::make_unique<Impl>(std::move(reqCert), std::move(certStatus), thisUpdate)) {}
CSingleResponse::CSingleResponse(CSingleResponse const& other) : impl_(ASN1::copyOfImpl(other.impl_)) {}
CSingleResponse::CSingleResponse(CSingleResponse&& other) noexcept = default;
CSingleResponse::~CSingleResponse() = default;

CSingleResponse& CSingleResponse::operator=(CSingleResponse const& other) {
    ASN1::assignImpl(impl_, other.impl_);
    return *this;
}
CSingleResponse& CSingleResponse::operator=(CSingleResponse&& other) noexcept = default;

void CSingleResponse::clear() {
    impl_.reset();
}

CReqCert const& CSingleResponse::get_reqCert() const {
    return impl_->reqCert;
}

CCertStatus const& CSingleResponse::get_certStatus() const {
    return impl_->certStatus;
}

CDateTime const& CSingleResponse::get_thisUpdate() const {
    return impl_->thisUpdate;
}

CDateTime const* CSingleResponse::get_nextUpdate() const {
    return impl_->nextUpdate ? &*impl_->nextUpdate : nullptr;
}

ASN1::CExtensions const* CSingleResponse::get_singleExtensions() const {
    return impl_->singleExtensions.get();
}

void CSingleResponse::put_nextUpdate(CDateTime const* nextUpdate) {
    if (nextUpdate != nullptr) {
        impl_->nextUpdate = *nextUpdate;
    } else {
        impl_->nextUpdate.reset();
    }
}

void CSingleResponse::put_singleExtensions(ASN1::CExtensions const* singleExtensions) {
    ASN1::copy_to_auto_ptr(impl_->singleExtensions, singleExtensions);
}

CSingleResponseList::CSingleResponseList() = default;
CSingleResponseList::CSingleResponseList(CSingleResponseList const& other) = default;
CSingleResponseList::CSingleResponseList(CSingleResponseList&& other) = default;
CSingleResponseList::~CSingleResponseList() = default;
CSingleResponseList& CSingleResponseList::operator=(CSingleResponseList const& other) = default;
CSingleResponseList& CSingleResponseList::operator=(CSingleResponseList&& other) = default;

}  // namespace Mirvane::PKI::OCSP
