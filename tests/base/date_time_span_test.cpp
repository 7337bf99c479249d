#include "base/date_time_span.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstring>
#include <random>

#include "support/calendar.h"
#include "support/failures.h"

using namespace Mirvane;
using test::thrownCode;

namespace {

std::uint64_t countOf(const CDateTimeSpan& span) {
    return std::uint64_t{span.getHighPart()} << 32 | span.getLowPart();
}

CDateTimeSpan spanOf(std::uint64_t count) {
    const CDateTimeSpan tick = CDateTimeSpan(0, 1) / 10;
    CDateTimeSpan high = tick * static_cast<unsigned>(count >> 32);
    for (int i = 0; i < 32; ++i)
        high *= 2;
    return high + tick * static_cast<unsigned>(count);
}

CDateTime dateOf(std::uint64_t count) {
    return _FILETIME{static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
}

std::string added(const char* interval, int number, const char* date) {
    const std::wstring wide(interval, interval + std::strlen(interval));
    const CDateTime narrow = DateAddA(interval, number, CDateTime(date));
    EXPECT_EQ(DateAddW(wide.c_str(), number, CDateTime(date)), narrow) << interval;
    return narrow.getGeneralizedTime().c_str();
}

}  // namespace

TEST(DateTimeSpan, ConstantsHaveTheirLengths) {
    EXPECT_EQ(countOf(CDateTimeSpan::OneYear()), 315360000000000u);
    EXPECT_EQ(countOf(CDateTimeSpan::OneMonth()), 25920000000000u);
    EXPECT_EQ(countOf(CDateTimeSpan::OneDay()), 864000000000u);
    EXPECT_EQ(countOf(CDateTimeSpan::OneHour()), 36000000000u);
    EXPECT_EQ(countOf(CDateTimeSpan::OneMinute()), 600000000u);
    EXPECT_EQ(countOf(CDateTimeSpan::OneSecond()), 10000000u);
    EXPECT_EQ(countOf(CDateTimeSpan::OneMillisecond()), 10000u);
    EXPECT_EQ(countOf(CDateTimeSpan()), 0u);
    EXPECT_EQ(countOf(CDateTimeSpan(UINT_MAX, UINT_MAX)), std::uint64_t{UINT_MAX} * 10000010);
    EXPECT_EQ(CDateTimeSpan::OneYear() / CDateTimeSpan::OneDay(), 365u);
    EXPECT_EQ(CDateTimeSpan::OneYear() % CDateTimeSpan::OneMonth(), CDateTimeSpan::OneDay() * 5);
}

TEST(DateTimeSpan, TextsLoseTheirZerosAtTheEnd) {
    const std::pair<CDateTimeSpan, const char*> rows[] = {
        {CDateTimeSpan(), "Z"},
        {CDateTimeSpan(1, 500000), "00000000000001.5Z"},
        {CDateTimeSpan(1, 0), "00000000000001Z"},
        {CDateTimeSpan(10, 0), "0000000000001Z"},
        {CDateTimeSpan(60, 0), "000000000001Z"},
        {CDateTimeSpan(0, 1), "00000000000000.000001Z"},
        {CDateTimeSpan(0, 1) / 2, "Z"},
        {CDateTimeSpan::OneDay() * 10, "0000001Z"},
        {CDateTimeSpan::OneYear(), "0001Z"},
        {CDateTimeSpan::OneYear() * 10, "001Z"},
        // A year and more leaves the microseconds what they are.
        {CDateTimeSpan::OneYear() + CDateTimeSpan(3661, 7), "00010000010101.000007Z"},
        {CDateTimeSpan::OneYear() - CDateTimeSpan(0, 1), "00001204235959.999999Z"},
        {spanOf(UINT64_MAX), "584940228053610.955161Z"},
    };
    for (const auto& [span, text] : rows) {
        EXPECT_STREQ(span.getGeneralizedTime().c_str(), text);
        EXPECT_STREQ(span.tostring().c_str(), text);
        EXPECT_STREQ(span.towstring().c_str(), std::wstring(text, text + std::strlen(text)).c_str());
    }
}

TEST(DateTimeSpan, TextsAreReadAsCounts) {
    const std::pair<const char*, CDateTimeSpan> rows[] = {
        {"00000000000001.5Z", CDateTimeSpan(1, 500000)},
        {"00000045000000Z", CDateTimeSpan::OneDay() * 45},
        {"00000000999999",
         CDateTimeSpan::OneHour() * 99 + CDateTimeSpan::OneMinute() * 99 + CDateTimeSpan(99, 0)},
        {"00010000", CDateTimeSpan::OneYear()},
        {"000099", CDateTimeSpan::OneMonth() * 99},
        {"9999", CDateTimeSpan::OneYear() * 9999},
        {"", CDateTimeSpan()},
        {"Z", CDateTimeSpan()},
    };
    for (const auto& [text, span] : rows)
        EXPECT_EQ(CDateTimeSpan(text), span) << text;
    EXPECT_EQ(thrownCode([] { CDateTimeSpan(CDateTimeSpan(10, 0).tostring().c_str()); }), 0x8007076Du)
        << "the field of the seconds is 1Z";
    EXPECT_EQ(thrownCode([] { CDateTimeSpan("0001Z0"); }), 0x8007076Du);
    EXPECT_EQ(thrownCode([] { CDateTimeSpan(nullptr); }), 0x80070057u);
}

TEST(DateTimeSpan, TextsThatEndInNoZeroCanBeReadBack) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 5000; ++i) {
        const std::uint64_t microseconds = random() % 315'360'000'000'000'000 / 10 * 10 + 1 + random() % 9;
        const CDateTimeSpan span = spanOf(microseconds * 10);
        ASSERT_EQ(CDateTimeSpan(span.getGeneralizedTime().c_str()), span) << microseconds;
    }
}

