#include "base/date_time.h"

#include <ctime>
#include <cwchar>
#include <iterator>
#include <string>
#include <utility>

#include "base/exception.h"
#include "base/last_error.h"
#include "base/tick_count.h"
#include "base/time_fields.h"

namespace Mirvane {
namespace {

constexpr std::uint64_t unixEpoch = 116'444'736'000'000'000;
constexpr std::uint64_t noDate = UINT64_MAX;

_FILETIME fileTimeOf(std::uint64_t count) {
    return {ticks::lowWord(count), ticks::highWord(count)};
}

// Ticks below the microsecond are thrown away, not rounded.
std::uint64_t cutToMicroseconds(std::uint64_t count) {
    return count - count % ticks::perMicrosecond;
}

std::uint64_t requireCount(_SYSTEMTIME const& time) {
    _FILETIME fileTime{};
    if (SystemTimeToFileTime(&time, &fileTime) == 0) failure::raiseLastError();
    return ticks::of(fileTime);
}

_SYSTEMTIME toSystemTime(std::tm const& fields) {
    return {
        .wYear = static_cast<WORD>(fields.tm_year + 1900),
        .wMonth = static_cast<WORD>(fields.tm_mon + 1),
        .wDayOfWeek = 0,
        .wDay = static_cast<WORD>(fields.tm_mday),
        .wHour = static_cast<WORD>(fields.tm_hour),
        .wMinute = static_cast<WORD>(fields.tm_min),
        .wSecond = static_cast<WORD>(fields.tm_sec),
        .wMilliseconds = 0,
    };
}

// What local time is behind UTC at this moment, in ticks; wraps below 0 east of it.
std::uint64_t presentOffset() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    tzset();  // localtime_r need not look whether the zone has changed
    localtime_r(&now, &local);
    const long seconds = ::timezone - (local.tm_isdst > 0 ? 3600 : 0);
    return static_cast<std::uint64_t>(seconds) * ticks::perSecond;
}

// `print(buffer, size, fields)` is a strftime with its format.
template <typename Character, typename Print>
std::basic_string<Character> formatted(CDateTime const& date, Print print) {
    const std::tm fields = toTm(fieldsForText(date));
    Character text[256];
    const std::size_t length = print(text, std::size(text), &fields);
    if (length == 0) failure::raise(failure::general);
    return {text, length};
}

// In groups of three digits, without the second one if it is zero; empty below a microsecond.
std::string fractionInGroups(CDateTime const& date) {
    if (ticks::belowSecond(ticks::of(date)) < ticks::perMicrosecond) return {};
    std::string fraction = ".";
    appendNumber(fraction, date.millisecond(), 3);
    if (date.microsecond() != 0) appendNumber(fraction, date.microsecond(), 3);
    return fraction;
}

}  // namespace

CDateTime::CDateTime(int seconds, unsigned int microseconds)
    : CDateTime(static_cast<long long>(seconds), microseconds) {}

CDateTime::CDateTime(long seconds, unsigned int microseconds)
    : CDateTime(static_cast<long long>(seconds), microseconds) {}

CDateTime::CDateTime(long long seconds, unsigned int microseconds) {
    setCount(unixEpoch + static_cast<std::uint64_t>(seconds) * ticks::perSecond +
             microseconds * ticks::perMicrosecond);
}

CDateTime::CDateTime(char const* generalizedTime) {
    if (generalizedTime == nullptr) failure::raise(failure::invalidArgument);
    unsigned int microseconds = 0;
    const _SYSTEMTIME time = toSystemTime(GeneralizedTimeToTm(generalizedTime, microseconds, false));
    _FILETIME fileTime{};
    if (SystemTimeToFileTime(&time, &fileTime) == 0) failure::raise(failure::general);
    const std::uint64_t count = ticks::of(fileTime) + microseconds * ticks::perMicrosecond;
    if (count == noDate) failure::raise(failure::general);
    setCount(count);
}

CDateTime::CDateTime(_FILETIME fileTime) {
    setCount(cutToMicroseconds(ticks::of(fileTime)));
}

CDateTime::CDateTime(_SYSTEMTIME systemTime) {
    setCount(cutToMicroseconds(requireCount(systemTime)));
}

