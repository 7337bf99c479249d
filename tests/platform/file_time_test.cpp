#include "platform/file_time.h"

#include <gtest/gtest.h>

#include <ctime>
#include <optional>
#include <random>

#include "platform/last_error.h"
#include "support/calendar.h"

namespace {

constexpr std::int64_t secondsTo1970 = 11'644'473'600;
constexpr std::int64_t ticksPerSecond = 10'000'000;

std::uint64_t countOf(const _FILETIME& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

_FILETIME fileTimeOf(std::uint64_t count) {
    return {static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
}

std::optional<std::uint64_t> toCount(const _SYSTEMTIME& time) {
    _FILETIME result{};
    if (SystemTimeToFileTime(&time, &result) == 0) return std::nullopt;
    return countOf(result);
}

// What the C library makes of the same fields: nothing, if it had to carry a day over to the next month.
std::optional<std::uint64_t> expectedCount(const _SYSTEMTIME& time) {
    const std::time_t seconds =
        test::pointAt(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
    if (test::utcFields(seconds).tm_mday != time.wDay) return std::nullopt;
    return static_cast<std::uint64_t>(seconds + secondsTo1970) * ticksPerSecond +
           time.wMilliseconds * 10'000u;
}

void expectFieldsOf(std::uint64_t count) {
    const _FILETIME fileTime = fileTimeOf(count);
    _SYSTEMTIME actual{};
    ASSERT_NE(FileTimeToSystemTime(&fileTime, &actual), 0) << count;
    const std::tm expected =
        test::utcFields(static_cast<std::int64_t>(count / ticksPerSecond) - secondsTo1970);
    ASSERT_EQ(actual.wYear, expected.tm_year + 1900) << count;
    ASSERT_EQ(actual.wMonth, expected.tm_mon + 1) << count;
    ASSERT_EQ(actual.wDay, expected.tm_mday) << count;
    ASSERT_EQ(actual.wDayOfWeek, expected.tm_wday) << count;
    ASSERT_EQ(actual.wHour, expected.tm_hour) << count;
    ASSERT_EQ(actual.wMinute, expected.tm_min) << count;
    ASSERT_EQ(actual.wSecond, expected.tm_sec) << count;
    ASSERT_EQ(actual.wMilliseconds, count % ticksPerSecond / 10'000) << count;
}

}  // namespace

TEST(FileTime, RandomMomentsHaveTheFieldsThatTheCLibraryGives) {
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 50'000; ++i)
        expectFieldsOf(random() >> 1);
    // The years of certificates.
    for (int i = 0; i < 50'000; ++i)
        expectFieldsOf(random() % (std::uint64_t{8400} * 366 * 86'400 * ticksPerSecond));
}

TEST(FileTime, EveryEndOfMonthOfEveryYearIsTakenOrRefusedAsTheCalendarHasIt) {
    for (WORD year = 1601; year <= 30827; ++year) {
        for (const WORD month : {1, 2, 4, 12}) {
            for (const WORD day : {1, 28, 29, 30, 31}) {
                const _SYSTEMTIME time{year, month, 9, day, 23, 59, 59, 999};
                ASSERT_EQ(toCount(time), expectedCount(time)) << year << '-' << month << '-' << day;
            }
        }
    }
}

TEST(FileTime, FieldsOutOfRangeAreRefusedAndNothingIsWritten) {
    const _SYSTEMTIME refused[] = {
        {1600, 12, 0, 31, 0, 0, 0, 0}, {30828, 1, 0, 1, 0, 0, 0, 0},     {2024, 0, 0, 1, 0, 0, 0, 0},
        {2024, 13, 0, 1, 0, 0, 0, 0},  {2024, 257, 0, 1, 0, 0, 0, 0},    {2024, 1, 0, 0, 0, 0, 0, 0},
        {2024, 1, 0, 257, 0, 0, 0, 0}, {2023, 2, 0, 29, 0, 0, 0, 0},     {2024, 1, 0, 1, 24, 0, 0, 0},
        {2024, 1, 0, 1, 0, 60, 0, 0},  {2016, 12, 0, 31, 23, 59, 60, 0}, {2024, 1, 0, 1, 0, 0, 0, 1000},
    };
    for (const _SYSTEMTIME& time : refused) {
        _FILETIME result{7, 8};
        SetLastError(0);
        EXPECT_EQ(SystemTimeToFileTime(&time, &result), 0)
            << time.wYear << '-' << time.wMonth << '-' << time.wDay;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(countOf(result), std::uint64_t{8} << 32 | 7);
    }
}

TEST(FileTime, TheRangeEndsAtTheSignBit) {
    expectFieldsOf(0);
    expectFieldsOf(0x7FFFFFFFFFFFFFFF);
    for (const std::uint64_t count : {0x8000000000000000, 0xFFFFFFFFFFFFFFFF}) {
        const _FILETIME fileTime = fileTimeOf(count);
        _SYSTEMTIME result{};
        SetLastError(0);
        EXPECT_EQ(FileTimeToSystemTime(&fileTime, &result), 0);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
}

TEST(FileTime, TheUnixEpochHasItsWellKnownCount) {
    EXPECT_EQ(toCount({1970, 1, 0, 1, 0, 0, 0, 0}), 116'444'736'000'000'000u);
    EXPECT_EQ(toCount({1601, 1, 0, 1, 0, 0, 0, 1}), 10'000u);
}

TEST(FileTime, TheSystemClockIsRead) {
    _FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto seconds = static_cast<std::int64_t>(countOf(now) / ticksPerSecond) - secondsTo1970;
    EXPECT_NEAR(static_cast<double>(seconds), static_cast<double>(std::time(nullptr)), 5.0);
}
