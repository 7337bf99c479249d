#include "asn1rt/open_type.h"

#include "runtime_test.h"

namespace {

std::string octetsOf(const ASN1OpenType& value) {
    return test::text(value.data, value.numocts);
}

struct WriteRow {
    const char* element;
    int result;
    const char* message;
};

TEST(WrittenOpenType, IsTheFirstElementAndNothingBehindIt) {
    const WriteRow rows[] = {
        {"", 0, ""},
        {"02 01 05", 3, "02 01 05"},
        {"02 01 05 FF FF", 3, "02 01 05"},
        {"05 00", 2, "05 00"},
        {"00 00", 2, "00 00"},
        {"30 80 00 00", 4, "30 80 00 00"},
        {"30 80 30 80 00 00 00 00 02", 8, "30 80 30 80 00 00 00 00"},
        {"04 03 41", RTS_BAD_LENGTH, ""},
        {"30 80 02 01 05 00", RTS_END_OF_BUFFER, ""},
        {"30 80 02 01", RTS_END_OF_BUFFER, ""},
        {"30", RTS_END_OF_BUFFER, ""},
        {"04 80 00 00", RTS_BAD_LENGTH, ""},
        {"1F 81 81 81 81 81 81 81 81 81 01 00", RTS_BAD_TAG, ""},
        {"02 85 01", RTS_BAD_LENGTH, ""},
    };
    for (const WriteRow& row : rows) {
        Decoder source(row.element);  // for its memory of exact size
        Encoder encoder;
        EXPECT_EQ(xe_OpenType(encoder, source.data(), static_cast<std::uint32_t>(source.size())), row.result)
            << row.element;
        EXPECT_EQ(encoder.message(), row.message);
        EXPECT_EQ(encoder.recorded(), RTS_OK);
    }
    Encoder encoder;
    const std::int32_t five = 5;
    ASSERT_EQ(xe_integer(encoder, &five, ASN1EXPL), 3);
    EXPECT_EQ(xe_OpenType(encoder, xe_getp(encoder), 3), 3) << "what stands at the cursor is only counted";
    EXPECT_EQ(encoder.message(), "02 01 05");
    EXPECT_EQ(xe_OpenType(encoder, nullptr, 0), 0);
    EXPECT_EQ(xe_OpenType(encoder, nullptr, 2), RTS_BAD_VALUE);
    EXPECT_EQ(xe_OpenType(encoder, xe_getp(encoder), 0x80000000u), RTS_BAD_LENGTH);
}

struct ReadRow {
    const char* name;
    const char* message;
    int status;
    const char* element;  // null: nothing is stored
    std::uint32_t position;
};

TEST(ReadOpenType, IsOneWholeElement) {
    const ReadRow rows[] = {
        {"primitive", "02 01 05 FF", 0, "02 01 05", 3},
        {"without content", "05 00 FF", 0, "05 00", 2},
        {"constructed", "30 03 02 01 05", 0, "30 03 02 01 05", 5},
        {"indefinite", "30 80 A0 80 00 00 00 00 FF", 0, "30 80 A0 80 00 00 00 00", 8},
        {"end of contents", "00 00", RTS_BAD_VALUE, nullptr, 0},
        {"content cut", "04 03 41", RTS_BAD_VALUE, nullptr, 0},
        {"long length cut", "04 81 80 41", RTS_BAD_LENGTH, nullptr, 0},
        {"indefinite primitive", "04 80 00 00", RTS_BAD_LENGTH, nullptr, 0},
        {"end of message", "", 0, nullptr, 0},
        {"tag alone", "30", 0, nullptr, 0},
        {"indefinite without end", "30 80 02 01 05", 0, nullptr, 0},
    };
    for (const ReadRow& row : rows) {
        SCOPED_TRACE(row.name);
        for (unsigned flags : {0u, unsigned{ASN1_NO_COPY}}) {
            Decoder decoder(row.message, flags);
            ASN1OpenType value{77, nullptr};
            EXPECT_EQ(xd_OpenType(decoder, &value.data, &value.numocts), row.status);
            ASSERT_EQ(value.data != nullptr, row.element != nullptr);
            if (row.element) {
                EXPECT_EQ(octetsOf(value), row.element);
                EXPECT_EQ(value.data == decoder.data(), flags == ASN1_NO_COPY);
                EXPECT_EQ(decoder.position(), row.position);
            } else {
                EXPECT_EQ(value.numocts, 77u);
            }
        }
    }
}

TEST(OpenTypeList, IsWrittenInItsOrder) {
    Decoder decoder("02 01 05 04 00 30 80 00 00");
    _Asn1RTDList list{};
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(xd_OpenTypeAppend(decoder, &list), RTS_OK);
    rtDListInsert(decoder, &list, 1, nullptr);  // a node without a value
    Encoder encoder;
    EXPECT_EQ(xe_OpenTypeExt(encoder, &list), 9);
    EXPECT_EQ(encoder.message(), "02 01 05 04 00 30 80 00 00");
    static_cast<ASN1OpenType*>(list.head->data)->numocts = 2;
    EXPECT_EQ(xe_OpenTypeExt(encoder, &list), RTS_BAD_LENGTH);
    EXPECT_EQ(encoder.recorded(), RTS_BAD_LENGTH);
    EXPECT_EQ(xe_OpenTypeExt(encoder, nullptr), 0);
    rtMemFreeOpenSeqExt(decoder, &list);
    EXPECT_EQ(decoder->typeMemHeap->blockList, nullptr);
}

struct ExtensionRow {
    const char* name;
    const char* message;
    std::int64_t length;  // of the parent, which begins at the first octet
    ASN1TAG tag;
    unsigned flags;
    int status;
    std::size_t elements;
    std::uint32_t position;
};

constexpr ASN1TAG kKnown = TM_CONTEXT | 1;

TEST(Extensions, AreGatheredToTheirEnd) {
    const ExtensionRow rows[] = {
        {"to the end of the parent", "02 01 05 04 00 05 00", 5, XD_ANY_TAG, 0, 0, 2, 5},
        {"to the end of the buffer", "02 01 05 04 00", 99, XD_ANY_TAG, 0, 0, 2, 5},
        {"to the end of contents", "02 01 05 00 00", ASN1_INDEFLEN, XD_ANY_TAG, 0, 0, 1, 3},
        {"one octet left of indefinite", "02 01 05 04", ASN1_INDEFLEN, XD_ANY_TAG, 0, 0, 1, 3},
        {"none", "", 0, XD_ANY_TAG, 0, 0, 0, 0},
        {"element cut", "02 01 05 04 03 41", 6, XD_ANY_TAG, 0, RTS_BAD_VALUE, 1, 5},
        {"up to the known element", "02 01 05 04 00 81 01 00", 8, kKnown, 0, 0, 2, 5},
        {"known element comes first", "81 01 00", 3, kKnown, 0, 0, 0, 0},
        {"known element is missing", "02 01 05", 3, kKnown, 0, RTS_END_OF_BUFFER, 1, 3},
        {"element before the known is bad", "00 00 81 01 00", 5, kKnown, 0, RTS_BAD_VALUE, 0, 2},
        // The cursor can't move here: that must end all the same.
        {"end is known", "02 01 05", 3, XD_ANY_TAG, ASN1_INDEF_MESSAGE | ASN1_END_REACHED, 0, 1, 0},
    };
    for (const ExtensionRow& row : rows) {
        SCOPED_TRACE(row.name);
        Decoder decoder(row.message, row.flags);
        const ASN1CCB parent{decoder.data(), row.length};
        _Asn1RTDList list{};
        EXPECT_EQ(xd_OpenTypeExt(decoder, &parent, row.tag, &list), row.status);
        EXPECT_EQ(list.count, row.elements);
        EXPECT_EQ(decoder.position(), row.position);
        EXPECT_EQ(decoder.recorded(), row.status);
    }
}

TEST(Extensions, HeaderThatCannotBeReadIsNotRecorded) {
    Decoder decoder("04 80 00 00");
    const ASN1CCB parent{decoder.data(), decoder.size()};
    _Asn1RTDList list{};
    EXPECT_EQ(xd_OpenTypeExt(decoder, &parent, kKnown, &list), RTS_BAD_LENGTH);
    EXPECT_EQ(decoder.recorded(), RTS_OK);
}

TEST(Extensions, ArePassedOverWithoutAList) {
    Decoder decoder("02 01 05 30 80 00 00 81 01 00");
    const ASN1CCB parent{decoder.data(), decoder.size()};
    EXPECT_EQ(xd_OpenTypeExt(decoder, &parent, kKnown, nullptr), RTS_OK);
    EXPECT_EQ(decoder.position(), 7u);
    EXPECT_EQ(xd_OpenTypeExt(decoder, &parent, XD_ANY_TAG, nullptr), RTS_OK);
    EXPECT_EQ(decoder.position(), 10u);
}

TEST(CountedElements, LeaveCursorAndFlags) {
    struct Row {
        const char* message;
        int length;
        std::uint32_t count;
    };
    const Row rows[] = {{"02 01 05 30 03 02 01 05 05 00", 10, 3},
                        {"02 01 05 04 00", 3, 1},
                        {"02 01 05 04 00", 4, 2},
                        {"02 01 05", 99, 1},
                        {"02 01 05", 0, 0},
                        {"02 01 05", -1, 0},
                        {"30 80 00 00 04 00 00 00 04 00", ASN1_INDEFLEN, 2},
                        {"04 00 04", ASN1_INDEFLEN, 1}};
    for (const Row& row : rows) {
        Decoder decoder(row.message, ASN1_CONSTRUCTED);
        std::uint32_t count = 77;
        EXPECT_EQ(xd_count(decoder, row.length, &count), RTS_OK) << row.message;
        EXPECT_EQ(count, row.count) << row.message;
        EXPECT_EQ(decoder.position(), 0u);
        EXPECT_EQ(decoder->flags, ASN1_CONSTRUCTED);
    }
}

TEST(CountedElements, BadElementEndsTheCountWhereItStands) {
    Decoder decoder("02 01 05 04 80 00 00");
    std::uint32_t count = 77;
    EXPECT_EQ(xd_count(decoder, 7, &count), RTS_BAD_LENGTH);
    EXPECT_EQ(decoder.position(), 5u);
}

}  // namespace
