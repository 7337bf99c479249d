#include "asn1/character_string.h"

#include "value_test.h"

TEST(CharacterString, EachStringTypeHasItsTagAndItsOctets) {
    struct Row {
        StringType syntax;
        const wchar_t* text;
        const char* encoded;
    };
    const Row rows[] = {
        {StringTypeUTF8, L"", "0C 00"},
        {StringTypeUTF8, L"A\xE9\x20AC\x1F600", "0C 0A 41 C3 A9 E2 82 AC F0 9F 98 80"},
        {StringTypePrintable, L"RU", "13 02 52 55"},
        {StringTypePrintable, L"", "13 00"},
        {StringTypeT61, L"a", "14 01 61"},
        {StringTypeIA5, L"a@b", "16 03 61 40 62"},
        {StringTypeBMP, L"\x418z", "1E 04 04 18 00 7A"},
        {StringTypeBMP, L"", "1E 00"},
        {StringTypeUniversal, L"\x418z", "1C 08 00 00 04 18 00 00 00 7A"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.encoded);
        EXPECT_EQ(test::text(encodeCharString(row.text, row.syntax)), row.encoded);
        EXPECT_STREQ(decodeCharString(blob(row.encoded)).c_str(), row.text);
    }
}

TEST(CharacterString, CharactersAreNotHeldAgainstTheStringType) {
    EXPECT_EQ(test::text(encodeCharString(L"@*\xE9", StringTypePrintable)), "13 04 40 2A C3 A9");
    EXPECT_EQ(test::text(encodeCharString(L"\x1F600", StringTypeBMP)), "1E 02 F6 00") << "cut to 16 bits";
}

TEST(CharacterString, TheTagOfTheValueTellsHowToReadIt) {
    const std::pair<const char*, const wchar_t*> rows[] = {
        {"12 02 31 32", L"12"},
        {"14 02 61 E9", L"a\xFFFD"},
        {"2C 80 04 01 41 04 01 42 00 00", L"AB"},
        {"1E 04 D8 3D DE 00", L"\xD83D\xDE00"},
        {"1E 03 00 41 00", L"A"},
        {"1C 08 00 01 F6 00 00 00 00 41", L"A"},
        {"0C 03 41 00 42", L"A"},
        {"0C 01 41 FF FF", L"A"},
    };
    for (const auto& [encoded, text] : rows)
        EXPECT_STREQ(decodeCharString(blob(encoded)).c_str(), text) << encoded;
}

TEST(CharacterString, WhatIsNoStringIsRefused) {
    for (const char* encoded : {"", "0C", "0C 05 41", "0C 01 FF", "0C 02 C3 28", "02 01 05", "04 01 41",
                                "1A 01 41", "1B 01 41", "17 01 41", "8C 01 41", "30 03 0C 01 41"}) {
        EXPECT_EQ(thrownCode([&] { decodeCharString(blob(encoded)); }), 0x80093101u) << encoded;
    }
}

TEST(CharacterString, WhatCannotBeEncodedIsRefused) {
    const wchar_t impossible[] = {L'a', static_cast<wchar_t>(0x80000000), 0};
    EXPECT_EQ(thrownCode([&] { encodeCharString(&impossible[0], StringTypeUTF8); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { encodeCharString(L"a", StringTypeDefault); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { encodeCharString(L"a", static_cast<StringType>(7)); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { encodeCharString(nullptr, StringTypeUTF8); }), 0x80070057u);
}
