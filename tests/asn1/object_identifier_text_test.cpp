#include "asn1/object_identifier_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/failures.h"
#include "support/octets.h"

using namespace Mirvane::ASN1;
using Arcs = std::vector<std::uint32_t>;

namespace {

Arcs arcsOf(const ASN1OBJID& record) {
    return {record.subid, record.subid + record.numids};
}

std::string textOfOnes(int count) {
    std::string text = "1";
    for (int i = 1; i < count; ++i)
        text += ".1";
    return text;
}

}  // namespace

TEST(ObjectIdentifierText, AcceptedFormsAreRead) {
    const std::pair<const char*, Arcs> rows[] = {
        {"1.2.643.2.2.9", {1, 2, 643, 2, 2, 9}},
        {"1.2 .3", {1, 2, 3}},
        {" 1. 2.\t3 \n", {1, 2, 3}},
        {"7", {7}},
        {"1.+2", {1, 2}},
        {"1.2.4294967294", {1, 2, 4294967294}},
        {"1.4294967295.3", {1, 4294967295, 3}},
        {"1.4294967298.3", {1, 2, 3}},
        {"-1.2", {4294967295, 2}},
        {"3.99", {3, 99}},
    };
    for (const auto& [text, arcs] : rows) {
        ASN1OBJID record;
        EXPECT_EQ(str2oid(text, &record), 0) << text;
        EXPECT_EQ(arcsOf(record), arcs) << text;
    }
}

TEST(ObjectIdentifierText, WhatIsNoIdentifierIsRefused) {
    for (const char* text : test::texts("", " ", ".", "1.", ".1", "1..2", "1.2.", "1.a", "a.1", "1.2a",
                                        "1 2.3", "1.2 3", "1.2\xA0", "1\xA0.2", "1,2", "-", "1.-", "0x1.2",
                                        "1.2.4294967295", "1.-1", "1.99999999999999999999")) {
        ASN1OBJID record;
        EXPECT_EQ(str2oid(text, &record), 1) << text;
        EXPECT_EQ(test::thrownCode([&] { toASN1OBJID(text); }), 0x80070057u) << text;
    }
    EXPECT_EQ(test::thrownCode([] { toASN1OBJID(nullptr); }), 0x80070057u);
}

TEST(ObjectIdentifierText, CapacityIs128Arcs) {
    ASN1OBJID record;
    EXPECT_EQ(str2oid(textOfOnes(128).c_str(), &record), 0);
    EXPECT_EQ(record.numids, 128u);
    for (const int arcs : {129, 130})
        EXPECT_EQ(str2oid(textOfOnes(arcs).c_str(), &record), 1);
    record = toASN1OBJID(textOfOnes(128).c_str());
    record.numids = 0xFFFFFFFF;
    EXPECT_STREQ(toOID(record).c_str(), textOfOnes(128).c_str()) << "nothing behind it is read";
}

TEST(ObjectIdentifierText, IsWrittenWithItsTerminatorCounted) {
    Mirvane::CBlob text;
    const ASN1OBJID record = toASN1OBJID("1.2.840.0.4294967294");
    EXPECT_EQ(oid2str(text, &record), 1);
    EXPECT_EQ(text.cbData(), 21u);
    EXPECT_STREQ(reinterpret_cast<const char*>(text.pbData()), "1.2.840.0.4294967294");
    EXPECT_STREQ(toOID(toASN1OBJID(textOfOnes(128).c_str())).c_str(), textOfOnes(128).c_str());
    const ASN1OBJID empty{};
    EXPECT_EQ(oid2str(text, &empty), 1);
    EXPECT_EQ(text.cbData(), 1u);
    EXPECT_STREQ(toOID(empty).c_str(), "");
}
