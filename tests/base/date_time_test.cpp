#include "base/date_time.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <type_traits>
#include <utility>

#include "base/date_time_span.h"
#include "support/calendar.h"
#include "support/failures.h"
#include "support/octets.h"

using Mirvane::CDateTime;
using test::thrownCode;

static_assert(!std::is_default_constructible_v<CDateTime> && std::is_trivially_copyable_v<CDateTime>);

namespace {

constexpr std::time_t startOf1601 = -11644473600;
constexpr std::uint64_t secondTicks = 10'000'000;

_FILETIME fileTimeOf(std::uint64_t count) {
    return {static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
}

std::uint64_t countOf(const CDateTime& date) {
    const _FILETIME time = date.getFileTime();
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

std::string generalized(const CDateTime& date) {
    return date.getGeneralizedTime().c_str();
}

// The first whole microsecond that the calendar does not have.
const CDateTime outside{fileTimeOf(0x8000000000000002)};

}  // namespace

TEST(DateTime, RandomPointsHaveTheFieldsAndTextsOfTheCLibrary) {
    for (const std::time_t point : test::pointsBetween(startOf1601, test::endOf9999)) {
        const CDateTime date(point, 0);
        const std::tm fields = test::utcFields(point);
        const unsigned actual[] = {date.year(), date.month(),  date.day(),
                                   date.hour(), date.minute(), date.second()};
        const int expected[] = {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
                                fields.tm_hour,        fields.tm_min,     fields.tm_sec};
        ASSERT_TRUE(std::equal(std::begin(actual), std::end(actual), std::begin(expected))) << point;
        ASSERT_EQ(generalized(date), test::generalizedText(point));
        ASSERT_EQ(date.tostring().c_str(), test::format("%d.%m.%Y %H:%M:%S", point));
        ASSERT_EQ(CDateTime(generalized(date).c_str()), date);
        ASSERT_EQ(CDateTime(date.getSystemTime()), date);
        ASSERT_EQ(date.getSystemTime().wDayOfWeek, fields.tm_wday) << point;
    }
}

TEST(DateTime, ReadsGeneralizedTime) {
    const std::pair<const char*, const char*> rows[] = {
        {"20240229235959Z", "20240229235959Z"},
        {"20240229235959", "20240229235959Z"},
        {"20240229235959.1Z", "20240229235959.1Z"},
        {"20240229235959,1", "20240229235959.1Z"},
        {"20240229235959.123456789Z", "20240229235959.123456Z"},
        {"20240229235959.9999999", "20240229235959.999999Z"},
        {"20240229235959.000001Z", "20240229235959.000001Z"},
        {"20240229235959.0000001Z", "20240229235959Z"},
        {"20240229235959.120000Z", "20240229235959.12Z"},
        {"20240229235959.Z", "20240229235959Z"},
        {"20240229235959.123456x", "20240229235959.123456Z"},
        // An offset is no offset but a fraction.
        {"20240229235959+0300", "20240229235959.03Z"},
        {"20240229235959?", "20240229235959Z"},
        // Short texts, and fields that are cut short.
        {"2024022923595", "20240229235900Z"},
        {"20240229", "20240229000000Z"},
        {"202402291", "20240229000000Z"},
        {"16010101000000Z", "16010101000000Z"},
        {"99991231235959.999999Z", "99991231235959.999999Z"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(generalized(CDateTime(text)), expected) << text;
}

TEST(DateTime, RefusesWhatIsNoGeneralizedTime) {
    const auto expectRefused = [](unsigned code, const std::vector<const char*>& texts) {
        for (const char* text : texts)
            EXPECT_EQ(thrownCode([&] { CDateTime{text}; }), code) << text;
    };
    expectRefused(0x80004005,
                  test::texts("", "2024", "202402", "00000101000000Z", "16001231235959Z", "20230229000000Z",
                              "19000229000000Z", "20240001000000Z", "20241301000000Z", "20240100000000Z",
                              "20240132000000Z", "20240101240000Z", "20240101006000Z", "20240101000060Z"));
    expectRefused(0x8007076D, test::texts("2024010100000Z", "-2024010100000Z", "2024 101000000Z",
                                          "2024-01-01T00:00:00Z", "20240229235959.5z", "20240229235959.5 Z",
                                          "20240229235959.ZZ", "20240229235959Z+0300",
                                          "\xB2"
                                          "0240229235959Z"));
    EXPECT_EQ(thrownCode([] { CDateTime(static_cast<const char*>(nullptr)); }), 0x80070057u);
}

TEST(DateTime, SecondsCountFrom1970BothWays) {
    EXPECT_EQ(generalized(CDateTime(0, 0)), "19700101000000Z");
    EXPECT_EQ(generalized(CDateTime(0L, 1)), "19700101000000.000001Z");
    EXPECT_EQ(generalized(CDateTime(-1, 0)), "19691231235959Z");
    EXPECT_EQ(generalized(CDateTime(-1LL, 2'500'000)), "19700101000001.5Z");
    EXPECT_EQ(generalized(CDateTime(2'147'483'648L, 0)), "20380119031408Z");
    EXPECT_EQ(countOf(CDateTime(INT64_MIN, UINT32_MAX)), 116444736000000000 + std::uint64_t{UINT32_MAX} * 10)
        << "the product is a multiple of 2 to the 64";
}

TEST(DateTime, SecondsSince1970AreDividedUnsigned) {
    EXPECT_EQ(CDateTime(0, 0).getTime(), 0u);
    EXPECT_EQ(CDateTime(1'709'251'199, 999'999).getTime(), 1'709'251'199u);
    EXPECT_EQ(CDateTime(-1, 0).getTime(), (0 - secondTicks) / secondTicks);
}

TEST(DateTime, FileTimesAreCutToMicroseconds) {
    const std::pair<std::uint64_t, std::uint64_t> rows[] = {{0, 0},
                                                            {9, 0},
                                                            {10, 10},
                                                            {15, 10},
                                                            {19, 10},
                                                            {4'294'967'309, 4'294'967'300},
                                                            {UINT64_MAX, UINT64_MAX - 5}};
    for (const auto& [given, kept] : rows)
        EXPECT_EQ(countOf(CDateTime(fileTimeOf(given))), kept) << given;
}

TEST(DateTime, FractionFallsIntoMillisecondsAndMicroseconds) {
    const CDateTime date(0, 123456);
    EXPECT_EQ(date.millisecond(), 123u);
    EXPECT_EQ(date.microsecond(), 456u);
    EXPECT_EQ(date.getSystemTime().wMilliseconds, 123u);
}

TEST(DateTime, EightNumbersMakeADate) {
    const CDateTime date(2024, 2, 29, 23, 59, 59, 123, 456);
    EXPECT_EQ(generalized(date), "20240229235959.123456Z");
    EXPECT_EQ(generalized(CDateTime(2024, 2, 29, 23, 59, 59, 999, 1000)), "20240301000000Z");
    EXPECT_EQ(generalized(CDateTime(65536 + 2024, 65537, 1, 0, 0, 0, 0, 0)), "20240101000000Z")
        << "fields are cut to 16 bits";
    EXPECT_EQ(thrownCode([] { CDateTime(2024, 13, 1, 0, 0, 0, 0, 0); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CDateTime(2024, 1, 1, 0, 0, 0, 1000, 0); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CDateTime(_SYSTEMTIME{2023, 2, 0, 29, 0, 0, 0, 0}); }), 0x80070057u);
}

TEST(DateTime, TextsShowTheFractionInGroups) {
    const std::pair<unsigned, const char*> rows[] = {
        {0, "01.01.1970 00:00:00"},
        {120'000, "01.01.1970 00:00:00.120"},
        {120'003, "01.01.1970 00:00:00.120003"},
        {3, "01.01.1970 00:00:00.000003"},
        {999'999, "01.01.1970 00:00:00.999999"},
    };
    for (const auto& [microseconds, text] : rows) {
        const CDateTime date(0, microseconds);
        EXPECT_STREQ(date.tostring().c_str(), text);
        EXPECT_STREQ(date.towstring().c_str(), std::wstring(text, text + std::strlen(text)).c_str());
        EXPECT_STREQ(date.getGeneralizedTimeTrimMicroseconds().c_str(), "01.01.1970 00:00:00");
    }
}

TEST(DateTime, TicksBelowTheMicrosecondShowInNoText) {
    const CDateTime date = CDateTime(0, 0) + Mirvane::CDateTimeSpan::OneSecond() / 3;
    EXPECT_EQ(countOf(date) % secondTicks, 3'333'333u);
    EXPECT_EQ(generalized(date), "19700101000000.333333Z");
    const CDateTime later = CDateTime(0, 0) + Mirvane::CDateTimeSpan(0, 1) / 2;
    EXPECT_NE(later, CDateTime(0, 0));
    EXPECT_EQ(generalized(later), "19700101000000Z");
    EXPECT_STREQ(later.tostring().c_str(), "01.01.1970 00:00:00");
}

TEST(DateTime, OnlyFourDigitsOfAYearAreWritten) {
    EXPECT_EQ(generalized(CDateTime(12024, 2, 29, 0, 0, 0, 0, 0)), "20240229000000Z");
    EXPECT_EQ(generalized(CDateTime(10000, 1, 1, 0, 0, 0, 0, 0)), "00000101000000Z");
    EXPECT_STREQ(CDateTime(12024, 2, 29, 0, 0, 0, 0, 0).tostring().c_str(), "29.02.12024 00:00:00");
}

TEST(DateTime, FieldsOfACountOutsideTheCalendarAreRefused) {
    using Field = unsigned (CDateTime::*)() const;
    for (const Field field : std::array<Field, 6>{&CDateTime::year, &CDateTime::month, &CDateTime::day,
                                                  &CDateTime::hour, &CDateTime::minute, &CDateTime::second}) {
        EXPECT_EQ(thrownCode([&] { (outside.*field)(); }), 0x80070057u);
    }
    EXPECT_EQ(thrownCode([] { outside.getSystemTime(); }), 0x80070057u);
    EXPECT_EQ(CDateTime(fileTimeOf(0x7FFFFFFFFFFFFFFF)).year(), 30828u);
}

TEST(DateTimeDeathTest, TextOfACountOutsideTheCalendarEndsTheProcess) {
    EXPECT_DEATH(outside.getGeneralizedTime(), "");
    EXPECT_DEATH(outside.getGeneralizedTimeTrimMicroseconds(), "");
    EXPECT_DEATH(outside.tostring(), "");
    EXPECT_DEATH(outside.towstring(), "");
}

TEST(DateTime, OrderAndExchangeLookAtBothWords) {
    const std::uint64_t counts[] = {0, 10, 0xFFFFFFF0, 0x1'0000'0000, 0x1'FFFF'FFF0, 0x2'0000'0000};
    for (const std::uint64_t left : counts) {
        for (const std::uint64_t right : counts) {
            CDateTime a{fileTimeOf(left)}, b{fileTimeOf(right)};
            const std::uint64_t x = countOf(a), y = countOf(b);
            EXPECT_EQ((std::array{a == b, a != b, a<b, a <= b, a> b, a >= b}),
                      (std::array{x == y, x != y, x<y, x <= y, x> y, x >= y}))
                << left << ' ' << right;
            a.swap(b);
            EXPECT_EQ((std::pair(countOf(a), countOf(b))), (std::pair(y, x)));
        }
    }
}

TEST(DateTime, NowIsTheTimeOfTheSystem) {
    const CDateTime before(std::time(nullptr), 0);
    const CDateTime now = CDateTime::Now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, CDateTime(std::time(nullptr) + 2, 0)) << "time() may lag by a tick of the system";
    EXPECT_EQ(countOf(now) % 10, 0u);
}

TEST(DateTime, LocalTimeHasTheOffsetOfThisMomentWhateverTheDate) {
    // A zone without summer time, and one that has it all through the year.
    const std::pair<const char*, int> rows[] = {
        {"AAA-3", 3 * 3600}, {"AAA5", -5 * 3600}, {"AAA5BBB,0/0,J365/25", -4 * 3600}};
    for (const auto& [rule, offset] : rows) {
        const test::TimeZone zone(rule);
        for (const int month : {1, 7}) {
            const std::time_t point = test::pointAt(2001, month, 15, 12);
            EXPECT_EQ(CDateTime(point, 7).utcToLocal(), CDateTime(point + offset, 7)) << rule;
            EXPECT_EQ(CDateTime(point, 7).localToUtc(), CDateTime(point - offset, 7)) << rule;
        }
    }
}
