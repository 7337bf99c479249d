#include "asn1rt/text.h"

#include <cctype>
#include <string>
#include <vector>

#include "asn1rt/character_class.h"
#include "runtime_test.h"

namespace {

using Units = std::vector<std::uint32_t>;

constexpr std::uint32_t kSizeLimits[] = {0x7F, 0x7FF, 0xFFFF, 0x1FFFFF, 0x3FFFFFF, 0x7FFFFFFF};

std::wstring wide(std::initializer_list<std::uint32_t> units) {
    std::wstring text;
    for (std::uint32_t unit : units)
        text += static_cast<wchar_t>(unit);
    return text;
}

std::string encoded(std::uint32_t character) {
    char octets[6];
    const int size = rtUTF8EncodeChar(character, octets, sizeof(octets));
    return std::string(octets, octets + std::max(size, 0));
}

TEST(Text, CharactersAreEncodedInTheSixOctetForm) {
    const std::pair<std::uint32_t, const char*> rows[] = {{0x7F, "\x7F"},
                                                          {0x80, "\xC2\x80"},
                                                          {0x20AC, "\xE2\x82\xAC"},
                                                          {0xD800, "\xED\xA0\x80"},
                                                          {0x1F600, "\xF0\x9F\x98\x80"},
                                                          {0x200000, "\xF8\x88\x80\x80\x80"},
                                                          {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"},
                                                          {0x80000000, ""}};
    for (const auto& [character, octets] : rows)
        EXPECT_EQ(encoded(character), octets) << character;
}

TEST(Text, EncodingNeedsRoomForTheWholeCharacter) {
    for (std::size_t size = 1; size <= 6; ++size) {
        const std::uint32_t character = kSizeLimits[size - 1];
        EXPECT_EQ(rtUTF8CharSize(character), static_cast<int>(size));
        EXPECT_EQ(rtUTF8CharSize(character + 1), std::min(static_cast<int>(size) + 1, 6));
        std::vector<char> room(size, '?');
        EXPECT_EQ(rtUTF8EncodeChar(character, room.data(), size - 1), RTS_ENCODE_OVERFLOW);
        EXPECT_EQ(room, std::vector<char>(size, '?'));
        EXPECT_EQ(rtUTF8EncodeChar(character, room.data(), size), static_cast<int>(size));
    }
}

TEST(Text, DecodingGivesBackWhatWasEncoded) {
    for (std::uint32_t limit : kSizeLimits) {
        for (std::uint32_t character : {limit - 1, limit, std::min(limit + 1, 0x7FFFFFFFu)}) {
            const std::string octets = encoded(character) + "x";
            std::size_t size = octets.size();
            EXPECT_EQ(rtUTF8DecodeChar(nullptr, octets.data(), &size), static_cast<int>(character));
            EXPECT_EQ(size, octets.size() - 1);
            for (std::size_t room = 0; room < octets.size() - 1; ++room) {
                const std::vector<char> cut(octets.begin(),
                                            octets.begin() + static_cast<std::ptrdiff_t>(room));
                size = room;
                EXPECT_EQ(rtUTF8DecodeChar(nullptr, cut.data(), &size), RTS_BAD_UTF8);
                EXPECT_EQ(size, room);
            }
        }
    }
}

TEST(Text, MalformedCharactersAreRefused) {
    for (const char* octets : {"\x80", "\xBF", "\xFE", "\xFF",
                               "\xC2"
                               "A",
                               "\xE2\x82"
                               "A",
                               "\xE2"
                               "A\x82",
                               "\xFC\x80\x80\x80\x80\xC0"}) {
        std::size_t size = std::string(octets).size();
        EXPECT_EQ(rtUTF8DecodeChar(nullptr, octets, &size), RTS_BAD_UTF8) << octets;
        EXPECT_EQ(rtUTF8ToWCS(nullptr, octets, nullptr, 0), RTS_BAD_UTF8) << octets;
    }
    std::size_t size = 2;
    EXPECT_EQ(rtUTF8DecodeChar(nullptr, nullptr, &size), RTS_BAD_UTF8);
    EXPECT_EQ(rtUTF8DecodeChar(nullptr, "\xC0\x80", &size), 0) << "an overlong form is taken";
    EXPECT_EQ(size, 2u);
}

TEST(Text, CountLooksAtLeadOctetsOnly) {
    const std::pair<std::string, int> rows[] = {{"", 0},
                                                {"abc", 3},
                                                {"\xE2\x82\xAC!", 2},
                                                {"\xE2\x82", 1},
                                                {"\xC2" + std::string("AB"), 2},
                                                {"\xFD" + std::string("abcdefg"), 3},
                                                {"\xFF", RTS_BAD_UTF8},
                                                {"a\x80", RTS_BAD_UTF8}};
    for (const auto& [text, count] : rows)
        EXPECT_EQ(rtUTF8Len(text.c_str()), count) << text;
    EXPECT_EQ(rtUTF8Len(nullptr), 0);
    EXPECT_EQ(rtUTF8LenBytes(nullptr), 0u);
    EXPECT_EQ(rtUTF8LenBytes("\xE2\x82\xAC!"), 4u);
}

TEST(Text, WideTextComesWithoutATerminator) {
    wchar_t units[4] = {L'?', L'?', L'?', L'?'};
    EXPECT_EQ(rtUTF8ToWCS(nullptr, "a\xE2\x82\xAC\xF0\x9F\x98\x80", units, 4), 3);
    EXPECT_EQ(std::wstring(units, 4), wide({'a', 0x20AC, 0x1F600, '?'}));
    EXPECT_EQ(rtUTF8ToWCS(nullptr, "a\xE2\x82\xAC", units, 2), 2);
    EXPECT_EQ(rtUTF8ToWCS(nullptr, "ab", units, 1), RTS_ENCODE_OVERFLOW);
    EXPECT_EQ(rtUTF8ToWCS(nullptr, "a\xFF", units, 1), RTS_ENCODE_OVERFLOW);  // room comes first
    EXPECT_EQ(rtUTF8ToWCS(nullptr, "", units, 0), 0);
    EXPECT_EQ(rtUTF8ToWCS(nullptr, "ab", nullptr, 0), 0);  // a check only
}

TEST(Text, CharacterCutByTheEndOfTheTextCounts) {
    const std::pair<const char*, std::uint32_t> rows[] = {
        {"\xE2\x82", 0x82}, {"\xE2", 0x02}, {"\xC3", 0x03}, {"\xFD\xBF\xBF\xBF\xBF", 0x1FFFFFF}};
    for (const auto& [text, value] : rows) {
        wchar_t unit = 0;
        EXPECT_EQ(rtUTF8ToWCS(nullptr, text, &unit, 1), 1) << text;
        EXPECT_EQ(static_cast<std::uint32_t>(unit), value) << text;
    }
}

TEST(Text, LastOctetOfTheOutputIsForSingleOctetsOnly) {
    const struct {
        std::wstring text;
        std::size_t capacity;
        int result;
    } rows[] = {{L"ab", 2, 2},
                {L"ab", 1, RTS_ENCODE_OVERFLOW},
                {L"\x20AC", 4, 3},
                {L"\x20AC", 3, RTS_ENCODE_OVERFLOW},
                {wide({0x20AC, 'a'}), 4, 4},
                {wide({0x20AC, 0}), 4, 4},
                {wide({0x7FFFFFFF}), 7, 6},
                {wide({0x7FFFFFFF}), 6, RTS_ENCODE_OVERFLOW},
                {wide({0x80000000}), 9, RTS_BAD_UTF8},
                {wide({0xFFFFFFFF}), 0, RTS_BAD_UTF8},
                {L"", 0, 0}};
    for (const auto& row : rows) {
        std::vector<char> octets(row.capacity);
        EXPECT_EQ(rtWCSToUTF8(nullptr, row.text.data(), row.text.size(), octets.data(), row.capacity),
                  row.result)
            << row.capacity;
    }
    char octets[5];
    rtWCSToUTF8(nullptr, L"\x20AC!", 2, octets, 5);
    EXPECT_EQ(std::string(octets, 4), "\xE2\x82\xAC!");
}

class UcsText : public ::testing::Test {
  protected:
    Units fromOctets(const char* text, const ASN1CharRestriction* restriction = nullptr) {
        EXPECT_EQ(rtCToUCSString(ctxt, text, &ucs, restriction), &ucs);
        return Units(ucs.data, ucs.data + ucs.nchars);
    }
    Units fromWide(const std::wstring& text, const ASN1CharRestriction* restriction = nullptr) {
        EXPECT_EQ(rtWCSToUCSString(ctxt, text.c_str(), &ucs, restriction), &ucs);
        return Units(ucs.data, ucs.data + ucs.nchars);
    }

    LiveContext ctxt;
    Asn132BitCharString ucs = {};
};

TEST_F(UcsText, OctetsAndLowHalvesBecomeCharacters) {
    EXPECT_EQ(fromOctets("a\xE9\xFF"), (Units{'a', 0xE9, 0xFF}));
    EXPECT_EQ(fromWide(wide({'a', 0x20AC, 0x1F600})), (Units{'a', 0x20AC, 0xF600}));
    EXPECT_EQ(fromOctets(""), Units{});
    EXPECT_EQ(fromOctets(nullptr), Units{});
    EXPECT_STREQ(rtUTF8Strdup(ctxt, "d\xC3\xA9j\xC3\xA0"), "d\xC3\xA9j\xC3\xA0");
    EXPECT_STREQ(rtUTF8Strdup(ctxt, nullptr), "");
}

TEST_F(UcsText, RestrictionDropsCharacters) {
    const ASN1CharRestriction printable = {0, nullptr, 0x20, 0x7E};
    EXPECT_EQ(fromOctets("a\t b\x7F", &printable), (Units{'a', ' ', 'b'}));
    const std::uint32_t list[] = {'a', 'z', 0x20AC};
    const ASN1CharRestriction listed = {3, list, 'b', 0xFFFF};
    EXPECT_EQ(fromWide(wide({'a', 'b', 'z', 0x20AC}), &listed), (Units{'z', 0x20AC}));
}

TEST_F(UcsText, FailedMemoryLeavesAnEmptyRecord) {
    ucs = {7, nullptr};
    CountedAllocations memory;
    memory.allow(0);
    EXPECT_EQ(rtCToUCSString(ctxt, "abc", &ucs, nullptr), nullptr);
    EXPECT_EQ(rtWCSToUCSString(ctxt, L"abc", &ucs, nullptr), nullptr);
    EXPECT_EQ(rtUTF8Strdup(ctxt, "abc"), nullptr);
    EXPECT_EQ(ucs.nchars, 0u);
}

TEST_F(UcsText, FullTextHasNoTerminator) {
    std::uint32_t units[] = {'a', 0x10000, 'b', 'c'};
    const struct {
        std::uint32_t nchars;
        std::size_t capacity;
        std::wstring text;
    } rows[] = {{4, 5, {L'a', L'b', L'c', 0, L'?'}},
                {4, 4, {L'a', L'b', L'c', 0, L'?'}},
                {4, 3, L"abc??"},
                {4, 2, L"ab???"},
                {4, 0, L"?????"},
                {0, 1, {0, L'?', L'?', L'?', L'?'}},
                {0, 0, L"?????"}};
    for (const auto& row : rows) {
        wchar_t text[5] = {L'?', L'?', L'?', L'?', L'?'};
        ucs = {row.nchars, units};
        EXPECT_EQ(rtUCSToWCSString(&ucs, text, row.capacity), text);
        EXPECT_EQ(std::wstring(text, 5), row.text) << row.nchars << " in " << row.capacity;
    }
}

// The tests run in the "C" locale, whose classes are the ones that the table promises.
TEST(CharacterClass, AgreesWithTheLibraryInTheCLocale) {
    for (int c = 0; c < 256; ++c) {
        int expected = 0;
        if (std::isupper(c)) expected |= RT_CTYPE_UPPER;
        if (std::islower(c)) expected |= RT_CTYPE_LOWER;
        if (std::isdigit(c)) expected |= RT_CTYPE_DIGIT;
        if (std::isspace(c)) expected |= RT_CTYPE_SPACE;
        if (std::ispunct(c)) expected |= RT_CTYPE_PUNCTUATION;
        if (std::iscntrl(c)) expected |= RT_CTYPE_CONTROL;
        if (std::isalpha(c) && std::isxdigit(c)) expected |= RT_CTYPE_HEX_LETTER;
        if (c == ' ') expected |= RT_CTYPE_BLANK;
        EXPECT_EQ(rtCtypeTable[static_cast<std::size_t>(c)], expected) << c;
    }
}

}  // namespace
