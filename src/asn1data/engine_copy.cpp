// The copier: a target that shares nothing with its source.
#include <algorithm>
#include <cstring>
#include <new>

#include "asn1data/engine.h"
#include "asn1data/record_access.h"
#include "asn1rt/allocate.h"
#include "asn1rt/char_string.h"
#include "asn1rt/copy.h"
#include "asn1rt/object_identifier.h"

namespace asn1data {
namespace {

class Copier {
  public:
    explicit Copier(ASN1CTXT* ctxt) : mContext(ctxt) {}

    void copy(const TypeDescriptor& type, const void* source, void* target,
              const ObjectEntry* entry = nullptr);

  private:
    void copySequence(const TypeDescriptor& type, const void* source, void* target);
    void copyChoice(const TypeDescriptor& type, const void* source, void* target);
    void copyList(const TypeDescriptor& type, const void* source, void* target, const ObjectEntry* entry);
    void copyArray(const TypeDescriptor& type, const void* source, void* target);
    void copyText(const char* source, const char** target);
    void copyObject(const Asn1TObject& source, Asn1TObject* target, const ObjectEntry* entry);
    void* allocateZeroed(std::uint64_t size);

    // The copy functions of the runtime give 0 for memory that fails, and for nothing to copy.
    void check(int result) {
        if (result == 0) throw std::bad_alloc();
    }

