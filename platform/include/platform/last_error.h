// The last-error slot: where a function of the platform leaves the reason of its failure. Each thread has its
// own.
#ifndef MIRVANE_PLATFORM_LAST_ERROR_H
#define MIRVANE_PLATFORM_LAST_ERROR_H

#include "platform/export.h"
#include "platform/types.h"

// The codes that the support functions leave.
enum : DWORD {
    ERROR_SUCCESS = 0,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_INSUFFICIENT_BUFFER = 122,
    ERROR_INVALID_FLAGS = 1004,
};

extern "C" {

// The code that the calling thread's last failing platform function, or its last SetLastError, left; 0 on a
// thread where there was none. A function that succeeds need not reset it.
MIRVANE_PLATFORM_API DWORD GetLastError();

// Stores `code` for the calling thread.
MIRVANE_PLATFORM_API void SetLastError(DWORD code);

}  // extern "C"

#endif
