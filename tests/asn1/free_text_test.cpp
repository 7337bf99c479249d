#include "asn1/free_text.h"

#include <string>
#include <utility>

#include "asn1/free_text_traits.h"
#include "support/allocation.h"
#include "value_test.h"

namespace {

// U+0E01, "ru-ru" in the block behind it, U+0E7E.
constexpr wchar_t kRussianMark[] = L"\x0E01\x0E72\x0E75\x0E2D\x0E72\x0E75\x0E7E";
constexpr char kRussianMarkUtf8[] =
    "\xE0\xB8\x81\xE0\xB9\xB2\xE0\xB9\xB5\xE0\xB8\xAD\xE0\xB9\xB2\xE0\xB9\xB5\xE0\xB9\xBE";

CPKIFreeTextString english(wchar_t const* value) {
    return CPKIFreeTextString(value, CLanguageTagEnUs());
}

CPKIFreeTextString anyLanguage(wchar_t const* value) {
    return CPKIFreeTextString(value, CLanguageTagDefaultRead());
}

// What goes on the wire, one text.
std::string written(CPKIFreeTextString const& text) {
    test::LiveContext context;
    asn1data::ASN1T_PKIFreeText record;
    CPKIFreeText_Encode(context, record, CPKIFreeText(text));
    return record.n == 1 ? record.elem[0] : "not one text";
}

CPKIFreeText parsed(char const* utf8) {
    test::LiveContext context;
    asn1data::ASN1T_PKIFreeText record;
    record.n = 1;
    record.elem = &utf8;
    CPKIFreeText text;
    CPKIFreeText_Parse(context, text, record);
    return text;
}

CPKIFreeText filled() {
    CPKIFreeText text;
    text.push_back(english(L"first"));
    text.push_back(english(L""));
    text.push_back(CPKIFreeTextString(L"", CLanguageTagRuRu()));
    text.push_back(english(L""));
    return text;
}

}  // namespace

TEST(LanguageTag, IsInLowerCaseWhateverItWasMadeFrom) {
    EXPECT_EQ(CLanguageTag("EN-US"), CLanguageTagEnUs());
    EXPECT_EQ(CLanguageTag(L"Ru-rU"), CLanguageTagRuRu());
    EXPECT_STREQ(CLanguageTag("EN-US").tostring().c_str(), "en-us");
    EXPECT_EQ(CLanguageTag::normalize("@AZ[`az{\xC0"), "@az[`az{\xC0") << "letters of ASCII only";
    EXPECT_EQ(CLanguageTag(static_cast<char const*>(nullptr)), CLanguageTag());
    EXPECT_EQ(CLanguageTag("*"), CLanguageTagDefaultRead());
    EXPECT_NE(CLanguageTagEnUs(), CLanguageTagDefaultRead()) << "the tag for any language equals only itself";
}

TEST(FreeTextString, IsEqualInLanguageAndValueTogether) {
    EXPECT_EQ(CPKIFreeTextString("\xC3\xA9", CLanguageTagEnUs()), english(L"\xE9"));
    EXPECT_NE(english(L"a"), english(L"A"));
    EXPECT_NE(english(L"a"), anyLanguage(L"a"));
    CPKIFreeTextString changed = english(L"a");
    changed.set_value(nullptr);
    EXPECT_EQ(changed, CPKIFreeTextString(CLanguageTagEnUs()));
}

TEST(FreeText, IsFoundByLanguageOnlyWhereItIsEmpty) {
    CPKIFreeText text = filled();
    EXPECT_EQ(text.find(CLanguageTagEnUs()), std::next(text.begin()));
    EXPECT_EQ(std::as_const(text).find(CLanguageTagRuRu()), std::next(text.cbegin(), 2));
    EXPECT_EQ(text.find("de"), text.end());
    EXPECT_EQ(text.find("*"), text.begin()) << "any language";
    text.clear();
    EXPECT_EQ(text.find("*"), text.end());
}

TEST(FreeText, InsertOverwritesAnEmptyTextOfItsLanguageOnly) {
    CPKIFreeText text = filled();
    text.insert(english(L"second"));
    EXPECT_STREQ(std::next(text.begin())->get_value(), L"second");
    EXPECT_EQ(text.size(), 4u);
    for (int round = 0; round < 2; ++round)
        text.insert(CPKIFreeTextString(CLanguageTag("de")));
    EXPECT_EQ(text.size(), 5u);
    for (int round = 0; round < 2; ++round)
        text.insert(anyLanguage(L""));
    EXPECT_EQ(text.size(), 7u) << "texts of any language are always added";
}

