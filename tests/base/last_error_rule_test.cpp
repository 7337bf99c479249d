#include <gtest/gtest.h>

#include "base/last_error.h"
#include "support/failures.h"

namespace failure = Mirvane::failure;
using test::thrownCode;

TEST(LastErrorRule, SystemErrorsBecomeCodesAndCodesStay) {
    const std::pair<DWORD, unsigned> rows[] = {{0, 0},
                                               {1, 0x80070001},
                                               {87, 0x80070057},
                                               {0xFFFF, 0x8007FFFF},
                                               {0x12345678, 0x80075678},
                                               {0x7FFFFFFF, 0x8007FFFF},
                                               {0x80000000, 0x80000000},
                                               {0x80090006, 0x80090006},
                                               {0xFFFFFFFF, 0xFFFFFFFF}};
    for (const auto& [error, code] : rows) {
        SetLastError(error);
        EXPECT_EQ(static_cast<unsigned>(failure::fromLastError()), code);
    }
}

TEST(LastErrorRule, OnlyTheHardUseThrowsZero) {
    SetLastError(0);
    EXPECT_THROW(failure::raiseLastError(), ATL::CAtlException);
    EXPECT_NO_THROW(failure::raiseLastErrorIfAny());
    SetLastError(122);
    EXPECT_EQ(thrownCode([] { failure::raiseLastErrorIfAny(); }), 0x8007007Au);
}
