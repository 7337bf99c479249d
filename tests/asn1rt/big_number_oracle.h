// Big numbers worked out the slow way, digit by digit, to hold the library's against.
#ifndef MIRVANE_TESTS_ASN1RT_BIG_NUMBER_ORACLE_H
#define MIRVANE_TESTS_ASN1RT_BIG_NUMBER_ORACLE_H

#include <algorithm>
#include <random>
#include <string>

#include "support/octets.h"

namespace test {

struct BigNumber {
    Octets magnitude;  // most significant first, no leading zeros
    bool negative;
};

// Repeated division by the radix, one digit a time, from a copy of the octets.
inline std::string digitsOf(Octets octets, unsigned radix) {
    std::string digits;
    while (!octets.empty()) {
        unsigned remainder = 0;
        for (unsigned char& octet : octets) {
            const unsigned value = remainder * 256 + octet;
            octet = static_cast<unsigned char>(value / radix);
            remainder = value % radix;
        }
        digits += static_cast<char>(remainder < 10 ? '0' + remainder : 'a' + remainder - 10);
        if (octets.front() == 0) octets.erase(octets.begin());
    }
    std::reverse(digits.begin(), digits.end());
    return digits.empty() ? "0" : digits;
}

// The shortest two's complement form: made with an octet to spare, then stripped while the sign stays
// (X.690, 8.3.2).
inline Octets contentOf(const BigNumber& number) {
    Octets content = number.magnitude;
    content.insert(content.begin(), 0);
    if (number.negative) {
        int borrow = 0;
        for (std::size_t i = content.size(); i-- > 0;) {
            const int difference = 0 - content[i] - borrow;
            content[i] = static_cast<unsigned char>(difference & 0xFF);
            borrow = difference < 0;
        }
    }
    while (content.size() > 1 &&
           ((content[0] == 0x00 && content[1] < 0x80) || (content[0] == 0xFF && content[1] >= 0x80))) {
        content.erase(content.begin());
    }
    return content;
}

inline std::string decimalOf(const BigNumber& number) {
    return (number.negative ? "-" : "") + digitsOf(number.magnitude, 10);
}

// Every octet as two (or eight) digits, leading zeros and all.
inline std::string patternOf(const Octets& octets, unsigned bitsPerDigit) {
    std::string digits;
    for (unsigned char octet : octets) {
        for (unsigned shift = 8; shift > 0;) {
            shift -= bitsPerDigit;
            digits += "0123456789abcdef"[octet >> shift & ((1u << bitsPerDigit) - 1)];
        }
    }
    return digits;
}

// Numbers of all lengths to 80 octets, many of them at the edges where a sign octet comes or goes.
class NumberSource {
  public:
    BigNumber next() {
        BigNumber number{Octets(pick(81)), pick(2) == 0};
        const unsigned fill = pick(4);
        for (unsigned char& octet : number.magnitude) {
            octet = static_cast<unsigned char>(fill == 0 ? 0x00 : fill == 1 ? 0xFF : pick(256));
        }
        if (!number.magnitude.empty()) {
            static constexpr unsigned char kEdges[] = {0x01, 0x7F, 0x80, 0x81, 0xFF};
            number.magnitude.front() =
                pick(2) == 0 ? kEdges[pick(5)] : static_cast<unsigned char>(1 + pick(255));
            if (pick(3) == 0) number.magnitude.back() = kEdges[pick(5)];
        }
        if (number.magnitude.empty()) number.negative = false;
        return number;
    }

  private:
    unsigned pick(unsigned bound) { return static_cast<unsigned>(mRandom() % bound); }

    std::mt19937 mRandom{20240611};
};

}  // namespace test

#endif
