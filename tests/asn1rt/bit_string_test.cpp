#include "asn1rt/bit_string.h"

#include <memory>
#include <utility>

#include "runtime_test.h"

namespace {

struct EncodeRow {
    std::uint32_t numbits;
    const char* octets;
};

TEST(EncodedBits, CarryTheirUnusedBits) {
    const unsigned char bits[] = {0xFF, 0xFF, 0xFF};
    const EncodeRow rows[] = {{0, "03 01 00"},       {1, "03 02 07 FF"},    {7, "03 02 01 FF"},
                              {8, "03 02 00 FF"},    {9, "03 03 07 FF FF"}, {12, "03 03 04 FF FF"},
                              {16, "03 03 00 FF FF"}};
    for (const EncodeRow& row : rows) {
        Encoder encoder;
        EXPECT_EQ(xe_bitstr(encoder, bits, row.numbits, ASN1EXPL),
                  static_cast<int>(test::octets(row.octets).size()));
        EXPECT_EQ(encoder.message(), row.octets);
    }
}

TEST(EncodedBits, MissingDataWritesNothingUnlessThereAreNoBits) {
    Encoder encoder;
    EXPECT_EQ(xe_bitstr(encoder, nullptr, 5, ASN1EXPL), 0);
    EXPECT_EQ(encoder.message(), "");
    EXPECT_EQ(xe_bitstr(encoder, nullptr, 0, ASN1EXPL), 3);
    EXPECT_EQ(xe_bitstr(encoder, nullptr, 0, ASN1IMPL), 1);
    EXPECT_EQ(encoder.message(), "00 03 01 00");
}

struct Row {
    const char* name;
    const char* octets;
    int status;
    std::uint32_t numbits;
    const char* data;
    std::uint32_t position;
    bool recorded;  // the status is also in errInfo
};

TEST(DecodedBits, AreTheSameWithACopyAndWithout) {
    const Row rows[] = {
        {"none", "03 01 00", 0, 0, "", 3, false},
        {"no content", "03 00", 0, 0, "", 2, false},
        {"one octet", "03 02 00 41", 0, 8, "41", 4, false},
        {"one bit", "03 02 07 80", 0, 1, "80", 4, false},
        {"unused bits without an octet", "03 01 05", RTS_BAD_LENGTH, 0, "", 0, false},
        {"eight unused bits", "03 02 08 FF", RTS_BAD_VALUE, 0, "", 0, false},
        {"cut content", "03 03 00 41", RTS_END_OF_BUFFER, 0, "", 0, false},
        {"cut behind length", "03 02", RTS_END_OF_BUFFER, 0, "", 0, false},
        {"no octet left", "03 01", RTS_END_OF_BUFFER, 0, "", 0, false},
        {"foreign tag", "04 02 00 41", RTS_TAG_MISMATCH, 0, "", 0, true},
        {"indefinite primitive", "03 80 00 41 00 00", RTS_BAD_LENGTH, 0, "", 0, true},
        {"indefinite one segment", "23 80 03 02 04 F0 00 00", 0, 4, "F0", 8, false},
        // The octets of unused bits of all segments but the last stay in the data.
        {"indefinite segments", "23 80 03 02 00 41 03 02 04 F0 00 00", 0, 20, "00 41 F0", 12, false},
        {"definite segments", "23 08 03 02 00 41 03 02 04 F0", 0, 20, "00 41 F0", 10, false},
        {"last segment of unused bits alone", "23 07 03 02 00 41 03 01 03", 0, 13, "00 41", 9, false},
        {"empty segments", "23 06 03 00 03 02 04 F0", 0, 4, "F0", 8, false},
        {"empty segment last", "23 06 03 02 04 F0 03 00", 0, 4, "F0", 8, false},
        {"nothing but empty segments", "23 04 03 00 03 00", 0, 0, "", 6, false},
        {"nothing but unused bits", "23 03 03 01 02", RTS_BAD_LENGTH, 0, "", 0, false},
        {"indefinite and empty", "23 80 00 00", 0, 0, "", 4, false},
        {"indefinite without bits", "23 80 03 01 00 00 00", RTS_BAD_LENGTH, 0, "", 0, false},
        {"unused bits of last segment", "23 08 03 02 00 41 03 02 08 F0", RTS_BAD_VALUE, 0, "", 0, false},
        {"segment passes the whole", "23 05 03 04 00 41 42 43", RTS_BAD_LENGTH, 0, "", 0, true},
        {"segment cut", "23 04 03 04 00 41", RTS_END_OF_BUFFER, 0, "", 0, false},
        {"segments pass the capacity", "23 06 03 02 00 41 03 05 00 41 42 43 44", RTS_BUFFER_TOO_SMALL, 0, "",
         0, true},
        {"foreign segment", "23 80 04 02 00 41 00 00", RTS_BAD_TAG, 0, "", 0, false},
        {"foreign segment in definite", "23 04 04 02 00 41", RTS_TAG_MISMATCH, 0, "", 0, true},
        {"indefinite segment in definite", "23 06 23 80 03 02 00 41", RTS_BAD_LENGTH, 0, "", 0, true},
    };
    for (const Row& row : rows) {
        for (const unsigned flags : {0u, unsigned{ASN1_NO_COPY}}) {
            SCOPED_TRACE(row.name);
            Decoder decoder(row.octets, flags);
            const unsigned char* data = nullptr;
            std::uint32_t numbits = 77;
            EXPECT_EQ(xd_bitstr(decoder, &data, &numbits, ASN1EXPL, 0), row.status);
            ASSERT_EQ(numbits, row.numbits);
            EXPECT_EQ(test::text(data, (numbits + 7) / 8), row.data);
            EXPECT_TRUE(row.status != RTS_OK || decoder.position() == row.position);
            EXPECT_EQ(decoder.recorded(), row.recorded ? row.status : RTS_OK);
        }
    }
}

TEST(DecodedBits, LengthsBeyondTheMessageTakeNoMoreMemoryThanTheMessage) {
    const std::pair<const char*, int> rows[] = {
        {"03 84 20 00 00 00 00 41", RTS_END_OF_BUFFER},
        {"03 84 20 00 00 01 00 41", RTS_BAD_LENGTH},  // its bits would not fit 32 bits
        {"23 84 10 00 00 00 03 02 00 41", RTS_BAD_LENGTH},
    };
    for (const auto& [message, status] : rows) {
        Decoder decoder(message, ASN1_LAX_LENGTH);
        const unsigned char* data = nullptr;
        std::uint32_t numbits = 0;
        EXPECT_EQ(xd_bitstr(decoder, &data, &numbits, ASN1EXPL, 0), status) << message;
        EXPECT_EQ(numbits, 0u);
    }
}

TEST(DecodedBits, ImplicitIndefiniteOnPrimitiveFormStaysInItsMemory) {
    for (const unsigned flags : {0u, unsigned{ASN1_NO_COPY}}) {
        Decoder decoder("03 02 00 41 03 02 00 42 00 00", flags);
        const unsigned char* data = nullptr;
        std::uint32_t numbits = 0;
        EXPECT_EQ(xd_bitstr(decoder, &data, &numbits, ASN1IMPL, ASN1_INDEFLEN), RTS_BUFFER_TOO_SMALL);
        EXPECT_EQ(numbits, 0u);
    }
}

struct CapacityRow {
    std::uint32_t capacity;
    const char* octets;
    int status;
    std::uint32_t numbits;
};

void expectInBuffer(const CapacityRow& row, ASN1TagType tagging, unsigned flags) {
    Decoder decoder(row.octets, flags);
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[(row.capacity + 7) / 8]);
    std::uint32_t numbits = row.capacity;
    EXPECT_EQ(xd_bitstr_s(decoder, buffer.get(), &numbits, tagging, decoder.size()), row.status)
        << row.octets;
    EXPECT_EQ(numbits, row.numbits) << row.octets;
}

