#include "number_text.h"

#include <algorithm>
#include <charconv>

namespace tools {
namespace {

std::vector<unsigned char> octetsOf(std::string_view digits) {
    std::string even(digits);
    if (even.size() % 2 != 0) even.insert(even.begin(), '0');
    std::vector<unsigned char> octets(even.size() / 2);
    for (std::size_t i = 0; i < octets.size(); ++i)
        std::from_chars(even.data() + 2 * i, even.data() + 2 * i + 2, octets[i], 16);
    return octets;
}

void negate(std::vector<unsigned char>& octets) {
    unsigned carry = 1;
    for (auto octet = octets.rbegin(); octet != octets.rend(); ++octet) {
        carry += static_cast<unsigned char>(~*octet);
        *octet = static_cast<unsigned char>(carry);
        carry >>= 8;
    }
}

}  // namespace

BigNumberValue fromContent(OctetSpan content) {
    std::vector<unsigned char> magnitude(content.begin(), content.end());
    const bool negative = !content.empty() && content.front() >= 0x80;
    if (negative) negate(magnitude);
    const auto first = std::ranges::find_if(magnitude, [](unsigned char octet) { return octet != 0; });
    const std::string digits = hex(OctetSpan(first, magnitude.end()));
    return {negative, digits.empty() ? "00" : digits, false, {}};
}

BigNumberValue fromHexText(std::string_view text) {
    if (text.starts_with("0x")) text.remove_prefix(2);
    return fromContent(octetsOf(text));
}

std::optional<std::string> decimal(const BigNumberValue& number) {
    if (number.magnitude.size() > 16) return std::nullopt;
    std::uint64_t value = 0;
    std::from_chars(number.magnitude.data(), number.magnitude.data() + number.magnitude.size(), value, 16);
    return (number.negative ? "-" : "") + std::to_string(value);
}

std::string hexadecimal(const BigNumberValue& number) {
    return (number.negative ? "-0x" : "0x") + number.magnitude;
}

std::string hex(OctetSpan octets) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    result.reserve(octets.size() * 2);
    for (unsigned char octet : octets) {
        result += kDigits[octet >> 4];
        result += kDigits[octet & 15];
    }
    return result;
}

}  // namespace tools
