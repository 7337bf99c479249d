// CDateTime, the library's one date: a point in time in UTC. Every ASN.1 time of the value classes goes
// through it.
//
// It is a plain value: a count of ticks of 100 nanoseconds since 1601-01-01 00:00:00 UTC, in the proleptic
// Gregorian calendar without leap seconds. There is no invalid and no default value; where one is wanted, it
// is CDateTime(0, 0), the start of 1970.
//
//   CDateTime const thisUpdate("20240229235959Z");
//   CDateTime const nextUpdate = DateAddA("d", 7, thisUpdate);  // base/date_time_span.h
//   if (CDateTime::Now() > nextUpdate) std::puts("out of date");
//   std::puts(nextUpdate.tostring().c_str());                   // 07.03.2024 23:59:59
//
// Calendar fields are converted by the platform (platform/file_time.h), which takes the years 1601 to 30827
// and converts counts below 2^63. A count can be taken outside that by arithmetic or the constructors from
// numbers: year() to second() and getSystemTime() then throw, but the functions that make text END THE
// PROCESS, which is meant. Whoever holds a count from outside calls year() first.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. "Last error" is the code of the platform's refusal by the rule of
// base/exception.h: 0x80070057 from the library's own platform.
#ifndef MIRVANE_BASE_DATE_TIME_H
#define MIRVANE_BASE_DATE_TIME_H

#include <cstdint>

#include "asn1rt/export.h"
#include "base/text_holders.h"
#include "platform/file_time.h"

namespace Mirvane {

class CDateTimeSpan;

class MIRVANE_API CDateTime {
  public:
    // So many seconds after the start of 1970, or before it if negative, and so many microseconds more, which
    // may be a million and above. Wraps silently where 64 bits of ticks do not hold the sum.
    CDateTime(int seconds, unsigned int microseconds);
    CDateTime(long seconds, unsigned int microseconds);
    CDateTime(long long seconds, unsigned int microseconds);
    // Reads YYYYMMDDHHMMSS, with Z or, behind any one character, the digits of a fraction and Z. Digits
    // behind the sixth are dropped. Fields that the text is too short for are 0, which only hours, minutes
    // and seconds may be. There is no zone: the text has to be UTC, and an offset would be read as a
    // fraction. Throws 0x8007076D if a field has a character other than a digit, 0x80004005 if there is no
    // such date, 0x80070057 for null.
    CDateTime(char const* generalizedTime);
    // Cut to whole microseconds, like all that comes from the platform.
    CDateTime(_FILETIME fileTime);
    // wDayOfWeek is not looked at. Throws the last error if there is no such date.
    CDateTime(_SYSTEMTIME systemTime);
    // The first seven are cut to 16 bits before they are judged; microseconds are added and may be a thousand
    // and above. Throws the last error if there is no such date.
    CDateTime(unsigned int year, unsigned int month, unsigned int day, unsigned int hour, unsigned int minute,
              unsigned int second, unsigned int millisecond, unsigned int microsecond);

    // The present moment of the system's clock.
    static CDateTime Now();

    // The calendar fields, month and day from 1. Each throws the last error for a count outside the calendar.
    unsigned int year() const;
    unsigned int month() const;
    unsigned int day() const;
    unsigned int hour() const;
    unsigned int minute() const;
    unsigned int second() const;
    // 0 to 999, of the second.
    unsigned int millisecond() const;
    // 0 to 999, of the millisecond.
    unsigned int microsecond() const;

    // All calendar fields at once. Throws the last error for a count outside the calendar.
    _SYSTEMTIME getSystemTime() const;
    // The count as it is, ticks below the microsecond included.
    _FILETIME getFileTime() const;
    // Whole seconds since the start of 1970. The division is meant to be unsigned: an earlier time gives a
    // huge number.
    unsigned long long getTime() const;

    // The texts. A count outside the calendar ENDS THE PROCESS in each.

    // YYYYMMDDHHMMSSZ or YYYYMMDDHHMMSS.FZ, F being up to six digits without trailing zeros (X.690, 11.7).
    // Only the four low digits of a year are written.
    CStringProxy getGeneralizedTime() const;
    // Despite the name no GeneralizedTime, which is meant: DD.MM.YYYY and the time of day in the form of the
    // program's C locale (strftime's %X), without a fraction. Throws 0x80004005 if that has no text.
    CStringProxy getGeneralizedTimeTrimMicroseconds() const;
    // DD.MM.YYYY HH:MM:SS, followed by nothing, .mmm or, if there are microseconds, .mmmuuu.
    CStringProxy tostring() const;
    CWStringProxy towstring() const;

    // The date moved from UTC to the local time of the TZ setting, and back. The offset is that of the
    // present moment, summer time included, whatever the date, which is meant. Calls tzset().
    CDateTime utcToLocal() const;
    CDateTime localToUtc() const;

    // Arithmetic with spans stands in base/date_time_span.h.
    CDateTime& operator+=(CDateTimeSpan const& span);
    CDateTime& operator-=(CDateTimeSpan const& span);

    void swap(CDateTime& other) noexcept;

  private:
    void setCount(std::uint64_t count);

    // The reverse order of _FILETIME.
    std::uint32_t high_ = 0;
    std::uint32_t low_ = 0;
};

// In the order of time, to the tick.
MIRVANE_API bool operator==(CDateTime const& left, CDateTime const& right);
MIRVANE_API bool operator!=(CDateTime const& left, CDateTime const& right);
MIRVANE_API bool operator<(CDateTime const& left, CDateTime const& right);
MIRVANE_API bool operator<=(CDateTime const& left, CDateTime const& right);
MIRVANE_API bool operator>(CDateTime const& left, CDateTime const& right);
MIRVANE_API bool operator>=(CDateTime const& left, CDateTime const& right);

}  // namespace Mirvane

#endif
