// Counts what an operation allocates: ours through the hooks of the heaps and operator new, OpenSSL's through
// its own.
#ifndef MIRVANE_BENCH_COUNTING_H
#define MIRVANE_BENCH_COUNTING_H

#include <benchmark/benchmark.h>

#include <cstdint>

namespace bench {

struct Allocations {
    std::uint64_t count = 0;
    std::uint64_t bytes = 0;
};

// Everything allocated so far, by either library. Not for several threads.
Allocations allocated();

// Puts the hooks in place; first thing in main, before OpenSSL allocates.
void installHooks();

// Counts over the loop of a benchmark and reports per iteration.
class Counter {
  public:
    explicit Counter(benchmark::State& state) : mState(state), mBefore(allocated()) {}
    ~Counter();

  private:
    benchmark::State& mState;
    Allocations mBefore;
};

}  // namespace bench

#endif
