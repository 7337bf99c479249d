#include "support/failing_memory.h"

#include <climits>
#include <cstdlib>
#include <new>

#include "asn1rt/heap.h"

namespace {

constexpr int never = INT_MAX;
thread_local int remaining = never;

bool failsNow() {
    return remaining != never && remaining-- == 0;
}

void* allocateOnHeap(void* memApp, std::size_t size) {
    return failsNow() ? nullptr : rtDefaultMalloc(memApp, size);
}

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = failsNow() ? nullptr : std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace test {

FailingMemory::FailingMemory(int index) {
    g_malloc_func = allocateOnHeap;
    remaining = index;
}

FailingMemory::~FailingMemory() {
    remaining = never;
    g_malloc_func = rtDefaultMalloc;
}

bool FailingMemory::happened() const {
    return remaining < 0;
}

}  // namespace test
