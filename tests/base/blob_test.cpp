#include "base/blob.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "base/lists.h"
#include "support/blobs.h"

using Mirvane::CBlob;
using test::blob;

TEST(Blob, LengthConstructorMakesZeroBytesAndIsNeverImplicit) {
    EXPECT_EQ(test::text(CBlob(5)), "00 00 00 00 00");
    EXPECT_EQ(CBlob(0).cbData(), 0u);
    EXPECT_NE(CBlob(0).pbData(), nullptr);
    EXPECT_FALSE((std::is_convertible_v<unsigned long, CBlob>));
}

TEST(Blob, NoBytesLeaveNoArrayAndThePointerUnread) {
    const auto* unreadable = reinterpret_cast<const unsigned char*>(1);
    EXPECT_EQ(CBlob(unreadable, 0).pbData(), nullptr);
    CBlob value = blob("01 02");
    value.assign(unreadable, 0);
    EXPECT_EQ(value.pbData(), nullptr);
    CBlob emptied = blob("01 02");
    emptied.clear();
    value = emptied;
    EXPECT_EQ(value.pbData(), nullptr);
    EXPECT_EQ(CBlob(emptied).pbData(), nullptr);
}

TEST(Blob, CopiesShareNothing) {
    CBlob first = blob("01 02");
    CBlob copy = first;
    CBlob assigned;
    assigned = first;
    first.pbData()[0] = 9;
    EXPECT_EQ(test::text(copy), "01 02");
    EXPECT_EQ(test::text(assigned), "01 02");
}

TEST(Blob, OwnBytesMayBeAssigned) {
    CBlob value = blob("01 02 03 04");
    value.assign(value.pbData() + 1, 2);
    EXPECT_EQ(test::text(value), "02 03");
    const CBlob& itself = value;
    value = itself;
    EXPECT_EQ(test::text(value), "02 03");
}

TEST(Blob, MovedFromBlobIsEmptyAndUsable) {
    CBlob source = blob("01 02");
    CBlob target = std::move(source);
    EXPECT_EQ(test::text(target), "01 02");
    EXPECT_EQ(source.cbData(), 0u);
    source += target;
    EXPECT_EQ(test::text(source), "01 02");
}

TEST(Blob, ShrinkingKeepsTheArrayAndGrowingKeepsTheBytes) {
    CBlob value = blob("01 02 03 04");
    const unsigned char* array = value.pbData();
    value.resize_to(2);
    EXPECT_EQ(value.pbData(), array);
    EXPECT_EQ(test::text(value), "01 02");
    value.resize_to(4);
    EXPECT_EQ(value.cbData(), 4u);
    EXPECT_EQ(test::text(value.pbData(), 2), "01 02");
    value.clear();
    EXPECT_EQ(value.cbData(), 0u);
    EXPECT_NE(value.pbData(), nullptr);
}

TEST(Blob, AppendingJoinsBytes) {
    CBlob value;
    value += blob("01 02");
    value += CBlob();
    value += blob("03");
    EXPECT_EQ(test::text(value), "01 02 03");
    value += value;
    EXPECT_EQ(test::text(value), "01 02 03 01 02 03");
}

TEST(Blob, ReversingTurnsTheOrderRound) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""}, {"01", "01"}, {"01 02", "02 01"}, {"01 02 03", "03 02 01"}};
    for (const auto& [before, after] : rows) {
        CBlob value = blob(before);
        value.reverse();
        EXPECT_EQ(test::text(value), after);
    }
}

TEST(Blob, OrderIsThatOfADictionary) {
    const char* ascending[] = {"", "00", "01", "01 00", "01 FF", "02", "7F FF", "80", "FF"};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            const CBlob left = blob(ascending[i]);
            const CBlob right = blob(ascending[j]);
            SCOPED_TRACE(std::string(ascending[i]) + " and " + ascending[j]);
            EXPECT_EQ(left < right, i < j);
            EXPECT_EQ(left <= right, i <= j);
            EXPECT_EQ(left > right, i > j);
            EXPECT_EQ(left >= right, i >= j);
            EXPECT_EQ(left == right, i == j);
            EXPECT_EQ(left != right, i != j);
        }
    }
    EXPECT_EQ(CBlob(), CBlob(0)) << "whatever the pointers";
}

TEST(Blob, HexadecimalTextIsReadUpToWhatDoesNotFit) {
    const std::pair<const char*, const char*> rows[] = {{"  0a 0B\n1c", "0A 0B 1C"},
                                                        {"0 a", ""},
                                                        {"abc", "AB"},
                                                        {"AB zz", "AB"},
                                                        {"", ""},
                                                        {" \t\r\n\v\f", ""},
                                                        {"aFfA", "AF FA"},
                                                        {"09:0a", "09"},
                                                        {"0g", ""},
                                                        {"12 \xA0 34", "12"},
                                                        {"@A", ""},
                                                        {"1`", ""},
                                                        {"12 34 ", "12 34"},
                                                        {"\xE1\xB1 00", ""}};
    for (const auto& [text, bytes] : rows) {
        for (CBlob read : {CBlob(), CBlob(64)}) {
            read.readFromHexString(text);
            EXPECT_EQ(test::text(read), bytes) << text;
        }
    }
    CBlob value = blob("01");
    value.readFromHexString(nullptr);
    EXPECT_EQ(value.cbData(), 0u);
}

TEST(Blob, HexadecimalTextIsWrittenInGroups) {
    const struct {
        const char* bytes;
        unsigned long group;
        const char* text;
    } rows[] = {{"01 02 03", 0, "010203"},
                {"01 02 03", 2, "0102 03"},
                {"00 FF", 1, "00 FF"},
                {"01 02 03 04", 4, "01020304"},
                {"01 02 03 04", 2, "0102 0304"},
                {"AB", 0xFFFFFFFFFFFFFFFF, "AB"},
                {"", 0, ""},
                {"", 1, ""}};
    for (const auto& [bytes, group, text] : rows)
        EXPECT_STREQ(blob(bytes).writeToHexString(group).c_str(), text);
}

TEST(BlobList, CopiesEveryElementInOrder) {
    Mirvane::CBlobList list;
    list.push_back(blob("01"));
    list.push_back(blob("02 03"));
    Mirvane::CBlobList copy = list;
    list.front().pbData()[0] = 9;
    list.pop_back();
    ASSERT_EQ(copy.size(), 2u);
    EXPECT_EQ(test::text(copy.front()), "01");
    EXPECT_EQ(test::text(copy.back()), "02 03");
}
