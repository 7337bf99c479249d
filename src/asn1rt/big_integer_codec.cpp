#include "asn1rt/big_integer_codec.h"

#include <algorithm>
#include <string_view>

#include "asn1rt/allocate.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/big_integer.h"
#include "asn1rt/cursor.h"
#include "asn1rt/growth.h"
#include "asn1rt/text_digits.h"
#include "asn1rt/universal_tags.h"

namespace {

using asn1rt::digitOf;
using asn1rt::record;

constexpr std::int32_t kNumberBuffer = 512;

// The digits of a text behind 0x or 0b, of which a group makes an octet.
struct DigitGroups {
    std::string_view digits;
    unsigned radix;
    std::size_t groupSize;

    bool areWhole() const { return digits.size() % groupSize == 0; }
    unsigned bitsPerDigit() const { return static_cast<unsigned>(8 / groupSize); }
};

// False for a text without one of the two prefixes and a digit behind it.
bool splitPrefix(std::string_view text, DigitGroups* groups) {
    const bool binary = text.starts_with("0b");
    if (text.size() < 3 || (!binary && !text.starts_with("0x"))) return false;
    *groups = {text.substr(2), binary ? 2U : 16U, binary ? std::size_t{8} : std::size_t{2}};
    return true;
}

void dropLeadingZeros(DigitGroups* groups) {
    groups->digits.remove_prefix(std::min(groups->digits.find_first_not_of('0'), groups->digits.size()));
}

void dropLeadingOnes(DigitGroups* groups) {
    const auto isAllOnes = [&](char digit) { return digitOf(digit) == groups->radix - 1; };
    const auto& digits = groups->digits;
    const auto first = std::find_if_not(digits.begin(), digits.end(), isAllOnes);
    const auto ones = static_cast<std::size_t>(first - digits.begin());
    groups->digits.remove_prefix(ones - ones % groups->groupSize);
}

// The text is a two's complement pattern with its sign bit set.
bool isNegative(const DigitGroups& groups) {
    const unsigned digit = digitOf(groups.digits.front());
    return groups.areWhole() && digit < groups.radix && digit >= groups.radix / 2;
}

int prependOctet(ASN1CTXT* ctxt, unsigned octet) {
    if (ctxt->buffer.byteIndex == 0) asn1rt::growAhead(ctxt);
    if (ctxt->buffer.byteIndex == 0) {
        if (int status = xe_expandBuffer(ctxt, 1); status != RTS_OK) return record(ctxt, status);
    }
    ctxt->buffer.data[--ctxt->buffer.byteIndex] = static_cast<unsigned char>(octet);
    return 1;
}

// Writes what is left once leading zeros or ones are dropped, from the last group to the first, and the octet
// of sign that the first one may need. A group cut short stands only in front of positive numbers and leaves
// its top bit clear.
int writeDigits(ASN1CTXT* ctxt, const DigitGroups& groups, bool negative) {
    const unsigned signOctet = negative ? 0xFF : 0x00;
    unsigned octet = ~signOctet & 0x80;  // no digits at all need the octet of sign
    int length = 0;
    for (std::size_t end = groups.digits.size(); end > 0;) {
        const std::size_t begin = end - std::min(end, groups.groupSize);
        octet = 0;
        for (char character : groups.digits.substr(begin, end - begin)) {
            const unsigned digit = digitOf(character);
            if (digit >= groups.radix) return record(ctxt, RTS_BAD_VALUE);
            octet = octet << groups.bitsPerDigit() | digit;
        }
        if (int written = prependOctet(ctxt, octet); written < 0) return written;
        ++length;
        end = begin;
    }
    if (((octet ^ signOctet) & 0x80) == 0) return length;
    const int written = prependOctet(ctxt, signOctet);
    return written < 0 ? written : length + written;
}

int writeSigned(ASN1CTXT* ctxt, DigitGroups groups) {
    const bool negative = isNegative(groups);
    if (negative) {
        dropLeadingOnes(&groups);
    } else {
        dropLeadingZeros(&groups);
    }
    return writeDigits(ctxt, groups, negative);
}

int writeUnsigned(ASN1CTXT* ctxt, DigitGroups groups) {
    dropLeadingZeros(&groups);
    return writeDigits(ctxt, groups, false);
}

int writeNumber(ASN1CTXT* ctxt, const ASN1BigInt& number) {
    const int length = rtBigIntGetDataLen(&number);
    const auto octets = static_cast<std::uint32_t>(length);
    if (ctxt->buffer.byteIndex < octets) {
        if (int status = xe_expandBuffer(ctxt, octets); status != RTS_OK) return record(ctxt, status);
    }
    ctxt->buffer.byteIndex -= octets;
    return rtBigIntGetData(ctxt, &number, xe_getp(ctxt), length);
}

int writeConverted(ASN1CTXT* ctxt, const char* text) {
    unsigned char local[kNumberBuffer];
    ASN1BigInt number;
    rtBigIntInit(&number);
    number.mag = local;
    number.allocated = kNumberBuffer;
    int result = rtBigIntSetStr(ctxt, &number, text, 0);
    if (result == RTS_OK) result = writeNumber(ctxt, number);
    rtBigIntFree(ctxt, &number);
    return result;
}

int withTag(ASN1CTXT* ctxt, int length, ASN1TagType tagging) {
    return tagging == ASN1EXPL && length >= 0 ? xe_tag_len(ctxt, TAG_INTEGER, length) : length;
}

}  // namespace

