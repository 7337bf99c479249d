#include "ocsp/crl_id_extensions.h"

#include <string>

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "ocsp/crl_id.h"

namespace Mirvane::PKI::OCSP {
namespace {

constexpr char kCrlId[] = "1.3.6.1.5.5.7.48.1.3";
constexpr char kHistoricalRequest[] = "1.2.643.2.2.47.5";

}  // namespace

CCrlIDExtension::CCrlIDExtension(char const* oid) : CExtValue(oid), impl_(std::make_unique<CCrlIDImpl>()) {}

CCrlIDExtension::CCrlIDExtension(char const* oid, CBlob const& encoded)
    : CExtValue(oid, encoded), impl_(std::make_unique<CCrlIDImpl>()) {
    impl_->decode(encoded);
}

CCrlIDExtension::CCrlIDExtension(CCrlIDExtension const& other)
    : CExtValue(other), impl_(ASN1::copyOfImpl(other.impl_)) {}
CCrlIDExtension::CCrlIDExtension(CCrlIDExtension&& other) = default;
CCrlIDExtension::~CCrlIDExtension() = default;

CCrlIDExtension& CCrlIDExtension::operator=(CCrlIDExtension const& other) {
    return *this = CCrlIDExtension(other);
}
CCrlIDExtension& CCrlIDExtension::operator=(CCrlIDExtension&& other) = default;

char const* CCrlIDExtension::get_crlUrl() const {
    return impl_->crlUrl ? impl_->crlUrl->c_str() : nullptr;
}

unsigned int const* CCrlIDExtension::get_crlNum() const {
    return impl_->crlNum.get();
}

CDateTime const* CCrlIDExtension::get_crlTime() const {
    return impl_->crlTime.get();
}

void CCrlIDExtension::put_crlUrl(char const* crlUrl) {
    // The new text is made before the old one goes: `crlUrl` may point into it.
    impl_->crlUrl = crlUrl ? std::make_unique<std::string>(crlUrl) : nullptr;
    encodeFields();
}

void CCrlIDExtension::put_crlNum(unsigned int const* crlNum) {
    ASN1::copy_to_auto_ptr(impl_->crlNum, crlNum);
    encodeFields();
}

void CCrlIDExtension::put_crlTime(CDateTime const* crlTime) {
    ASN1::copy_to_auto_ptr(impl_->crlTime, crlTime);
    encodeFields();
}

void CCrlIDExtension::endFields() {
    impl_.reset();
}

void CCrlIDExtension::encodeFields() {
    value() = impl_->encode();
}

CExtCrlID::CExtCrlID() : CCrlIDExtension(kCrlId) {}
CExtCrlID::CExtCrlID(CBlob const& encoded) : CCrlIDExtension(kCrlId, encoded) {}

void CExtCrlID::clear() {
    endFields();
}

CExtHistoricalRequest::CExtHistoricalRequest() : CCrlIDExtension(kHistoricalRequest) {}
CExtHistoricalRequest::CExtHistoricalRequest(CBlob const& encoded)
    : CCrlIDExtension(kHistoricalRequest, encoded) {}

}  // namespace Mirvane::PKI::OCSP
