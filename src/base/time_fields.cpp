#include "base/time_fields.h"

#include <string_view>

#include "base/date_time.h"
#include "base/exception.h"

namespace Mirvane {
namespace {

// The number in `count` characters at `position`, 0 if the text ends before them.
unsigned int readIntField(std::size_t position, std::size_t count, std::string_view text) {
    if (text.size() < position + count) return 0;
    unsigned int number = 0;
    for (const char digit : text.substr(position, count)) {
        if (digit < '0' || digit > '9') failure::raise(failure::invalidTime);
        number = number * 10 + static_cast<unsigned int>(digit - '0');
    }
    return number;
}

// The fraction begins behind the point or comma in place 14, which is not looked at.
unsigned int readMicroseconds(std::string const& text) {
    constexpr std::size_t start = 15;
    constexpr std::size_t digits = 6;
    if (text.size() <= start) return 0;
    std::string fraction = text.substr(start);
    if (fraction.back() == 'Z') fraction.pop_back();
    if (fraction.size() < digits) fraction.append(digits - fraction.size(), '0');
    return readIntField(0, digits, fraction);
}

}  // namespace

std::tm GeneralizedTimeToTm(std::string const& text, unsigned int& microseconds, bool asSpan) {
    const auto field = [&text](std::size_t position, std::size_t count) {
        return static_cast<int>(readIntField(position, count, text));
    };
    std::tm fields{};
    fields.tm_year = field(0, 4) - (asSpan ? 0 : 1900);
    fields.tm_mon = field(4, 2) - (asSpan ? 0 : 1);
    fields.tm_mday = field(6, 2);
    fields.tm_hour = field(8, 2);
    fields.tm_min = field(10, 2);
    fields.tm_sec = field(12, 2);
    microseconds = readMicroseconds(text);
    return fields;
}

std::tm toTm(_SYSTEMTIME const& time) {
    std::tm fields{};
    fields.tm_year = time.wYear - 1900;
    fields.tm_mon = time.wMonth - 1;
    fields.tm_mday = time.wDay;
    fields.tm_hour = time.wHour;
    fields.tm_min = time.wMinute;
    fields.tm_sec = time.wSecond;
    fields.tm_wday = time.wDayOfWeek;
    return fields;
}

_SYSTEMTIME fieldsForText(CDateTime const& date) {
    const _FILETIME fileTime = date.getFileTime();
    _SYSTEMTIME fields{};
    if (FileTimeToSystemTime(&fileTime, &fields) == 0) throw;
    return fields;
}

void appendNumber(std::string& text, std::uint64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    if (digits.size() < width) text.append(width - digits.size(), '0');
    text += digits;
}

}  // namespace Mirvane
