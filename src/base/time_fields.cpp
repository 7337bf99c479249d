#include "base/time_fields.h"

#include "base/date_time.h"
#include "base/exception.h"

namespace Mirvane {
namespace {

// The number in `count` characters at `position`, 0 if the text ends before them.
unsigned int readIntField(std::size_t position, std::size_t count, std::string_view text) {
    if (text.size() < position + count) return 0;
    unsigned int number = 0;
    for (char const* digit = text.data() + position; count > 0; --count, ++digit) {
        if (*digit < '0' || *digit > '9') failure::raise(failure::invalidTime);
        number = number * 10 + static_cast<unsigned int>(*digit - '0');
    }
    return number;
}

// The fraction begins behind the point or comma in place 14, which is not looked at.
unsigned int readMicroseconds(std::string_view text) {
    constexpr std::size_t start = 15;
    constexpr std::size_t digits = 6;
    if (text.size() <= start) return 0;
    std::string fraction(text.substr(start));
    if (fraction.back() == 'Z') fraction.pop_back();
    if (fraction.size() < digits) fraction.append(digits - fraction.size(), '0');
    return readIntField(0, digits, fraction);
}

// The last digits of the number, with zeros in front. Returns where they end.
char* writeDigits(char* text, std::uint64_t number, int width) {
    for (int index = width; index-- > 0; number /= 10)
        text[index] = static_cast<char>('0' + number % 10);
    return text + width;
}

}  // namespace

std::tm GeneralizedTimeToTm(std::string_view text, unsigned int& microseconds, bool asSpan) {
    const auto field = [text](std::size_t position, std::size_t count) {
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
    // cppcheck-suppress rethrowNoCurrentException  ; meant, see the header
    if (FileTimeToSystemTime(&fileTime, &fields) == 0) throw;
    return fields;
}

GeneralizedTimeText::GeneralizedTimeText(_SYSTEMTIME const& fields, std::uint64_t microseconds) {
    char* end = writeDigits(text_, fields.wYear, 4);
    for (const WORD field : {fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond})
        end = writeDigits(end, field, 2);
    if (microseconds != 0) {
        *end++ = '.';
        end = writeDigits(end, microseconds, 6);
        while (end[-1] == '0')
            --end;
    }
    *end++ = 'Z';
    *end = '\0';
}

void appendNumber(std::string& text, std::uint64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    if (digits.size() < width) text.append(width - digits.size(), '0');
    text += digits;
}

}  // namespace Mirvane
