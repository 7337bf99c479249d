#include "common/printable.h"

#include <fmt/format.h>

#include <cstddef>

namespace tools {
namespace {

constexpr char32_t kNoPoint = 0;

// The character of two or three octets at the front; only these lengths have some to escape.
char32_t characterAt(std::string_view text) {
    const auto octet = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    if ((octet(0) & 0xE0) == 0xC0) return (octet(0) & 0x1F) << 6 | (octet(1) & 0x3F);
    if ((octet(0) & 0xF0) == 0xE0)
        return (octet(0) & 0x0F) << 12 | (octet(1) & 0x3F) << 6 | (octet(2) & 0x3F);
    return kNoPoint;
}

// Controls, marks of direction, separators of lines.
bool isSteering(char32_t point) {
    return (point >= 0x80 && point < 0xA0) || point == 0x200E || point == 0x200F ||
           (point >= 0x2028 && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069);
}

}  // namespace

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto octet = static_cast<unsigned char>(text[i]);
        const char32_t point = characterAt(text.substr(i));
        if (octet < 0x20 || octet == 0x7F) {
            result += fmt::format("\\x{:02X}", octet);
        } else if (isSteering(point)) {
            result += fmt::format("\\u{{{:X}}}", static_cast<unsigned>(point));
            i += point < 0x800 ? 1 : 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace tools
