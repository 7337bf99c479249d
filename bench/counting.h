// Counts what an operation allocates: ours through the hooks of the heaps and operator new, OpenSSL's through
// its own. For one thread.
#ifndef MIRVANE_BENCH_COUNTING_H
#define MIRVANE_BENCH_COUNTING_H

#include <cstdint>
#include <functional>

namespace bench {

struct Allocations {
    std::uint64_t count = 0;
    std::uint64_t bytes = 0;  // asked for
    std::uint64_t peak = 0;   // held at once, as the allocator rounds them
};

// Puts the hooks in place; first thing in main, before OpenSSL allocates. Without it nothing is counted, and
// nothing is slower than it would be.
void installHooks();

// What the work allocates each time when caches are warm. Signing tries again at random, so the least of some
// runs is taken.
Allocations allocationsOf(const std::function<void()>& work);

}  // namespace bench

#endif
