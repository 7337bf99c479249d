// Digits of number texts; not part of the interface.
#ifndef MIRVANE_ASN1RT_TEXT_DIGITS_H
#define MIRVANE_ASN1RT_TEXT_DIGITS_H

namespace asn1rt {

inline constexpr char kLowerHexDigits[] = "0123456789abcdef";
inline constexpr char kUpperHexDigits[] = "0123456789ABCDEF";

// The value of a digit of radix 16 or less in either case; 255, which is no digit of any, for other
// characters.
constexpr unsigned digitOf(char character) {
    if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
    if (character >= 'a' && character <= 'f') return static_cast<unsigned>(character - 'a') + 10;
    if (character >= 'A' && character <= 'F') return static_cast<unsigned>(character - 'A') + 10;
    return 255;
}

}  // namespace asn1rt

#endif
