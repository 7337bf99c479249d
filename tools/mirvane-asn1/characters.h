// The characters of strings, and how they are shown: unambiguous whatever the octets were.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_CHARACTERS_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_CHARACTERS_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tools {

// A string as Unicode. What was no character stands in `points` as it was: a unit that Unicode does not have,
// or, in a string of octets, an octet above kBadOctet.
struct Characters {
    std::u32string points;
    bool ofOctets = false;
};

constexpr char32_t kBadOctet = 0x110000;

// Each octet below 80 is a character; the others mean nothing that would be known.
Characters fromAscii(std::string_view octets);
// UTF-8 in the strict sense of RFC 3629.
Characters fromUtf8(std::string_view octets);
Characters fromUtf16(std::span<const std::uint16_t> units);
Characters fromUtf32(std::span<const std::uint32_t> units);

// In quotes, on one line. Escaped are quotes and backslashes (\" and \\), controls of ASCII and octets that
// are no character (\x0A), and characters that are not seen or turn the line around (\u{202E}).
std::string quoted(const Characters& characters);

// The plain text, if all of it is characters.
std::optional<std::string> plainText(const Characters& characters);

}  // namespace tools

#endif
