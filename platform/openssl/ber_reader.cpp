#include "ber_reader.h"

#include <cstdint>

namespace platform {
namespace {

struct Header {
    std::size_t size = 0;  // of the header itself; 0 if it could not be read
    std::size_t length = 0;
    bool isIndefinite = false;
};

// The octets of the identifier, 0 if it does not end. Identifiers with high tag numbers are only stepped
// over.
std::size_t identifierSize(Octets octets) {
    if (octets.empty()) return 0;
    if ((octets[0] & 0x1F) != 0x1F) return 1;
    for (std::size_t size = 1; size < octets.size(); ++size) {
        if ((octets[size] & 0x80) == 0) return size + 1;
    }
    return 0;
}

// X.690, 8.1.2 and 8.1.3. A definite length lies within the octets.
Header readHeader(Octets octets) {
    std::size_t size = identifierSize(octets);
    if (size == 0 || size == octets.size()) return {};
    const BYTE first = octets[size++];
    if (first == 0x80) return (octets[0] & 0x20) != 0 ? Header{size, 0, true} : Header{};
    std::uint64_t length = first;
    if (first > 0x80) {
        const std::size_t count = first & 0x7F;
        if (count > octets.size() - size) return {};
        length = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (length >> 32 != 0) return {};
            length = length << 8 | octets[size++];
        }
    }
    if (length > octets.size() - size) return {};
    return {size, static_cast<std::size_t>(length), false};
}

// The size of a content of indefinite length, without its end-of-contents octets; false if it has no end.
bool findEnd(Octets octets, std::size_t& contentSize) {
    std::size_t position = 0;
    for (std::size_t depth = 1; depth != 0;) {
        const Header header = readHeader(octets.subspan(position));
        if (header.size == 0) return false;
        const bool isEnd = octets[position] == 0;
        if (isEnd && (header.size != 2 || header.length != 0)) return false;
        contentSize = position;
        position += header.size + header.length;
        if (isEnd) --depth;
        if (header.isIndefinite) ++depth;
    }
    return true;
}

}  // namespace

Element BerReader::take(BYTE identifier) {
    if (!isNext(identifier)) failed_ = true;
    return takeAny();
}

Element BerReader::takeAny() {
    const Header header = failed_ ? Header{} : readHeader(rest_);
    std::size_t contentSize = header.length;
    if (header.size == 0 || (header.isIndefinite && !findEnd(rest_.subspan(header.size), contentSize))) {
        failed_ = true;
        return {};
    }
    const std::size_t size = header.size + contentSize + (header.isIndefinite ? 2 : 0);
    const Element element{rest_.first(size), rest_.subspan(header.size, contentSize)};
    rest_ = rest_.subspan(size);
    return element;
}

}  // namespace platform
