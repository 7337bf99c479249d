#include "asn1rt/ber_encode.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/contexts.h"

namespace {

using test::Encoder;
using test::LiveContext;

struct Row {
    const char* name;
    std::function<int(ASN1CTXT*)> write;
    int result;
    const char* octets;
};

class EncodeTable : public ::testing::TestWithParam<Row> {};

TEST_P(EncodeTable, WritesTheseOctets) {
    Encoder encoder;
    EXPECT_EQ(GetParam().write(encoder), GetParam().result);
    EXPECT_EQ(encoder.message(), GetParam().octets);
    EXPECT_EQ(encoder.recorded(), RTS_OK);
}

// A row whose result is the count of its octets.
Row written(const char* name, std::function<int(ASN1CTXT*)> write, const char* octets) {
    return {name, std::move(write), static_cast<int>(test::octets(octets).size()), octets};
}

Row integer(const char* name, std::int32_t value, const char* octets) {
    return written(
        name, [value](ASN1CTXT* ctxt) { return xe_integer(ctxt, &value, ASN1EXPL); }, octets);
}

Row number(const char* name, std::uint32_t value, const char* octets) {
    return written(
        name, [value](ASN1CTXT* ctxt) { return xe_unsigned(ctxt, &value, ASN1EXPL); }, octets);
}

Row tag(const char* name, ASN1TAG value, const char* octets) {
    return written(
        name, [value](ASN1CTXT* ctxt) { return xe_tag(ctxt, value); }, octets);
}

Row length(const char* name, int value, const char* octets) {
    return written(
        name, [value](ASN1CTXT* ctxt) { return xe_len(ctxt, value); }, octets);
}

Row identifier(const char* name, std::vector<std::uint32_t> arcs, int result, const char* octets) {
    ASN1OBJID id{};
    id.numids = static_cast<std::uint32_t>(arcs.size());
    std::copy(arcs.begin(), arcs.end(), id.subid);
    return {name, [id](ASN1CTXT* ctxt) { return xe_objid(ctxt, &id, ASN1EXPL); }, result, octets};
}

INSTANTIATE_TEST_SUITE_P(
    Integers, EncodeTable,
    ::testing::Values(integer("Zero", 0, "02 01 00"), integer("P127", 127, "02 01 7F"),
                      integer("P128", 128, "02 02 00 80"), integer("M1", -1, "02 01 FF"),
                      integer("M128", -128, "02 01 80"), integer("M129", -129, "02 02 FF 7F"),
                      integer("M256", -256, "02 02 FF 00"), integer("P32767", 32767, "02 02 7F FF"),
                      integer("P32768", 32768, "02 03 00 80 00"), integer("M32768", -32768, "02 02 80 00"),
                      integer("M32769", -32769, "02 03 FF 7F FF"),
                      integer("Most", INT32_MAX, "02 04 7F FF FF FF"),
                      integer("Least", INT32_MIN, "02 04 80 00 00 00"), number("U0", 0, "02 01 00"),
                      number("U127", 127, "02 01 7F"), number("U128", 128, "02 02 00 80"),
                      number("U256", 256, "02 02 01 00"), number("U80FF", 0x80FF, "02 03 00 80 FF"),
                      number("UMost", 0xFFFFFFFF, "02 05 00 FF FF FF FF")),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    TagsAndLengths, EncodeTable,
    ::testing::Values(tag("Sequence", 0x20000010, "30"), tag("Context0", 0xA0000000, "A0"),
                      tag("Private30", 0xC000001E, "DE"), tag("Number31", 31, "1F 1F"),
                      tag("Number127", 0x4000007F, "5F 7F"), tag("Number128", 128, "1F 81 00"),
                      tag("Largest", 0xFFFFFFFF, "FF 81 FF FF FF 7F"), length("L0", 0, "00"),
                      length("L127", 127, "7F"), length("L128", 128, "81 80"), length("L255", 255, "81 FF"),
                      length("L256", 256, "82 01 00"), length("L65536", 65536, "83 01 00 00"),
                      length("LMost", INT32_MAX, "84 7F FF FF FF"), length("Indefinite", ASN1_INDEFLEN, "80"),
                      length("Negative", -5, "")),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Identifiers, EncodeTable,
    ::testing::Values(identifier("Joined", {2, 999}, 4, "06 02 88 37"),
                      identifier("Rsa", {1, 2, 840, 113549}, 8, "06 06 2A 86 48 86 F7 0D"),
                      identifier("Smallest", {0, 0}, 3, "06 01 00"),
                      identifier("Second39", {1, 39}, 3, "06 01 4F"),
                      identifier("Second40", {1, 40}, RTS_BAD_OBJID, ""),
                      identifier("First3", {3, 1}, RTS_BAD_OBJID, ""),
                      identifier("OneArc", {1}, RTS_BAD_OBJID, ""),
                      identifier("LargestSecond", {2, 4294967215u}, 7, "06 05 8F FF FF FF 7F"),
                      identifier("SecondThatWraps", {2, 4294967216u}, RTS_BAD_OBJID, ""),
                      identifier("LargestArc", {1, 2, 0xFFFFFFFF}, 8, "06 06 2A 8F FF FF FF 7F")),
    [](const auto& info) { return info.param.name; });

const unsigned char kTrue = 1;
const unsigned char kAb[] = {0x61, 0x62};
const std::int32_t kThree = 3;

INSTANTIATE_TEST_SUITE_P(
    Others, EncodeTable,
    ::testing::Values(
        Row{"True", [](ASN1CTXT* c) { return xe_boolean(c, &kTrue, ASN1EXPL); }, 3, "01 01 FF"},
        Row{"Null", [](ASN1CTXT* c) { return xe_null(c, ASN1EXPL); }, 2, "05 00"},
        Row{"ImplicitNull", [](ASN1CTXT* c) { return xe_null(c, ASN1IMPL); }, 0, ""},
        Row{"Enum", [](ASN1CTXT* c) { return xe_enum(c, &kThree, ASN1EXPL); }, 3, "0A 01 03"},
        Row{"Octets", [](ASN1CTXT* c) { return xe_octstr(c, kAb, 2, ASN1EXPL); }, 4, "04 02 61 62"},
        Row{"EmptyOctets", [](ASN1CTXT* c) { return xe_octstr(c, kAb, 0, ASN1EXPL); }, 2, "04 00"},
        Row{"NullOctetsIgnoreTheCount", [](ASN1CTXT* c) { return xe_octstr(c, nullptr, 9, ASN1EXPL); }, 2,
            "04 00"},
        Row{"OctetsBeyond31Bits", [](ASN1CTXT* c) { return xe_octstr(c, kAb, 0x80000000u, ASN1EXPL); },
            RTS_BAD_LENGTH, ""},
        Row{"NullSource", [](ASN1CTXT* c) { return xe_memcpy(c, nullptr, 0); }, RTS_BAD_VALUE, ""},
        Row{"NullInteger", [](ASN1CTXT* c) { return xe_integer(c, nullptr, ASN1EXPL); }, RTS_BAD_VALUE, ""},
        Row{"IdentifierOfTooManyArcs",
            [](ASN1CTXT* c) {
                const ASN1OBJID id{129, {1, 2}};
                return xe_objid(c, &id, ASN1EXPL);
            },
            RTS_BAD_OBJID, ""},
        Row{"NullIdentifier", [](ASN1CTXT* c) { return xe_objid(c, nullptr, ASN1EXPL); }, RTS_BAD_OBJID, ""},
        Row{"FailedContentPasses", [](ASN1CTXT* c) { return xe_tag_len(c, 0x20000010, -5); }, -5, ""},
        Row{"IndefiniteHeader", [](ASN1CTXT* c) { return xe_tag_len(c, 0x20000010, ASN1_INDEFLEN); }, 2,
            "30 80"},
        Row{"SumBeyond31Bits", [](ASN1CTXT* c) { return xe_tag_len(c, 0x20000010, 0x7FFFFFFA); },
            RTS_BAD_LENGTH, ""}),
    [](const auto& info) { return info.param.name; });

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
