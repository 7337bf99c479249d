// Systematic damage of an encoding: prefixes, changed octets, and elements that are deleted, doubled,
// emptied, retagged and stretched with the lengths of all enclosing elements mended.
#ifndef MIRVANE_TESTS_DAMAGE_DAMAGES_H
#define MIRVANE_TESTS_DAMAGE_DAMAGES_H

#include <algorithm>
#include <cstdlib>
#include <string>

#include "support/element_tree.h"

namespace test {

// How many of each kind a message gets at most; those that are left out lie evenly between the others, and
// `turn`, the number of the message, moves them.
struct DamageLimits {
    std::size_t prefixes;
    std::size_t octets;
    std::size_t elements;
};

// Without MIRVANE_DAMAGE=all a run takes seconds, or about a minute under sanitizers, that slow it down.
inline bool isAllWanted() {
    const char* const wanted = std::getenv("MIRVANE_DAMAGE");
    return wanted && std::string(wanted) == "all";
}

template <typename Visit>
void eachOf(std::size_t count, std::size_t most, std::size_t turn, Visit visit) {
    if (count == 0) return;
    const std::size_t step = isAllWanted() ? 1 : (count + most - 1) / most;
    for (std::size_t i = turn % step; i < count; i += step)
        visit(i);
}

template <typename Visit>
void eachChangedElement(const Octets& message, std::size_t most, std::size_t turn, Visit visit) {
    const std::size_t count = ElementTree(message).places().size();
    eachOf(count, most, turn, [&](std::size_t index) {
        const auto changed = [&](const char* what, auto change) {
            ElementTree tree(message);
            const ElementTree::Place place = tree.places()[index];
            change(place);
            visit(what + std::string(" element ") + std::to_string(index), tree.octets());
        };
        using Place = ElementTree::Place;
        const auto at = [](const Place& place) {
            return place.siblings->begin() + static_cast<long>(place.index);
        };
        changed("without", [&](const Place& place) { place.siblings->erase(at(place)); });
        changed("twice", [&](const Place& place) {
            Element copy = place.element();
            place.siblings->insert(at(place), std::move(copy));
        });
        changed("nothing in", [](const Place& place) {
            place.element().content.clear();
            place.element().children.clear();
        });
        changed("another tag on", [&](const Place& place) { place.element().identifier[0] ^= 0x01; });
        changed("another class on", [&](const Place& place) { place.element().identifier[0] ^= 0x80; });
        changed("another form of", [&](const Place& place) { place.element().identifier[0] ^= 0x20; });
        changed("one octet more claimed by", [](const Place& place) { place.element().stretch = 1; });
        changed("one octet less claimed by", [](const Place& place) { place.element().stretch = -1; });
        changed("two gigabytes claimed by", [](const Place& place) { place.element().stretch = 0x7FFFFF00; });
    });
}

// Calls visit(what was done, octets) for each damaged form of the message.
template <typename Visit>
void eachDamage(const Octets& message, const DamageLimits& limits, std::size_t turn, Visit visit) {
    eachOf(message.size(), limits.prefixes, turn, [&](std::size_t size) {
        visit("the first " + std::to_string(size) + " octets",
              Octets(message.begin(), message.begin() + static_cast<long>(size)));
    });
    eachOf(message.size(), limits.octets, turn, [&](std::size_t index) {
        static constexpr unsigned char kChanges[] = {0x01, 0x80, 0xFF, 0x20, 0x7F};
        for (std::size_t i = 0; i < (isAllWanted() ? std::size(kChanges) : 1); ++i) {
            Octets changed = message;
            changed[index] ^= kChanges[(i + index + turn) % std::size(kChanges)];
            visit("octet " + std::to_string(index) + " changed to " + std::to_string(changed[index]),
                  changed);
        }
    });
    eachChangedElement(message, limits.elements, turn, visit);
}

}  // namespace test

#endif
