// The Win32 type names that the platform interface is written in, with their Win32 sizes; a wide character
// has the 32 bits that it has on the systems served.
#ifndef MIRVANE_PLATFORM_TYPES_H
#define MIRVANE_PLATFORM_TYPES_H

#include <cstdint>

using BOOL = int;  // 0 is failure, anything else success
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;

static_assert(sizeof(BOOL) == 4 && sizeof(wchar_t) == 4);

#endif
