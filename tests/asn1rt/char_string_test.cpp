#include "asn1rt/char_string.h"

#include <algorithm>
#include <vector>

#include "asn1rt/universal_tags.h"
#include "runtime_test.h"

namespace {

struct TextRow {
    const char* name;
    const char* octets;
    int status;
    const char* text;  // null: nothing is stored
    std::uint32_t position;
};

TEST(DecodedText, IsTerminatedAndFailuresAreRecorded) {
    const TextRow rows[] = {
        {"primitive", "16 02 41 42 FF", 0, "AB", 4},
        {"empty", "16 00", 0, "", 2},
        {"zero inside", "16 03 41 00 42", 0, "A", 5},
        {"long length", "16 81 02 41 42", 0, "AB", 5},
        {"definite segments", "36 07 04 01 41 04 02 42 43", 0, "ABC", 9},
        {"indefinite segments", "36 80 04 01 41 04 02 42 43 00 00 16", 0, "ABC", 11},
        {"indefinite and empty", "36 80 00 00", 0, "", 4},
        {"only empty segments", "36 80 04 00 00 00", RTS_BAD_LENGTH, "", 2},
        {"foreign tag", "0C 01 41", RTS_TAG_MISMATCH, nullptr, 0},
        {"cut behind the tag", "16", RTS_END_OF_BUFFER, nullptr, 1},
        {"cut content", "16 03 41 42", RTS_END_OF_BUFFER, "", 2},
        {"indefinite primitive", "16 80 41 00 00", RTS_BAD_LENGTH, nullptr, 2},
        {"segment of its own tag", "36 80 16 01 41 00 00", RTS_BAD_TAG, nullptr, 4},
        {"segments without end", "36 80 04 01 41", RTS_END_OF_BUFFER, nullptr, 5},
        {"segments cut short", "36 05 04 01 41 04 03 42", RTS_END_OF_BUFFER, "", 7},
        {"segments too long", "36 06 04 02 41 42 04 06 43 44 45 46 47 48", RTS_BAD_LENGTH, "", 8},
    };
    for (const TextRow& row : rows) {
        SCOPED_TRACE(row.name);
        Decoder decoder(row.octets, ASN1_NO_COPY);
        const char* text = nullptr;
        EXPECT_EQ(xd_charstr(decoder, &text, ASN1EXPL, TAG_IA5_STRING, 0), row.status);
        EXPECT_STREQ(text, row.text);
        EXPECT_EQ(decoder.position(), row.position);
        EXPECT_EQ(decoder.recorded(), row.status);
    }
}

TEST(DecodedText, MissingEndOfContentsOutranksAFailedSegment) {
    Decoder decoder("36 80 00 01 41 00 00");  // measured as a segment, refused as one
    const char* text = nullptr;
    EXPECT_EQ(xd_charstr(decoder, &text, ASN1EXPL, TAG_IA5_STRING, 0), RTS_BAD_LENGTH);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(decoder.recorded(), RTS_TAG_MISMATCH);
}

TEST(DecodedText, OddLengthsGiveAnEmptyTextWithinTheMessage) {
    const struct {
        const char* octets;
        unsigned flags;
        ASN1TagType tagging;
        int length;
        int status;
    } rows[] = {
        {"41 42", 0, ASN1IMPL, -7, RTS_OK},
        {"04 01 41 04 01 42 00 00", 0, ASN1IMPL, ASN1_INDEFLEN, RTS_BAD_LENGTH},
        {"16 84 7F FF FF FF 41", ASN1_LAX_LENGTH, ASN1EXPL, 0, RTS_END_OF_BUFFER},
    };
    for (const auto& row : rows) {
        Decoder decoder(row.octets, row.flags);
        const char* text = nullptr;
        EXPECT_EQ(xd_charstr(decoder, &text, row.tagging, TAG_IA5_STRING, row.length), row.status);
        EXPECT_STREQ(text, "");
    }
}

TEST(DecodedText, ClassOfTheTagIsCompared) {
    for (ASN1TAG tag : {TM_CONTEXT | 5u, TM_APPLICATION | 5u, TM_PRIVATE | 5u}) {
        Decoder decoder("85 01 41");
        const char* text = nullptr;
        EXPECT_EQ(xd_charstr(decoder, &text, ASN1EXPL, tag, 0),
                  tag == (TM_CONTEXT | 5u) ? 0 : RTS_TAG_MISMATCH);
    }
}

TEST(EncodedText, HasNoTerminator) {
    Encoder encoder;
    EXPECT_EQ(xe_charstr(encoder, "AB", ASN1EXPL, TM_CONTEXT | 2), 4);
    EXPECT_EQ(xe_charstr(encoder, "C", ASN1IMPL, TAG_UTF8_STRING), 1);
    EXPECT_EQ(xe_charstr(encoder, "", ASN1EXPL, TAG_UTF8_STRING), 2);
    EXPECT_EQ(encoder.message(), "0C 00 43 82 02 41 42");
    EXPECT_EQ(xe_charstr(encoder, nullptr, ASN1EXPL, TAG_UTF8_STRING), RTS_BAD_VALUE);
    EXPECT_EQ(encoder.recorded(), RTS_OK);
}

TEST(EncodedUnits, MissingUnitsAreRefusedAndNoUnitsAreAnEmptyString) {
    Encoder encoder;
    const Asn116BitCharString empty{0, nullptr};
    const Asn116BitCharString missing{1, nullptr};
    std::uint32_t unit = 0;
    const Asn132BitCharString tooLong{0x20000000, &unit};
    EXPECT_EQ(xe_16BitCharStr(encoder, &empty, ASN1EXPL, TAG_BMP_STRING), 2);
    EXPECT_EQ(encoder.message(), "1E 00");
    EXPECT_EQ(xe_16BitCharStr(encoder, &missing, ASN1EXPL, TAG_BMP_STRING), RTS_BAD_VALUE);
    EXPECT_EQ(xe_16BitCharStr(encoder, nullptr, ASN1EXPL, TAG_BMP_STRING), RTS_BAD_VALUE);
    EXPECT_EQ(xe_32BitCharStr(encoder, &tooLong, ASN1EXPL, TAG_UNIVERSAL_STRING), RTS_BAD_LENGTH);
}

TEST(EncodedUnits, FullBufferIsTheFirstFailure) {
    LiveContext ctxt;
    unsigned char buffer[4];
    xe_setp(ctxt, buffer, sizeof buffer);
    std::uint16_t units[] = {1, 2};
    const Asn116BitCharString value{2, units};
    EXPECT_EQ(xe_16BitCharStr(ctxt, &value, ASN1IMPL, TAG_BMP_STRING), RTS_ENCODE_OVERFLOW);
}

struct UnitsRow {
    const char* name;
    const char* octets;
    int status;
    std::vector<std::uint32_t> units;
    std::uint32_t position;
};

TEST(DecodedUnits, AreInHostOrder) {
    const UnitsRow rows[] = {
        {"primitive", "1E 04 00 41 04 10", 0, {0x41, 0x410}, 6},
        {"empty", "1E 00", 0, {}, 2},
        {"odd octet is dropped", "1E 03 00 41 04", 0, {0x41}, 5},
        {"half a unit", "1E 01 41", 0, {}, 3},
        {"unit across segments", "3E 80 04 01 12 04 01 34 00 00", 0, {0x1234}, 10},
        {"indefinite and empty", "3E 80 00 00", 0, {}, 4},
        {"only empty segments", "3E 80 04 00 00 00", RTS_BAD_LENGTH, {}, 2},
        {"cut content", "1E 04 00 41", RTS_END_OF_BUFFER, {}, 2},
        {"foreign tag", "1C 02 00 41", RTS_TAG_MISMATCH, {}, 0},
    };
    for (const UnitsRow& row : rows) {
        SCOPED_TRACE(row.name);
        Decoder decoder(row.octets);
        Asn116BitCharString value{77, nullptr};
        EXPECT_EQ(xd_16BitCharStr(decoder, &value, ASN1EXPL, TAG_BMP_STRING, 0), row.status);
        ASSERT_EQ(value.nchars, row.units.size());
        EXPECT_TRUE(std::equal(row.units.begin(), row.units.end(), value.data));
        EXPECT_EQ(decoder.position(), row.position);
        EXPECT_EQ(decoder.recorded(), row.status);
    }
}

TEST(DecodedUnits, ThirtyTwoBits) {
    Decoder decoder("1C 0B 00 01 F6 00 FF 00 00 01 02 03 04");
    Asn132BitCharString value{};
    EXPECT_EQ(xd_32BitCharStr(decoder, &value, ASN1EXPL, TAG_UNIVERSAL_STRING, 0), RTS_OK);
    ASSERT_EQ(value.nchars, 2u);
    EXPECT_EQ(value.data[0], 0x0001F600u);
    EXPECT_EQ(value.data[1], 0xFF000001u);
}

}  // namespace
