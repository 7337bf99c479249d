// What kind of character an octet is, in ASCII and whatever the locale. The table is constant.
#ifndef MIRVANE_ASN1RT_CHARACTER_CLASS_H
#define MIRVANE_ASN1RT_CHARACTER_CLASS_H

#include <array>
#include <cstdint>

#include "asn1rt/export.h"

// Bits of rtCtypeTable.
enum : std::uint8_t {
    RT_CTYPE_UPPER = 0x01,
    RT_CTYPE_LOWER = 0x02,
    RT_CTYPE_DIGIT = 0x04,
    RT_CTYPE_SPACE = 0x08,        // 9 to 13 and 32
    RT_CTYPE_PUNCTUATION = 0x10,  // printable, but no letter, digit or blank
    RT_CTYPE_CONTROL = 0x20,      // 0 to 31 and 127
    RT_CTYPE_HEX_LETTER = 0x40,   // A to F and a to f, beside the bit of their case
    RT_CTYPE_BLANK = 0x80,        // 32
};

// Indexed by the octet as an unsigned value; 0 from 128 on.
extern "C" MIRVANE_API const std::array<std::uint8_t, 256> rtCtypeTable;

#endif
