// Reading and writing records by offset; not part of the interface.
#ifndef MIRVANE_ASN1DATA_RECORD_ACCESS_H
#define MIRVANE_ASN1DATA_RECORD_ACCESS_H

#include <cstring>

#include "asn1data/descriptor.h"
#include "asn1data/table_object.h"
#include "asn1rt/list.h"

namespace asn1data {

// Strings that stand inside the record: a count, and the octets right behind it.
struct InlineString {
    std::uint32_t count;
    unsigned char data[1];
};

inline void* memberAt(void* record, std::uint32_t offset) {
    return static_cast<char*>(record) + offset;
}
inline const void* memberAt(const void* record, std::uint32_t offset) {
    return static_cast<const char*>(record) + offset;
}

template <typename T>
T& member(void* record, std::uint32_t offset) {
    return *static_cast<T*>(memberAt(record, offset));
}
template <typename T>
const T& member(const void* record, std::uint32_t offset) {
    return *static_cast<const T*>(memberAt(record, offset));
}

// The word of presence bits is a structure of bit-fields for everybody else.
inline std::uint32_t presenceBits(const TypeDescriptor& type, const void* record) {
    std::uint32_t bits = 0;
    if (type.headOffset != kNoOffset) std::memcpy(&bits, memberAt(record, type.headOffset), sizeof bits);
    return bits;
}

inline void setPresenceBits(const TypeDescriptor& type, void* record, std::uint32_t bits) {
    if (type.headOffset != kNoOffset) std::memcpy(memberAt(record, type.headOffset), &bits, sizeof bits);
}

// The pointer of a CHOICE's union, whichever member was written.
inline void* alternativePointer(const TypeDescriptor& choice, const void* record) {
    void* pointer = nullptr;
    std::memcpy(&pointer, memberAt(record, choice.bodyOffset), sizeof pointer);
    return pointer;
}

inline void setAlternativePointer(const TypeDescriptor& choice, void* record, const void* pointer) {
    std::memcpy(memberAt(record, choice.bodyOffset), &pointer, sizeof pointer);
}

// Types that are held as a pointer to text: in a CHOICE the union's pointer is the text itself.
inline bool isText(const TypeDescriptor& type) {
    return type.kind == Kind::CharString || type.kind == Kind::BigInteger;
}

// The value of the chosen alternative, as engine functions take it; null if it has none.
inline void* alternativeValue(const TypeDescriptor& choice, void* record, const TypeDescriptor& alternative) {
    if (isText(alternative)) return memberAt(record, choice.bodyOffset);
    return alternativePointer(choice, record);
}
inline const void* alternativeValue(const TypeDescriptor& choice, const void* record,
                                    const TypeDescriptor& alternative) {
    return alternativeValue(choice, const_cast<void*>(record), alternative);
}

// The elements of an array, inline or not.
inline void* arrayElements(const TypeDescriptor& array, void* record) {
    if (array.capacity > 0) return memberAt(record, array.bodyOffset);
    return member<void*>(record, array.bodyOffset);
}
inline const void* arrayElements(const TypeDescriptor& array, const void* record) {
    return arrayElements(array, const_cast<void*>(record));
}

inline bool isExtensible(const TypeDescriptor& type) {
    return type.kind == Kind::Sequence && type.bodyOffset != kNoOffset;
}

// The chosen alternative, null if nothing or nonsense is chosen.
inline const FieldDescriptor* chosenAlternative(const TypeDescriptor& choice, const void* record) {
    const auto number = member<std::uint32_t>(record, choice.headOffset);
    return number >= 1 && number <= choice.fieldCount ? &choice.fields[number - 1] : nullptr;
}

// The identifier and object of a constrained record.
inline const ASN1OBJID& typeIdentifier(const TableConstraint& table, const void* record) {
    return member<ASN1OBJID>(record, table.typeOffset);
}

inline bool isResolved(const ObjectEntry* entry, const Asn1TObject& object) {
    return entry && entry->value && object.decoded;
}

inline bool tableValuePresent(const TypeDescriptor& type, const void* record) {
    return !type.table->optional || (presenceBits(type, record) >> type.table->bit & 1);
}

}  // namespace asn1data

#endif
