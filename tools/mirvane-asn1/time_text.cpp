#include "time_text.h"

#include <algorithm>

#include "base/date_time.h"
#include "base/date_time_text.h"
#include "base/exception.h"

namespace tools {
namespace {

constexpr std::size_t kDigits = 14;  // YYYYMMDDHHMMSS

bool allDigits(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// CDateTime takes shorter texts too, and an offset for a fraction.
bool isStrict(std::string_view text, bool mayHaveFraction) {
    if (text.size() <= kDigits || !allDigits(text.substr(0, kDigits)) || text.back() != 'Z') return false;
    const std::string_view fraction = text.substr(kDigits, text.size() - kDigits - 1);
    if (fraction.empty()) return true;
    return mayHaveFraction && fraction.size() > 1 && fraction.front() == '.' && allDigits(fraction.substr(1));
}

}  // namespace

std::optional<PointInTime> pointInTime(const TimeValue& value) {
    // Of the two centuries, RFC 5280, 4.1.2.5.1.
    const std::string_view century = value.generalized ? "" : value.text < "5" ? "20" : "19";
    const std::string text = std::string(century) + std::string(value.text);
    if (!isStrict(text, value.generalized)) return std::nullopt;
    try {
        const Mirvane::CDateTime date(text.c_str());
        const std::string digits = date.getGeneralizedTime().c_str();
        const std::string iso = Mirvane::toXsdDateTimeString(date).c_str();
        const std::string fraction = digits.substr(kDigits, digits.size() - kDigits - 1);
        return PointInTime{iso.substr(0, 10), iso.substr(11, 8) + fraction, digits == text};
    } catch (const ATL::CAtlException&) {
        return std::nullopt;
    }
}

}  // namespace tools
