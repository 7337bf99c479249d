#include "asn1rt/small_integer.h"

#include "runtime_test.h"

namespace {

TEST(SmallInteger, EveryValueComesBackFromItsShortestForm) {
    for (unsigned i = 0; i <= 0xFFFF; ++i) {
        const auto value = static_cast<std::uint16_t>(i);
        unsigned char buffer[8];
        LiveContext ctxt;
        xe_setp(ctxt, buffer, sizeof buffer);
        const int length = xe_uint16(ctxt, &value, ASN1EXPL);
        ASSERT_EQ(length, i < 0x80 ? 3 : i < 0x8000 ? 4 : 5);
        std::uint16_t read = 0;
        ASSERT_EQ(xd_setp(ctxt, xe_getp(ctxt), length, nullptr, nullptr), RTS_OK);
        ASSERT_EQ(xd_uint16(ctxt, &read, ASN1EXPL, 0), RTS_OK);
        ASSERT_EQ(read, value);
    }
}

struct Row {
    const char* octets;
    int status;
    unsigned value;
    unsigned flags;
};

TEST(SmallInteger, OddForms) {
    const Row rows[] = {
        {"02 00 2A", 0, 0x2A, 0},  // a length of 0 takes the octet that follows
        {"02 02 FF FF", 0, 0xFFFF, 0},
        {"02 03 00 FF FF", 0, 0xFFFF, 0},
        {"02 03 01 00 00", RTS_INT_TOO_LARGE, 0, 0},
        {"02 04 00 00 00 01", RTS_INT_TOO_LARGE, 0, 0},
        {"02 81 01 2A", RTS_INT_TOO_LARGE, 0, 0},
        {"03 01 2A", RTS_TAG_MISMATCH, 0, 0},
        {"02 01", RTS_END_OF_BUFFER, 0, 0},
        {"02 01", RTS_END_OF_BUFFER, 0, ASN1_INDEF_MESSAGE},
        {"02", RTS_END_OF_BUFFER, 0, ASN1_INDEF_MESSAGE},
        {"02 02 01", RTS_END_OF_BUFFER, 0, 0},
        {"02 03 00 01", RTS_END_OF_BUFFER, 0, 0},
        {"02 03", RTS_END_OF_BUFFER, 0, ASN1_INDEF_MESSAGE},
    };
    for (const Row& row : rows) {
        Decoder decoder(row.octets, row.flags);
        std::uint16_t value = 0;
        EXPECT_EQ(xd_uint16(decoder, &value, ASN1EXPL, 0), row.status) << row.octets;
        EXPECT_EQ(value, row.value) << row.octets;
    }
}

TEST(SmallInteger, MissingValueIsRefusedAndNegativeLengthIsTooLarge) {
    Encoder encoder;
    EXPECT_EQ(xe_uint16(encoder, nullptr, ASN1EXPL), RTS_BAD_VALUE);
    Decoder decoder("01 02");
    std::uint16_t value = 0;
    EXPECT_EQ(xd_uint16(decoder, &value, ASN1IMPL, ASN1_INDEFLEN), RTS_INT_TOO_LARGE);
}

}  // namespace
