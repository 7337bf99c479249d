#include "counting.h"

#include <malloc.h>
#include <openssl/crypto.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "asn1rt/heap.h"

namespace {

bool counting = false;
bench::Allocations total;
std::uint64_t held = 0;

void* counted(void* memory, std::size_t size) {
    if (!counting || !memory) return memory;
    ++total.count;
    total.bytes += size;
    held += malloc_usable_size(memory);
    total.peak = std::max(total.peak, held);
    return memory;
}

void release(void* memory) {
    if (counting && memory) held -= malloc_usable_size(memory);
    std::free(memory);
}

void* resized(void* memory, std::size_t size) {
    if (memory) held -= malloc_usable_size(memory);
    return counted(std::realloc(memory, size), size);
}

}  // namespace

void* operator new(std::size_t size) {
    if (void* memory = counted(std::malloc(size), size)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return ::operator new(size);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}

namespace bench {

void installHooks() {
    counting = true;
    g_malloc_func = [](void*, std::size_t size) { return counted(std::malloc(size), size); };
    g_free_func = [](void*, void* memory) { release(memory); };
    CRYPTO_set_mem_functions(
        [](std::size_t size, const char*, int) { return counted(std::malloc(size), size); },
        [](void* memory, std::size_t size, const char*, int) { return resized(memory, size); },
        [](void* memory, const char*, int) { release(memory); });
}

Allocations allocationsOf(const std::function<void()>& work) {
    work();
    Allocations least{UINT64_MAX, UINT64_MAX, UINT64_MAX};
    for (int run = 0; run < 5; ++run) {
        const std::uint64_t before = held;
        total = {0, 0, before};
        work();
        least.count = std::min(least.count, total.count);
        least.bytes = std::min(least.bytes, total.bytes);
        least.peak = std::min(least.peak, total.peak - before);
    }
    return least;
}

}  // namespace bench
