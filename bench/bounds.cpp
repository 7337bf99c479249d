// What hostile input costs: each input of bounds_inputs.h at sizes that double, with the time and the memory
// that an octet of it takes, and the stack that the deepest accepted messages need. Prints tables in
// Markdown. With --check it fails if a cost grows faster than the input: memory by the bounds below; time
// too, but with much room, since it is noisy, while a quadratic cost grows 64-fold over the six doublings.
#include <malloc.h>
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string_view>

#include "bounds_inputs.h"
#include "counting.h"
#include "support/nests.h"

namespace {

using bench::HostileInput;
using bench::Octets;

constexpr std::size_t kSmallest = std::size_t{1} << 14;
constexpr std::size_t kLargest = std::size_t{1} << 20;
constexpr double kMostMemoryGrowth = 1.5;
constexpr double kMostTimeGrowth = 12;
constexpr std::size_t kMostStack = std::size_t{256} * 1024;

double now() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

// The least nanoseconds of some runs.
double timeOf(const HostileInput& hostile, const Octets& input) {
    double least = 1e18;
    const double end = now() + 2e7;
    for (int run = 0; run < 5 || (now() < end && run < 1000); ++run) {
        const double start = now();
        hostile.read(input);
        least = std::min(least, now() - start);
    }
    return least;
}

struct Cost {
    bool isAccepted;
    double time;    // nanoseconds an octet
    double memory;  // octets held at once, an octet
};

Cost costOf(const HostileInput& hostile, std::size_t size) {
    const Octets input = hostile.make(size);
    const auto octets = static_cast<double>(input.size());
    const bool isAccepted = hostile.read(input);
    const auto peak = bench::allocationsOf([&] { hostile.read(input); }).peak;
    return {isAccepted, timeOf(hostile, input) / octets, static_cast<double>(peak) / octets};
}

// False, and told, if something is not within the bounds.
bool examine(const HostileInput& hostile) {
    const Cost first = costOf(hostile, kSmallest);
    Cost last = first;
    double slowest = first.time;
    double largest = first.memory;
    for (std::size_t size = kSmallest * 2; size <= kLargest; size *= 2) {
        last = costOf(hostile, size);
        slowest = std::max(slowest, last.time);
        largest = std::max(largest, last.memory);
    }
    const char* fault = "";
    if (first.isAccepted != hostile.isAccepted || last.isAccepted != hostile.isAccepted) fault = " OTHER END";
    if (largest > first.memory * kMostMemoryGrowth + 1) fault = " MEMORY GROWS";
    if (slowest > first.time * kMostTimeGrowth) fault = " TIME GROWS";
    std::printf("| %s | %s | %.2f | %.2f | %.2f | %.1f | %.1f |%s\n", hostile.name,
                last.isAccepted ? "accepted" : "refused", first.time, last.time, slowest / first.time,
                first.memory, last.memory, fault);
    return !*fault;
}

// Runs on a stack of its own, which is painted, and tells how much of the paint is gone.
std::size_t stackOf(void* (*run)(void*), void* argument) {
    constexpr std::size_t kSize = std::size_t{4} << 20;
    constexpr unsigned char kPaint = 0xA5;
    auto* const stack = static_cast<unsigned char*>(
        mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (stack == MAP_FAILED) return SIZE_MAX;
    std::memset(stack, kPaint, kSize);
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, kSize);
    if (pthread_create(&thread, &attributes, run, argument) == 0) pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const auto* const touched =
        std::find_if(stack, stack + kSize, [](unsigned char octet) { return octet != kPaint; });
    const auto used = static_cast<std::size_t>(stack + kSize - touched);
    munmap(stack, kSize);
    return used;
}

void* rest(void*) {
    return nullptr;
}

struct Deep {
    const test::Nest& nest;
    bool isWhole;
};

void* liveThrough(void* argument) {
    auto& deep = *static_cast<Deep*>(argument);
    const auto& type = test::typeNamed(deep.nest.type);
    deep.isWhole = test::liveThrough(type, test::nested(deep.nest, test::deepest(deep.nest)));
    return nullptr;
}

bool examineStack(const test::Nest& nest) {
    Deep deep{nest, false};
    const std::size_t used = stackOf(liveThrough, &deep) - stackOf(rest, nullptr);
    const bool isWithin = deep.isWhole && used < kMostStack;
    std::printf("| %s | %d | %zu |%s\n", nest.type, test::deepest(nest) * nest.levelsPerTurn, used,
                isWithin ? "" : " TOO MUCH");
    return isWithin;
}

}  // namespace

int main(int count, char** arguments) {
    const bool isCheck = count == 2 && std::string_view(arguments[1]) == "--check";
    if (count > 1 && !isCheck) return std::fputs("usage: mirvane-bounds [--check]\n", stderr), 2;
    // Memory is kept by the allocator, so that the kernel's time for fresh pages is not counted each time.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    bench::installHooks();
    bool isWithin = true;
    std::printf(
        "| hostile input, %zu octets and %zu octets | end | ns an octet | | growth | octets held an octet | "
        "|\n"
        "|---|---|---:|---:|---:|---:|---:|\n",
        kSmallest, kLargest);
    for (const HostileInput& hostile : bench::hostileInputs())
        isWithin &= examine(hostile);
    std::printf("\n| deepest accepted message | levels | octets of stack |\n|---|---:|---:|\n");
    for (const test::Nest& nest : test::kNests)
        isWithin &= examineStack(nest);
    return isWithin || !isCheck ? 0 : 1;
}
