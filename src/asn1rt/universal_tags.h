// Tag numbers of the universal class (X.680, 8.4).
#ifndef MIRVANE_ASN1RT_UNIVERSAL_TAGS_H
#define MIRVANE_ASN1RT_UNIVERSAL_TAGS_H

#include <cstdint>

inline constexpr std::uint32_t TAG_BOOLEAN = 1;
inline constexpr std::uint32_t TAG_INTEGER = 2;
inline constexpr std::uint32_t TAG_BIT_STRING = 3;
inline constexpr std::uint32_t TAG_OCTET_STRING = 4;
inline constexpr std::uint32_t TAG_NULL = 5;
inline constexpr std::uint32_t TAG_OBJECT_IDENTIFIER = 6;
inline constexpr std::uint32_t TAG_ENUMERATED = 10;
inline constexpr std::uint32_t TAG_UTF8_STRING = 12;
inline constexpr std::uint32_t TAG_SEQUENCE = 16;
inline constexpr std::uint32_t TAG_SET = 17;
inline constexpr std::uint32_t TAG_NUMERIC_STRING = 18;
inline constexpr std::uint32_t TAG_PRINTABLE_STRING = 19;
inline constexpr std::uint32_t TAG_TELETEX_STRING = 20;
inline constexpr std::uint32_t TAG_IA5_STRING = 22;
inline constexpr std::uint32_t TAG_UTC_TIME = 23;
inline constexpr std::uint32_t TAG_GENERALIZED_TIME = 24;
inline constexpr std::uint32_t TAG_VISIBLE_STRING = 26;
inline constexpr std::uint32_t TAG_UNIVERSAL_STRING = 28;
inline constexpr std::uint32_t TAG_BMP_STRING = 30;

#endif
