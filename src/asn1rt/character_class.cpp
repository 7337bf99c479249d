#include "asn1rt/character_class.h"

namespace {

constexpr std::uint8_t classOf(int c) {
    const auto isWithin = [c](int first, int last) { return first <= c && c <= last; };
    if (c == ' ') return RT_CTYPE_SPACE | RT_CTYPE_BLANK;
    if (isWithin('A', 'F')) return RT_CTYPE_UPPER | RT_CTYPE_HEX_LETTER;
    if (isWithin('G', 'Z')) return RT_CTYPE_UPPER;
    if (isWithin('a', 'f')) return RT_CTYPE_LOWER | RT_CTYPE_HEX_LETTER;
    if (isWithin('g', 'z')) return RT_CTYPE_LOWER;
    if (isWithin('0', '9')) return RT_CTYPE_DIGIT;
    if (isWithin('\t', '\r')) return RT_CTYPE_CONTROL | RT_CTYPE_SPACE;
    if (isWithin('!', '~')) return RT_CTYPE_PUNCTUATION;
    return c < 128 ? RT_CTYPE_CONTROL : 0;
}

constexpr std::array<std::uint8_t, 256> makeTable() {
    std::array<std::uint8_t, 256> table{};
    for (int c = 0; c < 256; ++c)
        table[static_cast<std::size_t>(c)] = classOf(c);
    return table;
}

}  // namespace

constinit const std::array<std::uint8_t, 256> rtCtypeTable = makeTable();
