#include "asn1rt/big_integer.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "asn1rt/allocate.h"
#include "asn1rt/cursor.h"
#include "asn1rt/text_digits.h"

namespace {

using asn1rt::digitOf;
using asn1rt::record;

// By half the radix. The two last tables have rows only for the radixes that texts may have.
constexpr std::uint32_t bitsPerDigit[] = {0,    1024, 2048, 2648, 3072,
                                          3402, 3672, 3899, 4096};  // log2, times 1024
constexpr std::uint32_t digitsPerByte[] = {0, 8, 0, 0, 2, 2, 0, 0, 2};
constexpr std::uint32_t byteRadix[] = {0, 256, 0, 0, 64, 100, 0, 0, 256};

constexpr std::int32_t kCompareBuffer = 256;

bool isTextRadix(int radix) {
    return radix == 2 || radix == 8 || radix == 10 || radix == 16;
}

// Radixes whose digits fill an octet exactly.
bool packsIntoOctets(int radix) {
    return radix == 2 || radix == 16;
}

int takePrefixedRadix(std::string_view* text) {
    int radix = 10;
    if (text->starts_with("0b")) radix = 2;
    if (text->starts_with("0o")) radix = 8;
    if (text->starts_with("0x")) radix = 16;
    if (radix != 10) text->remove_prefix(2);
    return radix;
}

// Zeroed octets, as many as the text may need.
int takeBuffer(ASN1CTXT* ctxt, ASN1BigInt* number, std::uint64_t size) {
    if (size > RT_MH_MAX_SIZE) return record(ctxt, RTS_NO_MEMORY);
    const auto octets = static_cast<std::int32_t>(size);
    if (number->allocated < octets) {
        void* memory = number->dynamic ? rtMemHeapRealloc(&ctxt->typeMemHeap, number->mag, octets)
                                       : rtMemHeapAlloc(&ctxt->typeMemHeap, octets);
        if (!memory) return record(ctxt, RTS_NO_MEMORY);
        number->mag = static_cast<unsigned char*>(memory);
        number->allocated = octets;
        number->dynamic = true;
    }
    std::memset(number->mag, 0, size);
    number->numocts = octets;
    return RTS_OK;
}

// Two's complement, in place: all octets inverted, and 1 added.
void negate(unsigned char* octets, std::int32_t count) {
    unsigned carry = 1;
    for (std::int32_t i = count; i-- > 0;) {
        carry += static_cast<unsigned char>(~octets[i]);
        octets[i] = static_cast<unsigned char>(carry);
        carry >>= 8;
    }
}

void dropLeadingZeros(ASN1BigInt* number) {
    unsigned char* end = number->mag + number->numocts;
    unsigned char* first = std::find_if(number->mag, end, [](unsigned char octet) { return octet != 0; });
    number->numocts = static_cast<std::int32_t>(end - first);
    if (first != number->mag) std::memmove(number->mag, first, static_cast<std::size_t>(number->numocts));
    if (number->numocts == 0) number->sign = 0;
}

int packDigits(ASN1CTXT* ctxt, ASN1BigInt* number, std::string_view digits, int radix) {
    const std::size_t perOctet = digitsPerByte[radix / 2];
    const std::size_t bits = 8 / perOctet;
    const std::size_t size = digits.size() / perOctet + (digits.size() % perOctet != 0);
    if (int status = takeBuffer(ctxt, number, size); status != RTS_OK) return status;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const unsigned digit = digitOf(digits[digits.size() - 1 - i]);
        if (digit >= static_cast<unsigned>(radix)) return record(ctxt, RTS_BAD_VALUE);
        unsigned char& octet = number->mag[size - 1 - i / perOctet];
        octet = static_cast<unsigned char>(octet | digit << (i % perOctet * bits));
    }
    number->sign = 1;
    if (number->mag[0] & 0x80) {
        number->sign = -1;
        negate(number->mag, number->numocts);
    }
    return RTS_OK;
}

// number = number * factor + addend, where only the last `used` octets are in use. Returns how many are then.
std::int32_t multiplyAdd(ASN1BigInt* number, std::int32_t used, std::uint32_t factor, std::uint32_t addend) {
    std::uint32_t carry = addend;
    std::int32_t i = number->numocts;
    for (const std::int32_t unused = number->numocts - used; i > unused || (carry != 0 && i > 0);) {
        --i;
        carry += number->mag[i] * factor;
        number->mag[i] = static_cast<unsigned char>(carry);
        carry >>= 8;
    }
    return number->numocts - i;
}

