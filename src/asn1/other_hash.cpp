#include "asn1/other_hash.h"

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/ess_identifier_traits.h"
#include "asn1/optional_member.h"

namespace Mirvane::ASN1 {

class COtherHashImpl : public ChoiceOf<ChoiceValueTraitsT<CBlob, COtherHash::sha1Hash>,
                                       ChoiceValueTraitsT<COtherHashAlgAndValue, COtherHash::otherHash>> {};

COtherHashAlgAndValue::COtherHashAlgAndValue() = default;

COtherHashAlgAndValue::COtherHashAlgAndValue(CBlob const& value, CAlgorithmIdentifier const& alg)
    : hashAlgorithm_(alg), hashValue_(value) {}

COtherHashAlgAndValue::COtherHashAlgAndValue(COtherHashAlgAndValue const& other) = default;
COtherHashAlgAndValue::~COtherHashAlgAndValue() = default;

COtherHashAlgAndValue& COtherHashAlgAndValue::operator=(COtherHashAlgAndValue const& other) {
    if (this != &other) {
        COtherHashAlgAndValue copied(other);
        hashAlgorithm_.swap(copied.hashAlgorithm_);
        hashValue_.swap(copied.hashValue_);
    }
    return *this;
}

CBlob COtherHashAlgAndValue::encode() const {
    return asn1Encode<ASN1T_OtherHashAlgAndValue_traits>(*this);
}

void COtherHashAlgAndValue::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_OtherHashAlgAndValue_traits>(encoded, *this);
}

bool COtherHashAlgAndValue::operator==(COtherHashAlgAndValue const& other) const {
    return hashAlgorithm_ == other.hashAlgorithm_ && hashValue_ == other.hashValue_;
}

bool COtherHashAlgAndValue::compare_hashValue(COtherHashAlgAndValue const& other) const {
    return hashValue_ == other.hashValue_;
}

COtherHash::COtherHash() : impl_(std::make_unique<COtherHashImpl>()) {}

COtherHash::COtherHash(CBlob const& hash) : COtherHash() {
    put_sha1Hash(hash);
}

COtherHash::COtherHash(COtherHashAlgAndValue const& hash) : COtherHash() {
    put_otherHash(hash);
}

COtherHash::COtherHash(COtherHash const& other) : impl_(copyOfImpl(other.impl_)) {}
COtherHash::~COtherHash() = default;

COtherHash& COtherHash::operator=(COtherHash const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}

void COtherHash::clear() {
    impl_.reset();
}

unsigned int COtherHash::get_type() const {
    return impl_->type();
}

CBlob const* COtherHash::get_sha1Hash() const {
    return impl_->get<CBlob, sha1Hash>();
}

COtherHashAlgAndValue const* COtherHash::get_otherHash() const {
    return impl_->get<COtherHashAlgAndValue, otherHash>();
}

void COtherHash::put_sha1Hash(CBlob const& hash) {
    impl_->put<CBlob, sha1Hash>(hash);
}

void COtherHash::put_otherHash(COtherHashAlgAndValue const& hash) {
    impl_->put<COtherHashAlgAndValue, otherHash>(hash);
}

CBlob COtherHash::encode() const {
    return asn1Encode<ASN1T_OtherHash_traits>(*this);
}

void COtherHash::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_OtherHash_traits>(encoded, *this);
}

bool COtherHash::operator==(COtherHash const& other) const {
    return sameOptional(get_sha1Hash(), other.get_sha1Hash()) &&
           sameOptional(get_otherHash(), other.get_otherHash());
}

bool COtherHash::compare_hashValue(COtherHash const& other) const {
    if (get_type() != other.get_type()) return false;
    if (auto const* const hash = get_otherHash()) return hash->compare_hashValue(*other.get_otherHash());
    return sameOptional(get_sha1Hash(), other.get_sha1Hash());
}

}  // namespace Mirvane::ASN1
