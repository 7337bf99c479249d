#include "asn1/info_type_and_value.h"

#include <algorithm>
#include <string_view>

namespace Mirvane::ASN1 {
namespace {

// Finds in a list that is constant or not.
template <typename List>
auto findIn(List& list, char const* infoType) {
    const std::string_view wanted = infoType != nullptr ? infoType : "";
    return std::find_if(list.begin(), list.end(),
                        [wanted](CInfoTypeAndValue const& info) { return wanted == info.get_infoType(); });
}

}  // namespace

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
    return findIn(*this, infoType);
}

CInfoTypeAndValueList::const_iterator CInfoTypeAndValueList::find(char const* infoType) const {
    return findIn(*this, infoType);
}

void CInfoTypeAndValueList::insert(CInfoTypeAndValue const& info) {
    const auto found = find(info.get_infoType());
    if (found != end()) {
        *found = info;
    } else {
        push_back(info);
    }
}

void CInfoTypeAndValueList::remove(char const* infoType) {
    const auto found = find(infoType);
    if (found != end()) erase(found);
}

}  // namespace Mirvane::ASN1