int scaleDigits(ASN1CTXT* ctxt, ASN1BigInt* number, std::string_view digits, int radix) {
    std::int32_t sign = 1;
    // cppcheck-suppress containerOutOfBounds  ; only what is left behind a sign can be empty
    if (digits.front() == '-') {
        sign = -1;
        digits.remove_prefix(1);
        if (digits.empty()) return record(ctxt, RTS_BAD_VALUE);
    }
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.empty()) return RTS_OK;

    const std::uint64_t bits = (std::uint64_t{bitsPerDigit[radix / 2]} * digits.size()) >> 10;
    if (int status = takeBuffer(ctxt, number, (bits + 8) / 8); status != RTS_OK) return status;
    const std::size_t chunkSize = digitsPerByte[radix / 2];
    std::int32_t used = 0;
    for (std::size_t i = 0, end = 0; i < digits.size();) {
        end = i + (i == 0 && digits.size() % chunkSize != 0 ? digits.size() % chunkSize : chunkSize);
        std::uint32_t chunk = 0;
        for (; i < end; ++i) {
            const unsigned digit = digitOf(digits[i]);
            if (digit >= static_cast<unsigned>(radix)) return record(ctxt, RTS_BAD_VALUE);
            chunk = chunk * static_cast<unsigned>(radix) + digit;
        }
        used = multiplyAdd(number, used, byteRadix[radix / 2], chunk);
    }
    number->sign = sign;
    return RTS_OK;
}

bool isZero(const ASN1BigInt* number) {
    return number->sign == 0 || number->numocts < 1;
}

// The first octet of the two's complement of the magnitude, without an octet of padding.
unsigned char firstNegatedOctet(const ASN1BigInt* number) {
    const auto restIsZero = std::all_of(number->mag + 1, number->mag + number->numocts,
                                        [](unsigned char octet) { return octet == 0; });
    return static_cast<unsigned char>(restIsZero ? -number->mag[0] : ~number->mag[0]);
}

// Divides in place what stands behind the leading zeros, which `first` counts, and gives the remainder.
std::uint32_t divideBy(unsigned char* octets, std::int32_t count, std::int32_t* first,
                       std::uint32_t divisor) {
    std::uint32_t remainder = 0;
    for (std::int32_t i = *first; i < count; ++i) {
        remainder = remainder << 8 | octets[i];
        octets[i] = static_cast<unsigned char>(remainder / divisor);
        remainder %= divisor;
    }
    while (*first < count && octets[*first] == 0)
        ++*first;
    return remainder;
}

// Puts a text together from its last character to its first, in the caller's memory.
class BackwardText {
  public:
    BackwardText(char* text, int size) : mText(text), mSize(text ? size : 0), mFirst(mSize) { prepend('\0'); }

    void prepend(char character) {
        if (mFirst > 0) {
            mText[--mFirst] = character;
        } else {
            mFits = false;
        }
    }

    int finish() {
        if (!mFits) return RTS_BUFFER_TOO_SMALL;
        std::memmove(mText, mText + mFirst, static_cast<std::size_t>(mSize - mFirst));
        return RTS_OK;
    }

  private:
    char* mText;
    int mSize;
    int mFirst;
    bool mFits = true;
};

// Octets that don't begin with 0; they are used up.
int writeScaled(unsigned char* octets, std::int32_t count, bool minus, int radix, char* text, int size) {
    BackwardText digits(text, size);
    const std::uint32_t chunkSize = digitsPerByte[radix / 2];
    for (std::int32_t first = 0; first < count;) {
        std::uint32_t chunk = divideBy(octets, count, &first, byteRadix[radix / 2]);
        for (std::uint32_t i = 0; i < chunkSize && (first < count || chunk != 0); ++i) {
            // cppcheck-suppress zerodivcond  ; a radix is never 0
            digits.prepend(asn1rt::kLowerHexDigits[chunk % static_cast<unsigned>(radix)]);
            chunk /= static_cast<unsigned>(radix);
        }
    }
    if (minus) digits.prepend('-');
    return digits.finish();
}

int toScaledText(ASN1CTXT* ctxt, const ASN1BigInt* number, int radix, char* text, int size) {
    if (isZero(number)) return RTS_BAD_ARGUMENT;
    const bool complement = number->sign < 0 && radix == 8;
    const std::int32_t count = complement ? rtBigIntGetDataLen(number) : number->numocts;
    unsigned char* octets = asn1rt::allocateOctets(ctxt, static_cast<std::uint64_t>(count));
    if (!octets) return RTS_NO_MEMORY;
    if (complement) {
        rtBigIntGetData(ctxt, number, octets, count);
    } else {
        std::memcpy(octets, number->mag, static_cast<std::size_t>(count));
    }
    const int status = writeScaled(octets, count, number->sign < 0 && radix == 10, radix, text, size);
    rtMemHeapFreePtr(&ctxt->typeMemHeap, octets);
    return status;
}

