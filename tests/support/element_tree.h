// An encoding taken apart into its elements, to be changed and put together again with the lengths of all
// enclosing elements mended. Strings that hold an encoding of their own (extensions, the bytes of a response)
// are taken apart as well. Made for BER of any quality: what does not parse is kept as plain content.
#ifndef MIRVANE_TESTS_SUPPORT_ELEMENT_TREE_H
#define MIRVANE_TESTS_SUPPORT_ELEMENT_TREE_H

#include <cstdint>
#include <span>
#include <vector>

#include "support/octets.h"

namespace test {

struct Element {
    Octets identifier;  // one octet or more
    bool indefinite = false;
    // The content, or what stands in front of the children: the count of unused bits.
    Octets content;
    std::vector<Element> children;
    // Added to the length that is written, so that a header lies about what follows.
    int stretch = 0;
};

namespace element_tree {

inline constexpr int kMostLevels = 24;

using Bytes = std::span<const unsigned char>;

struct Header {
    std::size_t identifierSize = 0;
    std::size_t size = 0;  // of identifier and length together; 0 for none
    std::uint64_t length = 0;
    bool indefinite = false;
};

inline Header readHeader(Bytes bytes) {
    std::size_t at = 1;
    if (bytes.empty()) return {};
    if ((bytes[0] & 0x1F) == 0x1F) {
        while (at < bytes.size() && at < 6 && (bytes[at] & 0x80))
            ++at;
        ++at;
    }
    if (at >= bytes.size()) return {};
    Header header{at, at + 1, bytes[at], bytes[at] == 0x80};
    if (bytes[at] <= 0x80) return header;
    const std::size_t count = bytes[at] & 0x7F;
    if (count > 4 || at + count >= bytes.size()) return {};
    header.length = 0;
    for (std::size_t i = 1; i <= count; ++i)
        header.length = header.length << 8 | bytes[at + i];
    header.size += count;
    return header;
}

inline bool parseAll(Bytes bytes, int level, std::vector<Element>& elements);

// Whether these octets, which are the content of the element, are elements one behind the other.
inline void parseContent(Bytes content, int level, Element& element) {
    const unsigned char tag = element.identifier[0];
    const std::size_t front = tag == 0x03 ? 1 : 0;
    const bool mayHold = (tag & 0x20) || tag == 0x03 || tag == 0x04;
    if (mayHold && content.size() > front && parseAll(content.subspan(front), level + 1, element.children)) {
        element.content.assign(content.begin(), content.begin() + static_cast<long>(front));
        return;
    }
    element.children.clear();
    element.content.assign(content.begin(), content.end());
}

// Takes one element from the front; false, with `bytes` as it was, if there is no whole one.
inline bool parseOne(Bytes& bytes, int level, Element& element) {
    const Header header = readHeader(bytes);
    if (header.size == 0 || level > kMostLevels) return false;
    element.identifier.assign(bytes.begin(), bytes.begin() + static_cast<long>(header.identifierSize));
    Bytes rest = bytes.subspan(header.size);
    if (header.indefinite) {
        if (!(bytes[0] & 0x20)) return false;
        element.indefinite = true;
        while (rest.size() < 2 || rest[0] != 0 || rest[1] != 0) {
            if (!parseOne(rest, level + 1, element.children.emplace_back())) return false;
        }
        bytes = rest.subspan(2);
        return true;
    }
    if (header.length > rest.size()) return false;
    const auto length = static_cast<std::size_t>(header.length);
    parseContent(rest.first(length), level, element);
    bytes = rest.subspan(length);
    return true;
}

inline bool parseAll(Bytes bytes, int level, std::vector<Element>& elements) {
    while (!bytes.empty()) {
        if (!parseOne(bytes, level, elements.emplace_back())) return false;
    }
    return true;
}

inline void writeLength(std::uint64_t length, Octets& out) {
    int octets = 0;
    while (length >= 0x80 && octets < 8 && length >> (8 * octets))
        ++octets;
    if (octets > 0) out.push_back(static_cast<unsigned char>(0x80 | octets));
    for (int i = octets; i > 1; --i)
        out.push_back(static_cast<unsigned char>(length >> (8 * (i - 1))));
    out.push_back(static_cast<unsigned char>(length));
}

inline void write(const Element& element, Octets& out) {
    Octets content = element.content;
    for (const Element& child : element.children)
        write(child, content);
    out.insert(out.end(), element.identifier.begin(), element.identifier.end());
    if (element.indefinite) {
        out.push_back(0x80);
        content.insert(content.end(), {0, 0});
    } else {
        const auto length = static_cast<std::int64_t>(content.size()) + element.stretch;
        writeLength(static_cast<std::uint64_t>(length < 0 ? 0 : length), out);
    }
    out.insert(out.end(), content.begin(), content.end());
}

}  // namespace element_tree

// The elements at the front of the octets, and what stands behind them.
struct ElementTree {
    std::vector<Element> roots;
    Octets tail;

    explicit ElementTree(std::span<const unsigned char> bytes) {
        while (!bytes.empty()) {
            if (element_tree::parseOne(bytes, 0, roots.emplace_back())) continue;
            roots.pop_back();
            break;
        }
        tail.assign(bytes.begin(), bytes.end());
    }

    Octets octets() const {
        Octets out;
        for (const Element& root : roots)
            element_tree::write(root, out);
        out.insert(out.end(), tail.begin(), tail.end());
        return out;
    }

    // Where each element stands: the list that holds it and its index there, outer ones first. Valid until
    // one of the lists changes.
    struct Place {
        std::vector<Element>* siblings;
        std::size_t index;
        Element& element() const { return (*siblings)[index]; }
    };

    std::vector<Place> places() {
        std::vector<Place> found;
        gather(roots, found);
        return found;
    }

  private:
    static void gather(std::vector<Element>& elements, std::vector<Place>& found) {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            found.push_back({&elements, i});
            gather(elements[i].children, found);
        }
    }
};

}  // namespace test

#endif
