#include "asn1rt/ber_encode.h"

#include <functional>
#include <string>
#include <vector>

#include "asn1rt/big_integer_codec.h"
#include "asn1rt/char_string.h"
#include "asn1rt/list.h"
#include "asn1rt/open_type.h"
#include "asn1rt/universal_tags.h"
#include "runtime_test.h"
#include "support/allocation.h"

namespace {

struct Row {
    std::string name;
    std::function<int(ASN1CTXT*)> write;
    int result;
    const char* octets;
};

void check(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Encoder encoder;
        EXPECT_EQ(row.write(encoder), row.result);
        EXPECT_EQ(encoder.message(), row.octets);
        EXPECT_EQ(encoder.recorded(), RTS_OK);
    }
}

// A row whose result is the count of its octets.
Row written(std::string name, std::function<int(ASN1CTXT*)> write, const char* octets) {
    return {std::move(name), std::move(write), static_cast<int>(test::octets(octets).size()), octets};
}

Row integer(std::int32_t value, const char* octets) {
    return written(
        std::to_string(value), [value](ASN1CTXT* c) { return xe_integer(c, &value, ASN1EXPL); }, octets);
}

Row number(std::uint32_t value, const char* octets) {
    return written(
        std::to_string(value), [value](ASN1CTXT* c) { return xe_unsigned(c, &value, ASN1EXPL); }, octets);
}

Row tag(ASN1TAG value, const char* octets) {
    return written(
        std::to_string(value), [value](ASN1CTXT* c) { return xe_tag(c, value); }, octets);
}

Row length(int value, const char* octets) {
    return written(
        std::to_string(value), [value](ASN1CTXT* c) { return xe_len(c, value); }, octets);
}

Row identifier(const char* name, std::vector<std::uint32_t> arcs, int result, const char* octets) {
    ASN1OBJID id{};
    id.numids = static_cast<std::uint32_t>(arcs.size());
    std::copy(arcs.begin(), arcs.end(), id.subid);
    return {name, [id](ASN1CTXT* c) { return xe_objid(c, &id, ASN1EXPL); }, result, octets};
}

TEST(Encode, IntegersInTheShortestForm) {
    check({integer(0, "02 01 00"), integer(127, "02 01 7F"), integer(128, "02 02 00 80"),
           integer(-1, "02 01 FF"), integer(-128, "02 01 80"), integer(-129, "02 02 FF 7F"),
           integer(-256, "02 02 FF 00"), integer(32767, "02 02 7F FF"), integer(32768, "02 03 00 80 00"),
           integer(-32768, "02 02 80 00"), integer(-32769, "02 03 FF 7F FF"),
           integer(INT32_MAX, "02 04 7F FF FF FF"), integer(INT32_MIN, "02 04 80 00 00 00")});
    check({number(0, "02 01 00"), number(127, "02 01 7F"), number(128, "02 02 00 80"),
           number(256, "02 02 01 00"), number(0x80FF, "02 03 00 80 FF"),
           number(0xFFFFFFFF, "02 05 00 FF FF FF FF")});
}

TEST(Encode, TagsAndLengthsInTheShortestForm) {
    check({tag(0x20000010, "30"), tag(0xA0000000, "A0"), tag(0xC000001E, "DE"), tag(31, "1F 1F"),
           tag(0x4000007F, "5F 7F"), tag(128, "1F 81 00"), tag(0xFFFFFFFF, "FF 81 FF FF FF 7F")});
    check({length(0, "00"), length(127, "7F"), length(128, "81 80"), length(255, "81 FF"),
           length(256, "82 01 00"), length(65536, "83 01 00 00"), length(INT32_MAX, "84 7F FF FF FF"),
           length(ASN1_INDEFLEN, "80"), length(-5, "")});
}

