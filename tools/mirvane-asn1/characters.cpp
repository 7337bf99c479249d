#include "characters.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace tools {
namespace {

bool isCharacter(char32_t point) {
    return point < 0xD800 || (point >= 0xE000 && point < kBadOctet);
}

struct Range {
    char32_t first;
    char32_t last;
};

// Controls, marks of direction, separators of lines, characters without width, tags, and what is no character
// by definition.
constexpr Range kUnseen[] = {
    {0x80, 0x9F},     {0xAD, 0xAD},       {0x61C, 0x61C},   {0x115F, 0x1160}, {0x17B4, 0x17B5},
    {0x180E, 0x180E}, {0x200B, 0x200F},   {0x2028, 0x202E}, {0x2060, 0x206F}, {0x3164, 0x3164},
    {0xFDD0, 0xFDEF}, {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB},
    {0xFFFE, 0xFFFF}, {0xE0000, 0xE0FFF},
};

bool isUnseen(char32_t point) {
    return std::ranges::any_of(kUnseen,
                               [point](Range range) { return point >= range.first && point <= range.last; });
}

void appendUtf8(std::string& text, char32_t point) {
    const auto octet = [&text](char32_t value) { text += static_cast<char>(value); };
    if (point < 0x80) return octet(point);
    if (point < 0x800) {
        octet(0xC0 | point >> 6);
    } else {
        if (point < 0x10000) {
            octet(0xE0 | point >> 12);
        } else {
            octet(0xF0 | point >> 18);
            octet(0x80 | (point >> 12 & 0x3F));
        }
        octet(0x80 | (point >> 6 & 0x3F));
    }
    octet(0x80 | (point & 0x3F));
}

void appendShown(std::string& text, char32_t point, bool ofOctets) {
    if (!isCharacter(point) && ofOctets) {
        fmt::format_to(std::back_inserter(text), "\\x{:02X}", static_cast<unsigned>(point - kBadOctet));
    } else if (!isCharacter(point) || isUnseen(point)) {
        fmt::format_to(std::back_inserter(text), "\\u{{{:X}}}", static_cast<unsigned>(point));
    } else if (point < 0x20 || point == 0x7F) {
        fmt::format_to(std::back_inserter(text), "\\x{:02X}", static_cast<unsigned>(point));
    } else {
        if (point == '"' || point == '\\') text += '\\';
        appendUtf8(text, point);
    }
}

// The form of a UTF-8 character by its first octet.
struct Utf8Form {
    std::size_t length;  // 0: no first octet
    char32_t bits;       // those of the first octet
    char32_t least;      // what needs this length
};

Utf8Form utf8Form(unsigned char first) {
    if (first < 0x80) return {1, first, 0};
    if (first >= 0xC2 && first < 0xE0) return {2, first & 0x1Fu, 0x80};
    if (first >= 0xE0 && first < 0xF0) return {3, first & 0x0Fu, 0x800};
    if (first >= 0xF0 && first < 0xF5) return {4, first & 0x07u, 0x10000};
    return {0, 0, 0};
}

// The character at the front and how many octets it has; nothing if there is none.
std::optional<char32_t> readUtf8(std::string_view octets, std::size_t* length) {
    const Utf8Form form = utf8Form(static_cast<unsigned char>(octets.front()));
    *length = form.length;
    if (form.length == 0 || form.length > octets.size()) return std::nullopt;
    char32_t point = form.bits;
    for (std::size_t i = 1; i < form.length; ++i) {
        const auto octet = static_cast<unsigned char>(octets[i]);
        if ((octet & 0xC0) != 0x80) return std::nullopt;
        point = point << 6 | (octet & 0x3F);
    }
    if (point < form.least || !isCharacter(point)) return std::nullopt;
    return point;
}

bool isHighSurrogate(std::uint16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(std::uint16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

Characters fromAscii(std::string_view octets) {
    Characters result{.points = {}, .ofOctets = true};
    for (char character : octets) {
        const auto octet = static_cast<unsigned char>(character);
        result.points.push_back(octet < 0x80 ? octet : kBadOctet + octet);
    }
    return result;
}

Characters fromUtf8(std::string_view octets) {
    Characters result{.points = {}, .ofOctets = true};
    while (!octets.empty()) {
        std::size_t length = 0;
        if (const auto point = readUtf8(octets, &length)) {
            result.points.push_back(*point);
            octets.remove_prefix(length);
        } else {
            result.points.push_back(kBadOctet + static_cast<unsigned char>(octets.front()));
            octets.remove_prefix(1);
        }
    }
    return result;
}

Characters fromUtf16(std::span<const std::uint16_t> units) {
    Characters result;
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (i + 1 < units.size() && isHighSurrogate(units[i]) && isLowSurrogate(units[i + 1])) {
            result.points.push_back(0x10000U + ((units[i] & 0x3FFU) << 10 | (units[i + 1] & 0x3FFU)));
            ++i;
        } else {
            result.points.push_back(units[i]);
        }
    }
    return result;
}

Characters fromUtf32(std::span<const std::uint32_t> units) {
    Characters result;
    for (std::uint32_t unit : units)
        result.points.push_back(unit);
    return result;
}

std::string quoted(const Characters& characters) {
    std::string result = "\"";
    for (char32_t point : characters.points)
        appendShown(result, point, characters.ofOctets);
    return result + '"';
}

std::optional<std::string> plainText(const Characters& characters) {
    if (!std::ranges::all_of(characters.points, isCharacter)) return std::nullopt;
    std::string result;
    for (char32_t point : characters.points)
        appendUtf8(result, point);
    return result;
}

}  // namespace tools
