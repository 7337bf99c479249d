#include "asn1/ess_identifiers.h"

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/ess_identifier_traits.h"
#include "asn1/optional_member.h"

namespace Mirvane::ASN1 {
namespace {

// An optional member that is copied with the object around it.
class OptionalIssuerSerial {
  public:
    OptionalIssuerSerial() = default;
    OptionalIssuerSerial(OptionalIssuerSerial const& other) { put(other.get()); }
    OptionalIssuerSerial& operator=(OptionalIssuerSerial const&) = delete;

    CIssuerSerial const* get() const { return value_.get(); }
    void put(CIssuerSerial const* value) { copy_to_auto_ptr(value_, value); }

    bool operator==(OptionalIssuerSerial const& other) const { return sameOptional(get(), other.get()); }

  private:
    std::unique_ptr<CIssuerSerial> value_;
};

}  // namespace

class CESSCertIDImpl {
  public:
    CBlob certHash;
    OptionalIssuerSerial issuerSerial;
};

class CESSCertIDv2Impl {
  public:
    CAlgorithmIdentifier hashAlgorithm{kDefaultHashAlgorithm};
    CBlob certHash;
    OptionalIssuerSerial issuerSerial;
};

class COtherCertIDImpl {
  public:
    COtherHash otherCertHash;
    OptionalIssuerSerial issuerSerial;
};

CESSCertID::CESSCertID() : impl_(std::make_unique<CESSCertIDImpl>()) {}

CESSCertID::CESSCertID(CBlob const& hash) : CESSCertID() {
    put_certHash(hash);
}

CESSCertID::CESSCertID(CESSCertID const& other) : impl_(copyOfImpl(other.impl_)) {}
CESSCertID::~CESSCertID() = default;

CESSCertID& CESSCertID::operator=(CESSCertID const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}

CBlob const& CESSCertID::get_certHash() const {
    return impl_->certHash;
}

CIssuerSerial const* CESSCertID::get_issuerSerial() const {
    return impl_->issuerSerial.get();
}

void CESSCertID::put_certHash(CBlob const& hash) {
    impl_->certHash = hash;
}

void CESSCertID::put_issuerSerial(CIssuerSerial const* issuerSerial) {
    impl_->issuerSerial.put(issuerSerial);
}

CBlob CESSCertID::encode() const {
    return asn1Encode<ASN1T_ESSCertID_traits>(*this);
}

void CESSCertID::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_ESSCertID_traits>(encoded, *this);
}

bool CESSCertID::operator==(CESSCertID const& other) const {
    return impl_->certHash == other.impl_->certHash && impl_->issuerSerial == other.impl_->issuerSerial;
}

CESSCertIDv2::CESSCertIDv2() : impl_(std::make_unique<CESSCertIDv2Impl>()) {}

CESSCertIDv2::CESSCertIDv2(CBlob const& hash) : CESSCertIDv2() {
    put_certHash(hash);
}

CESSCertIDv2::CESSCertIDv2(CBlob const& hash, CAlgorithmIdentifier const& alg) : CESSCertIDv2(hash) {
    put_hashAlgorithm(alg);
}

CESSCertIDv2::CESSCertIDv2(CESSCertIDv2 const& other) : impl_(copyOfImpl(other.impl_)) {}
CESSCertIDv2::~CESSCertIDv2() = default;

CESSCertIDv2& CESSCertIDv2::operator=(CESSCertIDv2 const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}

CAlgorithmIdentifier const& CESSCertIDv2::get_hashAlgorithm() const {
    return impl_->hashAlgorithm;
}

CBlob const& CESSCertIDv2::get_certHash() const {
    return impl_->certHash;
}

CIssuerSerial const* CESSCertIDv2::get_issuerSerial() const {
    return impl_->issuerSerial.get();
}

void CESSCertIDv2::put_hashAlgorithm(CAlgorithmIdentifier const& alg) {
    impl_->hashAlgorithm = alg;
}

void CESSCertIDv2::put_certHash(CBlob const& hash) {
    impl_->certHash = hash;
}

void CESSCertIDv2::put_issuerSerial(CIssuerSerial const* issuerSerial) {
    impl_->issuerSerial.put(issuerSerial);
}

CBlob CESSCertIDv2::encode() const {
    return asn1Encode<ASN1T_ESSCertIDv2_traits>(*this);
}

void CESSCertIDv2::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_ESSCertIDv2_traits>(encoded, *this);
}

bool CESSCertIDv2::operator==(CESSCertIDv2 const& other) const {
    return impl_->hashAlgorithm == other.impl_->hashAlgorithm && impl_->certHash == other.impl_->certHash &&
           impl_->issuerSerial == other.impl_->issuerSerial;
}

COtherCertID::COtherCertID() : impl_(std::make_unique<COtherCertIDImpl>()) {}

COtherCertID::COtherCertID(CBlob const& hash) : COtherCertID() {
    impl_->otherCertHash.put_sha1Hash(hash);
}

COtherCertID::COtherCertID(CBlob const& hash, CAlgorithmIdentifier const& alg) : COtherCertID() {
    impl_->otherCertHash.put_otherHash(COtherHashAlgAndValue(hash, alg));
}

COtherCertID::COtherCertID(COtherCertID const& other) : impl_(copyOfImpl(other.impl_)) {}
COtherCertID::~COtherCertID() = default;

COtherCertID& COtherCertID::operator=(COtherCertID const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}

COtherHash const& COtherCertID::get_otherCertHash() const {
    return impl_->otherCertHash;
}

CIssuerSerial const* COtherCertID::get_issuerSerial() const {
    return impl_->issuerSerial.get();
}

void COtherCertID::put_otherCertHash(COtherHash const& hash) {
    impl_->otherCertHash = hash;
}

void COtherCertID::put_issuerSerial(CIssuerSerial const* issuerSerial) {
    impl_->issuerSerial.put(issuerSerial);
}

CBlob COtherCertID::encode() const {
    return asn1Encode<ASN1T_OtherCertID_traits>(*this);
}

void COtherCertID::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_OtherCertID_traits>(encoded, *this);
}

bool COtherCertID::operator==(COtherCertID const& other) const {
    return impl_->otherCertHash == other.impl_->otherCertHash &&
           impl_->issuerSerial == other.impl_->issuerSerial;
}

bool COtherCertID::compare_noHashParam(COtherCertID const& other) const {
    return impl_->otherCertHash.compare_hashValue(other.impl_->otherCertHash) &&
           impl_->issuerSerial == other.impl_->issuerSerial;
}

}  // namespace Mirvane::ASN1
