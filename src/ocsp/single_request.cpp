#include "ocsp/single_request.h"

#include "asn1/bridge.h"
#include "asn1/choice.h"

namespace Mirvane::PKI::OCSP {

class CSingleRequest::Impl {
  public:
    explicit Impl(CReqCert const& certificate) : reqCert(certificate) {}
    Impl(Impl const& other) : reqCert(other.reqCert) {
        ASN1::copy_to_auto_ptr(singleRequestExtensions, other.singleRequestExtensions.get());
    }

    CReqCert reqCert;
    std::unique_ptr<ASN1::CExtensions> singleRequestExtensions;
};

CSingleRequest::CSingleRequest() : CSingleRequest(CReqCert()) {}
CSingleRequest::CSingleRequest(CReqCert const& reqCert) : impl_(std::make_unique<Impl>(reqCert)) {}
CSingleRequest::CSingleRequest(CSingleRequest const& other) : impl_(ASN1::copyOfImpl(other.impl_)) {}
CSingleRequest::CSingleRequest(CSingleRequest&& other) noexcept = default;
CSingleRequest::~CSingleRequest() = default;

CSingleRequest& CSingleRequest::operator=(CSingleRequest const& other) {
    ASN1::assignImpl(impl_, other.impl_);
    return *this;
}

CSingleRequest& CSingleRequest::operator=(CSingleRequest&& other) noexcept = default;

void CSingleRequest::clear() {
    impl_.reset();
}

CReqCert const& CSingleRequest::get_reqCert() const {
    return impl_->reqCert;
}

ASN1::CExtensions const* CSingleRequest::get_singleRequestExtensions() const {
    return impl_->singleRequestExtensions.get();
}

void CSingleRequest::put_singleRequestExtensions(ASN1::CExtensions const* singleRequestExtensions) {
    ASN1::copy_to_auto_ptr(impl_->singleRequestExtensions, singleRequestExtensions);
}

CSingleRequestList::CSingleRequestList() = default;
CSingleRequestList::CSingleRequestList(CSingleRequestList const& other) = default;
CSingleRequestList::CSingleRequestList(CSingleRequestList&& other) = default;
CSingleRequestList::~CSingleRequestList() = default;
CSingleRequestList& CSingleRequestList::operator=(CSingleRequestList const& other) = default;
CSingleRequestList& CSingleRequestList::operator=(CSingleRequestList&& other) = default;

}  // namespace Mirvane::PKI::OCSP
