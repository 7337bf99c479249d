// The time classes: setters and the text they write, comparison, calendar arithmetic, local time, and whose
// memory the text is in.
#include "asn1rt/time.h"

#include <climits>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "asn1rt/generalized_time.h"
#include "asn1rt/utc_time.h"
#include "runtime_test.h"
#include "support/calendar.h"

namespace {

// A time object on a constant text, and a context whose record of failures can be seen.
template <typename Time>
struct Held {
    explicit Held(std::nullptr_t, bool derRules = false) : text(nullptr), time(*context, text, derRules) {}
    explicit Held(std::string start, bool derRules = false)
        : storage(std::move(start)), text(storage.c_str()), time(*context, text, derRules) {}
    int recorded() const { return context->errInfo.status; }
    std::string shown() { return time.getTimeStringPtr(); }

    ASN1CtxtPtr context = new ASN1Context;
    std::string storage;
    const char* text;
    Time time;
};
using Generalized = Held<ASN1CGeneralizedTime>;
using Utc = Held<ASN1CUTCTime>;

template <typename Time>
struct Change {
    const char* start;
    std::function<int(Time&)> change;
    int status;
    const char* shown;
};

template <typename Time>
void check(const std::initializer_list<Change<Time>>& rows) {
    for (const Change<Time>& row : rows) {
        SCOPED_TRACE(row.start + std::string(" to ") + row.shown);
        Held<Time> held(row.start);
        EXPECT_EQ(row.change(held.time), row.status);
        EXPECT_EQ(held.recorded(), row.status);
        EXPECT_EQ(held.shown(), row.shown);
    }
}

using G = ASN1CGeneralizedTime;
using U = ASN1CUTCTime;

TEST(GeneralizedTime, ChangedFieldsShowInTheText) {
    check<G>({
        {"20240101120000Z", [](G& t) { return t.setYear(1999); }, 0, "1999010112Z"},
        {"20240101120000Z", [](G& t) { return t.setMonth(12); }, 0, "2024120112Z"},
        {"20240101120000Z", [](G& t) { return t.setDay(31); }, 0, "2024013112Z"},
        {"20240101120000Z", [](G& t) { return t.setHour(0); }, 0, "2024010100Z"},
        {"20240101120000Z", [](G& t) { return t.setMinute(5); }, 0, "202401011205Z"},
        {"20240101120000Z", [](G& t) { return t.setSecond(7); }, 0, "20240101120007Z"},
        {"2024010112Z", [](G& t) { return t.setFraction(5); }, 0, "20240101120000.5Z"},
        {"2024010112Z", [](G& t) { return t.setFraction(-5); }, 0, "2024010112Z"},
        {"2024010112Z", [](G& t) { return t.setUTC(false); }, 0, "2024010112"},
        {"2024010112", [](G& t) { return t.setDiffHour(3); }, 0, "2024010112+03"},
        {"2024010112", [](G& t) { return t.setDiff(-90); }, 0, "2024010112-0130"},
        {"2024010112", [](G& t) { return t.setDiff(-1, 30); }, 0, "2024010112-0130"},
        {"2024010112+0130", [](G& t) { return t.setDiffHour(-2); }, 0, "2024010112-0230"},
        {"2024010112", [](G& t) { return t.setDiff(0, 30); }, 0, "2024010112-0030"},
        {"2024010112+03", [](G& t) { return t.setUTC(true); }, 0, "2024010109Z"},
        {"2024010102+0330", [](G& t) { return t.setUTC(true); }, 0, "202312312230Z"},
        {"20240101120000", [](G& t) { return t.setCentury(19); }, 0, "1924010112"},
        {"00000101000000+01", [](G& t) { return t.setUTC(true); }, 0, "00000101000000+01"},
    });
}

TEST(GeneralizedTime, ValuesOutOfRangeChangeNothing) {
    constexpr const char* text = "20240229120000.5-0330";
    const std::pair<int (G::*)(int), std::vector<int>> rows[] = {
        {&G::setYear, {-1, 10000, INT_MAX, 2023}},
        {&G::setMonth, {0, 13}},
        {&G::setDay, {0, 30}},
        {&G::setHour, {24, -1}},
        {&G::setMinute, {60}},
        {&G::setSecond, {60}},
        {&G::setDiffHour, {13, INT_MIN}},
        {&G::setDiff, {721, INT_MIN}},
    };
    for (const auto& [set, values] : rows) {
        for (const int value : values)
            check<G>({{text, [=, set = set](G& t) { return (t.*set)(value); }, -31, text}});
    }
    check<G>({
        {text, [](G& t) { return t.setDiff(0, 60); }, -31, text},
        {text, [](G& t) { return t.setDiff(0, INT_MIN); }, -31, text},
        {text, [](G& t) { return t.setCentury(100); }, -31, text},
        {"2000022912", [](G& t) { return t.setCentury(19); }, -31, "2000022912"},
    });
}

TEST(UtcTime, ChangedFieldsShowInTheText) {
    check<U>({
        {"2401011230Z", [](U& t) { return t.setSecond(0); }, 0, "240101123000Z"},
        {"2401011230Z", [](U& t) { return t.setYear(49); }, 0, "490101123000Z"},
        {"2401011230Z", [](U& t) { return t.setYear(1997); }, 0, "970101123000Z"},
        {"240229123000Z", [](U& t) { return t.setYear(23); }, -31, "240229123000Z"},
        {"240101123000Z", [](U& t) { return t.setYear(-1); }, -31, "240101123000Z"},
        {"240101123000Z", [](U& t) { return t.setUTC(false); }, 0, "240101123000Z"},
        {"240101123000+0100", [](U& t) { return t.setUTC(true); }, 0, "240101113000Z"},
        {"240101123000Z", [](U& t) { return t.setDiff(60); }, 0, "240101113000Z"},
        {"240101123000+0100", [](U& t) { return t.setDiff(-30); }, 0, "240101123000-0030"},
        {"240101123000Z", [](U& t) { return t.setFraction(5); }, -99, "240101123000Z"},
        {"000101003000+0100", [](U& t) { return t.setYear(0) + t.setUTC(true); }, 0, "991231233000Z"},
    });
}

TEST(UtcTime, HasTwoDigitsOfTheYearAndNoLocalTimeWithoutOffset) {
    Utc year("2401011230Z");
    EXPECT_EQ(year.time.setYear(7), RTS_OK);
    EXPECT_EQ(year.time.getYear(), 7);
    EXPECT_EQ(year.time.getFraction(), 0);
    Utc utc("240101123000+0100");
    EXPECT_EQ(utc.time.setDiff(0), RTS_OK);
    EXPECT_EQ(utc.recorded(), RTS_OK);
    EXPECT_EQ(utc.time.compileString(), RTS_BAD_DATETIME);
    EXPECT_EQ(utc.recorded(), RTS_BAD_DATETIME);
}

TEST(Time, UtcShiftsTheTextAndNotTheFields) {
    Generalized time("2024010112+03");
    time.time.setUTC(true);
    EXPECT_EQ(time.shown(), "2024010109Z");
    EXPECT_EQ(time.time.getHour(), 12);
    EXPECT_EQ(time.time.getDiff(), 180);
}

template <typename Time>
void buildFromNothing(const char* expected) {
    Held<Time> held(nullptr, true);
    ASN1CTime& time = held.time;
    time.clear();
    EXPECT_STREQ(held.text, "");
    EXPECT_EQ(time.setYear(2024) | time.setMonth(2) | time.setDay(29), RTS_OK);
    EXPECT_EQ(time.getTimeStringLen(), 0);
    EXPECT_EQ(time.setHour(23) | time.setMinute(59) | time.setSecond(0), RTS_OK);
    EXPECT_EQ(held.recorded(), RTS_OK);
    EXPECT_STREQ(held.text, expected);
}

TEST(Time, ClearedObjectTakesAllFieldsBeforeItHasAText) {
    buildFromNothing<ASN1CGeneralizedTime>("20240229235900Z");
    buildFromNothing<ASN1CUTCTime>("240229235900Z");
}

TEST(Time, UnsetFieldsLetAnyDayPass) {
    Generalized time("");
    time.time.clear();
    EXPECT_EQ(time.time.setDay(29), RTS_OK);
    EXPECT_EQ(time.time.setMonth(2), RTS_OK);
    EXPECT_EQ(time.time.setDay(30), RTS_BAD_DATETIME);
    EXPECT_EQ(time.time.setYear(2023), RTS_BAD_DATETIME);
    EXPECT_EQ(time.time.getYear(), -3);
    EXPECT_EQ(time.time.compileString(), RTS_BAD_DATETIME);
}

TEST(Time, SetterOnAnUnreadableTextMakesTheObjectParsed) {
    Generalized time("no time");
    EXPECT_EQ(time.time.getYear(), RTS_BAD_DATETIME);
    EXPECT_EQ(time.time.setYear(2024), RTS_OK);
    EXPECT_EQ(time.time.getYear(), 2024);
    EXPECT_EQ(time.time.getMonth(), -3);
}

TEST(Time, RefusedTextChangesNoField) {
    Generalized time("20240101120000.5+03");
    EXPECT_EQ(time.time.getFraction(), 5);
    EXPECT_EQ(time.time.parseString("20250101120000.7ZZ"), RTS_BAD_DATETIME);
    EXPECT_EQ(time.time.parseString(nullptr), RTS_BAD_DATETIME);
    EXPECT_EQ(time.shown(), "20240101120000.5+03");
    EXPECT_EQ(time.time.parseString("20250101120000.7Z"), RTS_OK);
    EXPECT_EQ(time.shown(), "20250101120000.7Z");
}

TEST(Time, DistinguishedFormIsAlwaysUtc) {
    Generalized time("20240101120000Z", true);
    EXPECT_EQ(time.time.setUTC(false), RTS_OK);
    EXPECT_EQ(time.time.setSecond(0), RTS_OK);
    EXPECT_EQ(time.shown(), "20240101120000Z");
    EXPECT_EQ(Generalized("no time", true).time.getUTC(), 1);
}

TEST(Time, TextMustBeShorterThanTheBufferItIsCopiedTo) {
    Utc time("2401011230Z");
    time.time.getYear();
    char buffer[14];
    EXPECT_EQ(time.time.getTimeString(buffer, 13), nullptr);
    ASSERT_EQ(time.time.getTimeString(buffer, 14), buffer);
    EXPECT_STREQ(buffer, "240101123000Z");
}

TEST(TimeOrder, DateDecidesBeforeTimeAndOffset) {
    const std::pair<const char*, const char*> rows[] = {
        {"20240101120000Z", "20240101120001Z"},         {"20240101120000.4Z", "20240101120000.5Z"},
        {"20231231235959Z", "20240101000000Z"},         {"20240101120000+03", "20240101120000+02"},
        {"20231231230000-1200", "20240101000000+1200"}, {"20240228120000Z", "20240229120000Z"},
    };
    for (const auto& [first, second] : rows) {
        Generalized earlier(first), later(second);
        EXPECT_TRUE(earlier.time < later.time && earlier.time <= later.time && earlier.time != later.time)
            << second;
        EXPECT_TRUE(later.time > earlier.time && later.time >= earlier.time) << second;
        EXPECT_FALSE(earlier.time == later.time || earlier.time > later.time) << second;
    }
    Generalized first("2024010112+03"), second("2024010109Z");
    EXPECT_TRUE(first.time == second.time && first.time >= second.time && first.time <= second.time);
}

TEST(TimeOrder, HugeFractionsDoNotWrapAround) {
    Generalized none("20240101120000Z"), huge("20240101120000.99999999999999");
    EXPECT_EQ(huge.time.equals(none.time), INT_MAX);
    EXPECT_EQ(none.time.equals(huge.time), -INT_MAX - 1);
}

TEST(Calendar, DayNumbersAgreeWithTheCLibrary) {
    const std::int64_t base = Generalized("0001010100Z").time.getDaysNum();
    EXPECT_EQ(base, 1);
    for (const std::time_t point : test::pointsBetween(test::startOfYear1, test::endOf9999)) {
        Generalized time(test::generalizedText(point));
        ASSERT_EQ(time.time.getDaysNum() - base, (point - test::startOfYear1) / 86400) << time.text;
        ASSERT_EQ(time.time.getMillisNum(), (point - test::startOfYear1) % 86400 * 1000);
    }
    EXPECT_EQ(Generalized("0000123100Z").time.getDaysNum(), 0);
    EXPECT_EQ(Generalized("0000010100Z").time.getDaysNum(), -365);
}

TEST(Calendar, SumsAgreeWithTheCLibrary) {
    const auto points = test::pointsBetween(test::startOfYear1, test::endOf9999);
    for (std::size_t index = 1; index < points.size(); ++index) {
        const std::tm start = test::utcFields(points[index - 1]);
        int year = start.tm_year + 1900, month = start.tm_mon + 1, day = start.tm_mday;
        const auto days = static_cast<int>((points[index] - points[index - 1]) / 86400);
        ASN1CTime::addDays(days, year, month, day);
        ASSERT_EQ(test::pointAt(year, month, day, start.tm_hour, start.tm_min, start.tm_sec),
                  points[index - 1] + std::time_t{days} * 86400);

        int hour = start.tm_hour, minute = start.tm_min, second = start.tm_sec, fraction = 9;
        const auto seconds = static_cast<int>(points[index] % 2'000'000);
        ASN1CTime::addMilliseconds(seconds * 1000 + 100, year, month, day, hour, minute, second, fraction);
        ASSERT_EQ(test::pointAt(year, month, day, hour, minute, second),
                  points[index - 1] + std::time_t{days} * 86400 + seconds + 1);
        ASSERT_EQ(fraction, 0);
    }
}

TEST(Calendar, DatesAreCheckedAgainstTheLengthOfTheMonth) {
    for (int month = 1; month <= 12; ++month) {
        for (int year : {1900, 2000, 2023, 2024}) {
            const auto days =
                static_cast<int>((test::pointAt(year, month + 1, 1) - test::pointAt(year, month, 1)) / 86400);
            EXPECT_TRUE(ASN1CTime::checkDate(days, month, year));
            EXPECT_FALSE(ASN1CTime::checkDate(days + 1, month, year));
        }
    }
    EXPECT_TRUE(ASN1CTime::checkDate(29, 2, -3));
    EXPECT_FALSE(ASN1CTime::checkDate(30, 2, -3));
    EXPECT_TRUE(ASN1CTime::checkDate(31, -3, 2024));
    EXPECT_TRUE(ASN1CTime::checkDate(-3, 2, 2024));
    EXPECT_FALSE(ASN1CTime::checkDate(1, 13, 2024));
}

// Both halves of the year, ahead of UTC and behind it, with and without summer time.
constexpr const char* zones[] = {"CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0", "XST-5:45", "UTC0"};

TEST(LocalTime, SetTimeIsUtcInDistinguishedFormAndElseHasAnOffset) {
    for (const char* zone : zones) {
        const test::TimeZone scope(zone);
        for (const std::time_t point : test::pointsBetween(test::startOf1950, test::endOf2049, 2000)) {
            Generalized generalized("", true);
            ASSERT_EQ(generalized.time.setTime(point, false), RTS_OK);
            ASSERT_EQ(generalized.text, test::generalizedText(point)) << zone;
            Utc utc("", true);
            ASSERT_EQ(utc.time.setTime(point, true), RTS_OK);
            ASSERT_EQ(utc.text, test::format("%y%m%d%H%M%SZ", point)) << zone;
            Generalized held("");
            G& time = held.time;
            ASSERT_EQ(time.setTime(point, true), RTS_OK);
            ASSERT_EQ(test::pointAt(time.getYear(), time.getMonth(), time.getDay(),
                                    time.getHour() - time.getDiffHour(),
                                    time.getMinute() - time.getDiffMinute(), time.getSecond()),
                      point);
        }
    }
}

TEST(LocalTime, WithoutOffsetTheLocalTimeIsShown) {
    const test::TimeZone scope("EST5");
    Generalized generalized("2000010100+03");
    EXPECT_EQ(generalized.time.setTime(1700000000, false), RTS_OK);
    EXPECT_EQ(generalized.shown(), "20231114171320");
    EXPECT_EQ(generalized.time.getTime(), 1700000000);
    Utc utc("2001010000+0300");
    EXPECT_EQ(utc.time.setTime(1700000000, false), RTS_OK);
    EXPECT_EQ(utc.shown(), "231114171320Z");
}

TEST(LocalTime, GetTimeAddsTheOffset) {
    const test::TimeZone scope("UTC0");
    EXPECT_EQ(Generalized("20240101120000+0130").time.getTime(), test::pointAt(2024, 1, 1, 13, 30));
    EXPECT_EQ(Generalized("no time").time.getTime(), RTS_BAD_DATETIME);
}

TEST(LocalTime, PointOutsideTheYearsOfATextIsRefused) {
    const test::TimeZone scope("UTC0");
    for (const std::time_t point : {test::endOf9999 + 1, test::pointAt(-1, 12, 31), std::time_t{LONG_MAX}}) {
        Generalized time("20240101120000Z");
        EXPECT_EQ(time.time.setTime(point, false), RTS_BAD_DATETIME);
        EXPECT_EQ(time.time.getYear(), 2024);
    }
}

TEST(TimeMemory, RoomForThirtyOctetsIsWrittenInPlace) {
    for (const int capacity : {0, 29, 30, 64}) {
        char buffer[64] = "20240101120000Z";
        char* text = buffer;
        ASN1CGeneralizedTime time(text, capacity, true);
        EXPECT_EQ(time.setSecond(9), RTS_OK);
        EXPECT_STREQ(text, "20240101120009Z");
        EXPECT_EQ(text == buffer, capacity >= 30);
    }
}

TEST(TimeMemory, TextThatFillsTheCapacityGoesElsewhere) {
    char buffer[31] = "20240101120000+1230";
    char* text = buffer;
    buffer[30] = '#';
    ASN1CGeneralizedTime time(text, 30, false);
    EXPECT_EQ(time.setFraction(INT_MAX), RTS_OK);
    EXPECT_STREQ(text, "20240101120000.2147483647+1230");
    EXPECT_EQ(buffer[30], '#');
    EXPECT_EQ(time.setFraction(0), RTS_OK);
    EXPECT_STREQ(text, "2024010112+1230");
}

TEST(TimeMemory, CopiesAreApartWhateverTheLengthOfTheText) {
    for (const std::size_t length : {0, 15, 35, 36, 5000}) {
        const std::string matter = "20240101120000 " + std::string(5000, 'x');
        const std::string start = matter.substr(0, length);
        Generalized original(start);
        ASN1CGeneralizedTime copy(original.time);
        Generalized assigned("");
        assigned.time = original.time;
        original.time.clear();
        EXPECT_EQ(copy.getTimeStringPtr(), start);
        EXPECT_EQ(assigned.text, start);
        EXPECT_EQ(copy.getYear(), length >= 15 ? 2024 : RTS_BAD_DATETIME);
    }
}

TEST(TimeMemory, CopyOfNoTextIsTheEmptyText) {
    Generalized original(nullptr);
    EXPECT_STREQ(ASN1CGeneralizedTime(original.time).getTimeStringPtr(), "");
    EXPECT_EQ(original.time.getTimeStringLen(), 0);
}

TEST(TimeMemory, FailedAssignmentChangesNothing) {
    Generalized source("20240101120000Z" + std::string(100, 'x'));
    Generalized target("20230101120000Z");
    EXPECT_EQ(target.time.getYear(), 2023);
    {
        CountedAllocations allocations;
        allocations.allow(0);
        EXPECT_THROW(target.time = source.time, ASN1RTLException);
    }
    EXPECT_EQ(target.time.getYear(), 2023);
    EXPECT_STREQ(target.text, "20230101120000Z");
    CountedAllocations allocations;
    allocations.allow(0);
    EXPECT_THROW(ASN1CGeneralizedTime copy(source.time), ASN1RTLException);
}

}  // namespace
