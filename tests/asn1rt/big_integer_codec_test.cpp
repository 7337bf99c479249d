#include "asn1rt/big_integer_codec.h"

#include "asn1rt/big_number_oracle.h"
#include "runtime_test.h"

namespace {

std::string encode(const std::string& text) {
    Encoder encoder;
    const int length = xe_bigint(encoder, text.c_str(), ASN1IMPL);
    const std::string message = encoder.message();
    EXPECT_EQ(length, static_cast<int>(test::octets(message).size())) << text;
    return message;
}

TEST(BigIntegerCodec, AgreesWithSlowArithmeticOnRandomNumbers) {
    test::NumberSource source;
    for (int i = 0; i < 4000; ++i) {
        const test::BigNumber number = source.next();
        const test::Octets content = test::contentOf(number);
        const std::string expected = test::text(content);
        ASSERT_EQ(encode(test::decimalOf(number)), expected);
        ASSERT_EQ(encode("0x" + test::patternOf(content, 4)), expected);
        ASSERT_EQ(encode("0b" + test::patternOf(content, 1)), expected);

        Decoder decoder(content);
        const char* text = nullptr;
        ASSERT_EQ(xd_bigint(decoder, &text, ASN1IMPL, decoder.size()), RTS_OK);
        ASSERT_EQ(encode(text), expected) << text;
    }
}

struct Row {
    const char* text;
    int result;
    const char* octets;
};

void expectRow(int (*encoder)(ASN1CTXT*, const char*, ASN1TagType), const Row& row) {
    Encoder ctxt;
    SCOPED_TRACE(row.text ? row.text : "null");
    EXPECT_EQ(encoder(ctxt, row.text, ASN1EXPL), row.result);
    EXPECT_EQ(ctxt.recorded(), std::min(row.result, 0));
    if (row.result >= 0) {
        EXPECT_EQ(ctxt.message(), row.octets);
    }
}

TEST(BigIntegerCodec, SignedTexts) {
    const Row rows[] = {{"0", 3, "02 01 00"},
                        {"  -256", 4, "02 02 FF 00"},
                        {"0o17", 3, "02 01 0F"},
                        {"0x0", 3, "02 01 00"},
                        {"  0x00", 3, "02 01 00"},
                        {"0xFF", 3, "02 01 FF"},
                        {"0x0ff", 4, "02 02 00 FF"},
                        {"0x00ff", 4, "02 02 00 FF"},
                        {"0xffff80", 3, "02 01 80"},
                        {"0b1", 3, "02 01 01"},
                        {"0b011111111", 4, "02 02 00 FF"},
                        {"0xfff", 4, "02 02 0F FF"}};  // an odd count of digits is never negative
    for (const Row& row : rows)
        expectRow(xe_bigint, row);
    for (const char* malformed : test::texts(nullptr, "", "0x", "0b", "0b2", "0xfg", "0x-1", "-0x10", "12x"))
        expectRow(xe_bigint, {malformed, RTS_BAD_VALUE, ""});
}

TEST(BigIntegerCodec, UnsignedTexts) {
    const Row rows[] = {
        {"0", 3, "02 01 00"},       {"0x0", 3, "02 01 00"},      {"0x0000", 3, "02 01 00"},
        {"0xff", 4, "02 02 00 FF"}, {"0xfff", 4, "02 02 0F FF"}, {"0x0080", 4, "02 02 00 80"},
        {"0x7f", 3, "02 01 7F"},    {"0b1", 3, "02 01 01"},      {"0b10000000", 4, "02 02 00 80"},
    };
    for (const Row& row : rows)
        expectRow(xe_biguint, row);
    for (const char* malformed : test::texts("255", "00", "0x", "", "0b102", "-0x1"))
        expectRow(xe_biguint, {malformed, RTS_BAD_VALUE, ""});
}

TEST(BigIntegerCodec, FullBufferIsRefusedAndADynamicOneGrows) {
    for (const char* text : {"0x123456", "1193046"}) {
        LiveContext ctxt;
        unsigned char buffer[4];
        for (std::uint32_t size = 1; size <= sizeof buffer; ++size) {
            rtErrReset(&ctxt->errInfo);
            xe_setp(ctxt, buffer, size);
            EXPECT_EQ(xe_bigint(ctxt, text, ASN1IMPL), size == sizeof buffer ? 3 : RTS_ENCODE_OVERFLOW);
            EXPECT_EQ(ctxt.recorded(), size == sizeof buffer ? 0 : RTS_ENCODE_OVERFLOW);
        }
    }
    const std::string longPattern = "0x7f" + std::string(80000, 'a');
    Encoder encoder;
    EXPECT_EQ(xe_bigint(encoder, longPattern.c_str(), ASN1EXPL), 40001 + 4);
    EXPECT_EQ(encoder.message().substr(0, 17), "02 82 9C 41 7F AA");
    EXPECT_EQ(xe_bigint(encoder, ("1" + std::string(2000, '0')).c_str(), ASN1IMPL),
              831);  // 10^2000 has 6644 bits
}

struct DecodeRow {
    const char* octets;
    int status;
    const char* text;
    int recorded;
};

TEST(BigIntegerCodec, DecodedTextIsThePattern) {
    const DecodeRow rows[] = {
        {"02 01 00", 0, "0x0", 0},
        {"02 00", 0, "0x0", 0},
        {"02 03 00 00 00", 0, "0x0", 0},
        {"02 01 80", 0, "0x80", 0},
        {"02 02 00 80", 0, "0x080", 0},
        {"02 03 00 00 FF", 0, "0x0ff", 0},
        {"02 02 00 7F", 0, "0x7f", 0},
        {"02 02 FF 7F", 0, "0xff7f", 0},
        {"02 01 0A", 0, "0x0a", 0},
        {"02 81 02 01 02", 0, "0x0102", 0},
        {"03 01 00", RTS_TAG_MISMATCH, nullptr, RTS_TAG_MISMATCH},
        {"02", RTS_END_OF_BUFFER, nullptr, RTS_END_OF_BUFFER},
        {"02 02 01", RTS_END_OF_BUFFER, nullptr, 0},
        {"02 80 01 00 00", RTS_BAD_LENGTH, nullptr, RTS_BAD_LENGTH},
        {"02 82 00 09 01", RTS_BAD_LENGTH, nullptr, RTS_BAD_LENGTH},
    };
    for (const DecodeRow& row : rows) {
        Decoder decoder(row.octets);
        const char* text = nullptr;
        EXPECT_EQ(xd_bigint(decoder, &text, ASN1EXPL, 0), row.status) << row.octets;
        EXPECT_STREQ(text, row.text) << row.octets;
        EXPECT_EQ(decoder.recorded(), row.recorded) << row.octets;
        if (row.status == RTS_OK) {
            EXPECT_EQ(static_cast<int>(decoder.position()), decoder.size());
        }
    }
}

}  // namespace
