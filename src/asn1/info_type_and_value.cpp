#include "asn1/info_type_and_value.h"

#include <string_view>

#include "asn1/find_by_identifier.h"

namespace Mirvane::ASN1 {

CInfoTypeAndValue::CInfoTypeAndValue() = default;
CInfoTypeAndValue::CInfoTypeAndValue(char const* infoType) : infoType_(infoType) {}
CInfoTypeAndValue::CInfoTypeAndValue(char const* infoType, CBlob const& infoValue)
    : infoType_(infoType), infoValue_(infoValue) {}
CInfoTypeAndValue::CInfoTypeAndValue(CInfoTypeAndValue const& other) = default;
CInfoTypeAndValue::CInfoTypeAndValue(CInfoTypeAndValue&& other) = default;
CInfoTypeAndValue::~CInfoTypeAndValue() = default;

CInfoTypeAndValue& CInfoTypeAndValue::operator=(CInfoTypeAndValue const& other) {
    return *this = CInfoTypeAndValue(other);
}
CInfoTypeAndValue& CInfoTypeAndValue::operator=(CInfoTypeAndValue&& other) = default;

bool CInfoTypeAndValue::operator==(CInfoTypeAndValue const& other) const {
    return std::string_view(get_infoType()) == other.get_infoType() && infoValue_ == other.infoValue_;
}

CInfoTypeAndValueList::iterator CInfoTypeAndValueList::find(char const* infoType) {
    return findByIdentifier(*this, &CInfoTypeAndValue::get_infoType, infoType);
}

CInfoTypeAndValueList::const_iterator CInfoTypeAndValueList::find(char const* infoType) const {
    return findByIdentifier(*this, &CInfoTypeAndValue::get_infoType, infoType);
}

void CInfoTypeAndValueList::insert(CInfoTypeAndValue const& info) {
    putByIdentifier(*this, info.get_infoType(), info);
}

void CInfoTypeAndValueList::remove(char const* infoType) {
    eraseByIdentifier(*this, infoType);
}

}  // namespace Mirvane::ASN1
