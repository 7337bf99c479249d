#include "base/date_time_text.h"

#include <cstdio>
#include <ctime>
#include <new>
#include <string>
#include <utility>

#include "base/date_time_span.h"
#include "base/exception.h"
#include "base/time_fields.h"
#include "base/white_space.h"

namespace Mirvane {
namespace {

struct Zone {
    CDateTimeSpan offset;
    bool isBehindUtc = false;
};

// What stands behind the seconds.
struct Tail {
    std::string fraction;  // with the rest of the text that is read along with it
    Zone zone;
};

// Reads HH:MM; what follows is meant not to be looked at.
CDateTimeSpan readOffset(char const* text) {
    int hours = 0;
    int minutes = 0;
    // Two digits always fit.
    // NOLINTNEXTLINE(cert-err34-c)
    if (std::sscanf(text, "%2d:%2d", &hours, &minutes) != 2 || hours < 0 || minutes < 0) {
        failure::raise(failure::invalidTime);
    }
    const CDateTimeSpan offset = CDateTimeSpan::OneMinute() * static_cast<unsigned int>(minutes) +
                                 CDateTimeSpan::OneHour() * static_cast<unsigned int>(hours);
    if (offset > CDateTimeSpan::OneHour() * 14) failure::raise(failure::invalidTime);
    return offset;
}

// The sign is that of the split: the first minus, even behind a plus, else the first plus.
Tail splitAtSign(std::string const& text) {
    std::size_t sign = text.find('-');
    if (sign == std::string::npos) sign = text.find('+');
    if (sign == std::string::npos) return {text, {}};
    return {text.substr(0, sign), {readOffset(text.c_str() + sign + 1), text[sign] == '-'}};
}

// A text with Z is UTC, whatever else it holds. Without the colon of an offset, such as Z03:00 has, digits
// behind the Z are meant to be read as a fraction.
Tail withoutColon(std::string text) {
    if (text.size() >= 3 && text[text.size() - 3] == ':') text.erase(text.size() - 3, 1);
    return {std::move(text), {}};
}

Tail readTail(char const* text) {
    char const* const start = skipSpace(text);
    char const* end = start;
    while (*end != '\0' && !isSpace(*end))
        ++end;
    if (end == start) failure::raise(failure::invalidTime);
    try {
        std::string tail(start, end);
        return tail.find_first_of("Zz") == std::string::npos ? splitAtSign(tail)
                                                             : withoutColon(std::move(tail));
    } catch (std::bad_alloc const&) {
        failure::raise(failure::outOfTimeMemory);
    }
}

}  // namespace

CStringProxy toXsdDateTimeString(CDateTime const& value) {
    const std::tm fields = toTm(fieldsForText(value));
    char text[256] = {};
    if (std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &fields) == 0) return {};
    std::string result = text;
    if (const unsigned int milliseconds = value.millisecond(); milliseconds != 0) {
        result += '.';
        appendNumber(result, milliseconds, 3);
    }
    result += 'Z';
    return result.c_str();
}

CDateTime fromXsdDateTimeString(char const* text) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, length = 0;
    // So many digits always fit.
    // NOLINTNEXTLINE(cert-err34-c)
    if (std::sscanf(text, "%4d-%2d-%2dT%2d:%2d:%2d%n", &year, &month, &day, &hour, &minute, &second,
                    &length) != 6) {
        failure::raise(failure::invalidTime);
    }
    const Tail tail = readTail(text + length);
    char digits[64];
    static_cast<void>(std::snprintf(digits, sizeof digits, "%04d%02d%02d%02d%02d%02d", year, month, day, hour,
                                    minute, second));
    CDateTime date((digits + tail.fraction).c_str());
    if (tail.zone.isBehindUtc) {
        date += tail.zone.offset;
    } else {
        date -= tail.zone.offset;
    }
    return date;
}

}  // namespace Mirvane
