// Random valid records of any type, by descriptor.
#ifndef MIRVANE_TESTS_SUPPORT_RANDOM_RECORD_H
#define MIRVANE_TESTS_SUPPORT_RANDOM_RECORD_H

#include <algorithm>
#include <cstring>
#include <new>
#include <random>
#include <string>

#include "asn1data/engine.h"
#include "asn1data/record_access.h"
#include "asn1rt/char_string.h"
#include "asn1rt/universal_tags.h"

namespace test {

class RandomRecord {
  public:
    RandomRecord(ASN1CTXT* ctxt, unsigned seed) : mContext(ctxt), mRandom(seed) {}

    // Fills a zeroed record.
    void fill(const asn1data::TypeDescriptor& type, void* value);

    // Records of table values made so far: freeing leaves the memory of the record itself.
    std::size_t resolved() const { return mResolved; }

  private:
    using Type = asn1data::TypeDescriptor;
    using Kind = asn1data::Kind;

    static constexpr int kDeep = 6;

    std::uint32_t below(std::uint32_t bound) { return mRandom() % bound; }
    bool coin() { return mDepth < kDeep && below(2) == 0; }

    unsigned char* octets(std::uint32_t count) {
        auto* data =
            static_cast<unsigned char*>(rtMemHeapAlloc(&mContext->typeMemHeap, static_cast<int>(count)));
        for (std::uint32_t i = 0; i < count; ++i)
            data[i] = static_cast<unsigned char>(mRandom());
        return data;
    }

    // A size that the type's bounds allow.
    std::uint32_t size(const Type& type, std::uint32_t usual) {
        if (!type.hasBounds) return below(usual);
        if (type.endsOnly) return below(2) ? type.lowerBound : type.upperBound;
        const std::uint32_t most = std::min(type.upperBound, type.lowerBound + usual);
        return type.lowerBound + below(most - type.lowerBound + 1);
    }

    const char* text(const std::string& content) {
        auto* copy = octets(static_cast<std::uint32_t>(content.size() + 1));
        std::memcpy(copy, content.c_str(), content.size() + 1);
        return reinterpret_cast<const char*>(copy);
    }

    const char* charString(const Type& type) {
        if (type.tag == TAG_GENERALIZED_TIME) return text("20240229123456Z");
        if (type.tag == TAG_UTC_TIME) return text("240229123456Z");
        std::string content(size(type, 12), '7');
        return text(content);
    }

    void identifier(ASN1OBJID& id) {
        id.numids = 3 + below(5);
        id.subid[0] = 2;
        for (std::uint32_t i = 1; i < id.numids; ++i)
            id.subid[i] = mRandom() >> below(32);
        id.subid[1] &= 0xFFFF;
    }

    // A whole element: an INTEGER.
    ASN1OpenType element() {
        auto* data = octets(3);
        data[0] = TAG_INTEGER;
        data[1] = 1;
        return {3, data};
    }

    void fields(const Type& type, void* record);
    void alternative(const Type& type, void* record);
    void list(const Type& type, void* record);
    void array(const Type& type, void* record);
    void table(const Type& type, void* record);
    void object(asn1data::Asn1TObject& object, const asn1data::ObjectEntry* entry);
    bool isLeaf(const Type& type) const { return !type.fields && !type.element; }

