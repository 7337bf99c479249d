// Runs an operation once for each of its allocations, with that one failing, and holds what comes of it
// against what the interface says: a failure that is told, an object that is as it was or at least sound,
// nothing leaked (the leak checker of the sanitizer build sees to that).
#ifndef MIRVANE_TESTS_ALLOCATION_SWEEP_H
#define MIRVANE_TESTS_ALLOCATION_SWEEP_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
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

// The code of the codec, of a context without memory, of a time that is read, and of the platform.
inline bool isForMemory(ATL::CAtlException const& failure) {
    const std::uint32_t stated[] = {0x80093101, 0x80093106, 0x8009000E, 0x8007000E};
    return std::ranges::count(stated, static_cast<std::uint32_t>(failure.m_hr)) != 0;
}

template <typename Operation>
Run runWithFailure(int index, Operation operation) {
    Run outcome;
    const FailingMemory failing(index);
    try {
        operation();
    } catch (const ATL::CAtlException& failure) {
        outcome.threw = true;
        EXPECT_TRUE(isForMemory(failure)) << std::hex << failure.m_hr << ", allocation " << std::dec << index;
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

// What a class promises of its objects where memory fails.
struct Promise {
    After assigned = After::unchanged;
    After decoded = After::unchanged;
};
constexpr Promise kAssignedSound{.assigned = After::sound};
constexpr Promise kDecodedSound{.decoded = After::sound};
constexpr Promise kSound{After::sound, After::sound};

// What an object is before something is assigned to it or decoded into it: a new one, where there is such.
template <typename T>
T valueBefore(const T& sample) {
    if constexpr (std::is_default_constructible_v<T>) {
        return T();
    } else {
        return T(sample);
    }
}

// The road there and back. A class that holds its encoded form shows no more than that.
template <typename T>
void sweepCodec(const std::string& name, const T& sample, const T& before, After decoded) {
    if constexpr (requires {
                      { sample.encode() } -> std::convertible_to<Mirvane::CBlob>;
                  }) {
        sweepMake(name + " encoded", [&] { return Mirvane::CBlob(sample.encode()); });
        if constexpr (requires(T object) { object.decode(sample.encode()); }) {
            const Mirvane::CBlob encoded = sample.encode();
            sweepChange(
                name + " decoded", before, [&](T& object) { object.decode(encoded); }, decoded);
        }
    } else if constexpr (requires(T object) {
                             object.encode();
                             object.decode();
                         }) {
        sweepChange(name + " encoded", sample, [](T& object) { object.encode(); });
        sweepChange(
            name + " decoded", sample, [](T& object) { object.decode(); }, decoded);
    }
}

// Copies share nothing, whatever becomes of their source; a moved and a cleared object live again when they
// are assigned to.
template <typename T>
void expectIndependentCopies(const std::string& name, const T& sample, const T& before) {
    SCOPED_TRACE(name + " and its copies");
    const std::string wanted = stateOf(sample);
    const auto expectSame = [&](const T& object, const char* which) {
        EXPECT_EQ(stateOf(object), wanted) << which;
    };
    std::optional<T> source(sample);
    T copy(*source);
    T assigned(before);
    assigned = *source;
    source = before;
    expectSame(copy, "copied");
    expectSame(assigned, "assigned");
    T& itself = copy;
    copy = itself;
    expectSame(copy, "assigned to itself");
    T moved(std::move(copy));
    expectSame(moved, "moved");
    copy = moved;
    expectSame(copy, "assigned after it was moved from");
    moved = std::move(copy);
    expectSame(moved, "assigned by a move");
    if constexpr (requires { moved.clear(); }) {
        moved.clear();
        moved.clear();
        T cleared(moved);
        assigned = cleared;
        assigned = sample;
        expectSame(assigned, "assigned after it was cleared");
    }
}

// What every value class has: copies, assignment, the road there and back, comparison. `before` is what
// stands where the sample is assigned or decoded.
template <typename T>
void sweepValue(const std::string& name, const T& sample, const T& before, const Promise& promise = {}) {
    sweepMake(name + " copied", [&] { return T(sample); });
    sweepChange(
        name + " assigned", before, [&](T& object) { object = sample; }, promise.assigned);
    expectIndependentCopies(name, sample, before);
    if constexpr (std::is_default_constructible_v<T>) sweepMake(name + " by default", [] { return T(); });
    sweepCodec(name, sample, before, promise.decoded);
    if constexpr (requires {
                      { sample == sample } -> std::same_as<bool>;
                  }) {
        sweepMake(name + " compared", [&, other = T(sample)] { return sample == other; });
    }
    if constexpr (requires { sample.toString(); }) {
        sweepMake(name + " as text", [&] { return sample.toString(); });
    }
}

template <typename T>
void sweepValue(const std::string& name, const T& sample, const Promise& promise = {}) {
    sweepValue(name, sample, valueBefore(sample), promise);
}

}  // namespace test

#endif
