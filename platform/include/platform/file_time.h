// File times: UTC as a count of ticks of 100 nanoseconds since 1601-01-01 00:00:00, in the proleptic
// Gregorian calendar and without leap seconds, and their form in calendar fields.
#ifndef MIRVANE_PLATFORM_FILE_TIME_H
#define MIRVANE_PLATFORM_FILE_TIME_H

#include "platform/export.h"
#include "platform/types.h"

// The two halves of the 64-bit count.
struct _FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using FILETIME = _FILETIME;

struct _SYSTEMTIME {
    WORD wYear;       // 1601 to 30827
    WORD wMonth;      // 1 to 12
    WORD wDayOfWeek;  // 0 (Sunday) to 6; only ever an output
    WORD wDay;        // 1 to the month's last
    WORD wHour;       // 0 to 23
    WORD wMinute;     // 0 to 59
    WORD wSecond;     // 0 to 59
    WORD wMilliseconds;
};
using SYSTEMTIME = _SYSTEMTIME;

extern "C" {

// Calendar fields to ticks. wDayOfWeek is not looked at. 0 with ERROR_INVALID_PARAMETER in the last-error
// slot, and `fileTime` left alone, for a field out of its range, a day that the month does not have, or a
// null pointer.
MIRVANE_PLATFORM_API BOOL SystemTimeToFileTime(const _SYSTEMTIME* systemTime, _FILETIME* fileTime);

// Ticks to calendar fields, day of the week included; ticks below the millisecond fall away. 0 with
// ERROR_INVALID_PARAMETER in the last-error slot, and `systemTime` left alone, for a count of 2^63 and more
// (the last that passes lies in the year 30828), or a null pointer.
MIRVANE_PLATFORM_API BOOL FileTimeToSystemTime(const _FILETIME* fileTime, _SYSTEMTIME* systemTime);

// The present moment of the system's clock. `fileTime` must not be null.
MIRVANE_PLATFORM_API void GetSystemTimeAsFileTime(_FILETIME* fileTime);

}  // extern "C"

#endif
