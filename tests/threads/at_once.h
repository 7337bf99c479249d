// Work that many threads do at the same time.
#ifndef MIRVANE_TESTS_THREADS_AT_ONCE_H
#define MIRVANE_TESTS_THREADS_AT_ONCE_H

#include <latch>
#include <thread>
#include <vector>

namespace test {

constexpr int threadCount = 8;

// Runs work(0), work(1), ... on threads of their own, which wait for one another before they begin.
template <typename Work>
void atOnce(Work work) {
    std::latch start(threadCount);
    std::vector<std::thread> threads;
    for (int index = 0; index < threadCount; ++index) {
        threads.emplace_back([&start, &work, index] {
            start.arrive_and_wait();
            work(index);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace test

#endif
