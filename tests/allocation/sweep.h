// Runs an operation once for each of its allocations, with that one failing, and holds what comes of it
// against what the interface says: a failure that is told, an object that is as it was or at least sound,
// nothing leaked (the leak checker of the sanitizer build sees to that).
#ifndef MIRVANE_TESTS_ALLOCATION_SWEEP_H
#define MIRVANE_TESTS_ALLOCATION_SWEEP_H

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <string>
#include <type_traits>

#include "allocation/state.h"
#include "base/exception.h"
#include "support/failing_memory.h"

namespace test {

enum class After {
    unchanged,  // the failed operation left the object as it was
    sound,      // the object may have changed; it can be assigned to and destroyed
};

// What came of one run: whether the n-th allocation was reached, and whether the operation told a failure.
struct Run {
    bool failed = false;
    bool threw = false;
};

template <typename Operation>
Run runWithFailure(int index, Operation operation) {
    Run outcome;
    const FailingMemory failing(index);
    try {
        operation();
    } catch (const ATL::CAtlException&) {
        outcome.threw = true;
    } catch (const std::bad_alloc&) {
        outcome.threw = true;
    }
    outcome.failed = failing.happened();
    return outcome;
}

// `change` turns a copy of `before` into something. A failure that is not told must not be seen in what comes
// out.
template <typename T, typename Change>
void sweepChange(const std::string& name, const T& before, Change change, After after = After::unchanged) {
    SCOPED_TRACE(name);
    T expected(before);
    change(expected);
    const std::string started = stateOf(before);
    const std::string wanted = stateOf(expected);
    for (int index = 0;; ++index) {
        T object(before);
        const Run outcome = runWithFailure(index, [&] { change(object); });
        if (outcome.threw) {
            if (after == After::unchanged) {
                ASSERT_EQ(stateOf(object), started) << "allocation " << index;
            }
            object = before;
            ASSERT_EQ(stateOf(object), started) << "assigned to after allocation " << index;
        } else {
            ASSERT_EQ(stateOf(object), wanted) << "allocation " << index;
        }
        if (!outcome.failed) return;
    }
}

// `make` yields a new object.
template <typename Make>
void sweepMake(const std::string& name, Make make) {
    SCOPED_TRACE(name);
    const std::string wanted = stateOf(make());
    for (int index = 0;; ++index) {
        std::optional<decltype(make())> made;
        const Run outcome = runWithFailure(index, [&] { made.emplace(make()); });
        if (!outcome.threw) {
            ASSERT_EQ(stateOf(*made), wanted) << "allocation " << index;
        }
        if (!outcome.failed) return;
    }
}

// What every value class has: copies, assignment, the road there and back, comparison.
template <typename T>
void sweepValue(const std::string& name, const T& sample) {
    sweepMake(name + " copied", [&] { return T(sample); });
    sweepChange(
        name + " assigned", sample, [other = T(sample)](T& object) { object = other; }, After::sound);
    if constexpr (std::is_default_constructible_v<T>) {
        sweepMake(name + " by default", [] { return T(); });
        sweepChange(
            name + " assigned to a new one", T(), [&](T& object) { object = sample; }, After::sound);
    }
    if constexpr (requires {
                      { sample.encode() } -> std::convertible_to<Mirvane::CBlob>;
                  }) {
        sweepMake(name + " encoded", [&] { return Mirvane::CBlob(sample.encode()); });
        if constexpr (requires(T object) { object.decode(sample.encode()); }) {
            const Mirvane::CBlob encoded = sample.encode();
            sweepChange(
                name + " decoded", sample, [&](T& object) { object.decode(encoded); }, After::sound);
        }
    } else if constexpr (requires(T object) {
                             object.encode();
                             object.decode();
                         }) {
        sweepChange(
            name + " encoded", sample, [](T& object) { object.encode(); }, After::sound);
        sweepChange(
            name + " decoded", sample, [](T& object) { object.decode(); }, After::sound);
    }
    if constexpr (requires {
                      { sample == sample } -> std::same_as<bool>;
                  }) {
        sweepMake(name + " compared", [&, other = T(sample)] { return sample == other; });
    }
    if constexpr (requires { sample.toString(); }) {
        sweepMake(name + " as text", [&] { return sample.toString(); });
    }
}

}  // namespace test

#endif
