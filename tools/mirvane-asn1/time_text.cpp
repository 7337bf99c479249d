#include "time_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "asn1rt/time_scan.h"

namespace tools {
namespace {

bool allDigits(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// What the scanner would take beyond the strict form: blanks, signs and numbers of one digit.
bool isStrict(std::string_view text, std::size_t digits, bool mayHaveFraction) {
    if (text.size() <= digits || !allDigits(text.substr(0, digits)) || text.back() != 'Z') return false;
    const std::string_view fraction = text.substr(digits, text.size() - digits - 1);
    if (fraction.empty()) return true;
    return mayHaveFraction && fraction.size() > 1 && fraction.front() == '.' && allDigits(fraction.substr(1));
}

}  // namespace

std::optional<PointInTime> pointInTime(const TimeValue& value) {
    const int yearWidth = value.generalized ? 4 : 2;
    const std::size_t digits = static_cast<std::size_t>(yearWidth) + 10;
    if (!isStrict(value.text, digits, value.generalized)) return std::nullopt;
    const std::string whole = std::string(value.text.substr(0, digits)) + 'Z';
    asn1rt::TimeScanner scanner(whole.c_str());
    if (!scanner.readDate(yearWidth) || !scanner.readClock(3) || !scanner.readZone(true)) return std::nullopt;
    const asn1rt::TimeFields& time = scanner.fields();
    const std::string_view fraction = value.text.substr(digits, value.text.size() - digits - 1);
    return PointInTime{fmt::format("{:04}-{:02}-{:02}", time.year, time.month, time.day),
                       fmt::format("{:02}:{:02}:{:02}{}", time.hour, time.minute, time.second, fraction)};
}

}  // namespace tools
