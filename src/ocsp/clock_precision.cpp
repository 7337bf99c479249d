#include "ocsp/clock_precision.h"

#include "base/date_time_span.h"
#include "base/exception.h"

namespace Mirvane::PKI::OCSP {

void CClockPrecision::put_clockPrecisionDigits(int digits) {
    constexpr std::uint32_t divisors[] = {1'000'000, 100'000, 10'000, 1'000, 100, 10, 1};
    if (digits < 0 || digits > 6) failure::raise(failure::invalidArgument);
    divisor_ = divisors[digits];
}

CDateTime CClockPrecision::truncateDigits(CDateTime const& time) const {
    const _SYSTEMTIME fields = time.getSystemTime();
    const std::uint32_t fraction = fields.wMilliseconds * 1000u + time.microsecond();
    // Without digits nothing is left of the fraction, so the remainder serves both cases.
    const std::uint32_t kept = fraction - fraction % divisor_;
    const CDateTime cut(fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute,
                        fields.wSecond, kept / 1000, kept % 1000);
    const bool roundsUp = isSecondPrecision() && fraction > microsecondsPerSecond / 2;
    return roundsUp ? cut + CDateTimeSpan::OneSecond() : cut;
}

}  // namespace Mirvane::PKI::OCSP
