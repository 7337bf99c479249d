#include "asn1/text_conversion.h"

#include "base/code_page_text.h"
#include "base/last_error.h"

namespace Mirvane::ASN1 {

std::string tostring(wchar_t const* text) {
    auto result = narrowed(text != nullptr ? text : L"");
    if (!result) failure::raiseLastError();
    return std::move(*result);
}

std::string tostring(unsigned short const* text) {
    return tostring(reinterpret_cast<wchar_t const*>(text));
}

std::wstring towstring(char const* text) {
    auto result = widened(text != nullptr ? text : "");
    if (!result) failure::raiseLastError();
    return std::move(*result);
}

std::string tostring(int value) {
    return std::to_string(value);
}

std::wstring towstring(int value) {
    return std::to_wstring(value);
}

}  // namespace Mirvane::ASN1
