// What the tests of this folder share: names in short, and the codes of most failures.
#ifndef MIRVANE_TESTS_OCSP_OCSP_TEST_H
#define MIRVANE_TESTS_OCSP_OCSP_TEST_H

#include "support/values.h"

namespace Mirvane::PKI::OCSP {

using test::blob;
using test::expectRefused;
using test::text;
using test::thrownCode;

constexpr unsigned kGeneral = 0x80004005;
constexpr unsigned kInvalidArgument = 0x80070057;
constexpr unsigned kBadAlgorithm = 0x80090008;
constexpr unsigned kAsn1 = 0x80093101;
constexpr unsigned kUnknownAlgorithm = 0x80092004;

// Each change makes the value another one, and a copy is the same.
template <typename Value>
void expectEachChangeCounts(Value const& original, std::initializer_list<void (*)(Value&)> changes) {
    EXPECT_TRUE(original == Value(original));
    EXPECT_FALSE(original != Value(original));
    for (auto const change : changes) {
        Value changed;
        changed = original;
        change(changed);
        EXPECT_TRUE(original != changed);
        EXPECT_FALSE(original == changed);
    }
}

}  // namespace Mirvane::PKI::OCSP

#endif
