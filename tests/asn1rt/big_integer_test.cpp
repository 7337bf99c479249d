#include "asn1rt/big_integer.h"

#include <cstdint>
#include <vector>

#include "asn1rt/big_number_oracle.h"
#include "runtime_test.h"

namespace {

// A number that was read from a text.
class Number {
  public:
    explicit Number(const std::string& text, int radix = 0) {
        rtBigIntInit(&mNumber);
        mStatus = rtBigIntSetStr(mContext, &mNumber, text.c_str(), radix);
    }
    ~Number() { rtBigIntFree(mContext, &mNumber); }
    Number(const Number&) = delete;
    Number& operator=(const Number&) = delete;

    int status() const { return mStatus; }
    int recorded() const { return mContext.recorded(); }
    const ASN1BigInt* operator->() const { return &mNumber; }

    test::Octets content() {
        test::Octets octets(static_cast<std::size_t>(rtBigIntGetDataLen(&mNumber)));
        const int size = static_cast<int>(octets.size());
        EXPECT_EQ(rtBigIntGetData(mContext, &mNumber, octets.data(), size), size);
        return octets;
    }

    int write(int radix, std::string* text, int size) {
        std::vector<char> buffer(static_cast<std::size_t>(std::max(size, 0)));
        const int status = rtBigIntToString(mContext, &mNumber, radix, buffer.data(), size);
        if (status == RTS_OK) *text = buffer.data();
        return status;
    }

    std::string text(int radix) {
        std::string result;
        const int status = write(radix, &result, 4096);
        return status == RTS_OK ? result : std::to_string(status);
    }

