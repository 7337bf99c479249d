#include "support/failing_new.h"

#include <climits>
#include <cstdlib>
#include <new>

namespace {

constexpr int never = INT_MAX;
thread_local int remaining = never;

bool failsNow() {
    return remaining != never && remaining-- == 0;
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

FailingNew::FailingNew(int index) {
    remaining = index;
}

FailingNew::~FailingNew() {
    remaining = never;
}

bool FailingNew::happened() const {
    return remaining < 0;
}

}  // namespace test
