#include "platform/last_error.h"

namespace {
thread_local DWORD lastError = ERROR_SUCCESS;
}

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD code) {
    lastError = code;
}
