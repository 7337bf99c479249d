// The texts of both time types, read and written by the plain functions and by the classes.
#include "asn1rt/time_parse.h"

#include <cstdio>
#include <cstring>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "asn1rt/generalized_time.h"
#include "asn1rt/utc_time.h"
#include "runtime_test.h"
#include "support/calendar.h"

namespace {

std::time_t pointOf(const rtTimeRecord& time) {
    return test::pointAt(time.year, time.month, time.day, time.hour - time.diffHour,
                         time.minute - time.diffMinute, time.second);
}

bool isOnCalendar(int year, int month, int day) {
    const std::tm fields = test::utcFields(test::pointAt(year, month, day));
    return year >= 0 && fields.tm_mon == month - 1 && fields.tm_mday == day;
}

// What a text says, in one line; its status if it is refused.
std::string describe(int status, const rtTimeRecord& time) {
    if (status != RTS_OK) return std::to_string(status);
    char line[120];
    std::snprintf(line, sizeof line, "%d-%d-%d %d:%d:%d.%s %+d:%d%s", time.year, time.month, time.day,
                  time.hour, time.minute, time.second, time.fraction, time.diffHour, time.diffMinute,
                  time.utcFlag ? " Z" : "");
    return line;
}

template <typename Time>
std::string describeObject(const char* text, bool derRules) {
    Time time(text, derRules);
    if (const int year = time.getYear(); year < 0) return std::to_string(year);
    char line[120];
    std::snprintf(line, sizeof line, "%d-%d-%d %d:%d:%d.%d %+d:%d%s", time.getYear(), time.getMonth(),
                  time.getDay(), time.getHour(), time.getMinute(), time.getSecond(), time.getFraction(),
                  time.getDiffHour(), time.getDiffMinute(), time.getUTC() == 1 ? " Z" : "");
    return line;
}

struct Reading {
    const char* text;
    const char* plain;   // by the plain function
    const char* object;  // by the class, free form
    const char* strict;  // by the class, distinguished form
};

template <typename Object, typename Parse>
void expectReadings(std::span<const Reading> accepted, const std::vector<const char*>& refused, Parse parse) {
    std::vector<Reading> rows(accepted.begin(), accepted.end());
    for (const char* text : refused)
        rows.push_back({text, "-31", "-31", "-31"});
    for (const Reading& row : rows) {
        SCOPED_TRACE(row.text ? row.text : "null");
        LiveContext context;
        rtTimeRecord time;
        const int status = parse(context, row.text, &time);
        EXPECT_EQ(describe(status, time), row.plain);
        EXPECT_EQ(context.recorded(), status);
        EXPECT_EQ(describeObject<Object>(row.text, false), row.object);
        EXPECT_EQ(describeObject<Object>(row.text, true), row.strict);
    }
}

const Reading generalizedReadings[] = {
    {"20240229120000Z", "2024-2-29 12:0:0. +0:0 Z", "2024-2-29 12:0:0.0 +0:0 Z", "2024-2-29 12:0:0.0 +0:0 Z"},
    {"2024010112", "2024-1-1 12:0:0. +0:0", "2024-1-1 12:0:0.0 +0:0", "-31"},
    {"202401011230Z", "2024-1-1 12:30:0. +0:0 Z", "2024-1-1 12:30:0.0 +0:0 Z", "2024-1-1 12:30:0.0 +0:0 Z"},
    {"20240101120000.5Z", "2024-1-1 12:0:0.5 +0:0 Z", "2024-1-1 12:0:0.5 +0:0 Z", "2024-1-1 12:0:0.5 +0:0 Z"},
    {"20240101120000,5Z", "2024-1-1 12:0:0.5 +0:0 Z", "2024-1-1 12:0:0.5 +0:0 Z", "-31"},
    {"20240101120000.050Z", "2024-1-1 12:0:0.50 +0:0 Z", "2024-1-1 12:0:0.50 +0:0", "-31"},
    {"20240101120000.123Z", "2024-1-1 12:0:0.123 +0:0 Z", "2024-1-1 12:0:0.123 +0:0", "-31"},
    {"20240101120000.000Z", "2024-1-1 12:0:0. +0:0 Z", "2024-1-1 12:0:0.0 +0:0", "-31"},
    {"20240101120000.99999999999999999999999", "2024-1-1 12:0:0.99999999999999999999 +0:0",
     "2024-1-1 12:0:0.2147483647 +0:0", "-31"},
    {"20240101120000+0330", "2024-1-1 12:0:0. +3:30", "2024-1-1 12:0:0.0 +3:30", "-31"},
    {"20240101120000-0330", "2024-1-1 12:0:0. -3:-30", "2024-1-1 12:0:0.0 -3:-30", "-31"},
    {"20240101120000+12", "2024-1-1 12:0:0. +12:0", "2024-1-1 12:0:0.0 +12:0", "-31"},
    {"20240101120000+5", "2024-1-1 12:0:0. +5:0", "2024-1-1 12:0:0.0 +5:0", "-31"},
    {"20240101120000 matter", "2024-1-1 12:0:0. +0:0", "2024-1-1 12:0:0.0 +0:0", "-31"},
    {"202401015", "2024-1-1 5:0:0. +0:0", "2024-1-1 5:0:0.0 +0:0", "-31"},
    {"20240101123", "2024-1-1 12:3:0. +0:0", "2024-1-1 12:3:0.0 +0:0", "-31"},
    {"2024 1 112", "2024-1-11 12:0:0. +0:0", "2024-1-11 12:0:0.0 +0:0", "-31"},
};

TEST(GeneralizedTimeText, IsReadOrRefused) {
    const auto refused =
        test::texts("20230229120000Z", "19000229120000Z", "2024010112.5", "202401011230.5Z",
                    "20240101120000.", "20240101120000.Z", "20240101120000.-5Z", "20240101120000+13",
                    "20240101120000+0060", "20240101120000+", "20240101120000ZZ", "20240101240000Z",
                    "20240101126000Z", "20240101120060Z", "20240001120000Z", "20241301120000Z",
                    "20240100120000Z", "20240431120000Z", "-12301011200Z", "1 1 1", "20240101", "", nullptr);
    expectReadings<ASN1CGeneralizedTime>(generalizedReadings, refused, rtParseGeneralizedTime);
}

const Reading utcReadings[] = {
    {"490101120000Z", "2049-1-1 12:0:0. +0:0 Z", "2049-1-1 12:0:0.0 +0:0 Z", "2049-1-1 12:0:0.0 +0:0 Z"},
    {"500101120000Z", "1950-1-1 12:0:0. +0:0 Z", "1950-1-1 12:0:0.0 +0:0 Z", "1950-1-1 12:0:0.0 +0:0 Z"},
    {"000229120000Z", "2000-2-29 12:0:0. +0:0 Z", "2000-2-29 12:0:0.0 +0:0 Z", "2000-2-29 12:0:0.0 +0:0 Z"},
    {"2401011230Z", "2024-1-1 12:30:0. +0:0 Z", "2024-1-1 12:30:0.0 +0:0 Z", "2024-1-1 12:30:0.0 +0:0 Z"},
    {"240101123059-0730", "2024-1-1 12:30:59. -7:-30", "2024-1-1 12:30:59.0 -7:-30", "-31"},
    {"2401011230+0100", "2024-1-1 12:30:0. +1:0", "2024-1-1 12:30:0.0 +1:0", "-31"},
};

TEST(UtcTimeText, IsReadOrRefused) {
    const auto refused =
        test::texts("010229120000Z", "2401011230+01", "2401011230+1300", "2401011230+0060", "2401011230",
                    "24010112Z", "240101126000Z", "2401012400Z", "240101123060Z", "240101123059.5Z",
                    "2401011230ZZ", "-10101123000Z", "240101", "", nullptr);
    expectReadings<ASN1CUTCTime>(utcReadings, refused, rtParseUTCTime);
}

// The date takes numbers exactly as the C library's scanf does, signs and blanks included.
TEST(GeneralizedTimeText, DatesAgreeWithTheCLibraryOnRandomCharacters) {
    constexpr char alphabet[] = "00011122345 \t+-";
    std::mt19937 random(11);
    int accepted = 0;
    for (int round = 0; round < 200000; ++round) {
        std::string text(8, ' ');
        for (char& character : text)
            character = alphabet[random() % (sizeof alphabet - 1)];
        text += "10Z";
        int year = 0, month = 0, day = 0;
        const bool read = std::sscanf(text.c_str(), "%4d%2d%2d", &year, &month, &day) == 3;
        rtTimeRecord time;
        LiveContext context;
        const int status = rtParseGeneralizedTime(context, text.c_str(), &time);
        ASSERT_EQ(status == RTS_OK, read && isOnCalendar(year, month, day)) << text;
        if (status != RTS_OK) continue;
        ++accepted;
        ASSERT_EQ(time.year * 10000 + time.month * 100 + time.day, year * 10000 + month * 100 + day) << text;
    }
    EXPECT_GT(accepted, 1000);
}

template <typename Object, typename Parse>
void expectPoint(std::time_t point, const std::string& text, bool derRules, Parse parse) {
    LiveContext context;
    rtTimeRecord time;
    ASSERT_EQ(parse(context, text.c_str(), &time), RTS_OK) << text;
    ASSERT_EQ(pointOf(time), point);
    const char* shown = text.c_str();
    Object object(shown, derRules);
    ASSERT_EQ(object.getSecond(), time.second);
    ASSERT_EQ(object.getTimeStringPtr(), text);
    if (!derRules) return;
    char buffer[16];
    char* written = buffer;
    ASSERT_EQ(rtMakeGeneralizedTime(context, &time, &written, sizeof buffer), RTS_OK);
    ASSERT_EQ(written, text);
}

TEST(TimeText, NamesThePointOfTheCLibrary) {
    for (const std::time_t point : test::pointsBetween(test::startOfYear1, test::endOf9999))
        expectPoint<ASN1CGeneralizedTime>(point, test::generalizedText(point), true, rtParseGeneralizedTime);
    for (const std::time_t point : test::pointsBetween(test::startOf1950, test::endOf2049))
        expectPoint<ASN1CUTCTime>(point, test::format("%y%m%d%H%M%SZ", point), false, rtParseUTCTime);
}

rtTimeRecord noon() {
    LiveContext context;
    rtTimeRecord time;
    rtParseGeneralizedTime(context, "20240101120000Z", &time);
    return time;
}

TEST(MakeGeneralizedTime, WritesFractionAndOffset) {
    const auto make = [](rtTimeRecord time) {
        LiveContext context;
        char* text = nullptr;
        const int status = rtMakeGeneralizedTime(context, &time, &text, 0);
        EXPECT_EQ(context.recorded(), status);
        return status == RTS_OK ? std::string(text) : std::to_string(status);
    };
    rtTimeRecord time = noon();
    std::strcpy(time.fraction, "5");
    EXPECT_EQ(make(time), "20240101120000.5Z");
    time.diffHour = 3;
    EXPECT_EQ(make(time), "20240101120000.5Z");
    time.utcFlag = 0;
    EXPECT_EQ(make(time), "20240101120000.5+0300");
    time.diffHour = 0;
    time.diffMinute = -30;
    EXPECT_EQ(make(time), "20240101120000.5-0030");
    time.diffMinute = 0;
    EXPECT_EQ(make(time), "20240101120000.5");
    std::memset(time.fraction, '7', sizeof time.fraction);
    EXPECT_EQ(make(time), "20240101120000.77777777777777777777");
}

TEST(MakeGeneralizedTime, FieldsOutOfRangeAreRefused) {
    const struct {
        std::int16_t rtTimeRecord::*field;
        std::int16_t below, lowest, highest, above;
    } rows[] = {
        {&rtTimeRecord::year, -1, 0, 9999, 10000},   {&rtTimeRecord::month, 0, 1, 12, 13},
        {&rtTimeRecord::day, 0, 1, 31, 32},          {&rtTimeRecord::hour, -1, 0, 23, 24},
        {&rtTimeRecord::minute, -1, 0, 59, 60},      {&rtTimeRecord::second, -1, 0, 59, 60},
        {&rtTimeRecord::diffHour, -13, -12, 12, 13}, {&rtTimeRecord::diffMinute, -60, -59, 59, 60},
    };
    for (const auto& row : rows) {
        LiveContext context;
        char buffer[48];
        char* text = buffer;
        rtTimeRecord time = noon();
        for (const auto& [value, status] :
             {std::pair(row.below, -31), {row.lowest, 0}, {row.highest, 0}, {row.above, -31}}) {
            time.*row.field = value;
            EXPECT_EQ(rtMakeGeneralizedTime(context, &time, &text, sizeof buffer), status) << value;
        }
    }
}

TEST(MakeGeneralizedTime, TextAndTerminatorMustFit) {
    LiveContext context;
    const rtTimeRecord time = noon();
    char buffer[16] = "";
    char* text = buffer;
    EXPECT_EQ(rtMakeGeneralizedTime(context, &time, &text, 15), RTS_BUFFER_TOO_SMALL);
    EXPECT_EQ(context.recorded(), RTS_BUFFER_TOO_SMALL);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(rtMakeGeneralizedTime(context, &time, &text, 16), RTS_OK);
    EXPECT_STREQ(buffer, "20240101120000Z");
}

}  // namespace
