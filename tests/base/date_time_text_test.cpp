#include "base/date_time_text.h"

#include <gtest/gtest.h>

#include <new>

#include "base/date_time_span.h"
#include "support/calendar.h"
#include "support/failing_memory.h"
#include "support/failures.h"
#include "support/octets.h"

using namespace Mirvane;
using test::thrownCode;

namespace {

constexpr std::time_t startOf1601 = -11644473600;

std::string read(const char* text) {
    return fromXsdDateTimeString(text).getGeneralizedTime().c_str();
}

}  // namespace

TEST(XsdDateTime, RandomPointsHaveTheTextOfTheCLibraryAndComeBack) {
    for (const std::time_t point : test::pointsBetween(startOf1601, test::endOf9999)) {
        const CDateTime date(point, 0);
        const std::string text = toXsdDateTimeString(date).c_str();
        ASSERT_EQ(text, test::format("%Y-%m-%dT%H:%M:%SZ", point));
        ASSERT_EQ(fromXsdDateTimeString(text.c_str()), date) << text;
    }
}

TEST(XsdDateTime, OnlyMillisecondsAreWritten) {
    const std::pair<unsigned, const char*> rows[] = {
        {999, "1970-01-01T00:00:00Z"},
        {1000, "1970-01-01T00:00:00.001Z"},
        {120'999, "1970-01-01T00:00:00.120Z"},
        {999'999, "1970-01-01T00:00:00.999Z"},
    };
    for (const auto& [microseconds, text] : rows)
        EXPECT_STREQ(toXsdDateTimeString(CDateTime(0, microseconds)).c_str(), text);
    EXPECT_STREQ(toXsdDateTimeString(CDateTime(12024, 1, 1, 0, 0, 0, 0, 0)).c_str(), "12024-01-01T00:00:00Z");
}

TEST(XsdDateTimeDeathTest, TextOfACountOutsideTheCalendarEndsTheProcess) {
    EXPECT_DEATH(toXsdDateTimeString(CDateTime(_FILETIME{2, 0x80000000})), "");
}

TEST(XsdDateTime, ReadsFractionsAndZones) {
    const std::string longFraction = "2024-02-29T23:59:59." + std::string(1000, '3') + "+03:00";
    const std::pair<const char*, const char*> rows[] = {
        {"2024-02-29T23:59:59Z", "20240229235959Z"},
        {"2024-02-29T23:59:59z", "20240229235959Z"},
        {"2024-02-29T23:59:59.5Z", "20240229235959.5Z"},
        {"2024-02-29T23:59:59.1234567Z", "20240229235959.123456Z"},
        {"2024-02-29T23:59:59.5", "20240229235959.5Z"},
        {"2024-02-29T23:59:59.123456z", "20240229235959.123456Z"},
        {"2024-02-29T23:59:59+03:00", "20240229205959Z"},
        {"2024-02-29T23:59:59-03:00", "20240301025959Z"},
        {"2024-02-29T23:59:59.5+03:00", "20240229205959.5Z"},
        {"2024-02-29T23:59:59+14:00", "20240229095959Z"},
        {"2024-02-29T23:59:59-14:00", "20240301135959Z"},
        {"2024-02-29T23:59:59+00:99", "20240229222059Z"},
        {"2024-02-29T23:59:59+13:60", "20240229095959Z"},
        {"2024-02-29T23:59:59+3:5", "20240229205459Z"},
        // Behind the minutes nothing is looked at.
        {"2024-02-29T23:59:59+03:000", "20240229205959Z"},
        {"2024-02-29T23:59:59+03:00:59", "20240229205959Z"},
        // A minus splits, even behind a plus.
        {"2024-02-29T23:59:59+-03:00", "20240301025959Z"},
        {"2024-02-29T23:59:59-03:00+05:00", "20240301025959Z"},
        // With a Z, digits behind it are a fraction.
        {"2024-02-29T23:59:59Z03:00", "20240229235959.03Z"},
        {"2024-02-29T23:59:59:5Z", "20240229235959Z"},
        {"2024-02-29T23:59:59Z:25", "20240229235959.25Z"},
        // What scanf takes: white space, signs, short fields.
        {" 2024- 2-29T+1: 2:3 Z rest", "20240229010203Z"},
        {"2024-02-29T23:59:59Z 03:00", "20240229235959Z"},
        {"2024-02-29T23:59:591Z", "20240229235959Z"},
        {"1601-01-01T03:00:00+03:00", "16010101000000Z"},
        {longFraction.c_str(), "20240229205959.333333Z"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(read(text), expected) << text;
}

TEST(XsdDateTime, RefusesOtherTexts) {
    const auto expectRefused = [](unsigned code, const std::vector<const char*>& texts) {
        for (const char* text : texts)
            EXPECT_EQ(thrownCode([&] { fromXsdDateTimeString(text); }), code) << text;
    };
    expectRefused(
        0x8007076D,
        test::texts("", "2024-02-29", "2024-02-29T23:59Z", "2024-02-29 23:59:59Z", "20240229235959Z",
                    "2024-02-29T23:59:59", "2024-02-29T23:59:59 ", "12024-02-29T23:59:59Z",
                    "-024-02-29T23:59:59Z", "2024--1-29T23:59:59Z", "2024-02-29T23:59:59.5z",
                    "2024-02-29T23:59:59Z+03:00", "2024-02-29T23:59:59Z:", "2024-02-29T23:59:59.x5",
                    "2024-02-29T23:59:59+15:00", "2024-02-29T23:59:59-15:00", "2024-02-29T23:59:59+14:01",
                    "2024-02-29T23:59:59+03", "2024-02-29T23:59:59+0300", "2024-02-29T23:59:59+",
                    "2024-02-29T23:59:59+ 03:00", "2024-02-29T23:59:59--1:00", "2024-02-29T23:59:59+03:-1",
                    "2024-02-29T23:59:59.5+03:00-01:00"));
    expectRefused(0x80004005,
                  test::texts("2024-13-01T00:00:00Z", "2023-02-29T00:00:00Z", "2024-01-01T24:00:00Z",
                              "1600-12-31T23:59:59Z", "1601-01-01T02:59:59+03:00"));
    EXPECT_EQ(thrownCode([] { fromXsdDateTimeString(nullptr); }), 0x80070057u);
}

TEST(XsdDateTime, MemoryThatFailsWhileTheZoneIsSplitOffHasItsOwnCode) {
    const std::string text = "2024-02-29T23:59:59." + std::string(100, '5') + "+03:00";
    for (int index = 0;; ++index) {
        const test::FailingMemory failing(index);
        unsigned code = 0;
        bool isStandard = false;
        try {
            code = thrownCode([&] { fromXsdDateTimeString(text.c_str()); });
        } catch (const std::bad_alloc&) {
            isStandard = true;
        }
        if (!failing.happened()) break;
        // The copy of the zone and what is left of it in front of the sign; then the text that is read.
        EXPECT_EQ(code, index < 2 ? 0x8009000E : 0) << index;
        EXPECT_EQ(isStandard, index >= 2) << index;
    }
}
