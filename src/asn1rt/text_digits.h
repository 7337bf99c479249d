// Digits of number texts; not part of the interface.
#ifndef MIRVANE_ASN1RT_TEXT_DIGITS_H
#define MIRVANE_ASN1RT_TEXT_DIGITS_H

#include <array>
#include <cstdint>

namespace asn1rt {

inline constexpr char kLowerHexDigits[] = "0123456789abcdef";
inline constexpr char kUpperHexDigits[] = "0123456789ABCDEF";

inline constexpr auto kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(255);
    for (std::uint8_t digit = 0; digit < 16; ++digit) {
        values[static_cast<unsigned char>(kLowerHexDigits[digit])] = digit;
        values[static_cast<unsigned char>(kUpperHexDigits[digit])] = digit;
    }
    return values;
}();

// The value of a digit of radix 16 or less in either case; 255, which is no digit of any, for other
// characters.
constexpr unsigned digitOf(char character) {
    return kDigitValues[static_cast<unsigned char>(character)];
}

// How many octets of 00 stand in front.
std::uint32_t leadingZeros(const unsigned char* octets, std::uint32_t count);

// The text that xd_bigint makes of `count` octets, of which it leaves out `dropped` zeros in front. `text`
// has room for bigIntegerTextSize of the others.
void writeBigIntegerText(const unsigned char* octets, std::uint32_t count, std::uint32_t dropped, char* text);

constexpr std::uint64_t bigIntegerTextSize(std::uint32_t octets) {
    return 2 * std::uint64_t{octets} + 4;
}

}  // namespace asn1rt

#endif
