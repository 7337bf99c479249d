// The code that an operation throws, for tests of failures.
#ifndef MIRVANE_TESTS_SUPPORT_FAILURES_H
#define MIRVANE_TESTS_SUPPORT_FAILURES_H

#include "base/exception.h"

namespace test {

// The code of the ATL::CAtlException that `operation` throws, 0 if it throws nothing.
template <typename Operation>
unsigned thrownCode(Operation operation) {
    try {
        operation();
    } catch (const ATL::CAtlException& failure) {
        return static_cast<unsigned>(failure.m_hr);
    }
    return 0;
}

}  // namespace test

#endif