  private:
    LiveContext mContext;
    ASN1BigInt mNumber;
    int mStatus;
};

TEST(BigInteger, AgreesWithSlowArithmeticOnRandomNumbers) {
    test::NumberSource source;
    for (int i = 0; i < 4000; ++i) {
        const test::BigNumber expected = source.next();
        const test::Octets content = test::contentOf(expected);
        const std::string decimal = test::decimalOf(expected);
        const std::string octal = test::digitsOf(expected.negative ? content : expected.magnitude, 8);
        for (const std::string& text :
             {decimal, "0x" + test::patternOf(content, 4), "0b" + test::patternOf(content, 1)}) {
            Number number(text);
            ASSERT_EQ(number.status(), RTS_OK) << text;
            ASSERT_EQ(number.content(), content) << text;
            ASSERT_EQ(number.text(16), test::patternOf(content, 4)) << text;
            ASSERT_EQ(number.text(2), test::patternOf(content, 1)) << text;
            if (expected.magnitude.empty()) continue;
            ASSERT_EQ(number.text(10), decimal) << text;
            ASSERT_EQ(number.text(8), octal) << text;
        }
        Number fromOctal((expected.negative ? "0o-" : "0o") + test::digitsOf(expected.magnitude, 8));
        ASSERT_EQ(fromOctal.content(), content) << decimal;
    }
}

struct TextRow {
    const char* text;
    int radix;
    int status;
    const char* content;
};

TEST(BigInteger, TextsOfAllRadixes) {
    std::vector<TextRow> rows = {
        {"FF", 16, 0, "FF"},
        {"fFf", 16, 0, "0F FF"},
        {"1111111", 2, 0, "7F"},
        {"-0", 10, 0, "00"},
        {"00000000", 2, 0, "00"},
        {"0000", 16, 0, "00"},
        {"  12", 0, 0, "0C"},
        {"0x1f", 0, 0, "1F"},
        {"0b101", 16, 0, "00 B1 01"},  // with a radix given, b is a digit
        {"1", 7, RTS_BAD_ARGUMENT, "00"},
        {"1", -10, RTS_BAD_ARGUMENT, "00"},
    };
    const std::pair<const char*, int> malformed[] = {{"0X1f", 0}, {"0x1f", 16}, {"0x", 0},   {"", 10},
                                                     {"   ", 0},  {"\t1", 0},   {"--1", 10}, {"+1", 10},
                                                     {"-1", 16},  {"12a", 10},  {"102", 2},  {"1g", 16}};
    for (const auto& [text, radix] : malformed)
        rows.push_back({text, radix, RTS_BAD_VALUE, "00"});
    for (const TextRow& row : rows) {
        Number number(row.text, row.radix);
        EXPECT_EQ(number.status(), row.status) << row.text << " radix " << row.radix;
        EXPECT_EQ(number.recorded(), row.status) << row.text;
        EXPECT_EQ(test::text(number.content()), row.content) << row.text << " radix " << row.radix;
    }
}

TEST(BigInteger, WrittenTextFitsOrIsRefused) {
    struct Row {
        const char* number;
        int radix;
        const char* text;
    };
    for (const Row& row :
         {Row{"255", 10, "255"}, Row{"-255", 10, "-255"}, Row{"5", 10, "5"}, Row{"100", 10, "100"},
          Row{"-1", 8, "377"}, Row{"8", 8, "10"}, Row{"-255", 16, "ff01"}, Row{"0", 16, "00"},
          Row{"0", 2, "00000000"}, Row{"-128", 2, "10000000"}}) {
        Number number(row.number);
        const int needed = static_cast<int>(std::string(row.text).size()) + 1;
        std::string text;
        for (int size : {-1, 0, 1, needed - 1}) {
            EXPECT_EQ(number.write(row.radix, &text, size), RTS_BUFFER_TOO_SMALL)
                << row.number << " in " << size;
        }
        for (int size : {needed, needed + 1}) {
            EXPECT_EQ(number.write(row.radix, &text, size), RTS_OK);
            EXPECT_EQ(text, row.text);
        }
    }
}

TEST(BigInteger, ZeroHasNoTextInScaledRadixes) {
    Number zero("0x00");
    std::string text;
    for (int radix : {8, 10})
        EXPECT_EQ(zero.write(radix, &text, 100), RTS_BAD_ARGUMENT);
    EXPECT_EQ(zero.recorded(), RTS_OK);
    EXPECT_EQ(zero.write(0, &text, 100), RTS_BAD_ARGUMENT);
    EXPECT_EQ(zero.recorded(), RTS_BAD_ARGUMENT);
}

TEST(BigInteger, DigitsAreBoundedForEveryEvenRadix) {
    Number number("0x7f" + std::string(40, 'f'));
    for (int radix = 2; radix <= 16; radix += 2) {
        const auto digits = test::digitsOf(number.content(), static_cast<unsigned>(radix)).size();
        EXPECT_GE(rtBigIntDigitsNum(number.operator->(), radix), static_cast<std::int64_t>(digits)) << radix;
    }
    for (int radix : {-2, 0, 1, 3, 18})
        EXPECT_EQ(rtBigIntDigitsNum(number.operator->(), radix), RTS_BAD_ARGUMENT);
}

TEST(BigInteger, LentMemoryIsUsedUntilItIsTooSmall) {
    LiveContext ctxt;
    unsigned char lent[2];
    ASN1BigInt number;
    rtBigIntInit(&number);
    number.mag = lent;
    number.allocated = 2;
    for (const char* text : {"0x1234", "0x123456", "0x12", "0x12345678"}) {
        ASSERT_EQ(rtBigIntSetStr(ctxt, &number, text, 0), RTS_OK);
        EXPECT_EQ("0x" + test::patternOf(test::Octets(number.mag, number.mag + number.numocts), 4), text);
        EXPECT_EQ(number.dynamic, text != std::string("0x1234"));
    }
    unsigned char octets[4];
    EXPECT_EQ(rtBigIntGetData(ctxt, &number, octets, 3), RTS_BUFFER_TOO_SMALL);
    EXPECT_EQ(ctxt.recorded(), RTS_BUFFER_TOO_SMALL);
    EXPECT_EQ(rtBigIntGetData(ctxt, &number, octets, 4), 4);
    rtBigIntFree(ctxt, &number);
    rtBigIntFree(ctxt, &number);
    EXPECT_EQ(ctxt->typeMemHeap->blockList, nullptr);
}

TEST(BigInteger, ComparesInValue) {
    std::vector<std::int64_t> values{INT64_MIN + 1, -65536, -257, -256, -255, -129, -128,  -127,     -1, 0, 1,
                                     127,           128,    129,  255,  256,  257,  65536, INT64_MAX};
    LiveContext ctxt;
    for (std::int64_t a : values) {
        for (std::int64_t b : values) {
            const int expected = (a > b) - (a < b);
            EXPECT_EQ(rtBigIntStrCompare(ctxt, std::to_string(a).c_str(), std::to_string(b).c_str()),
                      expected);
            Number hexadecimal(std::to_string(b));
            const std::string text = "0x" + hexadecimal.text(16);
            EXPECT_EQ(rtBigIntStrCompare(ctxt, std::to_string(a).c_str(), text.c_str()), expected)
                << a << ' ' << b;
        }
    }
    EXPECT_EQ(ctxt.recorded(), RTS_OK);
    EXPECT_EQ(rtBigIntStrCompare(ctxt, "nonsense", "0"), 0);
    EXPECT_EQ(rtBigIntStrCompare(ctxt, nullptr, "-1"), 1);
    const std::string longText = "1" + std::string(2000, '0');
    EXPECT_EQ(rtBigIntStrCompare(ctxt, longText.c_str(), ("-" + longText).c_str()), 1);
    EXPECT_EQ(ctxt->typeMemHeap->blockList, nullptr);
}

}  // namespace
