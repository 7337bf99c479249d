#include "asn1rt/ber_decode.h"

#include <functional>
#include <span>
#include <string>

#include "asn1rt/cursor.h"
#include "runtime_test.h"

namespace {

// What a read of `octets` gives: its status, what is recorded, where the cursor then stands and, on success,
// a text of the value.
struct Row {
    const char* name;
    const char* octets;
    int status;
    int recorded;
    std::uint32_t position;
    std::string value;
};

using Read = std::function<int(ASN1CTXT*, std::string*)>;

void check(const Row& row, const Read& read, unsigned flags = 0) {
    SCOPED_TRACE(std::string(row.name) + ": " + row.octets);
    Decoder decoder(row.octets, flags);
    std::string value;
    EXPECT_EQ(read(decoder, &value), row.status);
    EXPECT_EQ(decoder.recorded(), row.recorded);
    EXPECT_EQ(decoder.position(), row.position);
    if (row.status == RTS_OK) {
        EXPECT_EQ(value, row.value);
    }
}

void check(std::span<const Row> rows, const Read& read) {
    for (const Row& row : rows)
        check(row, read);
}

template <typename Number, auto Decode>
int readNumber(ASN1CTXT* ctxt, std::string* value) {
    Number number = 0;
    const int status = Decode(ctxt, &number, ASN1EXPL, 0);
    *value = std::to_string(number);
    return status;
}

constexpr auto readInteger = readNumber<std::int32_t, xd_integer>;
constexpr auto readUnsigned = readNumber<std::uint32_t, xd_unsigned>;
constexpr auto readEnum = readNumber<std::int32_t, xd_enum>;
constexpr auto readBoolean = readNumber<unsigned char, xd_boolean>;

int readNull(ASN1CTXT* ctxt, std::string*) {
    return xd_null(ctxt, ASN1EXPL);
}

int readOctets(ASN1CTXT* ctxt, std::string* value) {
    const unsigned char* data = nullptr;
    std::uint32_t count = 77;
    const int status = xd_octstr(ctxt, &data, &count, ASN1EXPL, 0);
    *value = test::text(data, status == RTS_OK ? count : 0);
    return status;
}

int readIntoThree(ASN1CTXT* ctxt, std::string* value) {
    unsigned char buffer[3];
    std::uint32_t count = 3;
    const int status = xd_octstr_s(ctxt, buffer, &count, ASN1EXPL, 0);
    *value = test::text(buffer, status == RTS_OK ? count : 0);
    return status;
}

int readIdentifier(ASN1CTXT* ctxt, std::string* value) {
    ASN1OBJID id{};
    const int status = xd_objid(ctxt, &id, ASN1EXPL, 0);
    for (std::uint32_t i = 0; i < id.numids; ++i)
        *value += (i ? "." : "") + std::to_string(id.subid[i]);
    return status;
}

int readLength(ASN1CTXT* ctxt, std::string* value) {
    int length = 0;
    const int status = xd_len(ctxt, &length);
    *value = std::to_string(length);
    return status;
}

int readTag(ASN1CTXT* ctxt, std::string* value) {
    ASN1TAG tag = 0;
    const int status = xd_tag(ctxt, &tag);
    *value = std::to_string(tag);
    return status;
}

int readTagAndLength(ASN1CTXT* ctxt, std::string* value) {
    ASN1TAG tag = 0;
    int length = 0;
    const int status = xd_tag_len(ctxt, &tag, &length, XD_ADVANCE);
    *value = std::to_string(tag) + "/" + std::to_string(length);
    return status;
}

TEST(DecodeInteger, BoundaryValuesAndRefusals) {
    const Row rows[] = {
        {"zero", "02 01 00", 0, 0, 3, "0"},
        {"minus one", "02 01 FF", 0, 0, 3, "-1"},
        {"not minimal", "02 03 00 00 05", 0, 0, 5, "5"},
        {"most", "02 04 7F FF FF FF", 0, 0, 6, "2147483647"},
        {"least", "02 04 80 00 00 00", 0, 0, 6, "-2147483648"},
        {"long length", "02 81 01 07", 0, 0, 4, "7"},
        {"empty", "02 00", -5, -5, 2, ""},
        {"five octets", "02 05 00 FF FF FF FF", -33, -33, 2, ""},
        {"too large before too short", "02 05", -33, -33, 2, ""},
        {"indefinite", "02 80", -33, -33, 2, ""},
        {"wrong tag", "03 01 00", -3, -3, 0, ""},
        {"constructed", "22 01 00", -3, -3, 0, ""},
        {"nothing", "", -2, -2, 0, ""},
        {"tag alone", "02", -2, -2, 1, ""},
        {"content cut", "02 02 00", -2, -2, 2, ""},
        {"length of five octets", "02 85 00 00 00 00 01 00", -5, -5, 2, ""},
    };
    check(rows, readInteger);
}

TEST(DecodeUnsigned, SignIsNotLookedAt) {
    const Row rows[] = {
        {"top bit", "02 01 FF", 0, 0, 3, "255"},
        {"most", "02 05 00 FF FF FF FF", 0, 0, 7, "4294967295"},
        {"four octets", "02 04 FF FF FF FF", 0, 0, 6, "4294967295"},
        {"empty is 0", "02 00", 0, 0, 2, "0"},
        {"fifth octet not 0", "02 05 01 00 00 00 00", -33, -33, 2, ""},
        {"first octet comes before the end", "02 05 01", -33, -33, 2, ""},
        {"six octets", "02 06 00 00 00 00 00 00", -33, -33, 2, ""},
        {"indefinite", "02 80", -33, -33, 2, ""},
        {"content cut", "02 03 01 02", -2, 0, 4, ""},
        {"wrong tag", "04 01 00", -3, -3, 0, ""},
    };
    check(rows, readUnsigned);
}

TEST(DecodeEnumBooleanNull, Table) {
    check({"enum", "0A 01 05", 0, 0, 3, "5"}, readEnum);
    check({"wrong tag is not recorded", "02 01 05", -3, 0, 0, ""}, readEnum);
    check({"empty", "0A 00", -5, -5, 2, ""}, readEnum);
    check({"tag alone", "0A", -2, -2, 1, ""}, readEnum);
    check({"one stays one", "01 01 01", 0, 0, 3, "1"}, readBoolean);
    check({"two octets", "01 02 01 01", -5, -5, 2, ""}, readBoolean);
    check({"no long form", "01 81 01 FF", -5, -5, 2, ""}, readBoolean);
    check({"content cut", "01 01", -2, -2, 2, ""}, readBoolean);
    check({"wrong tag", "21 01 FF", -3, -3, 0, ""}, readBoolean);
    check({"null", "05 00", 0, 0, 2, ""}, readNull);
    check({"null with content", "05 01 00", -5, -5, 2, ""}, readNull);
    check({"null cut", "05", -2, -2, 1, ""}, readNull);
}

TEST(DecodeOctetString, PrimitiveAndConstructedForms) {
    const Row rows[] = {
        {"primitive", "04 02 41 42", 0, 0, 4, "41 42"},
        {"empty", "04 00", 0, 0, 2, ""},
        {"segments", "24 06 04 01 41 04 01 42", 0, 0, 8, "41 42"},
        {"indefinite", "24 80 04 01 41 04 01 42 00 00", 0, 0, 10, "41 42"},
        {"indefinite, no segments", "24 80 00 00", 0, 0, 4, ""},
        {"indefinite, empty segment", "24 80 04 00 00 00", 0, 0, 6, ""},
        {"indefinite primitive", "04 80 00 00", -5, -5, 2, ""},
        {"segment of constructed form", "24 05 24 03 04 01 41", -3, -3, 2, ""},
        {"the same, indefinite", "24 80 24 03 04 01 41 00 00", -21, -21, 4, ""},
        {"indefinite segment", "24 80 04 80 00 00 00 00", -5, -5, 4, ""},
        {"foreign segment", "24 80 05 00 00 00", -21, -21, 4, ""},
        {"no end-of-contents", "24 80 04 01 41", -2, -2, 5, ""},
        {"segment beyond the whole", "24 03 04 05 41 42 43 44 45", -17, -17, 4, ""},
        {"segments sum up beyond the whole", "24 06 04 02 41 42 04 06 41 42 43 44 45 46", -5, -5, 8, ""},
        {"content cut", "04 03 41 42", -2, -2, 2, ""},
        {"segment cut", "24 05 04 03 41 42", -2, -2, 4, ""},
        {"last segment is a tag alone", "24 04 04 01 41 04", 0, -2, 6, "41"},
        {"last segment has a bad length", "24 05 04 01 41 04 85", 0, -5, 7, "41"},
        {"span does not fit", "24 05 04 01 41 04 01 42", -5, -5, 8, ""},
        {"zero tag with content", "24 80 00 01 41 00 00", -5, -3, 2, ""},
        {"wrong tag", "05 00", -3, -3, 0, ""},
    };
    check(rows, readOctets);
}

TEST(DecodeOctetString, IntoTheCallersBuffer) {
    check({"fits", "04 03 41 42 43", 0, 0, 5, "41 42 43"}, readIntoThree);
    check({"too long", "04 04 41 42 43 44", -17, -17, 2, ""}, readIntoThree);
    check({"constructed is refused under the tag", "24 03 04 01 41", -3, -3, 0, ""}, readIntoThree);
    check({"nothing", "", -2, -2, 0, ""}, readIntoThree);

    Decoder decoder("04 01 41 04 01 42");
    decoder->flags |= ASN1_CONSTRUCTED;
    unsigned char buffer[6];
    std::uint32_t count = 6;
    EXPECT_EQ(xd_octstr_s(decoder, buffer, &count, ASN1IMPL, 6), RTS_OK);
    EXPECT_EQ(test::text(buffer, count), "41 42");
    decoder->buffer.byteIndex = 0;
    EXPECT_EQ(xd_octstr_s(decoder, buffer, &count, ASN1IMPL, ASN1_INDEFLEN), RTS_BAD_LENGTH);
}

TEST(DecodeOctetString, NoCopyPointsIntoTheMessage) {
    Decoder decoder("04 02 41 42 24 80 04 01 43 00 00", ASN1_NO_COPY);
    const unsigned char* data = nullptr;
    std::uint32_t count = 0;
    ASSERT_EQ(xd_octstr(decoder, &data, &count, ASN1EXPL, 0), RTS_OK);
    EXPECT_EQ(data, decoder.data() + 2);
    EXPECT_EQ(count, 2u);
    ASSERT_EQ(xd_octstr(decoder, &data, &count, ASN1EXPL, 0), RTS_OK) << "segments are gathered all the same";
    EXPECT_EQ(test::text(data, count), "43");

    Decoder cut("04 03 41 42", ASN1_NO_COPY);
    EXPECT_EQ(xd_octstr(cut, &data, &count, ASN1EXPL, 0), RTS_END_OF_BUFFER);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(count, 0u);
    data = cut.data();
    EXPECT_EQ(xd_octstr(cut, &data, &count, ASN1IMPL, -7), RTS_OK) << "a negative length is nothing";
    EXPECT_EQ(data, nullptr);

    for (const unsigned flags : {0u, unsigned{ASN1_NO_COPY}}) {
        Decoder indefinite("04 01 41 00 00", flags);
        EXPECT_EQ(xd_octstr(indefinite, &data, &count, ASN1IMPL, ASN1_INDEFLEN), RTS_BAD_LENGTH)
            << "a primitive has no indefinite form";
    }
}

TEST(DecodeIdentifier, Table) {
    const Row rows[] = {
        {"joined under 2", "06 02 88 37", 0, 0, 4, "2.999"},
        {"39", "06 01 27", 0, 0, 3, "0.39"},
        {"79", "06 01 4F", 0, 0, 3, "1.39"},
        {"80", "06 01 50", 0, 0, 3, "2.0"},
        {"largest second", "06 05 8F FF FF FF 7F", 0, 0, 7, "2.4294967215"},
        {"last octet goes on", "06 02 2A 83", 0, 0, 4, "1.2.3"},
        {"overflow drops upper bits", "06 07 2A 9F FF FF FF FF 7F", 0, 0, 9, "1.2.4294967295"},
        {"empty", "06 00", -5, -5, 2, ""},
        {"cut", "06 03 2A 03", -2, -2, 2, ""},
        {"wrong tag", "26 01 2A", -3, -3, 0, ""},
    };
    check(rows, readIdentifier);
}

TEST(DecodeIdentifier, TheOneHundredTwentyNinthArcIsRefused) {
    for (int octetCount : {127, 128}) {
        test::Octets message = test::octets("06 81 00");
        message[2] = static_cast<unsigned char>(octetCount);
        message.resize(message.size() + static_cast<std::size_t>(octetCount), 0x01);
        Decoder decoder(message);
        ASN1OBJID id{};
        EXPECT_EQ(xd_objid(decoder, &id, ASN1EXPL, 0), octetCount == 127 ? RTS_OK : RTS_BAD_OBJID);
        EXPECT_EQ(id.numids, 128u);
        EXPECT_EQ(decoder.recorded(), RTS_OK);
    }
}

TEST(DecodeTag, Numbers) {
    const Row rows[] = {
        {"sequence", "30", 0, 0, 1, "536870928"},
        {"31", "1F 1F", 0, 0, 2, "31"},
        {"128", "1F 81 00", 0, 0, 3, "128"},
        {"largest", "1F 81 FF FF FF 7F", 0, 0, 6, "536870911"},
        {"too large", "1F 82 80 80 80 00", -21, 0, 6, ""},
        {"nine octets", "1F 80 80 80 80 80 80 80 80 01", 0, 0, 10, "1"},
        {"ten octets", "1F 80 80 80 80 80 80 80 80 80 01", -21, 0, 10, ""},
        {"cut", "1F 81", -2, 0, 2, ""},
        {"nothing", "", -2, 0, 0, ""},
    };
    check(rows, readTag);
}

TEST(DecodeLength, FormsAndBounds) {
    const Row rows[] = {
        {"short", "01 00", 0, 0, 1, "1"},
        {"short beyond the end", "02 00", -5, -5, 1, ""},
        {"indefinite", "80", 0, 0, 1, "-9999"},
        {"pattern of the indefinite mark", "84 FF FF D8 F1", 0, 0, 5, "-9999"},
        {"four octets", "84 00 00 00 01 00", 0, 0, 5, "1"},
        {"negative", "84 FF FF FF FF", -5, -5, 5, ""},
        {"five octets", "85 00 00 00 00 01 00", -5, -5, 1, ""},
        {"cut", "82 01", -2, -2, 2, ""},
    };
    check(rows, readLength);
    check({"lax: beyond the end", "82 01 00", 0, 0, 3, "256"}, readLength, ASN1_LAX_LENGTH);
    check({"lax: negative", "84 FF FF FF FF", -5, -5, 5, ""}, readLength, ASN1_LAX_LENGTH);
    check({"lax: largest", "84 7F FF FF FF", 0, 0, 5, "2147483647"}, readLength, ASN1_LAX_LENGTH);
}

TEST(DecodeTagAndLength, ShortLengthGoesUncheckedAndTheFormsHold) {
    check({"short beyond the end", "04 05 00", 0, 0, 2, "4/5"}, readTagAndLength);
    check({"long beyond the end", "04 81 85 00", -5, -5, 3, ""}, readTagAndLength);
    check({"indefinite primitive", "04 80", -5, 0, 2, ""}, readTagAndLength);
    check({"indefinite constructed", "24 80", 0, 0, 2, "536870916/-9999"}, readTagAndLength);
    check({"end-of-contents", "00 00", 0, 0, 2, "0/0"}, readTagAndLength);
    check({"tag alone", "04", -2, 0, 1, ""}, readTagAndLength);
    check({"end reached", "04 00", -2, 0, 0, ""}, readTagAndLength, ASN1_INDEF_MESSAGE | ASN1_END_REACHED);
}

TEST(DecodeTagAndLength, WithoutAdvanceNothingMoves) {
    for (const char* octets : {"24 01 00", "1F 81", "04 80", "24 82 01"}) {
        Decoder decoder(octets);
        ASN1TAG tag = 0;
        int length = 0;
        xd_tag_len(decoder, &tag, &length, 0);
        EXPECT_EQ(decoder.position(), 0u) << octets;
        EXPECT_EQ(decoder->flags, 0) << octets;
    }
    Decoder known("04 80");
    int length = 0;
    EXPECT_EQ(xd_Tag1AndLen(known, &length), RTS_OK) << "a known tag may be primitive and indefinite";
    EXPECT_EQ(length, ASN1_INDEFLEN);
}

TEST(MatchOctet, FormIsMaskedAndLengthPointerDecides) {
    struct {
        const char* octets;
        bool wantsLength;
        int status;
        int length;
    } const rows[] = {
        {"30 01 00", true, 0, 1},      {"10 01 00", true, 0, 1},
        {"31 00", true, -3, 0},        {"30", true, -2, 0},
        {"30 80", true, 0, -9999},     {"10 80", true, -5, 0},
        {"10 80", false, 0, 0},        {"", true, -2, 0},
        {"30 82 01", true, -2, 0},     {"30 05", true, 0, 5},
        {"30 81 80 00", false, -5, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        Decoder decoder(row.octets);
        int length = 0;
        EXPECT_EQ(xd_match1(decoder, 0x10, row.wantsLength ? &length : nullptr), row.status);
        EXPECT_EQ(length, row.length);
        EXPECT_EQ(decoder.recorded(), row.status);
        if (row.status == RTS_TAG_MISMATCH) {
            EXPECT_EQ(decoder.position(), 0u);
        }
    }
}

TEST(Match, SeeksThroughNestingAndSkips) {
    Decoder decoder("30 0A 02 01 01 30 05 02 01 02 04 00 02 01 03");
    int length = 0;
    EXPECT_EQ(xd_match(decoder, 4, &length, XD_SEEK), RTS_OK);
    EXPECT_EQ(decoder.position(), 10u);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(xd_match(decoder, 4, &length, XD_SEEK | XD_SKIP), RTS_TAG_MISMATCH);
    decoder->buffer.byteIndex = 0;
    EXPECT_EQ(xd_match(decoder, 2, &length, XD_SEEK), RTS_OK);
    EXPECT_EQ(decoder.position(), 2u);
    EXPECT_EQ(xd_match(decoder, 2, &length, XD_SEEK | XD_SKIP), RTS_OK);
    EXPECT_EQ(decoder.position(), 7u) << "a constructed element is entered";
    EXPECT_EQ(xd_match(decoder, 2, &length, XD_SEEK | XD_SKIP | XD_ADVANCE), RTS_OK);
    EXPECT_EQ(decoder.position(), 14u);
    decoder->buffer.byteIndex = 0;
    EXPECT_EQ(xd_match(decoder, 2, &length, XD_SEEK | XD_SKIP), RTS_OK);
    EXPECT_EQ(decoder.position(), 2u) << "skipped, it is entered as well";
    decoder->buffer.byteIndex = 15;
    EXPECT_EQ(xd_match(decoder, 2, &length, XD_SEEK | XD_SKIP), RTS_TAG_MISMATCH);
    EXPECT_EQ(decoder.position(), 15u) << "a skip at the end stays there";

    Decoder constructed("24 03 04 01 41");
    EXPECT_EQ(xd_match(constructed, 4, &length, 0), RTS_TAG_MISMATCH) << "without a search the form counts";
    EXPECT_EQ(xd_match(constructed, 4, &length, XD_SEEK), RTS_OK);
    EXPECT_EQ(constructed.position(), 0u);
}

TEST(SetPosition, NarrowsTheBufferToTheOutermostElement) {
    struct {
        const char* octets;
        int size;  // -1: the octets' own
        int status;
        int length;
        std::uint32_t bufferSize;
    } const rows[] = {
        {"30 02 05 00 FF FF", -1, 0, 4, 4},
        {"30 05 05 00", -1, -5, 7, 4},     // a short length cut: total and tag are told
        {"30 81 85 05 00", -1, -5, 0, 5},  // a long one fails earlier
        {"30 80 05 00 00 00 FF", -1, 0, -9999, 7},
        {"30 02 05 00", 0, 0, 4, 4},  // size unknown
        {"04 80", -1, -5, 0, 2},
        {"30", -1, -2, 0, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.octets);
        Decoder decoder(row.octets);
        ASN1TAG tag = 0;
        int length = 0;
        const int size = row.size < 0 ? decoder.size() : row.size;
        EXPECT_EQ(xd_setp(decoder, decoder.data(), size, &tag, &length), row.status);
        EXPECT_EQ(length, row.length);
        EXPECT_EQ(decoder->buffer.size, row.bufferSize);
        EXPECT_EQ((decoder->flags & ASN1_INDEF_MESSAGE) != 0, row.length == -9999);
        if (row.status != RTS_END_OF_BUFFER) {
            EXPECT_EQ(decoder.position(), 0u);
        }
    }
    Decoder decoder("30 00");
    EXPECT_EQ(xd_setp(decoder, nullptr, 2, nullptr, nullptr), RTS_BAD_VALUE);
    Decoder lax("30 05 05 00", ASN1_LAX_LENGTH);
    EXPECT_EQ(xd_setp(lax, lax.data(), 4, nullptr, nullptr), RTS_OK);
    EXPECT_EQ(lax->buffer.size, 4u);
}

TEST(StepOver, WholeElementsAndIndefiniteOnes) {
    Decoder decoder("30 80 24 80 04 01 41 00 00 05 00 00 00 02 01 07");
    EXPECT_EQ(xd_NextElement(decoder), RTS_OK);
    EXPECT_EQ(decoder.position(), 13u);
    EXPECT_EQ(xd_NextElement(decoder), RTS_OK);
    EXPECT_EQ(xd_NextElement(decoder), RTS_END_OF_BUFFER);

    Decoder beyond("04 7F 00");
    EXPECT_EQ(xd_NextElement(beyond), RTS_OK);
    EXPECT_EQ(xd_NextElement(beyond), RTS_END_OF_BUFFER);

    const auto measure = [](const char* octets) {
        Decoder message(octets);
        return xd_indeflen_ex(message.data(), message.size());
    };
    EXPECT_EQ(measure("30 80 05 00 00 00"), 6);
    EXPECT_EQ(measure("30 80 30 80 00 00 00 00 FF"), 8);
    EXPECT_EQ(measure("30 80 00 00"), 0) << "below five octets";
    EXPECT_EQ(measure("30 03 02 01 05"), RTS_BAD_LENGTH);
    EXPECT_EQ(measure("30 80 30 80 00 00"), RTS_END_OF_BUFFER);
    EXPECT_EQ(measure("30 80 04 7F 00 00"), RTS_END_OF_BUFFER);
    EXPECT_EQ(measure("1F 81 81 81 81"), RTS_END_OF_BUFFER);

    // The cursor never comes round to the front.
    decoder->buffer.byteIndex = 0xFFFFFF00u;
    for (int length : {0xFF, 0x7FFFFFFF}) {
        asn1rt::stepOver(decoder, length);
        EXPECT_EQ(decoder->buffer.byteIndex, 0xFFFFFFFFu);
    }
}

TEST(SavedState, ComesBackWithoutEndReached) {
    Decoder decoder("05 00 05 00", ASN1_END_REACHED | ASN1_CONSTRUCTED);
    ASN1BufferState state;
    xu_SaveBufferState(decoder, &state);
    decoder->buffer.byteIndex = 2;
    decoder->flags = 0;
    xu_RestoreBufferState(decoder, &state);
    EXPECT_EQ(decoder.position(), 0u);
    EXPECT_EQ(decoder->flags, ASN1_CONSTRUCTED);
}

}  // namespace