CDateTime::CDateTime(unsigned int year, unsigned int month, unsigned int day, unsigned int hour,
                     unsigned int minute, unsigned int second, unsigned int millisecond,
                     unsigned int microsecond) {
    const std::uint64_t count = requireCount({
        .wYear = static_cast<WORD>(year),
        .wMonth = static_cast<WORD>(month),
        .wDayOfWeek = 0,
        .wDay = static_cast<WORD>(day),
        .wHour = static_cast<WORD>(hour),
        .wMinute = static_cast<WORD>(minute),
        .wSecond = static_cast<WORD>(second),
        .wMilliseconds = static_cast<WORD>(millisecond),
    });
    setCount(count + microsecond * ticks::perMicrosecond);
}

CDateTime CDateTime::Now() {
    _FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return now;
}

unsigned int CDateTime::year() const {
    return getSystemTime().wYear;
}

unsigned int CDateTime::month() const {
    return getSystemTime().wMonth;
}

unsigned int CDateTime::day() const {
    return getSystemTime().wDay;
}

unsigned int CDateTime::hour() const {
    return getSystemTime().wHour;
}

unsigned int CDateTime::minute() const {
    return getSystemTime().wMinute;
}

unsigned int CDateTime::second() const {
    return getSystemTime().wSecond;
}

unsigned int CDateTime::millisecond() const {
    return static_cast<unsigned int>(ticks::belowSecond(ticks::of(*this)) / ticks::perMillisecond);
}

unsigned int CDateTime::microsecond() const {
    return static_cast<unsigned int>(ticks::belowSecond(ticks::of(*this)) / ticks::perMicrosecond % 1000);
}

_SYSTEMTIME CDateTime::getSystemTime() const {
    const _FILETIME fileTime = getFileTime();
    _SYSTEMTIME fields{};
    if (FileTimeToSystemTime(&fileTime, &fields) == 0) failure::raiseLastError();
    return fields;
}

_FILETIME CDateTime::getFileTime() const {
    return {low_, high_};
}

unsigned long long CDateTime::getTime() const {
    // Meant to wrap for a time before 1970.
    return (ticks::of(*this) - unixEpoch) / ticks::perSecond;
}

CStringProxy CDateTime::getGeneralizedTime() const {
    const std::uint64_t microseconds = ticks::belowSecond(ticks::of(*this)) / ticks::perMicrosecond;
    return GeneralizedTimeText(fieldsForText(*this), microseconds).c_str();
}

CStringProxy CDateTime::getGeneralizedTimeTrimMicroseconds() const {
    // Meant to be no GeneralizedTime, despite the name.
    return formatted<char>(*this,
                           [](char* text, std::size_t size, std::tm const* fields) {
                               return std::strftime(text, size, "%d.%m.%Y %X", fields);
                           })
        .c_str();
}

CStringProxy CDateTime::tostring() const {
    const std::string seconds =
        formatted<char>(*this, [](char* text, std::size_t size, std::tm const* fields) {
            return std::strftime(text, size, "%d.%m.%Y %H:%M:%S", fields);
        });
    return (seconds + fractionInGroups(*this)).c_str();
}

CWStringProxy CDateTime::towstring() const {
    const std::wstring seconds =
        formatted<wchar_t>(*this, [](wchar_t* text, std::size_t size, std::tm const* fields) {
            return std::wcsftime(text, size, L"%d.%m.%Y %H:%M:%S", fields);
        });
    const std::string fraction = fractionInGroups(*this);
    return (seconds + std::wstring(fraction.begin(), fraction.end())).c_str();
}

CDateTime CDateTime::utcToLocal() const {
    return fileTimeOf(ticks::of(*this) - presentOffset());
}

CDateTime CDateTime::localToUtc() const {
    return fileTimeOf(ticks::of(*this) + presentOffset());
}

void CDateTime::swap(CDateTime& other) noexcept {
    std::swap(*this, other);
}

void CDateTime::setCount(std::uint64_t count) {
    high_ = ticks::highWord(count);
    low_ = ticks::lowWord(count);
}

bool operator==(CDateTime const& left, CDateTime const& right) {
    return ticks::of(left) == ticks::of(right);
}

bool operator!=(CDateTime const& left, CDateTime const& right) {
    return !(left == right);
}

bool operator<(CDateTime const& left, CDateTime const& right) {
    return ticks::of(left) < ticks::of(right);
}

bool operator<=(CDateTime const& left, CDateTime const& right) {
    return !(right < left);
}

bool operator>(CDateTime const& left, CDateTime const& right) {
    return right < left;
}

bool operator>=(CDateTime const& left, CDateTime const& right) {
    return !(left < right);
}

}  // namespace Mirvane
