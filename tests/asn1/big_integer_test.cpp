#include "asn1/big_integer.h"

#include <random>

#include "asn1/big_integer_text.h"
#include "asn1/octet_string.h"
#include "support/allocation.h"
#include "value_test.h"

namespace {

__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 UnsignedWide;

CBigInteger parsed(const char* text) {
    CBigInteger value;
    StringToBigInteger(text, value);
    return value;
}

std::string textOf(const CBigInteger& value) {
    CBlob text;
    BigIntegerToString(value, text);
    EXPECT_EQ(text.cbData(), 2 * value.cbData() + 3);
    return reinterpret_cast<const char*>(text.pbData());
}

// 1 to 6 bytes of which many are sign bytes, so that values of distinct lengths meet.
test::Octets anyBytes(std::mt19937& random) {
    test::Octets bytes(1 + random() % 6, random() % 2 ? 0xFF : 0x00);
    for (std::size_t i = random() % bytes.size(); i < bytes.size(); ++i) {
        bytes[i] = static_cast<unsigned char>(random() % 4 ? random() : random() % 2 * 0xFF);
    }
    return bytes;
}

Wide valueOf(const test::Octets& bytes) {
    Wide value = bytes[0] >= 0x80 ? -1 : 0;
    for (const unsigned char byte : bytes)
        value = value * 256 + byte;
    return value;
}

// The length of the shortest two's complement form, by the range that it holds.
int shortestLength(Wide value) {
    int length = 1;
    for (Wide limit = 0x80; value < -limit || value >= limit; limit *= 256)
        ++length;
    return length;
}

int sign(Wide value) {
    return (value > 0) - (value < 0);
}

// The order of numbers, but that of two negative ones of distinct lengths the longer is above.
int expectedOrder(const test::Octets& left, const test::Octets& right) {
    const Wide first = valueOf(left);
    const Wide second = valueOf(right);
    const int lengths = shortestLength(first) - shortestLength(second);
    if (first < 0 && second < 0 && left.size() != right.size() && lengths != 0) return sign(lengths);
    return sign(first - second);
}

}  // namespace

TEST(BigInteger, OrderIsThatOfNumbersButForNegativeLengths) {
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        const test::Octets left = anyBytes(random);
        const test::Octets right = anyBytes(random);
        const CBigInteger first(left.data(), left.size());
        const CBigInteger second(right.data(), right.size());
        const int expected = expectedOrder(left, right);
        ASSERT_EQ(sign(first.compare(second)), expected) << test::text(left) << " and " << test::text(right);
        ASSERT_EQ(first == second, expected == 0);
        ASSERT_EQ(first != second, expected != 0);
        ASSERT_EQ(first < second, expected < 0);
        ASSERT_EQ(first > second, expected > 0);
        ASSERT_EQ(first <= second, expected <= 0);
        ASSERT_EQ(first >= second, expected >= 0);
    }
}

TEST(BigInteger, TheExceptionsOfItsOrderStand) {
    const struct {
        const char* left;
        const char* right;
        int order;
    } rows[] = {{"FF 00", "FF", 1},     {"FF", "FF 00", -1},   {"FF FE", "FE", 0}, {"FF FE", "00 FE", -1},
                {"FF FE", "FF FF", -1}, {"00 7F", "7F", 0},    {"FF 80", "80", 0}, {"00 01", "01", 0},
                {"00 00 00", "00", 0},  {"FF FF FF", "FF", 0}, {"FF FF", "FF", 0}, {"FF 00", "FF FF", -1},
                {"00 80", "7F", 1},     {"", "", 0},           {"", "00", -1},     {"", "7F 00", -1},
                {"", "80", 1},          {"00", "", 1},         {"FF", "", -1}};
    for (const auto& [left, right, order] : rows)
        EXPECT_EQ(sign(integer(left).compare(integer(right))), order) << left << " and " << right;
    EXPECT_FALSE(static_cast<const CBlob&>(integer("00 01")) == static_cast<const CBlob&>(integer("01")));
}

