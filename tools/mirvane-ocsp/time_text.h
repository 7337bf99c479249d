// Times and lengths of time as the commands take and show them.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_TIME_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_TIME_TEXT_H

#include <openssl/asn1.h>

#include <optional>
#include <string>

#include "base/date_time.h"

namespace tools {

// The present moment, its fraction cut off: rounding could date an answer into the future.
Mirvane::CDateTime currentSecond();

// What parseTime takes, for people.
inline constexpr char kTimeForms[] = "now, 20260101000000Z or 2026-01-01T00:00:00Z, or with +02:00 for Z";

// A time in one of these forms. Throws InputError.
Mirvane::CDateTime parseTime(std::string const& text);

// So many seconds: 90, 90s, 30m, 12h, 1d or 2w. Throws InputError, also above two hundred years.
long long parseSpan(std::string const& text);

// The time so many seconds later, or earlier if negative. Throws InputError outside the calendar.
Mirvane::CDateTime shifted(Mirvane::CDateTime const& time, long long seconds);

// ISO 8601 in UTC, with the digits of a second that are there.
std::string timeText(Mirvane::CDateTime const& time);

// A time of OpenSSL's, in either form; nothing for one that is not valid.
std::optional<Mirvane::CDateTime> toDateTime(ASN1_TIME const* time);

}  // namespace tools

#endif
