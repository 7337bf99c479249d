#include "asn1rt/list.h"

#include <algorithm>
#include <cstring>

#include "asn1rt/allocate.h"
#include "asn1rt/value_types.h"

namespace {

// The forms with node and value in one allocation have the value at this place.
void* placeBehind(_Asn1RTDListNode* node) {
    return node + 1;
}

_Asn1RTDListNode* newNode(ASN1CTXT* ctxt, void* data) {
    auto* node = static_cast<_Asn1RTDListNode*>(rtMemHeapAlloc(&ctxt->typeMemHeap, sizeof(_Asn1RTDListNode)));
    if (node) node->data = data;
    return node;
}

// Links `node` between two neighbours, of which null stands for an end of the list.
_Asn1RTDListNode* link(_Asn1RTDList* list, _Asn1RTDListNode* prev, _Asn1RTDListNode* node,
                       _Asn1RTDListNode* next) {
    node->prev = prev;
    node->next = next;
    (prev ? prev->next : list->head) = node;
    (next ? next->prev : list->tail) = node;
    ++list->count;
    return node;
}

// Makes the list empty and hands each of its former nodes to `dispose`.
template <class Disposer>
void drain(_Asn1RTDList* list, Disposer dispose) {
    _Asn1RTDListNode* node = list->head;
    rtDListInit(list);
    while (node) {
        _Asn1RTDListNode* next = node->next;
        dispose(node);
        node = next;
    }
}

// Appends a copy of `used` octets, filled up with zeros to `elementSize`; nothing when memory fails.
void appendCopy(ASN1CTXT* ctxt, _Asn1RTDList* list, const unsigned char* source, std::uint32_t used,
                std::uint32_t elementSize) {
    unsigned char* copy = asn1rt::allocateOctets(ctxt, elementSize);
    if (!copy) return;
    std::memcpy(copy, source, used);
    std::fill(copy + used, copy + elementSize, static_cast<unsigned char>(0));
    if (!rtDListAppend(ctxt, list, copy)) rtMemHeapFreePtr(&ctxt->typeMemHeap, copy);
}

}  // namespace

extern "C" {

void rtDListInit(_Asn1RTDList* list) {
    if (list) *list = {0, nullptr, nullptr};
}

_Asn1RTDListNode* rtDListAppend(ASN1CTXT* ctxt, _Asn1RTDList* list, void* data) {
    return rtDListInsertBefore(ctxt, list, nullptr, data);
}

_Asn1RTDListNode* rtDListAppendNode(ASN1CTXT*, _Asn1RTDList* list, void* value) {
    _Asn1RTDListNode* node = static_cast<_Asn1RTDListNode*>(value) - 1;
    node->data = value;
    return link(list, list->tail, node, nullptr);
}

_Asn1RTDListNode* rtDListInsert(ASN1CTXT* ctxt, _Asn1RTDList* list, std::uint32_t index, void* data) {
    if (index > list->count) return nullptr;
    if (index == list->count) return rtDListAppend(ctxt, list, data);
    _Asn1RTDListNode* successor = list->head;
    for (; index > 0; --index)
        successor = successor->next;
    return rtDListInsertBefore(ctxt, list, successor, data);
}

_Asn1RTDListNode* rtDListInsertBefore(ASN1CTXT* ctxt, _Asn1RTDList* list, _Asn1RTDListNode* node,
                                      void* data) {
    _Asn1RTDListNode* created = newNode(ctxt, data);
    if (!created) return nullptr;
    return link(list, node ? node->prev : list->tail, created, node);
}

_Asn1RTDListNode* rtDListInsertAfter(ASN1CTXT* ctxt, _Asn1RTDList* list, _Asn1RTDListNode* node, void* data) {
    return rtDListInsertBefore(ctxt, list, node ? node->next : list->head, data);
}

_Asn1RTDListNode* rtDListFindByIndex(const _Asn1RTDList* list, int index) {
    if (index > 0 && static_cast<std::uint32_t>(index) >= list->count) return nullptr;
    _Asn1RTDListNode* node = list->head;
    for (; index > 0; --index)
        node = node->next;
    return node;
}

_Asn1RTDListNode* rtDListFindByData(const _Asn1RTDList* list, const void* data) {
    _Asn1RTDListNode* node = list->head;
    while (node && node->data != data)
        node = node->next;
    return node;
}

int rtDListFindIndexByData(const _Asn1RTDList* list, const void* data) {
    int index = 0;
    for (const _Asn1RTDListNode* node = list->head; node; node = node->next, ++index) {
        if (node->data == data) return index;
    }
    return -1;
}

void rtDListRemove(_Asn1RTDList* list, _Asn1RTDListNode* node) {
    (node->prev ? node->prev->next : list->head) = node->next;
    (node->next ? node->next->prev : list->tail) = node->prev;
    --list->count;
}

void rtDListFreeNodes(ASN1CTXT* ctxt, _Asn1RTDList* list) {
    drain(list, [ctxt](_Asn1RTDListNode* node) {
        if (node->data != placeBehind(node)) rtMemHeapFreePtr(&ctxt->typeMemHeap, node);
    });
}

void rtDListFreeAll(ASN1CTXT* ctxt, _Asn1RTDList* list) {
    drain(list, [ctxt](_Asn1RTDListNode* node) {
        if (node->data != placeBehind(node)) rtMemHeapFreePtr(&ctxt->typeMemHeap, node->data);
        rtMemHeapFreePtr(&ctxt->typeMemHeap, node);
    });
}

std::uint32_t rtDListToArray(ASN1CTXT* ctxt, const _Asn1RTDList* list, void** array, std::uint32_t* capacity,
                             std::uint32_t elementSize) {
    if (capacity && *capacity < list->count) {
        void* larger = asn1rt::allocate(ctxt, std::uint64_t{list->count} * elementSize);
        if (!larger) return 0;
        *array = larger;
        *capacity = list->count;
    }
    auto* target = static_cast<unsigned char*>(*array);
    for (const _Asn1RTDListNode* node = list->head; node; node = node->next, target += elementSize) {
        std::memcpy(target, node->data, elementSize);
    }
    return list->count;
}

void rtDListAppendArray(ASN1CTXT* ctxt, _Asn1RTDList* list, void* base, std::uint32_t count,
                        std::uint32_t elementSize) {
    auto* element = static_cast<unsigned char*>(base);
    for (std::uint32_t i = 0; i < count; ++i, element += elementSize)
        rtDListAppend(ctxt, list, element);
}

void rtDListAppendArrayCopy(ASN1CTXT* ctxt, _Asn1RTDList* list, const void* base, std::uint32_t byteCount,
                            std::uint32_t elementSize) {
    if (elementSize == 0) return;
    const auto* source = static_cast<const unsigned char*>(base);
    for (std::uint64_t offset = 0; offset < byteCount; offset += elementSize) {
        auto left = static_cast<std::uint32_t>(byteCount - offset);
        appendCopy(ctxt, list, source + offset, std::min(left, elementSize), elementSize);
    }
}

void rtMemFreeOpenSeqExt(ASN1CTXT* ctxt, _Asn1RTDList* list) {
    for (const _Asn1RTDListNode* node = list->head; node; node = node->next) {
        const auto* value = static_cast<const ASN1OpenType*>(node->data);
        if (value) rtMemHeapFreePtr(&ctxt->typeMemHeap, const_cast<unsigned char*>(value->data));
    }
    rtDListFreeAll(ctxt, list);
}

}  // extern "C"
