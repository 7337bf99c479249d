#include "asn1/general_name.h"

#include <string>

#include "asn1/bridge.h"
#include "asn1/choice.h"
#include "asn1/general_name_traits.h"
#include "asn1/name.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

class CGeneralNameImpl
    : public ChoiceOf<ChoiceValueTraitsT<std::wstring, CGeneralName::rfc822Name>,
                      ChoiceValueTraitsT<std::wstring, CGeneralName::dNSName>,
                      ChoiceValueTraitsT<CBlob, CGeneralName::directoryName>,
                      ChoiceValueTraitsT<std::wstring, CGeneralName::uniformResourceIdentifier>,
                      ChoiceValueTraitsT<CBlob, CGeneralName::iPAddress>,
                      ChoiceValueTraitsT<std::wstring, CGeneralName::registeredID>> {};

namespace {

template <unsigned int N>
wchar_t const* getText(CGeneralNameImpl const& impl) {
    auto const* const text = impl.get<std::wstring, N>();
    return text != nullptr ? text->c_str() : nullptr;
}

template <unsigned int N>
void putText(CGeneralNameImpl& impl, wchar_t const* text) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    impl.put<std::wstring, N>(text);
}

// No more than the first character is compared, which is meant.
bool sameInitial(wchar_t const* left, wchar_t const* right) {
    return left != nullptr && right != nullptr ? *left == *right : left == right;
}

bool sameBytes(CBlob const* left, CBlob const* right) {
    return left != nullptr && right != nullptr ? *left == *right : left == right;
}

// No more than the first character is shown, which is meant.
std::wstring labelled(wchar_t const* label, wchar_t const* text) {
    return label + std::wstring(text, *text != 0 ? 1 : 0);
}

std::wstring directoryNameText(CBlob const& encoded) {
    CName name;
    name.decode(encoded);
    return name.toString().c_str();
}

std::wstring textOf(CGeneralName const& name) {
    switch (name.get_type()) {
        case CGeneralName::rfc822Name:
            return labelled(L"rfc822Name: ", name.get_rfc822Name());
        case CGeneralName::dNSName:
            return labelled(L"dNSName: ", name.get_dNSName());
        case CGeneralName::directoryName:
            return L"directoryName: " + directoryNameText(*name.get_directoryName());
        case CGeneralName::uniformResourceIdentifier:
            return labelled(L"uniformResourceIdentifier: ", name.get_uniformResourceIdentifier());
        case CGeneralName::iPAddress:
            return L"iPAddress: (to string is not implemented)";
        case CGeneralName::registeredID:
            return labelled(L"registeredID: ", name.get_registeredID());
        default:
            return L"";
    }
}

}  // namespace

CGeneralName::CGeneralName() : impl_(std::make_unique<CGeneralNameImpl>()) {}
CGeneralName::CGeneralName(CGeneralName const& other) : impl_(copyOfImpl(other.impl_)) {}
CGeneralName::CGeneralName(CGeneralName&& other) noexcept = default;
CGeneralName::~CGeneralName() = default;

CGeneralName& CGeneralName::operator=(CGeneralName const& other) {
    assignImpl(impl_, other.impl_);
    return *this;
}
CGeneralName& CGeneralName::operator=(CGeneralName&& other) noexcept = default;

void CGeneralName::clear() {
    impl_.reset();
}

unsigned int CGeneralName::get_type() const {
    return impl_->type();
}

wchar_t const* CGeneralName::get_rfc822Name() const {
    return getText<rfc822Name>(*impl_);
}

wchar_t const* CGeneralName::get_dNSName() const {
    return getText<dNSName>(*impl_);
}

wchar_t const* CGeneralName::get_uniformResourceIdentifier() const {
    return getText<uniformResourceIdentifier>(*impl_);
}

wchar_t const* CGeneralName::get_registeredID() const {
    return getText<registeredID>(*impl_);
}

CBlob const* CGeneralName::get_directoryName() const {
    return impl_->get<CBlob, directoryName>();
}

CBlob const* CGeneralName::get_iPAddress() const {
    return impl_->get<CBlob, iPAddress>();
}

void CGeneralName::put_rfc822Name(wchar_t const* text) {
    putText<rfc822Name>(*impl_, text);
}

void CGeneralName::put_dNSName(wchar_t const* text) {
    putText<dNSName>(*impl_, text);
}

void CGeneralName::put_uniformResourceIdentifier(wchar_t const* text) {
    putText<uniformResourceIdentifier>(*impl_, text);
}

void CGeneralName::put_registeredID(wchar_t const* text) {
    putText<registeredID>(*impl_, text);
}

void CGeneralName::put_directoryName(CBlob const& name) {
    impl_->put<CBlob, directoryName>(name);
}

void CGeneralName::put_iPAddress(CBlob const& address) {
    impl_->put<CBlob, iPAddress>(address);
}

CWStringProxy CGeneralName::toString() const {
    return textOf(*this).c_str();
}

CBlob CGeneralName::encode() const {
    return asn1Encode<ASN1T_GeneralName_traits>(*this);
}

void CGeneralName::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_GeneralName_traits>(encoded, *this);
}

bool CGeneralName::operator==(CGeneralName const& other) const {
    return get_type() == other.get_type() && sameBytes(get_directoryName(), other.get_directoryName()) &&
           sameInitial(get_dNSName(), other.get_dNSName()) &&
           sameBytes(get_iPAddress(), other.get_iPAddress()) &&
           sameInitial(get_registeredID(), other.get_registeredID()) &&
           sameInitial(get_rfc822Name(), other.get_rfc822Name()) &&
           sameInitial(get_uniformResourceIdentifier(), other.get_uniformResourceIdentifier());
}

}  // namespace Mirvane::ASN1
