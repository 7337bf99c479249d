#include "asn1/signing_certificate_attributes.h"

#include <utility>

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/signing_certificate_traits.h"

namespace Mirvane::ASN1 {
namespace {

constexpr char kSigningCertificate[] = "1.2.840.113549.1.9.16.2.12";
constexpr char kSigningCertificateV2[] = "1.2.840.113549.1.9.16.2.47";
constexpr char kOtherSigningCertificate[] = "1.2.840.113549.1.9.16.2.19";

// What sets the attribute with a list of this type apart from the other two.
template <typename Certs>
struct Kind;

template <>
struct Kind<CESSCertIDList> {
    using Traits = ASN1T_SigningCertificate_traits;
    static constexpr bool putPoliciesEncodes = false;
};

template <>
struct Kind<CESSCertIDv2List> {
    using Traits = ASN1T_SigningCertificateV2_traits;
    static constexpr bool putPoliciesEncodes = false;
};

template <>
struct Kind<COtherCertIDList> {
    using Traits = ASN1T_OtherSigningCertificate_traits;
    static constexpr bool putPoliciesEncodes = true;  // meant to differ
};

}  // namespace

template <typename Certs>
struct SigningCertificateAttribute<Certs>::Impl {
    Impl() = default;
    Impl(Impl const& other) : certs(other.certs) { copy_to_auto_ptr(policies, other.policies.get()); }

    Certs certs;
    std::unique_ptr<CPolicyInformationList> policies;
};

template <typename Certs>
SigningCertificateAttribute<Certs>::SigningCertificateAttribute(char const* oid)
    : CAttrValue(oid), impl_(std::make_unique<Impl>()) {}

template <typename Certs>
SigningCertificateAttribute<Certs>::SigningCertificateAttribute(SigningCertificateAttribute const& other)
    : CAttrValue(other), impl_(copyOfImpl(other.impl_)) {}

template <typename Certs>
SigningCertificateAttribute<Certs>::~SigningCertificateAttribute() = default;

template <typename Certs>
SigningCertificateAttribute<Certs>& SigningCertificateAttribute<Certs>::operator=(
    SigningCertificateAttribute const& other) {
    if (this != &other) {
        SigningCertificateAttribute copied(other);
        CAttrValue::operator=(static_cast<CAttrValue&&>(copied));
        impl_.swap(copied.impl_);
    }
    return *this;
}

template <typename Certs>
Certs const& SigningCertificateAttribute<Certs>::get_certs() const {
    return impl_->certs;
}

template <typename Certs>
CPolicyInformationList const* SigningCertificateAttribute<Certs>::get_policies() const {
    return impl_->policies.get();
}

template <typename Certs>
void SigningCertificateAttribute<Certs>::put_certs(Certs const& certs) {
    impl_->certs = certs;
    encode();
}

template <typename Certs>
void SigningCertificateAttribute<Certs>::put_policies(CPolicyInformationList const* policies) {
    copy_to_auto_ptr(impl_->policies, policies);
    if constexpr (Kind<Certs>::putPoliciesEncodes) encode();
}

template <typename Certs>
void SigningCertificateAttribute<Certs>::encode() {
    value() = asn1Encode<typename Kind<Certs>::Traits>(*this);
}

template <typename Certs>
void SigningCertificateAttribute<Certs>::decode() {
    // Read into another object: the put_ operations would replace the blob while it is read.
    SigningCertificateAttribute read(get_oid());
    asn1Decode<typename Kind<Certs>::Traits>(get_value(), read);
    impl_.swap(read.impl_);
}

template class SigningCertificateAttribute<CESSCertIDList>;
template class SigningCertificateAttribute<CESSCertIDv2List>;
template class SigningCertificateAttribute<COtherCertIDList>;

CAttrSigningCertificate::CAttrSigningCertificate() : SigningCertificateAttribute(kSigningCertificate) {}

CAttrSigningCertificate::CAttrSigningCertificate(CBlob const& encoded) : CAttrSigningCertificate() {
    value() = encoded;
    decode();
}

CAttrSigningCertificate::CAttrSigningCertificate(CESSCertIDList const& certs) : CAttrSigningCertificate() {
    put_certs(certs);
}

CAttrSigningCertificateV2::CAttrSigningCertificateV2() : SigningCertificateAttribute(kSigningCertificateV2) {}

CAttrSigningCertificateV2::CAttrSigningCertificateV2(CBlob const& encoded) : CAttrSigningCertificateV2() {
    value() = encoded;
    decode();
}

CAttrSigningCertificateV2::CAttrSigningCertificateV2(CESSCertIDv2List const& certs)
    : CAttrSigningCertificateV2() {
    put_certs(certs);
}

CAttrOtherSigningCertificate::CAttrOtherSigningCertificate()
    : SigningCertificateAttribute(kOtherSigningCertificate) {}

CAttrOtherSigningCertificate::CAttrOtherSigningCertificate(CBlob const& encoded)
    : CAttrOtherSigningCertificate() {
    value() = encoded;
    decode();
}

CAttrOtherSigningCertificate::CAttrOtherSigningCertificate(COtherCertIDList const& certs)
    : CAttrOtherSigningCertificate() {
    put_certs(certs);
}

}  // namespace Mirvane::ASN1
