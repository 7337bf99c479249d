#include "base/code_page_text.h"

#include "platform/text.h"

namespace Mirvane {
namespace {

// `convert(buffer, capacity)` is one of the platform's conversions of a text with its terminator.
template <typename String, typename Convert>
std::optional<String> convertInTwoCalls(Convert convert) {
    const int size = convert(nullptr, 0);
    if (size <= 0) return std::nullopt;
    String result(static_cast<std::size_t>(size), 0);
    if (convert(result.data(), size) == 0) return std::nullopt;
    result.pop_back();  // the terminator
    return result;
}

}  // namespace

std::optional<std::string> narrowed(wchar_t const* text) {
    return convertInTwoCalls<std::string>([text](char* buffer, int capacity) {
        return WideCharToMultiByte(CP_ACP, 0, text, -1, buffer, capacity, nullptr, nullptr);
    });
}

std::optional<std::wstring> widened(char const* text) {
    return convertInTwoCalls<std::wstring>([text](wchar_t* buffer, int capacity) {
        return MultiByteToWideChar(CP_ACP, 0, text, -1, buffer, capacity);
    });
}

}  // namespace Mirvane