TEST(BigInteger, SumsAreThoseOfNumbersWithoutSign) {
    std::mt19937 random(12);
    for (int round = 0; round < 5000; ++round) {
        const test::Octets left = anyBytes(random);
        test::Octets right = anyBytes(random);
        right.resize(left.size());
        UnsignedWide sum = 0;
        for (std::size_t i = 0; i < left.size(); ++i)
            sum = sum * 256 + left[i] + right[i];
        CBigInteger value(left.data(), left.size());
        const int carry = value.add(CBigInteger(right.data(), right.size()));
        ASSERT_EQ(value.cbData(), left.size());
        for (std::size_t i = left.size(); i-- > 0; sum >>= 8)
            ASSERT_EQ(value.pbData()[i], static_cast<unsigned char>(sum)) << test::text(left);
        ASSERT_EQ(carry, static_cast<int>(sum));
    }
}

TEST(BigInteger, AddTakesEqualLengthsOnly) {
    CBigInteger value = integer("FF");
    EXPECT_EQ(value.add(integer("01")), 1);
    EXPECT_EQ(test::text(value), "00");
    CBigInteger doubled = integer("81 80");
    EXPECT_EQ(doubled.add(doubled), 1);
    EXPECT_EQ(test::text(doubled), "03 00");
    EXPECT_EQ(thrownCode([&] { value.add(integer("00 01")); }), 0x80070057u);
    CBigInteger empty;
    EXPECT_EQ(empty.add(CBigInteger()), 0);
    EXPECT_EQ(empty.cbData(), 0u);
}

TEST(BigInteger, IncrementCarriesDownToItsStop) {
    const struct {
        const char* before;
        int stop;
        const char* after;
    } rows[] = {{"00", 0, "01"},
                {"FF", 0, "00"},
                {"00 FF", 0, "01 00"},
                {"FF FF", 0, "00 00"},
                {"7F FF", 0, "80 00"},
                {"05 FF FF", 1, "05 00 00"},
                {"05 FE FF", 1, "05 FF 00"},
                {"05 FF", 1, "05 00"},
                {"05 FF", 2, "05 00"},
                {"05 FF", 9, "05 00"},
                {"05 06", 9, "05 07"},
                {"00 FF", -1, "01 00"},
                {"", 0, ""},
                {"", 5, ""}};
    for (const auto& [before, stop, after] : rows) {
        CBigInteger value = integer(before);
        value.increment(stop);
        EXPECT_EQ(test::text(value), after) << before << " to " << stop;
    }
    CBigInteger value = integer("00 FF");
    EXPECT_EQ(test::text(value++), "00 FF");
    EXPECT_EQ(test::text(value), "01 00");
    EXPECT_EQ(test::text(++value), "01 01");
}

TEST(BigInteger, AbsClearsTheTopBitOnly) {
    EXPECT_EQ(test::text(integer("FF").abs()), "7F");
    EXPECT_EQ(test::text(integer("80 01").abs()), "00 01");
    EXPECT_EQ(test::text(integer("7F FF").abs()), "7F FF");
    EXPECT_EQ(CBigInteger().abs().cbData(), 0u);
    EXPECT_EQ(test::text(CBigInteger(3)), "00 00 00") << "a count makes that many zero bytes";
}

TEST(BigInteger, TravelsInTheShortestForm) {
    std::mt19937 random(13);
    for (int round = 0; round < 2000; ++round) {
        const test::Octets bytes = anyBytes(random);
        const auto length = static_cast<std::size_t>(shortestLength(valueOf(bytes)));
        test::Octets expected(bytes);
        expected.erase(expected.begin(), expected.end() - static_cast<std::ptrdiff_t>(length));
        const std::string content = test::text(expected);
        expected.insert(expected.begin(), {0x02, static_cast<unsigned char>(length)});
        const CBlob encoded = CBigInteger(bytes.data(), bytes.size()).encode();
        ASSERT_EQ(test::text(encoded), test::text(expected)) << test::text(bytes);
        CBigInteger decoded;
        decoded.decode(encoded);
        ASSERT_EQ(test::text(decoded), content);
    }
}

TEST(BigInteger, WhatIsNoIntegerIsRefusedAndTheValueStays) {
    expectRefused(integer("12 34"), 0x80093101, {"", "02", "02 02 01", "04 01 01", "30 03 02 01 01"});
    EXPECT_EQ(thrownCode([] { CBigInteger().encode(); }), 0x80093101u);
}

