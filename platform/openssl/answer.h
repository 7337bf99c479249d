// The frame of every function of the interface: the operation tells a code, 0 for success, and no exception
// leaves it. Only a failure touches the last-error slot.
#ifndef MIRVANE_PLATFORM_OPENSSL_ANSWER_H
#define MIRVANE_PLATFORM_OPENSSL_ANSWER_H

#include <openssl/err.h>

#include <algorithm>
#include <new>
#include <span>

#include "platform/error_codes.h"
#include "platform/last_error.h"

namespace platform {

using Octets = std::span<const BYTE>;

constexpr DWORD success = ERROR_SUCCESS;
constexpr DWORD acceptedEncodingType = 0x10001;  // X.509 together with PKCS #7

template <typename Operation>
BOOL answer(Operation&& operation) noexcept {
    DWORD code = NTE_FAIL;
    try {
        code = operation();
    } catch (const std::bad_alloc&) {
        code = E_OUTOFMEMORY;
    } catch (...) {
    }
    if (code == success) return 1;
    SetLastError(code);
    return 0;
}

// Leaves OpenSSL's queue of errors as it was before. The queue belongs to the program we live in.
class ErrorScope {
  public:
    ErrorScope() { ERR_set_mark(); }
    ~ErrorScope() { ERR_pop_to_mark(); }
    ErrorScope(const ErrorScope&) = delete;
    ErrorScope& operator=(const ErrorScope&) = delete;
};

// One that also tells whether an operation of OpenSSL failed in it for lack of memory.
class FailureScope : ErrorScope {
  public:
    // The code for an operation that failed: `otherwise`, unless memory ran out.
    DWORD code(DWORD otherwise) const { return memoryFailed() ? E_OUTOFMEMORY : otherwise; }
    // For an operation whose other failures have a meaning of their own.
    void throwIfMemoryFailed() const {
        if (memoryFailed()) throw std::bad_alloc();
    }

  private:
    // What ran out of memory tells so first, and those above it add what they could not do for that. If there
    // are errors of others below, only the last one can be looked at without taking theirs away.
    bool memoryFailed() const {
        const unsigned long last = ERR_peek_last_error();
        bool failed = last != before_ && isOfMemory(last);
        while (before_ == 0 && ERR_peek_error() != 0)
            failed = isOfMemory(ERR_get_error()) || failed;
        return failed;
    }
    static bool isOfMemory(unsigned long error) { return ERR_GET_REASON(error) == ERR_R_MALLOC_FAILURE; }

    const unsigned long before_ = ERR_peek_last_error();  // 0 for none
};

// The two-call rule: without a buffer only the length is told; one that is too short is told the length
// wanted.
inline DWORD deliver(Octets result, BYTE* buffer, DWORD* length) {
    const DWORD capacity = *length;
    *length = static_cast<DWORD>(result.size());
    if (buffer == nullptr) return success;
    if (capacity < result.size()) return ERROR_MORE_DATA;
    std::copy(result.begin(), result.end(), buffer);
    return success;
}

}  // namespace platform

#endif
