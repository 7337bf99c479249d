#include "asn1rt/object_identifier.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace {

using Arcs = std::vector<std::uint32_t>;

Arcs arcsOf(const ASN1OBJID& oid) {
    return Arcs(oid.subid, oid.subid + std::min<std::uint32_t>(oid.numids, 128));
}

ASN1TObjId identifier(const Arcs& arcs) {
    return ASN1TObjId(static_cast<std::uint8_t>(arcs.size()), arcs.data());
}

std::string dotted(std::size_t arcs) {
    std::string text = "1";
    for (std::size_t i = 1; i < arcs; ++i)
        text += ".1";
    return text;
}

TEST(ObjectIdentifier, TextIsReadArcByArc) {
    struct {
        const char* text;
        int result;
        Arcs arcs;
    } const rows[] = {
        {"1.2.643.2.2.47", 1, {1, 2, 643, 2, 2, 47}},
        {"", 1, {0}},
        {"1..2", 1, {1, 0, 2}},
        {"1.", 1, {1, 0}},
        {" 1.\t+2", 1, {1, 2}},
        {"1.4294967295", 1, {1, 4294967295}},
        {"1.4294967297", 1, {1, 1}},
        {"-1.99999999999999999999", 1, {4294967295, 4294967295}},
        {"1.a", 0, {1, 0}},
        {"1 .2", 0, {1}},
        {"1. .2", 0, {1, 0}},
        {"1.2 ", 0, {1, 2}},
    };
    for (const auto& row : rows) {
        ASN1OBJID oid;
        errno = EDOM;
        EXPECT_EQ(rtStrToOid(row.text, &oid), row.result) << row.text;
        EXPECT_EQ(arcsOf(oid), row.arcs) << row.text;
        EXPECT_EQ(errno, EDOM);
    }
}

TEST(ObjectIdentifier, TextStopsAtArc128) {
    ASN1OBJID oid;
    EXPECT_EQ(rtStrToOid(dotted(128).c_str(), &oid), 1);
    EXPECT_EQ(oid.numids, 128u);
    for (std::size_t arcs : {129, 130, 5000}) {
        EXPECT_EQ(rtStrToOid(dotted(arcs).c_str(), &oid), 0);
        EXPECT_EQ(oid.numids, 128u);
    }
    EXPECT_EQ(rtStrToOid(nullptr, &oid), 0);
    EXPECT_EQ(oid.numids, 0u);
}

TEST(ObjectIdentifier, TextIsWrittenInWholePieces) {
    const ASN1TObjId oid = identifier({1, 4294967295, 0, 10});
    const struct {
        int room, result;
        const char* text;
    } rows[] = {{17, 1, "1.4294967295.0.10"},
                {16, 0, "1.4294967295.0"},
                {12, 0, "1.4294967295"},
                {11, 0, "1"},
                {1, 0, "1"},
                {0, 0, ""}};
    EXPECT_EQ(rtOidToStrLen(&oid), 17);
    for (const auto& row : rows) {
        std::vector<char> text(static_cast<std::size_t>(row.room) + 1, '?');  // no octet more than is allowed
        EXPECT_EQ(rtOidToStr(&oid, text.data(), row.room), row.result) << row.room;
        EXPECT_STREQ(text.data(), row.text) << row.room;
    }
    char one = '?';
    EXPECT_EQ(rtOidToStr(&oid, &one, -1), 0);
    EXPECT_EQ(one, '?');
    const ASN1TObjId empty;
    for (const ASN1OBJID* none : std::initializer_list<const ASN1OBJID*>{&empty, nullptr}) {
        one = '?';
        EXPECT_EQ(rtOidToStr(none, &one, 0), 1);
        EXPECT_EQ(one, '\0');
        EXPECT_EQ(rtOidToStrLen(none), 0);
    }
}

TEST(ObjectIdentifier, ComparisonGoesByCountAndThenByArc) {
    const ASN1TObjId base = identifier({1, 2, 3});
    EXPECT_EQ(base, identifier({1, 2, 3}));
    EXPECT_NE(base, identifier({1, 2}));
    EXPECT_NE(base, identifier({1, 2, 0x03000000}));
    EXPECT_NE(base, identifier({0, 2, 3}));
    EXPECT_EQ(ASN1TObjId(), ASN1TObjId());
    ASN1TObjId shorter = base;
    shorter.numids = 2;  // the arc behind the count plays no part
    EXPECT_EQ(shorter, identifier({1, 2}));
}

TEST(ObjectIdentifier, OutByteIsWrittenOnDifferenceOnly) {
    const ASN1TObjId one = identifier({1, 2});
    const ASN1TObjId same = one;
    const ASN1TObjId other = identifier({1, 3});
    for (auto compare : {rtCmpOID, rtCmpOIDValue}) {
        unsigned char out = 0x55;
        EXPECT_EQ(compare(nullptr, &one, &same, &out), 1);
        EXPECT_EQ(out, 0x55);
        EXPECT_EQ(compare(nullptr, &one, &other, &out), 0);
        EXPECT_EQ(out, 0);
        EXPECT_EQ(compare(nullptr, &one, &other, nullptr), 0);
        out = 0x55;
        EXPECT_EQ(compare(nullptr, nullptr, nullptr, &out), 0);
        EXPECT_EQ(out, 0);
    }
}

TEST(ObjectIdentifier, CountAboveTheCapacityIsKeptAndNeverFollowed) {
    const Arcs arcs(200, 7);
    const ASN1TObjId large = identifier(arcs);
    EXPECT_EQ(large.numids, 200u);
    EXPECT_EQ(arcsOf(large), Arcs(128, 7));
    EXPECT_EQ(large, ASN1TObjId(large));
    EXPECT_EQ(rtOidToStrLen(&large), 255);

    struct {
        ASN1OBJID oid;
        std::uint32_t guard = 42;
    } target;
    rtSetOID(&target.oid, &large);
    EXPECT_EQ(target.oid, large);
    target.oid.numids = 0;
    EXPECT_EQ(rtCopyOID(nullptr, &large, &target.oid), 1);
    EXPECT_EQ(target.oid, large);
    EXPECT_EQ(target.guard, 42u);
    EXPECT_EQ(rtCopyOID(nullptr, nullptr, &target.oid), 0);
    EXPECT_EQ(rtCopyOID(nullptr, &large, nullptr), 0);
}

TEST(ObjectIdentifier, SixtyFourBitArcsAreStoredAndCopied) {
    const std::int64_t arcs[] = {1, 1099511627776, -1};
    const ASN1TObjId64 oid(3, arcs);
    ASN1TObjId64 copy;
    EXPECT_EQ(copy.numids, 0u);
    copy = static_cast<const ASN1OID64&>(oid);
    EXPECT_EQ(copy.numids, 3u);
    EXPECT_EQ(copy.subid[1], 1099511627776);
    EXPECT_EQ(copy.subid[2], -1);
}

}  // namespace
