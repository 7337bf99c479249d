#include "asn1/attributes.h"

#include <algorithm>
#include <string>

#include "asn1/attribute_traits.h"
#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/find_by_identifier.h"

namespace Mirvane::ASN1 {

class CAttributeImpl {
  public:
    CAttrValueList values;
    std::string oid;
};

CAttribute::CAttribute() : impl_(std::make_unique<CAttributeImpl>()) {}

CAttribute::CAttribute(char const* oid) : CAttribute() {
    if (oid != nullptr) impl_->oid = oid;
}

CAttribute::CAttribute(CAttribute const& other) : impl_(copyOfImpl(other.impl_)) {}
CAttribute::~CAttribute() = default;

CAttribute& CAttribute::operator=(CAttribute const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}

char const* CAttribute::get_oid() const {
    return impl_->oid.c_str();
}

CAttribute::iterator CAttribute::begin() {
    return impl_->values.begin();
}

CAttribute::iterator CAttribute::end() {
    return impl_->values.end();
}

CAttribute::const_iterator CAttribute::begin() const {
    return impl_->values.cbegin();
}

CAttribute::const_iterator CAttribute::end() const {
    return impl_->values.cend();
}

unsigned long CAttribute::size() const {
    return impl_->values.size();
}

void CAttribute::add(CBlob const& value) {
    impl_->values.emplace_back(get_oid(), value);
}

void CAttribute::add(CAttrValue const& value) {
    impl_->values.push_back(value);
}

void CAttribute::erase(iterator position) {
    impl_->values.erase(position);
}

CBlob CAttribute::encode() const {
    return asn1Encode<ASN1T_Attribute_traits>(*this);
}

void CAttribute::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_Attribute_traits>(encoded, *this);
}

bool CAttribute::operator==(CAttribute const& other) const {
    return impl_->oid == other.impl_->oid && impl_->values == other.impl_->values;
}

CAttributes::iterator CAttributes::find(char const* oid) {
    return findByIdentifier(*this, &CAttribute::get_oid, oid);
}

CAttributes::const_iterator CAttributes::find(char const* oid) const {
    return findByIdentifier(*this, &CAttribute::get_oid, oid);
}

void CAttributes::erase(char const* oid) {
    eraseByIdentifier(*this, oid);
}

CBlob CAttributes::encode() const {
    return asn1Encode<ASN1T_Attributes_traits>(*this);
}

void CAttributes::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_Attributes_traits>(encoded, *this);
}

bool CAttributes::operator==(CAttributes const& other) const {
    return size() == other.size() && std::equal(begin(), end(), other.begin());
}

}  // namespace Mirvane::ASN1
