// Integers of any size, read from text and written as text or as the content octets of an INTEGER.
//
// A record keeps sign and magnitude. Texts may be decimal, or hexadecimal, binary or octal behind 0x, 0b or
// 0o; in binary and hexadecimal a text whose digits fill whole octets with the top bit set is a negative
// number in two's complement: ff is -1, 0ff is 255. Work on decimal and octal texts grows with the square of
// their length, on the others linearly.
#ifndef MIRVANE_ASN1RT_BIG_INTEGER_H
#define MIRVANE_ASN1RT_BIG_INTEGER_H

#include <cstdint>

#include "asn1rt/context.h"

struct ASN1BigInt {
    std::int32_t numocts;    // significant octets, the first of them not 0
    unsigned char* mag;      // magnitude, most significant octet first
    std::int32_t sign;       // 1, -1, or 0 for zero, which has no octets
    std::int32_t allocated;  // octets that `mag` has room for
    bool dynamic;            // `mag` came from typeMemHeap
};

extern "C" {

// Makes a zero without memory. Before rtBigIntSetStr a caller may lend a buffer by `mag` and `allocated`.
MIRVANE_API void rtBigIntInit(ASN1BigInt* number);

// Frees the magnitude if it came from typeMemHeap; the record is then as after rtBigIntInit.
MIRVANE_API void rtBigIntFree(ASN1CTXT* ctxt, ASN1BigInt* number);

// Reads a text of radix 2, 8, 10 or 16, or 0 for 10 unless the text begins with 0b, 0o or 0x. Blanks in front
// are skipped, digits above 9 may be of either case, and a minus sign is taken with radix 8 and 10. Takes
// memory from typeMemHeap when `allocated` is too small. The record is zero on failure: RTS_BAD_ARGUMENT for
// another radix, RTS_BAD_VALUE for null, no digits or what is no digit, RTS_NO_MEMORY. Recorded.
MIRVANE_API int rtBigIntSetStr(ASN1CTXT* ctxt, ASN1BigInt* number, const char* text, int radix);

// The octets of the shortest two's complement form; 1 for zero.
MIRVANE_API int rtBigIntGetDataLen(const ASN1BigInt* number);

// Writes the shortest two's complement form. The octets written, or RTS_BUFFER_TOO_SMALL, recorded.
MIRVANE_API int rtBigIntGetData(ASN1CTXT* ctxt, const ASN1BigInt* number, unsigned char* destination,
                                int size);

// An upper bound for the digits of the number's text; RTS_BAD_ARGUMENT for an odd radix and one outside 2
// to 16.
MIRVANE_API std::int64_t rtBigIntDigitsNum(const ASN1BigInt* number, int radix);

// Writes the number as text, without a prefix and with a terminator that `size` counts in. Radix 2 and 16
// give all digits, lower case, of the two's complement form. Radix 8 and 10 give no leading zeros; in radix
// 10 a negative number has a minus sign, in radix 8 its two's complement form is shown. RTS_BUFFER_TOO_SMALL,
// recorded for radix 2 and 16; RTS_BAD_ARGUMENT for another radix, recorded, and for zero in radix 8 and 10;
// RTS_NO_MEMORY. Else 0.
MIRVANE_API int rtBigIntToString(ASN1CTXT* ctxt, const ASN1BigInt* number, int radix, char* text, int size);

// 1, 0 or -1 as the first number is greater than, equal to or less than the second. A text that can't be read
// counts as zero, though the failure is recorded.
MIRVANE_API int rtBigIntStrCompare(ASN1CTXT* ctxt, const char* first, const char* second);

}  // extern "C"

#endif
