#include "ocsp/service_locator.h"

#include "asn1/access_description_traits.h"
#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/name_traits.h"
#include "asn1data/ocsp.h"

namespace Mirvane::PKI::OCSP {
namespace {

constexpr char kServiceLocator[] = "1.3.6.1.5.5.7.48.1.7";

using ServiceLocatorRecord =
    ASN1::RecordTraits<asn1data::ASN1T_ServiceLocator, asn1data::ASN1C_ServiceLocator,
                       asn1data::asn1Copy_ServiceLocator>;

}  // namespace

class CExtServiceLocatorImpl {
  public:
    CExtServiceLocatorImpl() = default;
    CExtServiceLocatorImpl(CExtServiceLocatorImpl const& other) : issuer(other.issuer) {
        ASN1::copy_to_auto_ptr(locator, other.locator.get());
    }

    CBlob issuer;
    std::unique_ptr<ASN1::CAuthorityInfoAccessSyntax> locator;
};

CExtServiceLocator::CExtServiceLocator()
    : CExtValue(kServiceLocator), impl_(std::make_unique<CExtServiceLocatorImpl>()) {}

CExtServiceLocator::CExtServiceLocator(CBlob const& encoded)
    : CExtValue(kServiceLocator, encoded), impl_(std::make_unique<CExtServiceLocatorImpl>()) {
    decode();
}

CExtServiceLocator::CExtServiceLocator(CExtServiceLocator const& other)
    : CExtValue(other), impl_(ASN1::copyOfImpl(other.impl_)) {}
CExtServiceLocator::CExtServiceLocator(CExtServiceLocator&& other) = default;
CExtServiceLocator::~CExtServiceLocator() = default;

CExtServiceLocator& CExtServiceLocator::operator=(CExtServiceLocator const& other) {
    return *this = CExtServiceLocator(other);
}
CExtServiceLocator& CExtServiceLocator::operator=(CExtServiceLocator&& other) = default;

CBlob const& CExtServiceLocator::get_issuer() const {
    return impl_->issuer;
}

ASN1::CAuthorityInfoAccessSyntax const* CExtServiceLocator::get_locator() const {
    return impl_->locator.get();
}

void CExtServiceLocator::put_issuer(CBlob const& issuer) {
    impl_->issuer = issuer;
    encode();
}

void CExtServiceLocator::put_locator(ASN1::CAuthorityInfoAccessSyntax const* locator) {
    ASN1::copy_to_auto_ptr(impl_->locator, locator);
    if (impl_->issuer.cbData() != 0) encode();  // without the issuer, which is mandatory, nothing encodes
}

void CExtServiceLocator::encode() {
    value() = ASN1::asn1Encode<ASN1T_ServiceLocator_traits>(*this);
}

void CExtServiceLocator::decode() {
    const CBlob encoded = get_value();  // the put_ operations replace the blob while it is read
    ASN1::asn1Decode<ASN1T_ServiceLocator_traits>(encoded, *this);
}

void ASN1T_ServiceLocator_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CExtServiceLocator const& value) {
    record.m = {};
    ASN1::ASN1T_Name_traits::set(ctxt, record.issuer, value.get_issuer());
    ASN1::CAuthorityInfoAccessSyntax const* const locator = value.get_locator();
    if (!locator || locator->empty()) return;
    record.m.locatorPresent = 1;
    ASN1::ASN1T_AuthorityInfoAccessSyntax_traits::set(ctxt, record.locator, *locator);
}

void ASN1T_ServiceLocator_traits::get(ASN1_T const& record, CExtServiceLocator& value) {
    value.put_locator(nullptr);
    CBlob issuer;
    ASN1::ASN1T_Name_traits::get(record.issuer, issuer);
    value.put_issuer(issuer);
    if (!record.m.locatorPresent) return;
    ASN1::CAuthorityInfoAccessSyntax locator;
    ASN1::ASN1T_AuthorityInfoAccessSyntax_traits::get(record.locator, locator);
    value.put_locator(&locator);
}

void ASN1T_ServiceLocator_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    ServiceLocatorRecord::copy(ctxt, source, target);
}

int ASN1T_ServiceLocator_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record) {
    return ServiceLocatorRecord::encode(buffer, record);
}

int ASN1T_ServiceLocator_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record) {
    return ServiceLocatorRecord::decode(buffer, record);
}

}  // namespace Mirvane::PKI::OCSP
