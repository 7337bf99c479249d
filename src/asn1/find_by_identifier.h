// Search in lists of elements that carry an object identifier as text. Not part of the interface.
#ifndef MIRVANE_ASN1_FIND_BY_IDENTIFIER_H
#define MIRVANE_ASN1_FIND_BY_IDENTIFIER_H

#include <algorithm>
#include <functional>
#include <string_view>

namespace Mirvane::ASN1 {

// The first element of a list, constant or not, whose getter gives exactly this text, or the end. Null is the
// empty text.
template <typename List, typename Getter>
auto findByIdentifier(List& list, Getter getter, char const* identifier) {
    const std::string_view wanted = identifier != nullptr ? identifier : "";
    return std::find_if(list.begin(), list.end(), [wanted, getter](auto const& element) {
        return wanted == std::invoke(getter, element);
    });
}

// Puts a copy in the place of the first element with this identifier, or behind all others.
template <typename List, typename Element>
void putByIdentifier(List& list, char const* identifier, Element const& element) {
    const auto found = list.find(identifier);
    if (found != list.end()) {
        *found = element;
    } else {
        list.push_back(element);
    }
}

// Removes the first element with this identifier, if there is one.
template <typename List>
void eraseByIdentifier(List& list, char const* identifier) {
    const auto found = list.find(identifier);
    if (found != list.end()) list.erase(found);
}

}  // namespace Mirvane::ASN1

#endif