TEST(Encode, IdentifiersWithTwoArcsJoined) {
    check({
        identifier("joined", {2, 999}, 4, "06 02 88 37"),
        identifier("RSA", {1, 2, 840, 113549}, 8, "06 06 2A 86 48 86 F7 0D"),
        identifier("smallest", {0, 0}, 3, "06 01 00"),
        identifier("second of 39", {1, 39}, 3, "06 01 4F"),
        identifier("second of 40", {1, 40}, RTS_BAD_OBJID, ""),
        identifier("first of 3", {3, 1}, RTS_BAD_OBJID, ""),
        identifier("one arc", {1}, RTS_BAD_OBJID, ""),
        identifier("largest second", {2, 4294967215u}, 7, "06 05 8F FF FF FF 7F"),
        identifier("second that wraps", {2, 4294967216u}, RTS_BAD_OBJID, ""),
        identifier("largest arc", {1, 2, 0xFFFFFFFF}, 8, "06 06 2A 8F FF FF FF 7F"),
    });
}

const unsigned char kTrue = 1;
const unsigned char kAb[] = {0x61, 0x62};
const std::int32_t kThree = 3;
const ASN1OBJID kTooManyArcs{129, {1, 2}};

TEST(Encode, OtherValuesAndWhatIsMissing) {
    check({
        {"true", [](ASN1CTXT* c) { return xe_boolean(c, &kTrue, ASN1EXPL); }, 3, "01 01 FF"},
        {"null", [](ASN1CTXT* c) { return xe_null(c, ASN1EXPL); }, 2, "05 00"},
        {"implicit null", [](ASN1CTXT* c) { return xe_null(c, ASN1IMPL); }, 0, ""},
        {"enum", [](ASN1CTXT* c) { return xe_enum(c, &kThree, ASN1EXPL); }, 3, "0A 01 03"},
        {"octets", [](ASN1CTXT* c) { return xe_octstr(c, kAb, 2, ASN1EXPL); }, 4, "04 02 61 62"},
        {"no octets", [](ASN1CTXT* c) { return xe_octstr(c, kAb, 0, ASN1EXPL); }, 2, "04 00"},
        {"null ignores the count", [](ASN1CTXT* c) { return xe_octstr(c, nullptr, 9, ASN1EXPL); }, 2,
         "04 00"},
        {"beyond 31 bits", [](ASN1CTXT* c) { return xe_octstr(c, kAb, 0x80000000u, ASN1EXPL); },
         RTS_BAD_LENGTH, ""},
        {"null source", [](ASN1CTXT* c) { return xe_memcpy(c, nullptr, 0); }, RTS_BAD_VALUE, ""},
        {"null integer", [](ASN1CTXT* c) { return xe_integer(c, nullptr, ASN1EXPL); }, RTS_BAD_VALUE, ""},
        {"too many arcs", [](ASN1CTXT* c) { return xe_objid(c, &kTooManyArcs, ASN1EXPL); }, RTS_BAD_OBJID,
         ""},
        {"null identifier", [](ASN1CTXT* c) { return xe_objid(c, nullptr, ASN1EXPL); }, RTS_BAD_OBJID, ""},
        {"failed content", [](ASN1CTXT* c) { return xe_tag_len(c, 0x20000010, -5); }, -5, ""},
        {"indefinite", [](ASN1CTXT* c) { return xe_tag_len(c, 0x20000010, ASN1_INDEFLEN); }, 2, "30 80"},
        {"sum beyond", [](ASN1CTXT* c) { return xe_tag_len(c, 0x20000010, 0x7FFFFFFA); }, RTS_BAD_LENGTH, ""},
    });
}

TEST(EncodeBuffer, StaticBufferTakesOneOctetLessThanItsSize) {
    for (std::uint32_t size : {0u, 1u, 4u, 200u}) {
        LiveContext ctxt;
        std::vector<unsigned char> buffer(size + 1, 0xEE);
        ASSERT_EQ(xe_setp(ctxt, buffer.data(), size), RTS_OK);
        std::uint32_t written = 0;
        while (xe_memcpy(ctxt, kAb, 1) == 1)
            ++written;
        EXPECT_EQ(written, size > 0 ? size - 1 : 0);
        EXPECT_EQ(xe_memcpy(ctxt, kAb, 1), RTS_ENCODE_OVERFLOW);
        EXPECT_EQ(buffer[size > 0 ? size - 1 : 0], 0xEE) << "the last octet is never written";
    }
}

