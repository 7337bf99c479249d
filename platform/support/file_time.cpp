#include "platform/file_time.h"

#include <chrono>

#include "platform/last_error.h"

namespace {

using std::chrono::floor;
using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

constexpr std::chrono::sys_days firstDay{std::chrono::year{1601} / 1 / 1};
constexpr WORD firstYear = 1601;
constexpr WORD lastYear = 30827;

BOOL refuse() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
}

_FILETIME toFileTime(Ticks sinceFirstDay) {
    const auto count = static_cast<std::uint64_t>(sinceFirstDay.count());
    return {static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
}

std::chrono::year_month_day dateOf(const _SYSTEMTIME& time) {
    return {std::chrono::year{time.wYear}, std::chrono::month{time.wMonth}, std::chrono::day{time.wDay}};
}

bool isValid(const _SYSTEMTIME& time) {
    // The calendar types keep a month and a day in eight bits, so the fields are bounded before they go
    // there.
    return time.wYear >= firstYear && time.wYear <= lastYear && time.wMonth <= 12 && time.wDay <= 31 &&
           dateOf(time).ok() && time.wHour <= 23 && time.wMinute <= 59 && time.wSecond <= 59 &&
           time.wMilliseconds <= 999;
}

}  // namespace

BOOL SystemTimeToFileTime(const _SYSTEMTIME* systemTime, _FILETIME* fileTime) {
    if (systemTime == nullptr || fileTime == nullptr || !isValid(*systemTime)) return refuse();
    *fileTime = toFileTime(std::chrono::sys_days{dateOf(*systemTime)} - firstDay +
                           std::chrono::hours{systemTime->wHour} + std::chrono::minutes{systemTime->wMinute} +
                           std::chrono::seconds{systemTime->wSecond} +
                           std::chrono::milliseconds{systemTime->wMilliseconds});
    return 1;
}

BOOL FileTimeToSystemTime(const _FILETIME* fileTime, _SYSTEMTIME* systemTime) {
    if (fileTime == nullptr || systemTime == nullptr || fileTime->dwHighDateTime > 0x7FFFFFFF)
        return refuse();
    const Ticks ticks{std::int64_t{fileTime->dwHighDateTime} << 32 | fileTime->dwLowDateTime};
    const auto days = floor<std::chrono::days>(ticks);
    const std::chrono::year_month_day date{firstDay + days};
    const std::chrono::hh_mm_ss clock{floor<std::chrono::milliseconds>(ticks - days)};
    *systemTime = {
        .wYear = static_cast<WORD>(static_cast<int>(date.year())),
        .wMonth = static_cast<WORD>(static_cast<unsigned>(date.month())),
        .wDayOfWeek = static_cast<WORD>(std::chrono::weekday{firstDay + days}.c_encoding()),
        .wDay = static_cast<WORD>(static_cast<unsigned>(date.day())),
        .wHour = static_cast<WORD>(clock.hours().count()),
        .wMinute = static_cast<WORD>(clock.minutes().count()),
        .wSecond = static_cast<WORD>(clock.seconds().count()),
        .wMilliseconds = static_cast<WORD>(clock.subseconds().count()),
    };
    return 1;
}

void GetSystemTimeAsFileTime(_FILETIME* fileTime) {
    // Cut to ticks first: nanoseconds since 1601 do not fit 64 bits.
    const auto sinceUnixEpoch = floor<Ticks>(std::chrono::system_clock::now().time_since_epoch());
    *fileTime = toFileTime(sinceUnixEpoch - firstDay.time_since_epoch());
}
