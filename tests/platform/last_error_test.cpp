#include "platform/last_error.h"

#include <gtest/gtest.h>

#include <thread>

TEST(LastError, EachThreadHasItsOwnSlotThatBeginsWithZero) {
    SetLastError(5);
    DWORD atStart = 1;
    std::thread other([&] {
        atStart = GetLastError();
        SetLastError(6);
    });
    other.join();
    EXPECT_EQ(atStart, 0u);
    EXPECT_EQ(GetLastError(), 5u);
}
