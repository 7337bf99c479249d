// Makes the n-th allocation fail, by operator new or on a heap of the runtime, for as long as the object
// lives. A program that uses it adds support/failing_memory.cpp, which replaces the operators.
#ifndef MIRVANE_TESTS_SUPPORT_FAILING_MEMORY_H
#define MIRVANE_TESTS_SUPPORT_FAILING_MEMORY_H

namespace test {

class FailingMemory {
  public:
    // Counts both kinds of allocation together from 0, in this thread.
    explicit FailingMemory(int index);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    // Whether it has come to the allocation that fails.
    bool happened() const;
};

}  // namespace test

#endif
