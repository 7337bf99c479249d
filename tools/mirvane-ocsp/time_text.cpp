#include "time_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <ctime>

#include "base/date_time_span.h"
#include "base/date_time_text.h"
#include "base/exception.h"
#include "common/input.h"

namespace tools {
namespace {

using Mirvane::CDateTime;

constexpr long long kMostSeconds = 200LL * 366 * 86'400;

// YYYYMMDDHHMMSS[.F]Z and nothing else: the library's own reader takes shorter texts too.
bool isGeneralizedTime(std::string const& text) {
    const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
    if (text.size() < 15 || text.back() != 'Z') return false;
    if (!std::all_of(text.begin(), text.begin() + 14, isDigit)) return false;
    const std::string fraction = text.substr(14, text.size() - 15);
    return fraction.empty() || (fraction.size() > 1 && fraction[0] == '.' &&
                                std::all_of(fraction.begin() + 1, fraction.end(), isDigit));
}

long long unitSeconds(char unit) {
    switch (unit) {
        case 's':
            return 1;
        case 'm':
            return 60;
        case 'h':
            return 3'600;
        case 'd':
            return 86'400;
        case 'w':
            return 604'800;
    }
    return 0;
}

}  // namespace

CDateTime currentSecond() {
    return CDateTime(static_cast<long long>(std::time(nullptr)), 0u);
}

CDateTime parseTime(std::string const& text) {
    if (text == "now") return currentSecond();
    try {
        if (isGeneralizedTime(text)) return CDateTime(text.c_str());
        if (text.find('T') != std::string::npos) return Mirvane::fromXsdDateTimeString(text.c_str());
    } catch (ATL::CAtlException const&) {
    }
    throw InputError(text, std::string("is no time; give ") + kTimeForms);
}

long long parseSpan(std::string const& text) {
    const std::size_t digits =
        std::find_if(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) == 0; }) -
        text.begin();
    const std::string unit = text.substr(digits);
    const long long factor = unit.empty() ? 1 : unit.size() == 1 ? unitSeconds(unit[0]) : 0;
    const bool isSpan = digits > 0 && digits <= 12 && factor > 0;
    const long long count = isSpan ? std::stoll(text.substr(0, digits)) : 0;
    if (!isSpan || count > kMostSeconds / factor) {
        throw InputError(text, "is no length of time; give seconds, 30m, 12h or 1d");
    }
    return count * factor;
}

CDateTime shifted(CDateTime const& time, long long seconds) {
    constexpr int kSecondsPerDay = 86'400;
    try {
        const CDateTime day = Mirvane::DateAddA("d", static_cast<int>(seconds / kSecondsPerDay), time);
        return Mirvane::DateAddA("s", static_cast<int>(seconds % kSecondsPerDay), day);
    } catch (ATL::CAtlException const&) {
        throw InputError(timeText(time),
                         fmt::format("{} seconds from there is outside the calendar", seconds));
    }
}

std::string timeText(CDateTime const& time) {
    try {
        time.year();
    } catch (ATL::CAtlException const&) {
        return "outside the calendar";
    }
    std::string text = Mirvane::toXsdDateTimeString(time).c_str();
    if (time.microsecond() == 0) return text;
    text.resize(19);
    return fmt::format("{}.{:03}{:03}Z", text, time.millisecond(), time.microsecond());
}

std::optional<CDateTime> toDateTime(ASN1_TIME const* time) {
    std::tm fields = {};
    if (!time || ASN1_TIME_to_tm(time, &fields) != 1) return std::nullopt;
    try {
        return CDateTime(fmt::format("{:04}{:02}{:02}{:02}{:02}{:02}Z", fields.tm_year + 1900,
                                     fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min,
                                     fields.tm_sec)
                             .c_str());
    } catch (ATL::CAtlException const&) {
        return std::nullopt;
    }
}

}  // namespace tools
