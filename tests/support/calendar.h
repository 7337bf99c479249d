// Points in time by the C library, to hold the project's calendars against.
#ifndef MIRVANE_TESTS_SUPPORT_CALENDAR_H
#define MIRVANE_TESTS_SUPPORT_CALENDAR_H

#include <cstdlib>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace test {

constexpr std::time_t startOfYear1 = -62135596800;
constexpr std::time_t startOf1950 = -631152000;
constexpr std::time_t endOf2049 = 2524607999;
constexpr std::time_t endOf9999 = 253402300799;

// The two ends and random points between them, the same in every run.
inline std::vector<std::time_t> pointsBetween(std::time_t first, std::time_t last, std::size_t count = 5000) {
    std::mt19937_64 random(7);
    std::uniform_int_distribution<std::time_t> any(first, last);
    std::vector<std::time_t> points = {first, last};
    while (points.size() < count)
        points.push_back(any(random));
    return points;
}

inline std::tm utcFields(std::time_t point) {
    std::tm fields{};
    gmtime_r(&point, &fields);
    return fields;
}

// Fields out of range are carried on, as timegm does.
inline std::time_t pointAt(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    return timegm(&fields);
}

inline std::string format(const char* pattern, std::time_t point) {
    const std::tm fields = utcFields(point);
    char text[64];
    return {text, std::strftime(text, sizeof text, pattern, &fields)};
}

// YYYYMMDDHHMMSSZ. strftime does not fill a year up to four digits.
inline std::string generalizedText(std::time_t point) {
    const std::string text = format("%Y%m%d%H%M%SZ", point);
    return std::string(15 - text.size(), '0') + text;
}

// The process's time zone, for as long as the object lives. Whoever reads local time has to look at it.
class TimeZone {
  public:
    explicit TimeZone(const char* rule)
        : mHadOne(std::getenv("TZ") != nullptr), mFormer(mHadOne ? std::getenv("TZ") : "") {
        setenv("TZ", rule, 1);
    }
    ~TimeZone() {
        if (mHadOne) {
            setenv("TZ", mFormer.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

  private:
    bool mHadOne;
    std::string mFormer;
};

}  // namespace test

#endif
