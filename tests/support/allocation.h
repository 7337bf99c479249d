// Watches the allocations of the heaps, and makes them fail, for as long as an object lives. One at a time.
#ifndef MIRVANE_TESTS_SUPPORT_ALLOCATION_H
#define MIRVANE_TESTS_SUPPORT_ALLOCATION_H

#include <limits>

#include "asn1rt/heap.h"

namespace test {

class CountedAllocations {
  public:
    CountedAllocations() {
        counts() = {};
        g_malloc_func = [](void* memApp, std::size_t size) -> void* {
            if (counts().left == 0) return nullptr;
            --counts().left;
            ++counts().made;
            return rtDefaultMalloc(memApp, size);
        };
        g_free_func = [](void* memApp, void* pointer) {
            ++counts().freed;
            rtDefaultFree(memApp, pointer);
        };
    }
    ~CountedAllocations() {
        g_malloc_func = rtDefaultMalloc;
        g_free_func = rtDefaultFree;
    }
    CountedAllocations(const CountedAllocations&) = delete;
    CountedAllocations& operator=(const CountedAllocations&) = delete;

    int made() const { return counts().made; }
    int freed() const { return counts().freed; }
    int alive() const { return made() - freed(); }

    // So many more succeed, and all behind them fail.
    void allow(int count) { counts().left = count; }

  private:
    struct Counts {
        int made = 0;
        int freed = 0;
        int left = std::numeric_limits<int>::max();
    };

    static Counts& counts() {
        static Counts current;
        return current;
    }
};

}  // namespace test

#endif
