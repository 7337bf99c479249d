// CDateTimeSpan, a length of time, and the arithmetic of dates and spans.
//
// A span is an unsigned count of the ticks of CDateTime, 100 nanoseconds each, and so never negative.
// Additions and products wrap silently at 64 bits, which is about 58,000 years; a difference that would fall
// below 0 throws 0x80004005. A divisor of 0 is the caller's mistake and is not tested.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException.
#ifndef MIRVANE_BASE_DATE_TIME_SPAN_H
#define MIRVANE_BASE_DATE_TIME_SPAN_H

#include <cstdint>

#include "asn1rt/export.h"
#include "base/date_time.h"
#include "base/text_holders.h"

namespace Mirvane {

class MIRVANE_API CDateTimeSpan {
  public:
    constexpr CDateTimeSpan() = default;
    // Microseconds may be a million and above.
    constexpr CDateTimeSpan(unsigned int seconds, unsigned int microseconds)
        : CDateTimeSpan(std::uint64_t{seconds} * 10'000'000 + std::uint64_t{microseconds} * 10) {}
    // Reads YYYYMMDDHHMMSS[.F][Z] as counts of years of 365 days, months of 30 days, days and so on, none of
    // which has a limit: day 45 is 45 days. Fields that the text is too short for are 0. Throws 0x8007076D if
    // a field has a character other than a digit, 0x80070057 for null.
    CDateTimeSpan(char const* text);

    // The constant spans, which exist before any code of the program runs. A year has 365 days and a month
    // 30: for the calendar's years and months see DateAddA.
    static CDateTimeSpan const& OneYear();
    static CDateTimeSpan const& OneMonth();
    static CDateTimeSpan const& OneDay();
    static CDateTimeSpan const& OneHour();
    static CDateTimeSpan const& OneMinute();
    static CDateTimeSpan const& OneSecond();
    static CDateTimeSpan const& OneMillisecond();

    // The halves of the count of ticks.
    unsigned int getLowPart() const { return low_; }
    unsigned int getHighPart() const { return high_; }

    // The text that the constructor reads, YYYYMMDDHHMMSS.FZ, less ALL zeros and the point at its end, which
    // is meant: ten seconds are "0000000000001Z" and no time is "Z". So only a text whose last digit is not
    // zero can be read back.
    CStringProxy getGeneralizedTime() const;
    CStringProxy tostring() const;
    // The last error if the platform does not convert the text.
    CWStringProxy towstring() const;

    CDateTimeSpan& operator+=(CDateTimeSpan const& other);
    CDateTimeSpan& operator-=(CDateTimeSpan const& other);
    CDateTimeSpan& operator*=(unsigned int factor);
    CDateTimeSpan& operator/=(unsigned int divisor);
    CDateTimeSpan& operator%=(unsigned int divisor);

    void swap(CDateTimeSpan& other) noexcept;

  private:
    friend MIRVANE_API CDateTimeSpan operator-(CDateTime const& left, CDateTime const& right);
    friend MIRVANE_API CDateTimeSpan operator%(CDateTimeSpan const& left, CDateTimeSpan const& right);

    explicit constexpr CDateTimeSpan(std::uint64_t count)
        : high_(static_cast<std::uint32_t>(count >> 32)), low_(static_cast<std::uint32_t>(count)) {}

    static const CDateTimeSpan oneYear;
    static const CDateTimeSpan oneMonth;
    static const CDateTimeSpan oneDay;
    static const CDateTimeSpan oneHour;
    static const CDateTimeSpan oneMinute;
    static const CDateTimeSpan oneSecond;
    static const CDateTimeSpan oneMillisecond;

    std::uint32_t high_ = 0;
    std::uint32_t low_ = 0;
};

MIRVANE_API bool operator==(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API bool operator!=(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API bool operator<(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API bool operator<=(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API bool operator>(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API bool operator>=(CDateTimeSpan const& left, CDateTimeSpan const& right);

MIRVANE_API CDateTimeSpan operator+(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API CDateTimeSpan operator-(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API CDateTimeSpan operator*(CDateTimeSpan const& span, unsigned int factor);
MIRVANE_API CDateTimeSpan operator/(CDateTimeSpan const& span, unsigned int divisor);
// The ticks that are left over.
MIRVANE_API CDateTimeSpan operator%(CDateTimeSpan const& span, unsigned int divisor);
// How often `right` fits into `left`, and what is then left over.
MIRVANE_API unsigned long long operator/(CDateTimeSpan const& left, CDateTimeSpan const& right);
MIRVANE_API CDateTimeSpan operator%(CDateTimeSpan const& left, CDateTimeSpan const& right);

// To the tick, as += and -= of CDateTime: a span may bring ticks below the microsecond into a date.
MIRVANE_API CDateTime operator+(CDateTime const& date, CDateTimeSpan const& span);
MIRVANE_API CDateTime operator-(CDateTime const& date, CDateTimeSpan const& span);
MIRVANE_API CDateTimeSpan operator-(CDateTime const& left, CDateTime const& right);

// The date `number` intervals later, or earlier if it is negative. The first character of `interval` names
// the interval: "y" years, "m" months, "w" weeks, "d" or an empty text days, "h" hours, "n" minutes, "s"
// seconds. No other character is looked at, which is meant: "minute" is a month.
//
// Months and years follow the calendar and keep the time of day, cut to microseconds; a day that the new
// month does not have becomes its last. Throws 0x80070057 for another character, a null text or a new year
// outside 0 to 65535, the last error for a date outside the calendar, 0x80004005 for a result before 1601.
MIRVANE_API CDateTime DateAddA(char const* interval, int number, CDateTime const& date);
MIRVANE_API CDateTime DateAddW(wchar_t const* interval, int number, CDateTime const& date);

}  // namespace Mirvane

#endif
