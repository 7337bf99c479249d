// The freer: gives back what a value points at, as far as it is memory of the heap.
#include <algorithm>
#include <functional>
#include <memory>
#include <new>

#include "asn1data/engine.h"
#include "asn1data/record_access.h"
#include "asn1rt/char_string.h"

namespace asn1data {
namespace {

// The blocks that a heap had when freeing began. A value may also point at literals, at memory of its caller
// or into a message, and two of its pointers may be the same: only a block of the heap is freed, and only
// once. Pointers are compared and never read through.
class HeapBlocks {
  public:
    explicit HeapBlocks(ASN1CTXT* ctxt) : mContext(ctxt) {
        for (auto* block = firstBlock(); block; block = block->next)
            ++mCount;
        // Without memory nothing is freed here: all of it goes with the heap.
        mBlocks.reset(new (std::nothrow) Block[mCount]);
        if (!mBlocks) mCount = 0;
        std::size_t index = 0;
        if (mBlocks) {
            for (auto* block = firstBlock(); block; block = block->next)
                mBlocks[index++] = {block + 1, false};
        }
        std::sort(mBlocks.get(), mBlocks.get() + mCount,
                  [](const Block& a, const Block& b) { return std::less<>()(a.address, b.address); });
    }

    void release(const void* pointer) {
        Block* end = mBlocks.get() + mCount;
        Block* block =
            std::lower_bound(mBlocks.get(), end, pointer, [](const Block& entry, const void* wanted) {
                return std::less<>()(static_cast<const void*>(entry.address), wanted);
            });
        if (block == end || block->address != pointer || block->freed) return;
        block->freed = true;
        rtMemHeapFreePtr(&mContext->typeMemHeap, block->address);
    }

  private:
    struct Block {
        void* address;
        bool freed;
    };

    rtMemBlock* firstBlock() const {
        return mContext->typeMemHeap ? mContext->typeMemHeap->blockList : nullptr;
    }

    ASN1CTXT* mContext;
    std::size_t mCount = 0;
    std::unique_ptr<Block[]> mBlocks;
};

class Freer {
  public:
    explicit Freer(ASN1CTXT* ctxt) : mBlocks(ctxt) {}

    void free(const TypeDescriptor& type, void* value, const ObjectEntry* entry = nullptr);

  private:
    void freeSequence(const TypeDescriptor& type, void* record);
    void freeChoice(const TypeDescriptor& type, void* record);
    void freeList(const TypeDescriptor& type, void* record, const ObjectEntry* entry);
    void freeArray(const TypeDescriptor& type, void* record);
    void freeObject(Asn1TObject& object, const ObjectEntry* entry);
    template <typename FreeElement>
    void freeNodes(_Asn1RTDList& list, FreeElement freeElement);

    HeapBlocks mBlocks;
};

void Freer::free(const TypeDescriptor& type, void* value, const ObjectEntry* entry) {
    switch (type.kind) {
        case Kind::BigInteger:
        case Kind::CharString:
            return mBlocks.release(*static_cast<const char**>(value));
        case Kind::OctetString:
        case Kind::RawContent:
            return mBlocks.release(static_cast<ASN1TDynOctStr*>(value)->data);
        case Kind::BitString:
            return mBlocks.release(static_cast<ASN1TDynBitStr*>(value)->data);
        case Kind::BmpString:
            return mBlocks.release(static_cast<Asn116BitCharString*>(value)->data);
        case Kind::UniversalString:
            return mBlocks.release(static_cast<Asn132BitCharString*>(value)->data);
        case Kind::OpenType:
            return mBlocks.release(static_cast<ASN1OpenType*>(value)->data);
        case Kind::TableOpenType:
            return freeObject(*static_cast<Asn1TObject*>(value), entry);
        case Kind::Sequence:
        case Kind::Set:
            return freeSequence(type, value);
        case Kind::Choice:
            return freeChoice(type, value);
        case Kind::List:
            return freeList(type, value, entry);
        case Kind::Array:
            return freeArray(type, value);
        default:
            return;  // owns nothing
    }
}

// The record's own memory stays in the heap.
void Freer::freeObject(Asn1TObject& object, const ObjectEntry* entry) {
    if (isResolved(entry, object)) free(*entry->value, object.decoded);
    object.decoded = nullptr;
    mBlocks.release(object.data);
}

void Freer::freeSequence(const TypeDescriptor& type, void* record) {
    const ObjectEntry* entry =
        type.table ? findObject(*type.table->objects, typeIdentifier(*type.table, record)) : nullptr;
    const std::uint32_t bits = presenceBits(type, record);
    for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
        const FieldDescriptor& field = type.fields[i];
        if (field.presence == Presence::Optional && !(bits >> field.bit & 1)) continue;
        free(*field.type, memberAt(record, field.offset), entry);
    }
    if (type.table && type.table->form == TableConstraint::Form::OctetString &&
        tableValuePresent(type, record)) {
        freeObject(member<Asn1TObject>(record, type.table->objectOffset), entry);
    }
    if (isExtensible(type)) {
        freeNodes(member<_Asn1RTDList>(record, type.bodyOffset),
                  [this](void* element) { mBlocks.release(static_cast<ASN1OpenType*>(element)->data); });
    }
}

void Freer::freeChoice(const TypeDescriptor& type, void* record) {
    const FieldDescriptor* chosen = chosenAlternative(type, record);
    if (!chosen || chosen->type->kind == Kind::Null) return;
    void* value = alternativeValue(type, record, *chosen->type);
    if (!value) return;
    free(*chosen->type, value);
    if (!isText(*chosen->type)) mBlocks.release(value);
}

template <typename FreeElement>
void Freer::freeNodes(_Asn1RTDList& list, FreeElement freeElement) {
    for (_Asn1RTDListNode* node = list.head; node;) {
        _Asn1RTDListNode* next = node->next;
        if (node->data) freeElement(node->data);
        mBlocks.release(node->data);  // an element behind its own node is no block, and goes with the node
        mBlocks.release(node);
        node = next;
    }
    rtDListInit(&list);
}

void Freer::freeList(const TypeDescriptor& type, void* record, const ObjectEntry* entry) {
    freeNodes(member<_Asn1RTDList>(record, type.headOffset),
              [&](void* element) { free(*type.element, element, entry); });
}

void Freer::freeArray(const TypeDescriptor& type, void* record) {
    std::uint32_t count = member<std::uint32_t>(record, type.headOffset);
    if (type.capacity > 0) count = std::min(count, type.capacity);
    char* elements = static_cast<char*>(arrayElements(type, record));
    for (std::size_t i = 0; elements && i < count; ++i)
        free(*type.element, elements + i * type.element->size);
    if (type.capacity == 0) mBlocks.release(elements);
}

}  // namespace

void freeValue(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value) {
    Freer(ctxt).free(type, value);
}

void releaseRecord(const TypeDescriptor& type, ASN1TPDU& record, void* value) {
    if (record.mpContext && record.mpContext->getRefCount() > 1) freeValue(record.mpContext, type, value);
}

}  // namespace asn1data
