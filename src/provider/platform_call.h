// How the outcome of a platform call is taken.
#ifndef MIRVANE_PROVIDER_PLATFORM_CALL_H
#define MIRVANE_PROVIDER_PLATFORM_CALL_H

#include "base/last_error.h"

namespace Mirvane {

// Soft: a call that failed throws the last-error code, unless that is 0; then it counts as a success.
inline void checkSoft(BOOL succeeded) {
    if (!succeeded) failure::raiseLastErrorIfAny();
}

// Hard: a call that failed throws the last-error code, even if that is 0.
inline void checkHard(BOOL succeeded) {
    if (!succeeded) failure::raiseLastError();
}

// A length for the platform, which counts in 32 bits. Throws 0x80070057 above 0x7FFFFFFF, so that no length
// is ever cut short: what it told of would be hashed or read in part only.
inline DWORD platformLength(unsigned long length) {
    if (length > 0x7FFFFFFF) failure::raise(failure::invalidArgument);
    return static_cast<DWORD>(length);
}

}  // namespace Mirvane

#endif
