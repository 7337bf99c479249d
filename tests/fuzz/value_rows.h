// The value classes by the name of the type that each holds, for the target that runs them and the seeds that
// are made for it.
#ifndef MIRVANE_TESTS_FUZZ_VALUE_ROWS_H
#define MIRVANE_TESTS_FUZZ_VALUE_ROWS_H

#include <cstddef>

#include "base/blob.h"

namespace fuzz {

struct ValueRow {
    const char* type;
    void (*run)(const char* type, const Mirvane::CBlob& received);
};

extern const ValueRow kValueRows[];
extern const std::size_t kValueRowCount;

}  // namespace fuzz

#endif