TEST(EncodeBuffer, GrowthKeepsTheDistanceFromTheEnd) {
    Encoder encoder;
    ASN1CTXT* ctxt = encoder;
    std::vector<unsigned char> expected;
    for (int i = 0; i < 70000; ++i) {
        const auto octet = static_cast<unsigned char>(i * 7 + i / 251);
        ASSERT_EQ(xe_memcpy(ctxt, &octet, 1), 1);
        expected.insert(expected.end(), octet);
    }
    ASN1BufLocDescr location;
    xe_getBufLocDescr(ctxt, 5, &location);
    EXPECT_EQ(location.numocts, 5);
    EXPECT_EQ(location.offset, 70000u);
    EXPECT_EQ(ctxt->buffer.size % 16384, 0u);
    EXPECT_TRUE(std::equal(expected.rbegin(), expected.rend(), xe_getp(ctxt)));

    const std::vector<unsigned char> large(100000, 0x55);
    EXPECT_EQ(xe_memcpy(ctxt, large.data(), 100000), 100000);
    EXPECT_EQ(xe_getp(ctxt)[100000], expected.back());
}

// With the fixed step alone these two megabytes would move 128 times.
TEST(EncodeBuffer, ValuesWrittenInManyPiecesGrowItInProportion) {
    constexpr std::uint32_t octets = 2 << 20;
    const auto expectFewBlocks = [](const auto& write) {
        Encoder encoder;
        const test::CountedAllocations allocations;
        EXPECT_GE(write(encoder), static_cast<int>(octets));
        EXPECT_LE(allocations.made(), 12);
    };
    const std::string digits = "0x" + std::string(2 * octets, '5');
    expectFewBlocks([&](ASN1CTXT* ctxt) { return xe_bigint(ctxt, digits.c_str(), ASN1EXPL); });

    std::vector<std::uint16_t> units(octets / 2, 0x41);
    const Asn116BitCharString text{octets / 2, units.data()};
    expectFewBlocks([&](ASN1CTXT* ctxt) { return xe_16BitCharStr(ctxt, &text, ASN1EXPL, TAG_BMP_STRING); });

    test::Octets null = test::octets("05 00");
    std::vector<ASN1OpenType> elements(octets / 2, {2, null.data()});
    test::LiveContext owner;
    _Asn1RTDList list{};
    for (ASN1OpenType& element : elements)
        rtDListAppend(owner, &list, &element);
    expectFewBlocks([&](ASN1CTXT* ctxt) { return xe_OpenTypeExt(ctxt, &list); });
}

TEST(EncodeBuffer, FreedBufferRefusesEveryWrite) {
    Encoder encoder;
    xe_free(encoder);
    EXPECT_EQ(xe_memcpy(encoder, kAb, 1), RTS_ENCODE_OVERFLOW);
    EXPECT_EQ(xe_expandBuffer(encoder, 1), RTS_ENCODE_OVERFLOW);

    LiveContext ctxt;
    unsigned char buffer[8];
    xe_setp(ctxt, buffer, 8);
    xe_free(ctxt);
    EXPECT_EQ(xe_memcpy(ctxt, kAb, 2), 2) << "a static buffer stays";
}

TEST(EncodeBuffer, GrowthBeyond31BitsIsRefusedAndChangesNothing) {
    Encoder encoder;
    EXPECT_EQ(xe_expandBuffer(encoder, 0x7FFFFFFF), RTS_NO_MEMORY);
    EXPECT_EQ(xe_expandBuffer(encoder, 0xFFFFFFFF), RTS_NO_MEMORY);
    EXPECT_EQ(encoder->buffer.size, 16384u);
    EXPECT_EQ(xe_memcpy(encoder, kAb, 2), 2);
}

}  // namespace
