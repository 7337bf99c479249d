#include "base/date_time_span.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/code_page_text.h"
#include "base/exception.h"
#include "base/last_error.h"
#include "base/tick_count.h"
#include "base/time_fields.h"

namespace Mirvane {
namespace {

std::uint64_t countOf(CDateTimeSpan const& span) {
    return ticks::joined(span.getHighPart(), span.getLowPart());
}

std::uint64_t difference(std::uint64_t left, std::uint64_t right) {
    if (right > left) failure::raise(failure::general);
    return left - right;
}

// Takes the whole units out of `seconds` and returns their number.
std::uint64_t takeUnits(std::uint64_t& seconds, std::uint64_t secondsPerUnit) {
    return std::exchange(seconds, seconds % secondsPerUnit) / secondsPerUnit;
}

// YYYYMMDDHHMMSS.FFFFFF, with more digits for a year that needs them.
std::string allDigits(std::uint64_t count) {
    std::uint64_t seconds = count / ticks::perSecond;
    std::string text;
    appendNumber(text, takeUnits(seconds, 31'536'000), 4);
    for (const unsigned int secondsPerUnit : {2'592'000, 86'400, 3'600, 60, 1}) {
        appendNumber(text, takeUnits(seconds, secondsPerUnit), 2);
    }
    text += '.';
    appendNumber(text, ticks::belowSecond(count) / ticks::perMicrosecond, 6);
    return text;
}

constexpr std::array<unsigned int, 12> maxDaysNonLeap = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr std::array<unsigned int, 12> maxDaysLeap = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

unsigned int daysOfMonth(std::int64_t year, std::int64_t month) {
    const bool isLeap = std::chrono::year(static_cast<int>(year)).is_leap();
    return (isLeap ? maxDaysLeap : maxDaysNonLeap)[static_cast<std::size_t>(month - 1)];
}

CDateTime DateAddMonth(std::int64_t months, CDateTime const& date) {
    const _SYSTEMTIME fields = date.getSystemTime();
    std::int64_t year = fields.wYear + months / 12;
    std::int64_t month = fields.wMonth + months % 12;
    if (month < 1) {
        month += 12;
        --year;
    } else if (month > 12) {
        month -= 12;
        ++year;
    }
    // A year that the fields of a date would wrap is refused like one that the calendar does not have.
    if (year < 0 || year > UINT16_MAX) failure::raise(failure::invalidArgument);
    const unsigned int day = std::min<unsigned int>(fields.wDay, daysOfMonth(year, month));
    return {static_cast<unsigned int>(year),
            static_cast<unsigned int>(month),
            day,
            fields.wHour,
            fields.wMinute,
            fields.wSecond,
            date.millisecond(),
            date.microsecond()};
}

// The step of an interval that has a fixed length.
CDateTimeSpan intervalSpan(char name) {
    switch (name) {
        case 'd':
        case '\0':
            return CDateTimeSpan::OneDay();
        case 'h':
            return CDateTimeSpan::OneHour();
        case 'n':
            return CDateTimeSpan::OneMinute();
        case 's':
            return CDateTimeSpan::OneSecond();
        case 'w':
            return CDateTimeSpan::OneDay() * 7;
        default:
            failure::raise(failure::invalidArgument);
    }
}

}  // namespace

constinit const CDateTimeSpan CDateTimeSpan::oneYear(31'536'000, 0);
constinit const CDateTimeSpan CDateTimeSpan::oneMonth(2'592'000, 0);
constinit const CDateTimeSpan CDateTimeSpan::oneDay(86'400, 0);
constinit const CDateTimeSpan CDateTimeSpan::oneHour(3'600, 0);
constinit const CDateTimeSpan CDateTimeSpan::oneMinute(60, 0);
constinit const CDateTimeSpan CDateTimeSpan::oneSecond(1, 0);
constinit const CDateTimeSpan CDateTimeSpan::oneMillisecond(0, 1'000);

CDateTimeSpan::CDateTimeSpan(char const* text) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    unsigned int microseconds = 0;
    const std::tm counts = GeneralizedTimeToTm(text, microseconds, true);
    const std::int64_t days =
        30 * std::int64_t{counts.tm_mon} + 365 * std::int64_t{counts.tm_year} + counts.tm_mday;
    const std::int64_t seconds = counts.tm_sec + 60 * (counts.tm_min + 60 * (counts.tm_hour + 24 * days));
    *this = CDateTimeSpan(static_cast<std::uint64_t>(seconds) * ticks::perSecond +
                          microseconds * ticks::perMicrosecond);
}

CDateTimeSpan const& CDateTimeSpan::OneYear() {
    return oneYear;
}

CDateTimeSpan const& CDateTimeSpan::OneMonth() {
    return oneMonth;
}

CDateTimeSpan const& CDateTimeSpan::OneDay() {
    return oneDay;
}

CDateTimeSpan const& CDateTimeSpan::OneHour() {
    return oneHour;
}

CDateTimeSpan const& CDateTimeSpan::OneMinute() {
    return oneMinute;
}

CDateTimeSpan const& CDateTimeSpan::OneSecond() {
    return oneSecond;
}

CDateTimeSpan const& CDateTimeSpan::OneMillisecond() {
    return oneMillisecond;
}

CStringProxy CDateTimeSpan::getGeneralizedTime() const {
    std::string text = allDigits(countOf(*this));
    // Meant to go on through the point and the zeros in front of it.
    text.erase(text.find_last_not_of("0.") + 1);
    return (text + 'Z').c_str();
}

CStringProxy CDateTimeSpan::tostring() const {
    return getGeneralizedTime();
}

CWStringProxy CDateTimeSpan::towstring() const {
    const auto wide = widened(tostring().c_str());
    if (!wide) failure::raiseLastError();
    return wide->c_str();
}

CDateTimeSpan& CDateTimeSpan::operator+=(CDateTimeSpan const& other) {
    return *this = CDateTimeSpan(countOf(*this) + countOf(other));
}

CDateTimeSpan& CDateTimeSpan::operator-=(CDateTimeSpan const& other) {
    return *this = CDateTimeSpan(difference(countOf(*this), countOf(other)));
}

CDateTimeSpan& CDateTimeSpan::operator*=(unsigned int factor) {
    return *this = CDateTimeSpan(countOf(*this) * factor);
}

CDateTimeSpan& CDateTimeSpan::operator/=(unsigned int divisor) {
    return *this = CDateTimeSpan(countOf(*this) / divisor);
}

CDateTimeSpan& CDateTimeSpan::operator%=(unsigned int divisor) {
    return *this = CDateTimeSpan(countOf(*this) % divisor);
}

void CDateTimeSpan::swap(CDateTimeSpan& other) noexcept {
    std::swap(*this, other);
}

bool operator==(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return countOf(left) == countOf(right);
}

bool operator!=(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return !(left == right);
}

bool operator<(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return countOf(left) < countOf(right);
}

bool operator<=(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return !(right < left);
}

bool operator>(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return right < left;
}

bool operator>=(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return !(left < right);
}

CDateTimeSpan operator+(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return CDateTimeSpan(left) += right;
}

CDateTimeSpan operator-(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return CDateTimeSpan(left) -= right;
}

CDateTimeSpan operator*(CDateTimeSpan const& span, unsigned int factor) {
    return CDateTimeSpan(span) *= factor;
}

CDateTimeSpan operator/(CDateTimeSpan const& span, unsigned int divisor) {
    return CDateTimeSpan(span) /= divisor;
}

CDateTimeSpan operator%(CDateTimeSpan const& span, unsigned int divisor) {
    return CDateTimeSpan(span) %= divisor;
}

unsigned long long operator/(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return countOf(left) / countOf(right);
}

CDateTimeSpan operator%(CDateTimeSpan const& left, CDateTimeSpan const& right) {
    return CDateTimeSpan(countOf(left) % countOf(right));
}

CDateTime& CDateTime::operator+=(CDateTimeSpan const& span) {
    setCount(ticks::of(*this) + countOf(span));
    return *this;
}

CDateTime& CDateTime::operator-=(CDateTimeSpan const& span) {
    setCount(difference(ticks::of(*this), countOf(span)));
    return *this;
}

CDateTime operator+(CDateTime const& date, CDateTimeSpan const& span) {
    return CDateTime(date) += span;
}

CDateTime operator-(CDateTime const& date, CDateTimeSpan const& span) {
    return CDateTime(date) -= span;
}

CDateTimeSpan operator-(CDateTime const& left, CDateTime const& right) {
    return CDateTimeSpan(difference(ticks::of(left), ticks::of(right)));
}

CDateTime DateAddA(char const* interval, int number, CDateTime const& date) {
    if (interval == nullptr) failure::raise(failure::invalidArgument);
    // Only the first character is meant to count.
    const char name = *interval;
    if (name == 'm') return DateAddMonth(number, date);
    if (name == 'y') return DateAddMonth(std::int64_t{number} * 12, date);
    const auto magnitude = static_cast<unsigned int>(std::abs(std::int64_t{number}));
    const CDateTimeSpan change = intervalSpan(name) * magnitude;
    return number > 0 ? date + change : date - change;
}

CDateTime DateAddW(wchar_t const* interval, int number, CDateTime const& date) {
    if (interval == nullptr) failure::raise(failure::invalidArgument);
    switch (*interval) {
        case L'\0':
            return DateAddA("d", number, date);
        case L's':
        case L'n':
        case L'h':
        case L'd':
        case L'w':
        case L'm':
        case L'y': {
            const char name[] = {static_cast<char>(*interval), '\0'};
            return DateAddA(name, number, date);
        }
        default:
            failure::raise(failure::invalidArgument);
    }
}

}  // namespace Mirvane
