#include "asn1/name.h"

#include <stdexcept>

#include "asn1/name_traits.h"
#include "asn1/text_conversion.h"
#include "value_test.h"

namespace {

const char* const kCountryAndTwo =
    "30 28 31 0B 30 09 06 03 55 04 06 13 02 52 55 "
    "31 19 30 08 06 03 55 04 03 0C 01 61 30 0D 06 03 55 04 0B 0C 06 C3 A9 C3 A9 C3 A9";

}  // namespace

TEST(Name, TextIsSplitAtCommasAndPlusSigns) {
    const std::pair<const wchar_t*, std::vector<std::size_t>> rows[] = {
        {L"", {}},
        {L"CN=a", {1}},
        {L"CN=a,O=b", {1, 1}},
        {L"CN=a+O=b", {2}},
        {L"C=RU,CN=a+E=x+O=b,OU=", {1, 3, 1}},
        {L"CN=a b ,CN=a=b", {1, 1}},
        {L"1.2.3=#0C0141,CN=\x418", {1, 1}},
    };
    for (const auto& [text, expected] : rows) {
        SCOPED_TRACE(tostring(text));
        const CName name(text);
        std::vector<std::size_t> sizes;
        for (const CRelativeDistinguishedName& part : name)
            sizes.push_back(part.size());
        EXPECT_EQ(sizes, expected);
        EXPECT_STREQ(name.toString().c_str(), text);
    }
}

TEST(Name, APieceThatIsNoAttributeIsRefusedAndChangesNothing) {
    CName name(L"CN=a");
    for (const wchar_t* text :
         {L",", L"CN=b,", L",CN=b", L"CN=b,,CN=c", L"CN=b+", L"+CN=b", L"CN=b,c", L"CN=a\\,b"})
        EXPECT_EQ(thrownCode([&] { name.fromString(text); }), 0x80070057u) << tostring(text);
    EXPECT_EQ(thrownCode([&] { name.fromString(nullptr); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CName refused(nullptr); }), 0x80070057u);
    EXPECT_THROW(name.fromString(L"CN=b,1.2.3="), std::out_of_range);
    EXPECT_STREQ(name.toString().c_str(), L"CN=a");

    CRelativeDistinguishedName part(L"CN=a");
    EXPECT_EQ(thrownCode([&] { part.fromString(L"O=b+"); }), 0x80070057u);
    EXPECT_STREQ(part.toString().c_str(), L"CN=a");
}

template <typename Text>
class NameText : public testing::Test {};

using NameTexts = testing::Types<CName, CRelativeDistinguishedName>;
TYPED_TEST_SUITE(NameText, NameTexts);

TYPED_TEST(NameText, ReadingAppendsAndDecodingReplaces) {
    const bool isWhole = std::is_same_v<TypeParam, CName>;
    TypeParam name(L"CN=a");
    name.fromString(isWhole ? L"O=b,O=c" : L"O=b+O=c");
    name.fromString(L"");
    fromString(name, reinterpret_cast<const unsigned short*>(L"O=d"));
    EXPECT_STREQ(name.toString().c_str(), isWhole ? L"CN=a,O=b,O=c,O=d" : L"CN=a+O=b+O=c+O=d");
    name.decode(TypeParam(L"C=RU").encode());
    EXPECT_STREQ(name.toString().c_str(), L"C=RU");
}

TEST(Name, ACommaInAValueIsShownAsItIs) {
    CName name(L"O=b");
    name.front().push_back(CAttributeTypeAndValue(L"CN=a,b+c"));
    EXPECT_STREQ(name.toString().c_str(), L"O=b+CN=a,b+c");
}

TEST(Name, TravelsAsDer) {
    CName name(L"C=RU,OU=\xE9\xE9\xE9+CN=a");
    EXPECT_EQ(test::text(name.encode()), kCountryAndTwo) << "the attributes of a part are sorted";
    CName read;
    read.decode(blob(kCountryAndTwo));
    EXPECT_STREQ(read.toString().c_str(), L"C=RU,CN=a+OU=\xE9\xE9\xE9");
    EXPECT_EQ(test::text(CName().encode()), "30 00");
    read.decode(blob("30 00 FF"));
    EXPECT_TRUE(read.empty());
    EXPECT_EQ(test::text(CRelativeDistinguishedName(L"CN=A").encode()),
              "31 0A 30 08 06 03 55 04 03 0C 01 41");
}

TEST(Name, WhatDoesNotEncodeOrDecodeIsRefused) {
    EXPECT_EQ(thrownCode([] { CName(L"cn=a").encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CRelativeDistinguishedName().encode(); }), 0x80093101u);
    CName hollow;
    hollow.push_back(CRelativeDistinguishedName());
    EXPECT_EQ(thrownCode([&] { hollow.encode(); }), 0x80093101u);
    expectRefused(CName(L"CN=a"), 0x80093101,
                  {"", "30 02 31 00", "31 00", "30 05 31 03 30 01 06", "30 0C 31 0A 30 08 06 03 55 04 03"});
}

TEST(Name, PartsCompareInStoredOrder) {
    const CRelativeDistinguishedName part(L"CN=a+O=b");
    EXPECT_EQ(part, CRelativeDistinguishedName(L"CN=a+O=b"));
    EXPECT_NE(part, CRelativeDistinguishedName(L"O=b+CN=a"));
    EXPECT_NE(part, CRelativeDistinguishedName(L"CN=a"));
    const CAttributeTypeAndValueSet& set = part;
    EXPECT_TRUE(set == CRelativeDistinguishedName(L"CN=a+O=b"));
    EXPECT_FALSE(set == CRelativeDistinguishedName(L"O=b+CN=a"));
    EXPECT_NE(CRelativeDistinguishedName(L"CN=a"), CRelativeDistinguishedName(L"CN=A"));
}

TEST(Name, ARecordTakesTheBlobOfANameAndGivesItBack) {
    test::LiveContext context;
    asn1data::ASN1T_Name record;
    ASN1T_Name_traits::set(context, record, blob(kCountryAndTwo));
    CBlob encoded;
    ASN1T_Name_traits::get(record, encoded);
    EXPECT_EQ(test::text(encoded), kCountryAndTwo);
    CName name;
    ASN1T_Name_traits::get(record, name);
    EXPECT_EQ(name.size(), 2u);
    EXPECT_EQ(thrownCode([&] { ASN1T_Name_traits::set(context, record, blob("31 00")); }), 0x80093101u);
}
