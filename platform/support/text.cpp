#include "platform/text.h"

#include <climits>
#include <cstring>
#include <cwchar>

#include "platform/last_error.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

// Takes the output as it comes, counts all of it, and keeps what fits.
template <typename Unit>
class Output {
  public:
    Output(Unit* units, int capacity) : units_(units), capacity_(static_cast<std::uint64_t>(capacity)) {}

    void put(std::uint32_t unit) {
        if (count_ < capacity_) units_[count_] = static_cast<Unit>(unit);
        ++count_;
    }

    // The result of the conversion.
    int finish() const {
        if (count_ > INT_MAX) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
        }
        if (capacity_ != 0 && count_ > capacity_) {
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return 0;
        }
        return static_cast<int>(count_);
    }

  private:
    Unit* units_;
    std::uint64_t capacity_;  // 0 when the text is only measured
    std::uint64_t count_ = 0;
};

bool isScalar(char32_t character) {
    return character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
}

void encode(char32_t character, Output<char>& output) {
    if (character < 0x80) {
        output.put(character);
        return;
    }
    if (character < 0x800) {
        output.put(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            output.put(0xE0 | character >> 12);
        } else {
            output.put(0xF0 | character >> 18);
            output.put(0x80 | (character >> 12 & 0x3F));
        }
        output.put(0x80 | (character >> 6 & 0x3F));
    }
    output.put(0x80 | (character & 0x3F));
}

// The bytes of a sequence by its first one, and 0 for a byte that begins none.
int sequenceLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first < 0xC0 || first > 0xFD) return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF8 ? 4 : first < 0xFC ? 5 : 6;
}

// Takes one sequence, well-formed or not, and steps `text` behind it.
char32_t decode(const unsigned char*& text, const unsigned char* end) {
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000, 0x200000, 0x4000000};
    const unsigned char first = *text++;
    const int length = sequenceLength(first);
    if (length <= 1) return length == 1 ? first : replacement;
    char32_t character = first & (0x7F >> length);
    for (int taken = 1; taken < length; ++taken) {
        if (text == end || (*text & 0xC0) != 0x80) return replacement;
        character = character << 6 | (*text++ & 0x3F);
    }
    return character >= smallest[length] && isScalar(character) ? character : replacement;
}

bool acceptsArguments(UINT codePage, DWORD flags, const void* source, int length, const void* target,
                      int capacity) {
    const bool valid = codePage == CP_ACP && source != nullptr && length != 0 && length >= -1 &&
                       capacity >= 0 && (target != nullptr || capacity == 0);
    if (valid && flags == 0) return true;
    SetLastError(valid ? ERROR_INVALID_FLAGS : ERROR_INVALID_PARAMETER);
    return false;
}

}  // namespace

int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* wide, int wideLength, char* narrow,
                        int narrowCapacity, const char* defaultCharacter, BOOL* usedDefaultCharacter) {
    if (!acceptsArguments(codePage, flags, wide, wideLength, narrow, narrowCapacity)) return 0;
    if (defaultCharacter != nullptr || usedDefaultCharacter != nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const wchar_t* const end =
        wide + (wideLength < 0 ? std::wcslen(wide) + 1 : static_cast<std::size_t>(wideLength));
    Output<char> output(narrow, narrowCapacity);
    for (; wide != end; ++wide) {
        const auto character = static_cast<char32_t>(*wide);
        encode(isScalar(character) ? character : replacement, output);
    }
    return output.finish();
}

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* narrow, int narrowLength, wchar_t* wide,
                        int wideCapacity) {
    if (!acceptsArguments(codePage, flags, narrow, narrowLength, wide, wideCapacity)) return 0;
    const auto* text = reinterpret_cast<const unsigned char*>(narrow);
    const auto* const end =
        text + (narrowLength < 0 ? std::strlen(narrow) + 1 : static_cast<std::size_t>(narrowLength));
    Output<wchar_t> output(wide, wideCapacity);
    while (text != end)
        output.put(decode(text, end));
    return output.finish();
}
