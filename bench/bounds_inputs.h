// Hostile inputs of any size, one way to be hostile each, and what reads them.
#ifndef MIRVANE_BENCH_BOUNDS_INPUTS_H
#define MIRVANE_BENCH_BOUNDS_INPUTS_H

#include <cstddef>
#include <functional>
#include <vector>

#include "support/octets.h"

namespace bench {

using test::Octets;

struct HostileInput {
    const char* name;
    bool isAccepted;
    // About `size` octets, and at least a handful.
    std::function<Octets(std::size_t size)> make;
    // Reads the octets, and gives all memory back. True if they are accepted.
    std::function<bool(const Octets& input)> read;
};

std::vector<HostileInput> hostileInputs();

}  // namespace bench

#endif