int toPackedText(ASN1CTXT* ctxt, const ASN1BigInt* number, int radix, char* text, int size) {
    const int octetCount = rtBigIntGetDataLen(number);
    const auto perOctet = static_cast<int>(digitsPerByte[radix / 2]);
    const std::int64_t needed = std::int64_t{octetCount} * perOctet + 1;
    if (!text || needed > size) return record(ctxt, RTS_BUFFER_TOO_SMALL);
    // The octets wait at the end of the text's own memory: digits, written from its start on, reach no octet
    // before it is read.
    auto* octets = reinterpret_cast<unsigned char*>(text + needed - octetCount);
    if (int written = rtBigIntGetData(ctxt, number, octets, octetCount); written < 0) return written;
    const int bits = 8 / perOctet;
    for (int i = 0; i < octetCount; ++i) {
        const unsigned octet = octets[i];
        for (int shift = 8 - bits; shift >= 0; shift -= bits) {
            *text++ = asn1rt::kLowerHexDigits[octet >> shift & (static_cast<unsigned>(radix) - 1)];
        }
    }
    *text = '\0';
    return RTS_OK;
}

int compareMagnitudes(const ASN1BigInt& first, const ASN1BigInt& second) {
    if (first.numocts != second.numocts) return first.numocts > second.numocts ? 1 : -1;
    if (first.numocts == 0) return 0;
    const int order = std::memcmp(first.mag, second.mag, static_cast<std::size_t>(first.numocts));
    return (order > 0) - (order < 0);
}

// A number with memory of its own that is enough for what certificates carry.
struct LocalNumber : ASN1BigInt {
    LocalNumber(ASN1CTXT* context, const char* text) : ctxt(context) {
        rtBigIntInit(this);
        mag = local;
        allocated = kCompareBuffer;
        rtBigIntSetStr(ctxt, this, text, 0);
    }
    ~LocalNumber() { rtBigIntFree(ctxt, this); }
    LocalNumber(const LocalNumber&) = delete;
    LocalNumber& operator=(const LocalNumber&) = delete;

    ASN1CTXT* ctxt;
    unsigned char local[kCompareBuffer];
};

}  // namespace

extern "C" {

void rtBigIntInit(ASN1BigInt* number) {
    *number = {};
}

void rtBigIntFree(ASN1CTXT* ctxt, ASN1BigInt* number) {
    if (!number->dynamic || number->allocated == 0) return;
    rtMemHeapFreePtr(&ctxt->typeMemHeap, number->mag);
    rtBigIntInit(number);
}

int rtBigIntSetStr(ASN1CTXT* ctxt, ASN1BigInt* number, const char* text, int radix) {
    number->numocts = 0;
    number->sign = 0;
    std::string_view digits(text ? text : "");
    digits.remove_prefix(std::min(digits.find_first_not_of(' '), digits.size()));
    if (radix != 0 && !isTextRadix(radix)) return record(ctxt, RTS_BAD_ARGUMENT);
    if (radix == 0) radix = takePrefixedRadix(&digits);
    if (digits.empty()) return record(ctxt, RTS_BAD_VALUE);

    const auto read = packsIntoOctets(radix) ? packDigits : scaleDigits;
    const int status = read(ctxt, number, digits, radix);
    if (status == RTS_OK) {
        dropLeadingZeros(number);
    } else {
        number->numocts = 0;
    }
    return status;
}

int rtBigIntGetDataLen(const ASN1BigInt* number) {
    if (isZero(number)) return 1;
    const bool topBit = ((number->sign > 0 ? number->mag[0] : firstNegatedOctet(number)) & 0x80) != 0;
    return number->numocts + (topBit != (number->sign < 0));
}

int rtBigIntGetData(ASN1CTXT* ctxt, const ASN1BigInt* number, unsigned char* destination, int size) {
    const int length = rtBigIntGetDataLen(number);
    if (length > size) return record(ctxt, RTS_BUFFER_TOO_SMALL);
    const std::int32_t count = isZero(number) ? 0 : number->numocts;
    destination[0] = 0;  // zero itself, or padding
    unsigned char* magnitude = destination + (length - count);
    if (count > 0) std::memcpy(magnitude, number->mag, static_cast<std::size_t>(count));
    if (count > 0 && number->sign < 0) negate(destination, length);
    return length;
}

std::int64_t rtBigIntDigitsNum(const ASN1BigInt* number, int radix) {
    if (radix < 2 || radix > 16 || radix % 2 != 0) return RTS_BAD_ARGUMENT;
    return ((std::int64_t{number->numocts} << 13) + 8192) / bitsPerDigit[radix / 2];
}

int rtBigIntToString(ASN1CTXT* ctxt, const ASN1BigInt* number, int radix, char* text, int size) {
    if (!isTextRadix(radix)) return record(ctxt, RTS_BAD_ARGUMENT);
    const auto write = packsIntoOctets(radix) ? toPackedText : toScaledText;
    return write(ctxt, number, radix, text, size);
}

int rtBigIntStrCompare(ASN1CTXT* ctxt, const char* first, const char* second) {
    const LocalNumber a(ctxt, first);
    const LocalNumber b(ctxt, second);
    if (a.sign != b.sign) return a.sign > b.sign ? 1 : -1;
    return a.sign * compareMagnitudes(a, b);
}

}  // extern "C"
