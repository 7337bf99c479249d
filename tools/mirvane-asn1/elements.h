// A reader of BER whose types nobody knows: tags, lengths and the primitives of the universal class.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_ELEMENTS_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_ELEMENTS_H

#include <optional>
#include <vector>

#include "value.h"

namespace tools {

// The elements that make up all of `octets`, each an ElementValue. Nothing if the octets are no elements, are
// nested more than 32 levels deep, or if there are none.
std::optional<std::vector<Value>> readElements(OctetSpan octets);

// The SEQUENCE, not empty, that all of `octets` are; null if they are none.
std::unique_ptr<Value> sequenceIn(OctetSpan octets);

// The octets that the element at the front takes up, header included; 0 if no whole element is there.
std::size_t elementLength(OctetSpan octets);

// Where the first, innermost element of `message` begins that `other` does not have at the same place in the
// same octets. The two must not be equal.
std::size_t differingElement(OctetSpan message, OctetSpan other);

}  // namespace tools

#endif