namespace asn1rt {

std::uint32_t leadingZeros(const unsigned char* octets, std::uint32_t count) {
    std::uint32_t zeros = 0;
    while (zeros < count && octets[zeros] == 0)
        ++zeros;
    return zeros;
}

void writeBigIntegerText(const unsigned char* octets, std::uint32_t count, std::uint32_t dropped,
                         char* text) {
    *text++ = '0';
    *text++ = 'x';
    const bool keepsSign = dropped > 0 && dropped < count && (octets[dropped] & 0x80) != 0;
    if (dropped == count || keepsSign) *text++ = '0';
    for (std::uint32_t i = dropped; i < count; ++i) {
        *text++ = kLowerHexDigits[octets[i] >> 4];
        *text++ = kLowerHexDigits[octets[i] & 0x0F];
    }
    *text = '\0';
}

}  // namespace asn1rt

extern "C" {

int xe_bigint(ASN1CTXT* ctxt, const char* text, ASN1TagType tagging) {
    if (!text || !*text) return record(ctxt, RTS_BAD_VALUE);
    DigitGroups groups;
    const int length = splitPrefix(text, &groups) ? writeSigned(ctxt, groups) : writeConverted(ctxt, text);
    return withTag(ctxt, length, tagging);
}

int xe_biguint(ASN1CTXT* ctxt, const char* text, ASN1TagType tagging) {
    DigitGroups groups;
    int length = 0;
    if (text && text == std::string_view("0")) {
        length = prependOctet(ctxt, 0);
    } else if (text && splitPrefix(text, &groups)) {
        length = writeUnsigned(ctxt, groups);
    } else {
        return record(ctxt, RTS_BAD_VALUE);
    }
    return withTag(ctxt, length, tagging);
}

int xd_bigint(ASN1CTXT* ctxt, const char** text, ASN1TagType tagging, int length) {
    if (tagging == ASN1EXPL) {
        const int status = asn1rt::readPrimitiveHeader(ctxt, TAG_INTEGER, &length);
        if (status != RTS_OK) return record(ctxt, status);
    }
    if (length < 0) return record(ctxt, RTS_BAD_LENGTH);
    if (static_cast<std::uint32_t>(length) > asn1rt::room(ctxt)) return RTS_END_OF_BUFFER;
    const auto count = static_cast<std::uint32_t>(length);
    const std::uint32_t dropped = asn1rt::leadingZeros(asn1rt::cursor(ctxt), count);
    auto* const target =
        static_cast<char*>(asn1rt::allocate(ctxt, asn1rt::bigIntegerTextSize(count - dropped)));
    if (!target) return RTS_NO_MEMORY;
    asn1rt::writeBigIntegerText(asn1rt::cursor(ctxt), count, dropped, target);
    ctxt->buffer.byteIndex += count;
    *text = target;
    return RTS_OK;
}

}  // extern "C"
