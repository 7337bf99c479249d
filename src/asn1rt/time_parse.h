// Plain functions over the texts of UTCTime and GeneralizedTime (X.680, 46 and 47), for callers that need no
// object. A failure is a status, which is recorded in the context's errInfo as well.
#ifndef MIRVANE_ASN1RT_TIME_PARSE_H
#define MIRVANE_ASN1RT_TIME_PARSE_H

#include <cstdint>

#include "asn1rt/context.h"

// A point in time as its text tells it; nothing is shifted to UTC.
struct rtTimeRecord {
    std::int16_t year;  // in full
    std::int16_t month;
    std::int16_t day;
    std::int16_t hour;
    std::int16_t minute;
    std::int16_t second;
    std::int16_t diffHour;  // local time less UTC; both offsets are negative west of it
    std::int16_t diffMinute;
    char fraction[21];     // decimal digits of the second with their terminator, empty if there are none
    std::uint8_t utcFlag;  // 1: the text ends in Z
};

extern "C" {

// Days of January to December in a common year.
extern MIRVANE_API const std::uint8_t OS_daysInMonth[12];

// Reads YYYYMMDDHH[MM[SS[.F]]] with Z, +HH[MM], -HH[MM] or, as local time, nothing or anything else behind
// it. Leading zeros of the fraction are not kept (so .05 has the fraction 5), nor digits behind the 20 that
// follow them. 0, or RTS_BAD_DATETIME with the date and hour -3 and the rest 0. A null text is refused.
MIRVANE_API int rtParseGeneralizedTime(ASN1CTXT* ctxt, const char* text, rtTimeRecord* time);

// Reads YYMMDDHHMM[SS] with Z, +HHMM or -HHMM; years below 50 belong to 2000, the others to 1900. Characters
// behind an offset are not looked at. Results as above.
MIRVANE_API int rtParseUTCTime(ASN1CTXT* ctxt, const char* text, rtTimeRecord* time);

// Writes YYYYMMDDHHMMSS[.F] with Z if utcFlag is set, else with +HHMM or -HHMM if there is an offset. The
// text goes to the `bufferSize` octets that `*text` points at, or with a size of 0 to new memory of the
// typeMemHeap, whose address is stored in `*text`. 0, RTS_BAD_DATETIME for a field out of range,
// RTS_BUFFER_TOO_SMALL if text and terminator do not fit, or RTS_NO_MEMORY.
MIRVANE_API int rtMakeGeneralizedTime(ASN1CTXT* ctxt, const rtTimeRecord* time, char** text,
                                      std::uint32_t bufferSize);

}  // extern "C"

#endif
