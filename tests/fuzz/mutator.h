// A mutator that knows what an element is: it takes the encoding apart, changes one thing or a few, and puts
// it together with the lengths mended, so that a change deep inside gets past the readers of the outer
// elements. Plain mutations of octets come from the caller.
#ifndef MIRVANE_TESTS_FUZZ_MUTATOR_H
#define MIRVANE_TESTS_FUZZ_MUTATOR_H

#include <algorithm>
#include <random>
#include <utility>

#include "support/element_tree.h"

namespace fuzz {

using test::Element;
using test::ElementTree;
using test::Octets;

class ElementMutator {
  public:
    // Changes octets in place, which have room for `most`; the new count.
    using MutateOctets = std::size_t (*)(std::uint8_t* data, std::size_t size, std::size_t most);

    ElementMutator(unsigned seed, MutateOctets mutateOctets) : random_(seed), mutateOctets_(mutateOctets) {}

    // One to four changes.
    Octets mutated(std::span<const unsigned char> encoding) {
        ElementTree tree(encoding);
        for (unsigned left = 1 + below(4); left > 0; --left)
            change(tree);
        return tree.octets();
    }

    // One element of the first encoding replaced by, or followed by, one of the second.
    Octets crossed(std::span<const unsigned char> first, std::span<const unsigned char> second) {
        ElementTree tree(first);
        ElementTree other(second);
        const auto places = tree.places();
        const auto donors = other.places();
        if (places.empty() || donors.empty()) return tree.octets();
        const ElementTree::Place& place = places[below(places.size())];
        Element donor = donors[below(donors.size())].element();
        if (below(2) == 0) {
            place.element() = std::move(donor);
        } else {
            insert(place, std::move(donor));
        }
        return tree.octets();
    }

  private:
    unsigned below(std::size_t bound) { return static_cast<unsigned>(random_() % bound); }

    static void insert(const ElementTree::Place& place, Element element) {
        place.siblings->insert(place.siblings->begin() + static_cast<long>(place.index), std::move(element));
    }

    void change(ElementTree& tree) {
        const auto places = tree.places();
        if (places.empty()) {
            mutateContent(tree.tail);
            return;
        }
        const ElementTree::Place& place = places[below(places.size())];
        Element& element = place.element();
        switch (below(14)) {
            case 0:
                place.siblings->erase(place.siblings->begin() + static_cast<long>(place.index));
                break;
            case 1:
                insert(place, Element(element));
                break;
            case 2:
                std::swap(element, (*place.siblings)[below(place.siblings->size())]);
                break;
            case 3:
                element.content.clear();
                element.children.clear();
                break;
            case 4:
                retag(element);
                break;
            case 5:
                element.stretch = static_cast<int>(below(9)) - 4;
                break;
            case 6:
                if (element.identifier[0] & 0x20) element.indefinite = !element.indefinite;
                break;
            case 7:
                segment(element);
                break;
            case 8:
                wrap(element);
                break;
            case 9:
                insert(place, Element(places[below(places.size())].element()));
                break;
            default:
                mutateContent(element.content);
                break;
        }
    }

    // Another tag of the same class, a neighbouring class, the other form, or a tag of many octets.
    void retag(Element& element) {
        static constexpr unsigned char kUsual[] = {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x0A, 0x0C, 0x13, 0x16,
                                                   0x17, 0x18, 0x30, 0x31, 0x80, 0x81, 0x82, 0x86, 0xA0, 0xA1,
                                                   0xA2, 0xA3, 0xA4, 0x1E, 0x24, 0x23, 0x00, 0x1C};
        if (below(8) == 0) {
            element.identifier = {static_cast<unsigned char>(0x1F | below(8) << 5),
                                  static_cast<unsigned char>(0x80 | below(128)),
                                  static_cast<unsigned char>(below(128))};
        } else if (below(3) == 0) {
            element.identifier[0] ^= static_cast<unsigned char>(0x20 << below(3));
        } else {
            element.identifier = {kUsual[below(std::size(kUsual))]};
        }
    }

    // A string in pieces (X.690, 8.7.3), or a string around what is there.
    void segment(Element& element) {
        if (!element.children.empty()) return;
        Element first = element;
        Element second = element;
        const auto middle = static_cast<long>(below(element.content.size() + 1));
        first.content.assign(element.content.begin(), element.content.begin() + middle);
        second.content.assign(element.content.begin() + middle, element.content.end());
        element.content.clear();
        element.children = {std::move(first), std::move(second)};
        element.identifier[0] |= 0x20;
        element.indefinite = below(2) == 0;
    }

    void wrap(Element& element) {
        Element inner = std::move(element);
        element = Element{};
        element.identifier = {0x30};
        retag(element);
        if (below(4) != 0) element.identifier[0] |= 0x20;
        element.children.push_back(std::move(inner));
    }

    void mutateContent(Octets& content) {
        const std::size_t size = content.size();
        content.resize(size + 64);
        content.resize(mutateOctets_(content.data(), size, content.size()));
    }

    std::mt19937 random_;
    MutateOctets mutateOctets_;
};

}  // namespace fuzz

#endif
