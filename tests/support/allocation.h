// Makes the n-th allocation of the heaps fail, for as long as the object lives.
#ifndef MIRVANE_TESTS_SUPPORT_ALLOCATION_H
#define MIRVANE_TESTS_SUPPORT_ALLOCATION_H

#include "asn1rt/heap.h"

namespace test {

class FailingAllocation {
  public:
    // Counts from 0.
    explicit FailingAllocation(int index) {
        remaining() = index;
        g_malloc_func = [](void* memApp, std::size_t size) -> void* {
            return remaining()-- == 0 ? nullptr : rtDefaultMalloc(memApp, size);
        };
    }
    ~FailingAllocation() { g_malloc_func = rtDefaultMalloc; }
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // Whether it has come to the allocation that fails.
    bool happened() const { return remaining() < 0; }

  private:
    static int& remaining() {
        static int count = 0;
        return count;
    }
};

}  // namespace test

#endif
