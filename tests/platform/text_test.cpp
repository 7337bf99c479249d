#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/last_error.h"

using namespace std::string_literals;

namespace {

// Each with a buffer of just the size that the first call asks for.
std::wstring toWide(const std::string& narrow) {
    const int length = static_cast<int>(narrow.size());
    std::wstring result(MultiByteToWideChar(CP_ACP, 0, narrow.data(), length, nullptr, 0), L'?');
    EXPECT_EQ(
        MultiByteToWideChar(CP_ACP, 0, narrow.data(), length, result.data(), static_cast<int>(result.size())),
        static_cast<int>(result.size()));
    return result;
}

std::string toNarrow(const std::wstring& wide) {
    const int length = static_cast<int>(wide.size());
    std::string result(WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr),
                       '?');
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, wide.data(), length, result.data(),
                                  static_cast<int>(result.size()), nullptr, nullptr),
              static_cast<int>(result.size()));
    return result;
}

}  // namespace

TEST(CodePageText, WellFormedTextConvertsBothWays) {
    const std::pair<std::string, std::wstring> rows[] = {
        {"OCSP", L"OCSP"},
        {"\0x"s, L"\0x"s},
        {"\x7F\xC2\x80", L"\x7F\x80"},
        {"\xDF\xBF\xE0\xA0\x80", L"\x7FF\x800"},
        {"\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", L"\xD7FF\xE000\xFFFF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\x10000\x10FFFF"},
    };
    for (const auto& [narrow, wide] : rows) {
        EXPECT_EQ(toWide(narrow), wide);
        EXPECT_EQ(toNarrow(wide), narrow);
    }
}

TEST(CodePageText, EveryScalarValueComesBack) {
    std::wstring all;
    for (wchar_t character = 0; character <= 0x10FFFF; ++character) {
        if (character < 0xD800 || character > 0xDFFF) all += character;
    }
    EXPECT_TRUE(toWide(toNarrow(all)) == all);
}

TEST(CodePageText, MalformedBytesAreReplacedAndTheRestIsKept) {
    const std::pair<std::string, std::wstring> rows[] = {
        {"a\x80z", L"a\xFFFDz"},                      // begins no sequence
        {"a\xFE\xFFz", L"a\xFFFD\xFFFDz"},            // nor do these
        {"a\xC3", L"a\xFFFD"},                        // cut short by the end
        {"a\xE2\x82z", L"a\xFFFDz"},                  // cut short by another character
        {"a\xF0\x9F\xC3\xA9z", L"a\xFFFD\xE9z"},      // cut short by another sequence
        {"a\xC0\x80z", L"a\xFFFDz"},                  // longer than needed
        {"a\xE0\x9F\xBFz", L"a\xFFFDz"},              // longer than needed
        {"a\xF0\x8F\xBF\xBFz", L"a\xFFFDz"},          // longer than needed
        {"a\xED\xA0\x80z", L"a\xFFFDz"},              // a surrogate
        {"a\xED\xBF\xBFz", L"a\xFFFDz"},              // a surrogate
        {"a\xF4\x90\x80\x80z", L"a\xFFFDz"},          // above 0x10FFFF
        {"a\xF8\x88\x80\x80\x80z", L"a\xFFFDz"},      // above 0x10FFFF
        {"a\xFD\xBF\xBF\xBF\xBF\xBFz", L"a\xFFFDz"},  // above 0x10FFFF
    };
    for (const auto& [narrow, wide] : rows)
        EXPECT_EQ(toWide(narrow), wide) << testing::PrintToString(narrow);
}

TEST(CodePageText, WideCharactersThatAreNoScalarValuesAreReplaced) {
    for (const unsigned character : {0xD800u, 0xDFFFu, 0x110000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        EXPECT_EQ(toNarrow({L'a', static_cast<wchar_t>(character), L'z'}), "a\xEF\xBF\xBDz") << character;
    }
}

TEST(CodePageText, LengthMinusOneTakesTheTerminatorIn) {
    wchar_t wide[3] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\xC3\xA9", -1, wide, 3), 2);
    EXPECT_STREQ(wide, L"\xE9");
    char narrow[4] = {};
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"\xE9", -1, narrow, 4, nullptr, nullptr), 3);
    EXPECT_STREQ(narrow, "\xC3\xA9");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "", -1, nullptr, 0), 1);
}

TEST(CodePageText, ABufferOneUnitTooSmallIsRefusedAndNotOverrun) {
    char narrow[5] = {'#', '#', '#', '#', '#'};
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"\x1F600", -1, narrow, 4, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(narrow[4], '#');
    wchar_t wide[3] = {L'#', L'#', L'#'};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", 3, wide, 2), 0);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(wide[2], L'#');
}

TEST(CodePageText, UnusableArgumentsAreRefused) {
    char narrow[8];
    wchar_t wide[8];
    const struct {
        const char* name;
        UINT codePage;
        DWORD flags;
        bool hasSource;
        int length;
        bool hasTarget;
        int capacity;
        DWORD error;
    } rows[] = {
        {"code page", 1252, 0, true, 1, true, 8, ERROR_INVALID_PARAMETER},
        {"flags", 0, 8, true, 1, true, 8, ERROR_INVALID_FLAGS},
        {"null source", 0, 0, false, 1, true, 8, ERROR_INVALID_PARAMETER},
        {"length 0", 0, 0, true, 0, true, 8, ERROR_INVALID_PARAMETER},
        {"length -2", 0, 0, true, -2, true, 8, ERROR_INVALID_PARAMETER},
        {"negative capacity", 0, 0, true, 1, true, -1, ERROR_INVALID_PARAMETER},
        {"capacity without buffer", 0, 0, true, 1, false, 8, ERROR_INVALID_PARAMETER},
    };
    for (const auto& [name, codePage, flags, hasSource, length, hasTarget, capacity, error] : rows) {
        SetLastError(0);
        EXPECT_EQ(MultiByteToWideChar(codePage, flags, hasSource ? "a" : nullptr, length,
                                      hasTarget ? wide : nullptr, capacity),
                  0);
        EXPECT_EQ(GetLastError(), error) << name;
        SetLastError(0);
        EXPECT_EQ(WideCharToMultiByte(codePage, flags, hasSource ? L"a" : nullptr, length,
                                      hasTarget ? narrow : nullptr, capacity, nullptr, nullptr),
                  0);
        EXPECT_EQ(GetLastError(), error) << name;
    }
}
