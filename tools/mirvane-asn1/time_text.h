// Times as people read them.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_TIME_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_TIME_TEXT_H

#include <optional>
#include <string>

#include "value.h"

namespace tools {

// A point in time in UTC.
struct PointInTime {
    std::string date;  // 2024-01-31
    std::string time;  // 12:00:00, with up to six digits of a fraction
    bool isAll;        // the text says no more: no zeros at the end of a fraction, no seventh digit
};

// What CDateTime reads. Nothing for a text that is not in the form that DER and RFC 5280 ask for (X.690, 11.7
// and 11.8), fractions included: full seconds, Z at the end, and a date that exists, from 1601 on.
std::optional<PointInTime> pointInTime(const TimeValue& value);

}  // namespace tools

#endif