TEST(BigIntegerText, IsReadByPairsBehind0x) {
    const std::pair<const char*, const char*> rows[] = {
        {"0x0", "00"},      {"0x00", "00"},     {"0x1", ""},         {"0x123", "12"},    {"0x0123", "01 23"},
        {"0x012", "00 12"}, {"0x080", "00 80"}, {"0xaBcD", "AB CD"}, {"0x12zz34", "12"}, {"0xzz", ""}};
    for (const auto& [text, bytes] : rows) {
        EXPECT_EQ(test::text(parsed(text)), bytes) << text;
        CBigInteger other;
        ASN1StringToBigInteger(text, other);
        EXPECT_EQ(test::text(other), bytes) << text;
    }
}

TEST(BigIntegerText, WithoutItsMarkIsRefused) {
    for (const char* text : test::texts(nullptr, "", "0", "0x", "12", "0X12", "x12", " 0x12"))
        EXPECT_EQ(thrownCode([&] { parsed(text); }), 0x80093101u) << (text ? text : "null");
}

TEST(BigIntegerText, IsWrittenInCapitalDigits) {
    EXPECT_EQ(textOf(integer("00 AB CD")), "0x00ABCD");
    EXPECT_EQ(textOf(CBigInteger()), "0x");
}

TEST(BigIntegerText, StandsInTheMemoryOfTheContext) {
    test::LiveContext context;
    EXPECT_STREQ(BigIntegerToASN1String(context, integer("FE 01")), "0xFE01");
    EXPECT_STREQ(BigIntegerToASN1String(context, CBigInteger()), "0x");
    EXPECT_STREQ(DWORDToASN1BigInteger(context, 1), "0x00000001");
    EXPECT_STREQ(DWORDToASN1BigInteger(context, 0xFEDCBA98), "0xFEDCBA98");
    test::CountedAllocations allocations;
    allocations.allow(0);
    EXPECT_EQ(thrownCode([&] { BigIntegerToASN1String(context, integer("01")); }), 0x80093106u);
    EXPECT_EQ(thrownCode([&] { DWORDToASN1BigInteger(context, 1); }), 0x8007000Eu);
}

TEST(BigIntegerText, NumbersAreReadInBase11) {
    const std::pair<const char*, unsigned> rows[] = {{"0x0", 0},       {"0xFF", 255},
                                                     {"0x0102", 13},   {"0x01020304", 1331 + 242 + 33 + 4},
                                                     {"0xFFFF", 3060}, {"0xFFFFFFFF", 373320}};
    for (const auto& [text, number] : rows)
        EXPECT_EQ(ASN1BigIntegerToDWORD(text), number) << text;
    EXPECT_EQ(thrownCode([] { ASN1BigIntegerToDWORD("0x0000000001"); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { ASN1BigIntegerToDWORD("1"); }), 0x80093101u);
}

TEST(OctetString, IsWrappedAndUnwrapped) {
    EXPECT_EQ(test::text(toOctetString(test::blob("01 02 03"))), "04 03 01 02 03");
    EXPECT_EQ(test::text(toOctetString(CBlob())), "04 00");
    for (const unsigned long size : {0ul, 1ul, 127ul, 128ul, 255ul, 256ul, 70000ul}) {
        CBlob content(size);
        for (unsigned long i = 0; i < size; ++i)
            content.pbData()[i] = static_cast<unsigned char>(i);
        EXPECT_EQ(fromOctetString(toOctetString(content)), content) << size;
    }
    EXPECT_EQ(test::text(fromOctetString(test::blob("04 02 01 02 05 00"))), "01 02");
    EXPECT_EQ(fromOctetString(CBlob()).cbData(), 0u);
}

TEST(OctetString, WhatIsNoneInPrimitiveFormIsRefused) {
    for (const char* message : {"04", "04 02 01", "05 00", "03 02 00 01", "24 06 04 01 01 04 01 02",
                                "24 80 04 01 01 00 00", "84 01 01"}) {
        EXPECT_EQ(thrownCode([&] { fromOctetString(test::blob(message)); }), 0x80093101u) << message;
    }
}
