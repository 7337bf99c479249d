// The unit that dates and spans are counted in: ticks of 100 nanoseconds, 64 bits in two words. Not part of
// the interface.
#ifndef MIRVANE_BASE_TICK_COUNT_H
#define MIRVANE_BASE_TICK_COUNT_H

#include <cstdint>

#include "base/date_time.h"
#include "platform/file_time.h"

namespace Mirvane::ticks {

inline constexpr std::uint64_t perMicrosecond = 10;
inline constexpr std::uint64_t perMillisecond = 10'000;
inline constexpr std::uint64_t perSecond = 10'000'000;

constexpr std::uint64_t joined(std::uint32_t high, std::uint32_t low) {
    return std::uint64_t{high} << 32 | low;
}
constexpr std::uint32_t highWord(std::uint64_t count) {
    return static_cast<std::uint32_t>(count >> 32);
}
constexpr std::uint32_t lowWord(std::uint64_t count) {
    return static_cast<std::uint32_t>(count);
}

constexpr std::uint64_t of(_FILETIME const& time) {
    return joined(time.dwHighDateTime, time.dwLowDateTime);
}

inline std::uint64_t of(CDateTime const& date) {
    return of(date.getFileTime());
}

// The part of a count below the second.
constexpr std::uint64_t belowSecond(std::uint64_t count) {
    return count % perSecond;
}

}  // namespace Mirvane::ticks

#endif
