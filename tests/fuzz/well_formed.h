// What the strict properties ask of an input. Three things decode and do not come back: an open type that the
// end of the message cuts short counts as absent (see xd_OpenType), an explicit tag is not held against the
// value behind it, so that one around nothing takes what follows, and an identifier with an arc of 4294967295
// has no text that is read again (see str2oid).
#ifndef MIRVANE_TESTS_FUZZ_WELL_FORMED_H
#define MIRVANE_TESTS_FUZZ_WELL_FORMED_H

#include <algorithm>

#include "support/element_tree.h"

namespace fuzz {

inline bool holdsWholeElements(const test::Element& element) {
    const unsigned char tag = element.identifier[0];
    // SEQUENCE and SET are, even where the header says that they are primitive: the decoder takes them so.
    const bool isConstructed = (tag & 0x20) || tag == 0x10 || tag == 0x11;
    const bool isUniversal = (tag & 0xC0) == 0;
    if (isConstructed && !element.content.empty()) return false;
    if (isConstructed && !isUniversal && element.children.empty()) return false;
    return std::all_of(element.children.begin(), element.children.end(), holdsWholeElements);
}

// Whether the first element, and each constructed one inside it, is made of whole elements.
inline bool isWellFormed(std::span<const unsigned char> octets) {
    const test::ElementTree tree(octets);
    return !tree.roots.empty() && holdsWholeElements(tree.roots.front());
}

// In base 128 such an arc has three octets of all ones.
inline bool mayHaveGreatestArc(std::span<const unsigned char> octets) {
    static constexpr unsigned char kOnes[] = {0xFF, 0xFF, 0xFF};
    return std::search(octets.begin(), octets.end(), std::begin(kOnes), std::end(kOnes)) != octets.end();
}

inline bool comesBack(std::span<const unsigned char> octets) {
    return isWellFormed(octets) && !mayHaveGreatestArc(octets);
}

}  // namespace fuzz

#endif