    ASN1CTXT* mContext;
};

void* Copier::allocateZeroed(std::uint64_t size) {
    void* memory = asn1rt::allocate(mContext, size);
    if (!memory) throw std::bad_alloc();
    return std::memset(memory, 0, size);
}

void Copier::copyText(const char* source, const char** target) {
    *target = nullptr;
    if (source) check(rtCopyCharStr(mContext, source, target));
}

// Copies as much as the record has room for, whatever its count says.
void copyInlineString(const TypeDescriptor& type, const void* source, void* target) {
    const auto& from = *static_cast<const InlineString*>(source);
    auto& to = *static_cast<InlineString*>(target);
    const std::uint64_t unitsPerOctet = type.kind == Kind::InlineBitString ? 8 : 1;
    to.count = static_cast<std::uint32_t>(std::min<std::uint64_t>(from.count, type.capacity * unitsPerOctet));
    std::memcpy(to.data, from.data, (to.count + unitsPerOctet - 1) / unitsPerOctet);
}

void Copier::copy(const TypeDescriptor& type, const void* source, void* target, const ObjectEntry* entry) {
    switch (type.kind) {
        case Kind::Boolean:
        case Kind::Integer:
        case Kind::Unsigned:
        case Kind::Uint16:
        case Kind::Enumerated:
            std::memcpy(target, source, type.size);
            return;
        case Kind::Null:
            return;
        case Kind::BigInteger:
        case Kind::CharString:
            return copyText(*static_cast<const char* const*>(source), static_cast<const char**>(target));
        case Kind::ObjectIdentifier:
            return check(
                rtCopyOID(mContext, static_cast<const ASN1OBJID*>(source), static_cast<ASN1OBJID*>(target)));
        case Kind::OctetString:
        case Kind::RawContent:
            return check(rtCopyDynOctStr(mContext, static_cast<const ASN1TDynOctStr*>(source),
                                         static_cast<ASN1TDynOctStr*>(target)));
        case Kind::BitString:
            return check(rtCopyDynBitStr(mContext, static_cast<const ASN1TDynBitStr*>(source),
                                         static_cast<ASN1TDynBitStr*>(target)));
        case Kind::InlineOctetString:
        case Kind::InlineBitString:
            return copyInlineString(type, source, target);
        case Kind::BmpString:
            return check(rtCopy16BitCharStr(mContext, static_cast<const Asn116BitCharString*>(source),
                                            static_cast<Asn116BitCharString*>(target)));
        case Kind::UniversalString:
            return check(rtCopy32BitCharStr(mContext, static_cast<const Asn132BitCharString*>(source),
                                            static_cast<Asn132BitCharString*>(target)));
        case Kind::OpenType:
            return check(rtCopyOpenType(mContext, static_cast<const ASN1OpenType*>(source),
                                        static_cast<ASN1OpenType*>(target)));
        case Kind::TableOpenType:
            return copyObject(*static_cast<const Asn1TObject*>(source), static_cast<Asn1TObject*>(target),
                              entry);
        case Kind::Sequence:
        case Kind::Set:
            return copySequence(type, source, target);
        case Kind::Choice:
            return copyChoice(type, source, target);
        case Kind::List:
            return copyList(type, source, target, entry);
        case Kind::Array:
            return copyArray(type, source, target);
    }
}

void Copier::copyObject(const Asn1TObject& source, Asn1TObject* target, const ObjectEntry* entry) {
    void* decoded = nullptr;
    if (isResolved(entry, source)) {
        // What is resolved has an entry. NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
        decoded = allocateZeroed(std::max<std::uint64_t>(entry->value->size, 1));
        copy(*entry->value, source.decoded, decoded);
    }
    check(rtCopyOpenType(mContext, &source, target));
    target->decoded = decoded;
}

void Copier::copySequence(const TypeDescriptor& type, const void* source, void* target) {
    const ObjectEntry* entry =
        type.table ? findObject(*type.table->objects, typeIdentifier(*type.table, source)) : nullptr;
    const std::uint32_t bits = presenceBits(type, source);
    setPresenceBits(type, target, bits);
    for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
        const FieldDescriptor& field = type.fields[i];
        if (field.presence == Presence::Optional && !(bits >> field.bit & 1)) continue;
        copy(*field.type, memberAt(source, field.offset), memberAt(target, field.offset), entry);
    }
    if (type.table && type.table->form == TableConstraint::Form::OctetString &&
        tableValuePresent(type, source)) {
        copyObject(member<Asn1TObject>(source, type.table->objectOffset),
                   &member<Asn1TObject>(target, type.table->objectOffset), entry);
    }
    if (isExtensible(type)) {
        check(rtCopyOpenTypeExt(mContext, &member<_Asn1RTDList>(source, type.bodyOffset),
                                &member<_Asn1RTDList>(target, type.bodyOffset)));
    }
}

void Copier::copyChoice(const TypeDescriptor& type, const void* source, void* target) {
    member<std::uint32_t>(target, type.headOffset) = member<std::uint32_t>(source, type.headOffset);
    setAlternativePointer(type, target, nullptr);
    const FieldDescriptor* chosen = chosenAlternative(type, source);
    if (!chosen || chosen->type->kind == Kind::Null) return;
    const void* value = alternativeValue(type, source, *chosen->type);
    if (!value) return;
    if (!isText(*chosen->type)) setAlternativePointer(type, target, allocateZeroed(chosen->type->size));
    copy(*chosen->type, value, alternativeValue(type, target, *chosen->type));
}

void Copier::copyList(const TypeDescriptor& type, const void* source, void* target,
                      const ObjectEntry* entry) {
    auto& list = member<_Asn1RTDList>(target, type.headOffset);
    rtDListInit(&list);
    for (auto* node = member<_Asn1RTDList>(source, type.headOffset).head; node; node = node->next) {
        void* element = node->data ? allocateZeroed(type.element->size) : nullptr;
        if (!rtDListAppend(mContext, &list, element)) throw std::bad_alloc();
        if (element) copy(*type.element, node->data, element, entry);
    }
}

void Copier::copyArray(const TypeDescriptor& type, const void* source, void* target) {
    std::uint32_t count = member<std::uint32_t>(source, type.headOffset);
    const void* from = arrayElements(type, source);
    if (type.capacity > 0) {
        count = std::min(count, type.capacity);
    } else {
        if (!from) count = 0;
        member<void*>(target, type.bodyOffset) =
            count > 0 ? allocateZeroed(std::uint64_t{count} * type.element->size) : nullptr;
    }
    member<std::uint32_t>(target, type.headOffset) = count;
    void* to = arrayElements(type, target);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t offset = i * type.element->size;
        copy(*type.element, static_cast<const char*>(from) + offset, static_cast<char*>(to) + offset);
    }
}

}  // namespace

void copy(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* source, void* target) {
    if (source != target) Copier(ctxt).copy(type, source, target);
}

void* newRecord(ASN1CTXT* ctxt, const TypeDescriptor& type) {
    void* record = asn1rt::allocate(ctxt, type.size);
    if (!record) throw std::bad_alloc();
    return std::memset(record, 0, type.size);
}

}  // namespace asn1data
