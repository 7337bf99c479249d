#include "asn1/text_conversion.h"

#include <gtest/gtest.h>

#include <climits>
#include <locale>

using namespace Mirvane::ASN1;

TEST(TextConversion, TextConvertsBothWays) {
    EXPECT_EQ(tostring(L"\x41F\x440 \x1F600"), "\xD0\x9F\xD1\x80 \xF0\x9F\x98\x80");
    EXPECT_TRUE(towstring("\xD0\x9F\xD1\x80") == L"\x41F\x440");
    EXPECT_EQ(tostring(L""), "");
    EXPECT_TRUE(towstring("").empty());
    EXPECT_EQ(tostring(static_cast<const wchar_t*>(nullptr)), "");
    EXPECT_EQ(tostring(static_cast<const unsigned short*>(nullptr)), "");
    EXPECT_TRUE(towstring(nullptr).empty());
    // A pointer to 16-bit units is taken for wide text.
    EXPECT_EQ(tostring(reinterpret_cast<const unsigned short*>(L"ab")), "ab");
}

TEST(TextConversion, MalformedTextIsReplacedAndDoesNotFail) {
    EXPECT_TRUE(towstring("a\xFF") == L"a\xFFFD");
    EXPECT_EQ(tostring(L"a\xD800"), "a\xEF\xBF\xBD");
}

TEST(TextConversion, NumbersHaveNoGroupsInAnyLocale) {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale former = std::locale::global(std::locale(std::locale(), new Grouping));
    EXPECT_EQ(tostring(2024), "2024");
    EXPECT_EQ(tostring(INT_MIN), "-2147483648");
    EXPECT_TRUE(towstring(INT_MAX) == L"2147483647");
    std::locale::global(former);
}