TEST(DateTimeSpan, RandomArithmeticIsThatOf64Bits) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 5000; ++i) {
        const std::uint64_t x = random() >> random() % 64, y = (random() >> random() % 64) | 1;
        const auto n = static_cast<unsigned>(random()) | 1;
        const CDateTimeSpan a = spanOf(x), b = spanOf(y);
        ASSERT_EQ(countOf(a), x);
        ASSERT_EQ(countOf(a + b), x + y);
        ASSERT_EQ(countOf(a * n), x * n);
        ASSERT_EQ(countOf(a / n), x / n);
        ASSERT_EQ(countOf(a % n), x % n);
        ASSERT_EQ(a / b, x / y);
        ASSERT_EQ(countOf(a % b), x % y);
        CDateTimeSpan first = a, second = b;
        first.swap(second);
        ASSERT_EQ((std::pair(countOf(first), countOf(second))), (std::pair(y, x)));
        ASSERT_EQ((std::array{a == b, a != b, a<b, a <= b, a> b, a >= b}),
                  (std::array{x == y, x != y, x<y, x <= y, x> y, x >= y}));
        if (x >= y) {
            ASSERT_EQ(countOf(a - b), x - y);
        } else {
            ASSERT_EQ(thrownCode([&] { a - b; }), 0x80004005u);
        }
    }
}

TEST(DateTimeSpan, DatesAndSpansAddUpAndDoNotFallBelowZero) {
    const CDateTime date = dateOf(1000);
    EXPECT_EQ(date + spanOf(UINT64_MAX), date - spanOf(1)) << "wraps";
    EXPECT_EQ(countOf(date - dateOf(0)), 1000u);
    EXPECT_EQ(countOf(date - date), 0u);
    EXPECT_EQ(date - spanOf(1000), dateOf(0));
    EXPECT_EQ(thrownCode([&] { date - spanOf(1001); }), 0x80004005u);
    EXPECT_EQ(thrownCode([&] { date - dateOf(1010); }), 0x80004005u);
    CDateTime changed = date;
    EXPECT_EQ(thrownCode([&] { changed -= spanOf(1001); }), 0x80004005u);
    EXPECT_EQ(changed, date);
}

