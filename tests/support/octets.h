// Octets in hexadecimal text, for tables of test cases.
#ifndef MIRVANE_TESTS_SUPPORT_OCTETS_H
#define MIRVANE_TESTS_SUPPORT_OCTETS_H

#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using Octets = std::vector<unsigned char>;

// "30 03" -> {0x30, 0x03}; blanks are passed over.
inline Octets octets(std::string_view text) {
    Octets result;
    int high = -1;
    for (char character : text) {
        if (std::isspace(static_cast<unsigned char>(character))) continue;
        const int digit = std::isdigit(static_cast<unsigned char>(character))
                              ? character - '0'
                              : std::tolower(static_cast<unsigned char>(character)) - 'a' + 10;
        if (high < 0) {
            high = digit;
        } else {
            result.push_back(static_cast<unsigned char>(high * 16 + digit));
            high = -1;
        }
    }
    return result;
}

// {0x30, 0x03} -> "30 03".
inline std::string text(const unsigned char* data, std::size_t count) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) result += ' ';
        result += kDigits[data[i] >> 4];
        result += kDigits[data[i] & 15];
    }
    return result;
}

inline std::string text(const Octets& data) {
    return text(data.data(), data.size());
}

// A list of texts, null among them.
template <typename... Texts>
std::vector<const char*> texts(Texts... all) {
    return {all...};
}

}  // namespace test

#endif
