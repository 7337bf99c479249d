// Makes the n-th allocation by operator new fail, for as long as the object lives. A program that uses it
// adds support/failing_new.cpp, which replaces the operators.
#ifndef MIRVANE_TESTS_SUPPORT_FAILING_NEW_H
#define MIRVANE_TESTS_SUPPORT_FAILING_NEW_H

namespace test {

class FailingNew {
  public:
    // Counts from 0, in this thread.
    explicit FailingNew(int index);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;

    // Whether it has come to the allocation that fails.
    bool happened() const;
};

}  // namespace test

#endif
