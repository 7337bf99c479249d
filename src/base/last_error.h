// The last-error rule: how a failure of the platform becomes the code that is thrown.
#ifndef MIRVANE_BASE_LAST_ERROR_H
#define MIRVANE_BASE_LAST_ERROR_H

#include "base/exception.h"
#include "platform/last_error.h"

namespace Mirvane::failure {

// A system error number above 0 (as signed 32 bits) becomes its low 16 bits under 0x80070000; 0 and what is a
// code already stay as they are.
constexpr ATL::HRESULT fromSystemError(DWORD error) {
    const auto code = static_cast<ATL::HRESULT>(error);
    return code > 0 ? static_cast<ATL::HRESULT>((error & 0xFFFF) | 0x80070000) : code;
}

inline ATL::HRESULT fromLastError() {
    return fromSystemError(GetLastError());
}

// The call before this one failed: throws the last error, even if it is 0.
[[noreturn]] inline void raiseLastError() {
    raise(fromLastError());
}

// The call before this one may have failed: throws the last error unless it is 0.
inline void raiseLastErrorIfAny() {
    if (const ATL::HRESULT code = fromLastError(); code != 0) raise(code);
}

}  // namespace Mirvane::failure

#endif