TEST(BitsInACallersBuffer, KeepToItsCapacity) {
    const CapacityRow rows[] = {
        {0, "03 01 00", 0, 0},
        {0, "03 02 07 80", RTS_BUFFER_TOO_SMALL, 0},
        {0, "03 02 09 80", RTS_BAD_VALUE, 0},
        {1, "03 02 00 80", 0, 8},
        {8, "03 02 00 80", 0, 8},
        {8, "03 03 07 80 80", RTS_BUFFER_TOO_SMALL, 0},
        {9, "03 03 07 80 80", 0, 9},
        {8, "23 04 03 02 00 80", RTS_TAG_MISMATCH, 0},
        {8, "03 80 00", RTS_BAD_LENGTH, 0},
        {8, "03", RTS_END_OF_BUFFER, 0},
        {8, "03 85 01", RTS_BAD_LENGTH, 0},
    };
    for (const CapacityRow& row : rows)
        expectInBuffer(row, ASN1EXPL, 0);
}

TEST(BitsInACallersBuffer, SegmentThatFillsTheCapacityIsTheLast) {
    const CapacityRow rows[] = {
        {16, "03 02 00 80 03 01 03", 0, 13},                       // fills two octets and one for unused bits
        {8, "03 02 03 80 03 00", 0, 5},                            // an empty one behind it changes nothing
        {8, "03 02 03 80 03 01 00", RTS_BUFFER_TOO_SMALL, 0},      // an octet behind it is one too many
        {16, "03 02 00 80 03 02 00 40", RTS_BUFFER_TOO_SMALL, 0},  // passes the capacity, unused bits and all
        {0, "03 01 00", 0, 0},
        {0, "03 01 01", RTS_BAD_LENGTH, 0},
        {8, "03 02 03", RTS_END_OF_BUFFER, 0},
    };
    for (const CapacityRow& row : rows)
        expectInBuffer(row, ASN1IMPL, ASN1_CONSTRUCTED);
}

