#include "base/blob.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "asn1rt/text_digits.h"
#include "base/code_page_text.h"
#include "base/last_error.h"
#include "base/white_space.h"

namespace Mirvane {
namespace {

using Bytes = std::unique_ptr<unsigned char[]>;

Bytes newBytes(std::uint64_t count) {
    return std::make_unique_for_overwrite<unsigned char[]>(count);
}

// Unlike the C library's, this takes no null pointer amiss when there is nothing to copy.
void copyBytes(unsigned char* target, unsigned char const* source, std::uint64_t count) {
    if (count != 0) std::memcpy(target, source, count);
}

std::string narrowPath(wchar_t const* path) {
    if (path == nullptr) failure::raise(failure::fileNotOpened);
    auto narrow = narrowed(path);
    if (!narrow) {
        const DWORD error = GetLastError();
        failure::raise(error == 0 ? failure::fileNotRead : failure::fromSystemError(error));
    }
    return std::move(*narrow);
}

// Puts the stream back to its start. -1 for what has no size: a pipe, and a directory, which opens like a
// file.
std::streamoff sizeOf(std::ifstream& stream, char const* path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return -1;
    const std::streamoff size = stream.seekg(0, std::ios::end).tellg();
    stream.seekg(0);
    return size;
}

}  // namespace

CBlob::CBlob() noexcept = default;

CBlob::CBlob(unsigned char const* bytes, unsigned long count) {
    assign(bytes, count);
}

CBlob::CBlob(unsigned long count) : length_(count), data_(std::make_unique<unsigned char[]>(count)) {}

CBlob::CBlob(CBlob const& other) : CBlob(other.pbData(), other.cbData()) {}

CBlob::CBlob(CBlob&& other) noexcept
    : length_(std::exchange(other.length_, 0)), data_(std::move(other.data_)) {}

CBlob::~CBlob() = default;

CBlob& CBlob::operator=(CBlob const& other) {
    assign(other.pbData(), other.cbData());
    return *this;
}

CBlob& CBlob::operator=(CBlob&& other) noexcept {
    CBlob taken(std::move(other));
    swap(taken);
    return *this;
}

void CBlob::assign(unsigned char const* bytes, unsigned long count) {
    Bytes copy = count != 0 ? newBytes(count) : nullptr;
    copyBytes(copy.get(), bytes, count);
    length_ = count;
    data_ = std::move(copy);
}

void CBlob::resize_to(unsigned long count) {
    if (length_ < count) {
        Bytes larger = newBytes(count);
        copyBytes(larger.get(), pbData(), length_);
        data_ = std::move(larger);
    }
    length_ = count;
}

void CBlob::swap(CBlob& other) noexcept {
    std::swap(length_, other.length_);
    data_.swap(other.data_);
}

void CBlob::reverse() noexcept {
    std::reverse(pbData(), pbData() + length_);
}

CBlob& CBlob::operator+=(CBlob const& other) {
    if (other.length_ == 0) return *this;
    const std::uint64_t joinedLength = length_ + other.length_;
    Bytes joined = newBytes(joinedLength);
    copyBytes(joined.get(), pbData(), length_);
    copyBytes(joined.get() + length_, other.pbData(), other.length_);
    length_ = joinedLength;
    data_ = std::move(joined);
    return *this;
}

void CBlob::readFromFile(char const* path) {
    length_ = 0;
    if (path == nullptr) failure::raise(failure::fileNotOpened);
    std::ifstream stream(path, std::ios::binary);
    if (!stream) failure::raise(failure::fileNotOpened);
    const std::streamoff size = sizeOf(stream, path);
    if (size < 0) failure::raise(failure::fileNotRead);
    Bytes content = size != 0 ? newBytes(static_cast<std::uint64_t>(size)) : nullptr;
    if (!stream.read(reinterpret_cast<char*>(content.get()), size)) failure::raise(failure::fileNotRead);
    length_ = static_cast<std::uint64_t>(size);
    data_ = std::move(content);
}

void CBlob::readFromFile(wchar_t const* path) {
    if (path == nullptr) length_ = 0;
    readFromFile(narrowPath(path).c_str());
}

void CBlob::writeToFile(char const* path) const {
    std::ofstream stream;
    if (path != nullptr) stream.open(path, std::ios::binary | std::ios::trunc);
    if (!stream.is_open()) failure::raise(failure::fileNotOpened);
    stream.write(reinterpret_cast<char const*>(pbData()), static_cast<std::streamsize>(length_));
}

void CBlob::writeToFile(wchar_t const* path) const {
    writeToFile(narrowPath(path).c_str());
}

void CBlob::readFromHexString(char const* text) {
    if (text == nullptr) return clear();
    const std::uint64_t half = std::strlen(text) / 2;
    if (length_ <= half) data_ = newBytes(half + 1);
    unsigned char* end = data_.get();
    for (text = skipSpace(text); *text != 0; text = skipSpace(text + 2)) {
        const unsigned high = asn1rt::digitOf(text[0]);
        const unsigned low = asn1rt::digitOf(text[1]);
        if (high > 15 || low > 15) break;
        *end++ = static_cast<unsigned char>(high * 16 + low);
    }
    length_ = static_cast<std::uint64_t>(end - data_.get());
}

CStringProxy CBlob::writeToHexString(unsigned long group) const {
    if (length_ == 0) return {};
    std::string text;
    text.reserve(2 * length_ + (group != 0 ? (length_ - 1) / group : 0));
    for (std::uint64_t index = 0; index < length_; ++index) {
        if (group != 0 && index != 0 && index % group == 0) text += ' ';
        text += asn1rt::kUpperHexDigits[data_[index] >> 4];
        text += asn1rt::kUpperHexDigits[data_[index] & 0x0F];
    }
    return text.c_str();
}

bool CBlob::operator==(CBlob const& other) const noexcept {
    return length_ == other.length_ && (length_ == 0 || std::memcmp(pbData(), other.pbData(), length_) == 0);
}

int CBlob::compare(CBlob const& other) const noexcept {
    const std::uint64_t common = std::min(length_, other.length_);
    const int order = common != 0 ? std::memcmp(pbData(), other.pbData(), common) : 0;
    // The difference is meant to be taken in 32 bits.
    return order != 0 ? order : static_cast<int>(length_ - other.length_);
}

}  // namespace Mirvane
