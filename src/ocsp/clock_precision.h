// CClockPrecision, the number of digits of a second that the times of an answer have: a responder whose clock
// is coarse says so once, and all times that it writes follow.
//
// A plain value. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed.
#ifndef MIRVANE_OCSP_CLOCK_PRECISION_H
#define MIRVANE_OCSP_CLOCK_PRECISION_H

#include <cstdint>

#include "base/date_time.h"

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CClockPrecision {
  public:
    // 0 to 6 digits; initially six. Throws 0x80070057 for any other number and keeps the former precision.
    void put_clockPrecisionDigits(int digits);

    // Whether there are no digits at all.
    bool isSecondPrecision() const { return divisor_ == microsecondsPerSecond; }

    // The time with no more digits than there may be. Digits are cut off; with none at all the time is
    // rounded to the second instead, and exactly half a second goes down. Throws the last error for a time
    // outside the calendar.
    CDateTime truncateDigits(CDateTime const& time) const;

  private:
    static constexpr std::uint32_t microsecondsPerSecond = 1'000'000;

    std::uint32_t divisor_ = 1;  // the smallest step of time in microseconds, a power of ten
};

}  // namespace Mirvane::PKI::OCSP

#endif