TEST(FreeText, RemoveTakesEmptyTextsOfALanguageOrEverything) {
    CPKIFreeText text = filled();
    text.remove(std::next(text.begin())->get_language());
    EXPECT_EQ(text.size(), 2u);
    EXPECT_EQ(text.front(), english(L"first"));
    text.remove(text.front().get_language());
    EXPECT_EQ(text.size(), 2u);
    text.remove("*");
    EXPECT_TRUE(text.empty());
}

TEST(FreeText, ConvertsToItsFirstTextIfThereIsOne) {
    CPKIFreeText text = filled();
    const CPKIFreeTextString copied = text;
    EXPECT_EQ(copied, english(L"first"));
    EXPECT_EQ(&static_cast<CPKIFreeTextString const&>(std::as_const(text)), &text.front());
    EXPECT_EQ(thrownCode([] { CPKIFreeTextString(CPKIFreeText()).get_value(); }), 0x80070057u);
}

TEST(FreeText, IsWrittenWithItsLanguageInFront) {
    EXPECT_EQ(written(anyLanguage(L"\x422\x435\x43A\x441\x442")), "\xD0\xA2\xD0\xB5\xD0\xBA\xD1\x81\xD1\x82");
    EXPECT_EQ(written(CPKIFreeTextString(L"a\x20AC\x1F600", CLanguageTagRuRu())),
              std::string(kRussianMarkUtf8) + "a\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(written(CPKIFreeTextString(L"a", CLanguageTag())),
              "\xE0\xB8\x81\xE0\xB9\xBE"
              "a");
    EXPECT_EQ(written(CPKIFreeTextString(CLanguageTag("\xFF"))), "\xE0\xB8\x81\xE0\xBB\xBF\xE0\xB9\xBE");
    const wchar_t noCharacter[] = {static_cast<wchar_t>(0x80000000), 0};
    EXPECT_EQ(thrownCode([&] { written(anyLanguage(noCharacter)); }), 0x80093101u);
    for (const int allowed : {0, 1}) {
        test::LiveContext context;
        test::CountedAllocations memory;
        memory.allow(allowed);
        asn1data::ASN1T_PKIFreeText record;
        EXPECT_EQ(thrownCode([&] { CPKIFreeText_Encode(context, record, filled()); }), 0x80093106u);
        EXPECT_EQ(record.n, 0u);
    }
}

TEST(FreeText, IsReadWithItsLanguageWhichStaysInTheValue) {
    const CPKIFreeText read = parsed((std::string(kRussianMarkUtf8) + "a").c_str());
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read.front().get_language(), CLanguageTagRuRu());
    EXPECT_EQ(read.front().get_value(), std::wstring(kRussianMark) + L"a");
    EXPECT_EQ(written(read.front()), std::string(kRussianMarkUtf8) + kRussianMarkUtf8 + "a") << "twice, then";
    EXPECT_EQ(parsed("a").front(), anyLanguage(L"a"));
    EXPECT_EQ(parsed("").front(), anyLanguage(L""));
    // U+0E41, U+0E4E: an upper case A, N.
    EXPECT_EQ(parsed("\xE0\xB8\x81\xE0\xB9\x81\xE0\xB9\x8E\xE0\xB9\xBE").front().get_language(),
              CLanguageTag("an"));
}

TEST(FreeText, MalformedTextIsRefusedAndNothingIsAppended) {
    const std::pair<char const*, unsigned> rows[] = {
        {"\x80", 0x8009310E},
        {"a\xC3(", 0x8009310E},
        {"\xE0\xB8\x81", 0x80070057},
        {"\xE0\xB8\x81\xE0\xB9\xB2\xE0\xB9\xB5", 0x80070057},
        {"\xE0\xB8\x81ru\xE0\xB9\xBE", 0x80070057},
    };
    for (auto const& [utf8, code] : rows) {
        test::LiveContext context;
        char const* texts[] = {"fine", utf8};
        asn1data::ASN1T_PKIFreeText record;
        record.n = 2;
        record.elem = texts;
        CPKIFreeText text = filled();
        EXPECT_EQ(thrownCode([&] { CPKIFreeText_Parse(context, text, record); }), code) << utf8;
        EXPECT_EQ(text, filled());
    }
}
