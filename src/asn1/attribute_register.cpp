#include "asn1/attribute_register.h"

#include <algorithm>
#include <cwchar>
#include <string_view>

#include "asn1/standard_attributes.h"
#include "asn1/text_conversion.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

CATAVRegister::CATAVRegister(char const* type, wchar_t const* name, StringType stringType,
                             unsigned long maxLength)
    : type(type != nullptr ? type : ""),
      name(name != nullptr ? name : L""),
      stringType(stringType),
      maxLength(maxLength) {
    registered_().push_back(*this);
}

CATAVRegister::CATAVRegister(StandardAttribute const& attribute)
    : type(attribute.type),
      name(attribute.name),
      stringType(attribute.stringType),
      maxLength(attribute.maxLength) {}

// Made on first use and never destroyed, so that static objects of other files find it at any time.
std::list<CATAVRegister>& CATAVRegister::registered_() {
    static std::list<CATAVRegister>& entries = *[] {
        auto* const standard = new std::list<CATAVRegister>;
        for (StandardAttribute const* attribute : standardAttributes)
            standard->push_back(CATAVRegister(*attribute));
        return standard;
    }();
    return entries;
}

CATAVRegister::const_iterator CATAVRegister::find(char const* oid) {
    const std::string_view wanted = oid != nullptr ? oid : "";
    return std::find_if(registered_().cbegin(), registered_().cend(),
                        [wanted](CATAVRegister const& entry) { return entry.type == wanted; });
}

CATAVRegister::const_iterator CATAVRegister::find(wchar_t const* name) {
    const std::wstring_view wanted = name != nullptr ? name : L"";
    return std::find_if(registered_().cbegin(), registered_().cend(),
                        [wanted](CATAVRegister const& entry) { return entry.name == wanted; });
}

CATAVRegister::const_iterator CATAVRegister::end() {
    return registered_().cend();
}

CWStringProxy CATAVRegister::typeToStr(char const* oid) {
    const auto entry = find(oid);
    return entry != end() ? entry->name.c_str() : towstring(oid).c_str();
}

CStringProxy CATAVRegister::typeFromStr(wchar_t const* text) {
    const auto entry = find(text);
    return entry != end() ? entry->type.c_str() : tostring(text).c_str();
}

CWStringProxy CATAVRegister::valueToStr(char const* oid, CBlob const& value) {
    if (find(oid) != end()) return decodeCharString(value);
    return (L'#' + towstring(value.writeToHexString(0).c_str())).c_str();
}

CBlob CATAVRegister::valueFromStr(char const* oid, wchar_t const* text, StringType stringType) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    const auto entry = find(oid);
    if (entry == end()) {
        CBlob value;
        // Whatever stands in the place of the "#" is passed over unseen, and an empty text is
        // std::out_of_range: both are meant.
        value.readFromHexString(tostring(std::wstring(text).substr(1).c_str()).c_str());
        return value;
    }
    if (std::wcslen(text) > entry->maxLength) failure::raise(failure::invalidArgument);
    return encodeCharString(text, stringType != StringTypeDefault ? stringType : entry->stringType);
}

CAttributeTypeAndValue CATAVRegister::makeATAV(wchar_t const* type, wchar_t const* value,
                                               StringType stringType) {
    const CStringProxy oid = typeFromStr(type);
    return CAttributeTypeAndValue(oid.c_str(), valueFromStr(oid.c_str(), value, stringType));
}

CAttributeTypeAndValue CATAVRegister::makeATAV(wchar_t const* text, StringType stringType) {
    wchar_t const* const separator = text != nullptr ? std::wcschr(text, L'=') : nullptr;
    if (separator == nullptr) failure::raise(failure::invalidArgument);
    return makeATAV(std::wstring(text, separator).c_str(), separator + 1, stringType);
}

}  // namespace Mirvane::ASN1