    ASN1CTXT* mContext;
    std::mt19937 mRandom;
    int mDepth = 0;
    std::size_t mResolved = 0;
    const asn1data::ObjectEntry* mEntry = nullptr;
};

inline void RandomRecord::fill(const Type& type, void* value) {
    ++mDepth;
    switch (type.kind) {
        case Kind::Boolean:
            *static_cast<unsigned char*>(value) = below(2) ? 0xFF : 0;
            break;
        case Kind::Integer:
            *static_cast<std::int32_t*>(value) = static_cast<std::int32_t>(mRandom() >> below(32));
            if (type.hasBounds) *static_cast<std::uint32_t*>(value) = size(type, 1000);
            break;
        case Kind::Unsigned:
            *static_cast<std::uint32_t*>(value) = type.hasBounds ? size(type, 1000) : mRandom() >> below(32);
            break;
        case Kind::Uint16:
            *static_cast<std::uint16_t*>(value) =
                static_cast<std::uint16_t>(type.hasBounds ? size(type, 900) : mRandom());
            break;
        case Kind::BigInteger:
            *static_cast<const char**>(value) = text(below(2) ? "0x0123456789abcdef0123456789" : "0x80ff");
            break;
        case Kind::Enumerated:
            *static_cast<std::uint32_t*>(value) = below(std::min(type.upperBound, 100u));
            break;
        case Kind::Null:
            break;
        case Kind::ObjectIdentifier:
            identifier(*static_cast<ASN1OBJID*>(value));
            break;
        case Kind::RawContent:
            *static_cast<ASN1OpenType*>(value) = element();
            break;
        case Kind::OctetString: {
            const std::uint32_t count = size(type, 20);
            *static_cast<ASN1TDynOctStr*>(value) = {count, octets(count)};
            break;
        }
        case Kind::BitString: {
            const std::uint32_t count = type.hasBounds ? size(type, 64) : 8 * below(9);
            *static_cast<ASN1TDynBitStr*>(value) = {count, octets((count + 7) / 8)};
            break;
        }
        case Kind::InlineOctetString: {
            auto& string = *static_cast<asn1data::InlineString*>(value);
            string.count = size(type, type.capacity);
            for (std::uint32_t i = 0; i < string.count; ++i)
                string.data[i] = static_cast<unsigned char>(mRandom());
            break;
        }
        case Kind::InlineBitString: {
            auto& string = *static_cast<asn1data::InlineString*>(value);
            string.count = type.upperBound;
            std::memset(string.data, 0, type.capacity);
            string.data[0] = static_cast<unsigned char>(mRandom());
            break;
        }
        case Kind::CharString:
            *static_cast<const char**>(value) = charString(type);
            break;
        case Kind::BmpString: {
            const std::uint32_t count = size(type, 10);
            *static_cast<Asn116BitCharString*>(value) = {count,
                                                         reinterpret_cast<std::uint16_t*>(octets(2 * count))};
            break;
        }
        case Kind::UniversalString: {
            const std::uint32_t count = size(type, 10);
            *static_cast<Asn132BitCharString*>(value) = {count,
                                                         reinterpret_cast<std::uint32_t*>(octets(4 * count))};
            break;
        }
        case Kind::OpenType:
            *static_cast<ASN1OpenType*>(value) = element();
            if (type.tag != asn1data::kNoTag) {
                const_cast<unsigned char*>(static_cast<ASN1OpenType*>(value)->data)[0] = 0x30;
                const_cast<unsigned char*>(static_cast<ASN1OpenType*>(value)->data)[1] = 0;
                static_cast<ASN1OpenType*>(value)->numocts = 2;
            }
            break;
        case Kind::TableOpenType:
            object(*static_cast<asn1data::Asn1TObject*>(value), mEntry);
            break;
        case Kind::Sequence:
        case Kind::Set:
            fields(type, value);
            break;
        case Kind::Choice:
            alternative(type, value);
            break;
        case Kind::List:
            list(type, value);
            break;
        case Kind::Array:
            array(type, value);
            break;
    }
    --mDepth;
}

inline void RandomRecord::object(asn1data::Asn1TObject& object, const asn1data::ObjectEntry* entry) {
    static_cast<ASN1OpenType&>(object) = element();
    if (!entry || !entry->value) return;
    object.decoded = rtMemHeapAllocZ(&mContext->typeMemHeap, static_cast<int>(entry->value->size));
    ++mResolved;
    fill(*entry->value, object.decoded);
}

// A known identifier while there is depth for its value, and an unknown one below.
inline void RandomRecord::table(const Type& type, void* record) {
    const asn1data::ObjectSet& objects = *type.table->objects;
    mEntry = nullptr;
    if (objects.count == 0 || mDepth >= kDeep || below(2)) return;
    mEntry = &objects.entries[below(objects.count)];
    asn1data::member<ASN1OBJID>(record, type.table->typeOffset) = *mEntry->id;
}

inline void RandomRecord::fields(const Type& type, void* record) {
    std::uint32_t bits = 0;
    const asn1data::ObjectEntry* entry = nullptr;
    for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
        const asn1data::FieldDescriptor& field = type.fields[i];
        void* value = asn1data::memberAt(record, field.offset);
        if (field.presence == asn1data::Presence::Optional) {
            if (!coin()) continue;
            bits |= 1u << field.bit;
        }
        mEntry = entry;
        fill(*field.type, value);
        if (type.table && field.offset == type.table->typeOffset) {
            table(type, record);
            entry = mEntry;
        }
        if (type.table && field.offset == type.table->octetsOffset) {
            object(asn1data::member<asn1data::Asn1TObject>(record, type.table->objectOffset), entry);
        }
    }
    mEntry = nullptr;
    asn1data::setPresenceBits(type, record, bits);
}

inline void RandomRecord::alternative(const Type& type, void* record) {
    std::uint32_t chosen = below(type.fieldCount);
    if (mDepth >= kDeep) {
        // Something that ends here, if there is such an alternative.
        for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
            if (isLeaf(*type.fields[i].type)) chosen = i;
        }
    }
    asn1data::member<std::uint32_t>(record, type.headOffset) = chosen + 1;
    const Type& inner = *type.fields[chosen].type;
    if (inner.kind == Kind::Null) return;
    if (!asn1data::isText(inner)) {
        asn1data::setAlternativePointer(
            type, record, rtMemHeapAllocZ(&mContext->typeMemHeap, static_cast<int>(inner.size)));
    }
    fill(inner, asn1data::alternativeValue(type, record, inner));
}

inline void RandomRecord::list(const Type& type, void* record) {
    auto& list = asn1data::member<_Asn1RTDList>(record, type.headOffset);
    const std::uint32_t least = type.hasBounds ? type.lowerBound : 0;
    const std::uint32_t count = mDepth >= kDeep ? least : std::max(least, below(4));
    const asn1data::ObjectEntry* entry = mEntry;
    for (std::uint32_t i = 0; i < count; ++i) {
        void* element = rtMemHeapAllocZ(&mContext->typeMemHeap, static_cast<int>(type.element->size));
        rtDListAppend(mContext, &list, element);
        mEntry = entry;
        fill(*type.element, element);
    }
}

inline void RandomRecord::array(const Type& type, void* record) {
    const std::uint32_t count = size(type, 4);
    asn1data::member<std::uint32_t>(record, type.headOffset) = count;
    if (type.capacity == 0) {
        asn1data::member<void*>(record, type.bodyOffset) =
            rtMemHeapAllocZ(&mContext->typeMemHeap, static_cast<int>(count * type.element->size));
    }
    auto* elements = static_cast<char*>(asn1data::arrayElements(type, record));
    for (std::uint32_t i = 0; i < count; ++i)
        fill(*type.element, elements + i * type.element->size);
}

}  // namespace test

#endif
