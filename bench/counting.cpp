#include "counting.h"

#include <openssl/crypto.h>

#include <cstdlib>
#include <new>

#include "asn1rt/heap.h"

namespace {

bench::Allocations total;

void* counted(std::size_t size) {
    ++total.count;
    total.bytes += size;
    return std::malloc(size);
}

}  // namespace

void* operator new(std::size_t size) {
    if (void* memory = counted(size)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return ::operator new(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace bench {

Allocations allocated() {
    return total;
}

void installHooks() {
    g_malloc_func = [](void*, std::size_t size) { return counted(size); };
    CRYPTO_set_mem_functions([](std::size_t size, const char*, int) { return counted(size); },
                             [](void* memory, std::size_t size, const char*, int) {
                                 ++total.count;
                                 total.bytes += size;
                                 return std::realloc(memory, size);
                             },
                             [](void* memory, const char*, int) { std::free(memory); });
}

Counter::~Counter() {
    const Allocations now = allocated();
    const auto iterations = static_cast<double>(mState.iterations());
    if (iterations == 0) return;
    mState.counters["allocations"] = static_cast<double>(now.count - mBefore.count) / iterations;
    mState.counters["bytes"] = static_cast<double>(now.bytes - mBefore.bytes) / iterations;
}

}  // namespace bench