TEST(DateAdd, IntervalsAreNamedByTheirFirstLetter) {
    const struct {
        const char* interval;
        int number;
        const char *from, *to;
    } rows[] = {
        {"d", 1, "20240228000000Z", "20240229000000Z"},
        {"", 3, "20240228000000Z", "20240302000000Z"},
        {"d", 0, "20240228000000.5Z", "20240228000000.5Z"},
        {"d", -1, "20240301000000Z", "20240229000000Z"},
        {"h", -25, "20240301000000Z", "20240228230000Z"},
        {"n", 90, "20240301000000Z", "20240301013000Z"},
        {"s", 86400, "20240301000000.000001Z", "20240302000000.000001Z"},
        {"s", INT_MIN, "20380119031408Z", "19700101000000Z"},
        {"w", 2, "20240229000000Z", "20240314000000Z"},
        {"month", 1, "20230131000000Z", "20230228000000Z"},
        {"minute", 1, "20240131000000Z", "20240229000000Z"},
        {"m", -1, "20230331000000Z", "20230228000000Z"},
        {"m", -3, "20230115000000Z", "20221015000000Z"},
        {"m", -1, "20230115000000Z", "20221215000000Z"},
        {"m", 12, "20240229000000Z", "20250228000000Z"},
        {"m", 1, "20231215010203.123456Z", "20240115010203.123456Z"},
        {"year", 1, "20240229000000Z", "20250228000000Z"},
        {"y", 4, "20240229000000Z", "20280229000000Z"},
        {"y", -423, "20240229000000Z", "16010228000000Z"},
    };
    for (const auto& [interval, number, from, to] : rows)
        EXPECT_EQ(added(interval, number, from), to) << interval << ' ' << number;
}

TEST(DateAdd, RandomMonthsAreThoseOfTheCLibrary) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> any(-3000, 3000);
    for (const std::time_t point :
         test::pointsBetween(test::pointAt(1900, 1, 1), test::pointAt(2200, 1, 1))) {
        const int months = any(random);
        const std::tm from = test::utcFields(point);
        const int month = from.tm_mon + 1 + months;
        const int lastDay = test::utcFields(test::pointAt(from.tm_year + 1900, month + 1, 0)).tm_mday;
        const std::time_t to = test::pointAt(from.tm_year + 1900, month, std::min(from.tm_mday, lastDay),
                                             from.tm_hour, from.tm_min, from.tm_sec);
        ASSERT_EQ(DateAddA("m", months, CDateTime(point, 123456)), CDateTime(to, 123456))
            << point << ' ' << months;
    }
}

TEST(DateAdd, UnusableIntervalsAndDatesAreRefused) {
    const CDateTime date("20240229000000Z");
    for (const char* interval : {"x", "D", "M", " d", "\xE4"})
        EXPECT_EQ(thrownCode([&] { DateAddA(interval, 1, date); }), 0x80070057u) << interval;
    for (const wchar_t* interval : {L"x", L"D", L"\x164", L"\x10064"})
        EXPECT_EQ(thrownCode([&] { DateAddW(interval, 1, date); }), 0x80070057u);
    EXPECT_EQ(thrownCode([&] { DateAddA(nullptr, 1, date); }), 0x80070057u);
    EXPECT_EQ(thrownCode([&] { DateAddW(nullptr, 1, date); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { DateAddA("d", -1, dateOf(10)); }), 0x80004005u);
    EXPECT_EQ(thrownCode([] { DateAddA("m", 1, dateOf(0x8000000000000002)); }), 0x80070057u);
}

TEST(DateAdd, YearsOutsideTheCalendarAreRefusedAndNotWrapped) {
    const CDateTime date("20240229000000Z");
    EXPECT_EQ(DateAddA("y", 30827 - 2024, date).year(), 30827u);
    for (const int years : {30828 - 2024, 1600 - 2024, 65536, INT_MAX, INT_MIN})
        EXPECT_EQ(thrownCode([&] { DateAddA("y", years, date); }), 0x80070057u) << years;
    EXPECT_EQ(thrownCode([&] { DateAddA("m", INT_MIN, date); }), 0x80070057u);
}
