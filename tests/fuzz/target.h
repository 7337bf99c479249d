// What every fuzz target is made of. A target is one function over hostile bytes:
//
//     MIRVANE_FUZZ_TARGET(request_message, 0) { ... input.rest() ... }
//
// It states the properties that hold for all inputs with require(), which throws: under libFuzzer that ends
// the run with the input saved, in the replay test it fails the test. What the library may refuse is wrapped
// in passes(), which lets the stated failures through and no other.
//
// Each target is built twice: with libFuzzer under the preset `fuzz`, and into the test program that replays
// seeds and regression inputs in every build.
#ifndef MIRVANE_TESTS_FUZZ_TARGET_H
#define MIRVANE_TESTS_FUZZ_TARGET_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/blob.h"
#include "base/exception.h"
#include "support/octets.h"

namespace fuzz {

// Reads the front of an input as numbers; what is missing is 0.
class Input {
  public:
    explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint8_t number() {
        if (bytes_.empty()) return 0;
        const std::uint8_t first = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return first;
    }
    std::uint16_t number16() {
        const int high = number();
        return static_cast<std::uint16_t>(high << 8 | number());
    }

    // What is left, in memory of exactly its size, so that the address sanitizer sees a read behind it.
    Mirvane::CBlob rest() const { return Mirvane::CBlob(bytes_.data(), bytes_.size()); }
    std::string text() const { return std::string(bytes_.begin(), bytes_.end()); }
    std::span<const std::uint8_t> bytes() const { return bytes_; }

  private:
    std::span<const std::uint8_t> bytes_;
};

// For texts: the mutator then leaves elements alone.
inline constexpr std::size_t kNoElements = SIZE_MAX;

struct Target {
    const char* name;
    void (*run)(Input input);
    // How many octets choose something, in front of the encoding.
    std::size_t encodingAt;
};

// All targets that are linked in.
std::vector<Target>& targets();

struct Registration {
    explicit Registration(const Target& target) { targets().push_back(target); }
};

class BrokenProperty : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

inline void require(bool holds, const char* property) {
    if (!holds) throw BrokenProperty(property);
}

// What decoding hostile bytes, or encoding what came of it, may end with.
inline constexpr ATL::HRESULT kCodecFailures[] = {Mirvane::failure::asn1, Mirvane::failure::invalidArgument,
                                                  Mirvane::failure::emptyMessage, Mirvane::failure::general,
                                                  Mirvane::failure::invalidTime};

// Runs an operation: true if it succeeds, false if it ends with one of the codes.
template <typename Operation>
bool passes(Operation operation, std::span<const ATL::HRESULT> stated = kCodecFailures) {
    try {
        operation();
        return true;
    } catch (const ATL::CAtlException& failure) {
        const bool isStated = std::find(stated.begin(), stated.end(), failure.m_hr) != stated.end();
        if (!isStated) {
            throw BrokenProperty("not a stated failure: " +
                                 std::to_string(static_cast<std::uint32_t>(failure.m_hr)));
        }
        return false;
    }
}

}  // namespace fuzz

#define MIRVANE_FUZZ_TARGET(name, encodingAt)                                             \
    static void name(fuzz::Input input);                                                  \
    static const fuzz::Registration registration_of_##name({#name, &name, (encodingAt)}); \
    static void name([[maybe_unused]] fuzz::Input input)

#endif
