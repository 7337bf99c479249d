// Of which inputs a target asks that what was encoded decodes: those that decode to a whole value. An open
// type that the end of the message cuts short counts as there and holds nothing (see xd_OpenType). It is
// encoded as nothing, and what is around it then is another value, or none.
#ifndef MIRVANE_TESTS_FUZZ_WHOLE_VALUE_H
#define MIRVANE_TESTS_FUZZ_WHOLE_VALUE_H

#include <algorithm>
#include <span>

#include "asn1data/record_access.h"
#include "support/recode.h"

namespace fuzz {

using asn1data::Asn1TObject;
using asn1data::Kind;
using asn1data::member;
using asn1data::ObjectEntry;
using asn1data::TypeDescriptor;

// Whether each open type of a decoded value got its element, also inside the values that tables resolved.
inline bool isWhole(const TypeDescriptor& type, const void* value, const ObjectEntry* entry = nullptr);

inline bool isWholeObject(const Asn1TObject& object, const ObjectEntry* entry) {
    return object.numocts > 0 &&
           (!asn1data::isResolved(entry, object) || isWhole(*entry->value, object.decoded));
}

inline bool hasWholeFields(const TypeDescriptor& type, const void* record) {
    const auto* table = type.table;
    const ObjectEntry* entry =
        table ? asn1data::findObject(*table->objects, asn1data::typeIdentifier(*table, record)) : nullptr;
    const std::uint32_t bits = asn1data::presenceBits(type, record);
    const bool areWhole =
        std::all_of(type.fields, type.fields + type.fieldCount, [&](const asn1data::FieldDescriptor& field) {
            const bool isAbsent = field.presence == asn1data::Presence::Optional && !(bits >> field.bit & 1);
            return isAbsent || isWhole(*field.type, asn1data::memberAt(record, field.offset), entry);
        });
    if (!areWhole || !table || table->form != asn1data::TableConstraint::Form::OctetString) return areWhole;
    const auto& object = member<Asn1TObject>(record, table->objectOffset);
    return !asn1data::isResolved(entry, object) || isWhole(*entry->value, object.decoded);
}

inline bool hasWholeElements(const TypeDescriptor& type, const void* record, const ObjectEntry* entry) {
    if (type.kind == Kind::List) {
        const auto* node = member<_Asn1RTDList>(record, type.headOffset).head;
        while (node && isWhole(*type.element, node->data, entry))
            node = node->next;
        return !node;
    }
    const auto* element = static_cast<const char*>(asn1data::arrayElements(type, record));
    auto left = member<std::uint32_t>(record, type.headOffset);
    for (; left > 0 && isWhole(*type.element, element); --left)
        element += type.element->size;
    return left == 0;
}

inline bool isWhole(const TypeDescriptor& type, const void* value, const ObjectEntry* entry) {
    switch (type.kind) {
        case Kind::OpenType:
            return static_cast<const ASN1OpenType*>(value)->numocts > 0;
        case Kind::TableOpenType:
            return isWholeObject(*static_cast<const Asn1TObject*>(value), entry);
        case Kind::Sequence:
        case Kind::Set:
            return hasWholeFields(type, value);
        case Kind::Choice: {
            const auto* chosen = asn1data::chosenAlternative(type, value);
            const void* inside = chosen ? asn1data::alternativeValue(type, value, *chosen->type) : nullptr;
            return !inside || isWhole(*chosen->type, inside);
        }
        case Kind::List:
        case Kind::Array:
            return hasWholeElements(type, value, entry);
        default:
            return true;
    }
}

// An arc of 4294967295 has no text that is read again (see str2oid). In base 128 it has three octets of ones.
inline bool mayHaveGreatestArc(std::span<const unsigned char> octets) {
    static constexpr unsigned char kOnes[] = {0xFF, 0xFF, 0xFF};
    return std::search(octets.begin(), octets.end(), std::begin(kOnes), std::end(kOnes)) != octets.end();
}

// Whether a class that holds a value of this type, with identifiers as text, gives its encoding back.
inline bool comesBack(const char* type, std::span<const unsigned char> octets) {
    if (octets.empty() || mayHaveGreatestArc(octets)) return false;
    const TypeDescriptor& descriptor = test::typeNamed(type);
    test::LiveContext context;
    if (xd_setp(context, octets.data(), static_cast<int>(octets.size()), nullptr, nullptr) != RTS_OK)
        return false;
    void* const record = asn1data::newRecord(context, descriptor);
    return asn1data::decode(context, descriptor, record, ASN1EXPL, 0) == RTS_OK &&
           isWhole(descriptor, record);
}

}  // namespace fuzz

#endif