TEST(BitsInACallersBuffer, EndOfContentsStaysInPlace) {
    Decoder decoder("03 02 00 80 03 02 04 F0 00 00", ASN1_CONSTRUCTED);
    unsigned char buffer[8];
    std::uint32_t numbits = 64;
    EXPECT_EQ(xd_bitstr_s(decoder, buffer, &numbits, ASN1IMPL, ASN1_INDEFLEN), RTS_OK);
    EXPECT_EQ(numbits, 20u);
    EXPECT_EQ(test::text(buffer, 3), "00 80 F0");
    EXPECT_EQ(decoder.position(), 8u);
}

TEST(SingleBits, CountFromTheTopOfTheFirstOctet) {
    unsigned char bits[2] = {0, 0};
    EXPECT_EQ(rtSetBit(bits, 12, 0), 0);
    EXPECT_EQ(rtSetBit(bits, 12, 11), 0);
    EXPECT_EQ(rtSetBit(bits, 12, 11), 0x10);
    EXPECT_EQ(test::text(bits, 2), "80 10");
    EXPECT_EQ(rtTestBit(bits, 12, 11), 0x10);
    EXPECT_EQ(rtTestBit(bits, 11, 11), 0);
    EXPECT_EQ(rtClearBit(bits, 12, 0), 0x80);
    EXPECT_EQ(rtClearBit(bits, 12, 0), 0);
    EXPECT_EQ(rtSetBit(bits, 12, 12), RTS_BAD_INDEX);
    EXPECT_EQ(rtClearBit(bits, 11, 11), RTS_BAD_INDEX);
    EXPECT_EQ(test::text(bits, 2), "00 10");
}

TEST(SingleBits, LengthOfAnOctetEndsAtItsLowestSetBit) {
    EXPECT_EQ(rtOctetBitLen(0), 0);
    for (unsigned octet = 1; octet < 256; ++octet) {
        const int length = rtOctetBitLen(static_cast<unsigned char>(octet));
        EXPECT_NE(octet & 0x100u >> length, 0u) << octet;
        EXPECT_EQ(octet & (0xFFu >> length), 0u) << octet;
    }
}

}  // namespace
