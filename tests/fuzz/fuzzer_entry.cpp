// Between libFuzzer and the target that `--target=NAME` names; libFuzzer itself passes such arguments by.
#include <cstring>
#include <iostream>
#include <string_view>

#include "fuzz/mutator.h"
#include "fuzz/target.h"

extern "C" {

int LLVMFuzzerInitialize(int* count, char*** arguments);
std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed);
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                      const std::uint8_t* second, std::size_t secondSize, std::uint8_t* out,
                                      std::size_t most, unsigned seed);
}

namespace {

fuzz::Target chosen{};

std::span<const std::uint8_t> encodingIn(const std::uint8_t* data, std::size_t size) {
    return std::span(data, size).subspan(std::min(chosen.encodingAt, size));
}

// The octets in front of the encoding, then the encoding; 0 if they do not fit.
std::size_t put(std::span<const std::uint8_t> front, const fuzz::Octets& encoding, std::uint8_t* out,
                std::size_t most) {
    if (front.size() + encoding.size() > most) return 0;
    if (!front.empty()) std::memmove(out, front.data(), front.size());
    if (!encoding.empty()) std::memcpy(out + front.size(), encoding.data(), encoding.size());
    return front.size() + encoding.size();
}

}  // namespace

int LLVMFuzzerInitialize(int* count, char*** arguments) {
    constexpr std::string_view kOption = "--target=";
    for (int i = 1; i < *count; ++i) {
        const std::string_view argument = (*arguments)[i];
        if (!argument.starts_with(kOption)) continue;
        for (const fuzz::Target& each : fuzz::targets()) {
            if (argument.substr(kOption.size()) == each.name) chosen = each;
        }
    }
    if (chosen.run) return 0;
    std::cerr << "Give --target=NAME. The targets are:\n";
    for (const fuzz::Target& each : fuzz::targets())
        std::cerr << "  " << each.name << '\n';
    std::exit(2);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    chosen.run(fuzz::Input({data, size}));
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    const auto encoding = encodingIn(data, size);
    // A quarter of the mutations do not care about elements, and change the front too.
    if (chosen.encodingAt == fuzz::kNoElements || encoding.empty() || seed % 4 == 0) {
        return LLVMFuzzerMutate(data, size, most);
    }
    const fuzz::Octets changed = fuzz::ElementMutator(seed, &LLVMFuzzerMutate).mutated(encoding);
    const std::size_t count = put({data, size - encoding.size()}, changed, data, most);
    return count != 0 ? count : LLVMFuzzerMutate(data, size, most);
}

std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                      const std::uint8_t* second, std::size_t secondSize, std::uint8_t* out,
                                      std::size_t most, unsigned seed) {
    const auto encoding = encodingIn(first, firstSize);
    if (chosen.encodingAt == fuzz::kNoElements) {
        // The front of one text and the back of another.
        const std::size_t front = std::min(seed % (firstSize + 1), most);
        const std::size_t back = std::min((seed >> 8) % (secondSize + 1), most - front);
        std::copy_n(first, front, out);
        std::copy_n(second + secondSize - back, back, out + front);
        return front + back;
    }
    const fuzz::Octets crossed =
        fuzz::ElementMutator(seed, &LLVMFuzzerMutate).crossed(encoding, encodingIn(second, secondSize));
    return put({first, firstSize - encoding.size()}, crossed, out, most);
}
