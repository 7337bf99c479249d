// The doubly linked list of pointers that holds SEQUENCE OF and SET OF values.
//
// Nodes live on the typeMemHeap of the context that they were made with and die with it at the latest. A node
// and its value may be one allocation, the value directly behind the node; wherever `data` points exactly
// there, the value is never freed apart from its node. Functions that take a context need a live one. A list
// belongs to one thread at a time, with its context.
#ifndef MIRVANE_ASN1RT_LIST_H
#define MIRVANE_ASN1RT_LIST_H

#include <cstdint>

#include "asn1rt/context.h"

struct _Asn1RTDListNode {
    void* data;
    _Asn1RTDListNode* next;
    _Asn1RTDListNode* prev;
};

struct _Asn1RTDList {
    std::uint32_t count;
    _Asn1RTDListNode* head;
    _Asn1RTDListNode* tail;
};

// The form of a list that is a field of a record.
struct ASN1TSeqOfList : _Asn1RTDList {};

extern "C" {

// Makes the list empty without freeing anything. A null list is passed by.
MIRVANE_API void rtDListInit(_Asn1RTDList* list);

// Appends a node that holds `data`. The node, or null when memory fails; the list is then as it was.
MIRVANE_API _Asn1RTDListNode* rtDListAppend(ASN1CTXT* ctxt, _Asn1RTDList* list, void* data);

// Appends the node that stands directly before `value`; allocates nothing and can't fail. Returns the node.
MIRVANE_API _Asn1RTDListNode* rtDListAppendNode(ASN1CTXT* ctxt, _Asn1RTDList* list, void* value);

// Inserts a node so that it becomes number `index`, counted from 0. The node, or null for an index above the
// count and when memory fails.
MIRVANE_API _Asn1RTDListNode* rtDListInsert(ASN1CTXT* ctxt, _Asn1RTDList* list, std::uint32_t index,
                                            void* data);

// Inserts before `node`, with null at the end of the list. The new node, or null when memory fails.
MIRVANE_API _Asn1RTDListNode* rtDListInsertBefore(ASN1CTXT* ctxt, _Asn1RTDList* list, _Asn1RTDListNode* node,
                                                  void* data);

// Inserts after `node`, with null at the front of the list. The new node, or null when memory fails.
MIRVANE_API _Asn1RTDListNode* rtDListInsertAfter(ASN1CTXT* ctxt, _Asn1RTDList* list, _Asn1RTDListNode* node,
                                                 void* data);

// Node number `index`, counted from 0, found by walking; null for an index not below the count. A negative
// index means the head, as 0 does.
MIRVANE_API _Asn1RTDListNode* rtDListFindByIndex(const _Asn1RTDList* list, int index);

// The first node that holds this very pointer, and its index; null and -1 if there is none. What `data`
// points at is not looked at.
MIRVANE_API _Asn1RTDListNode* rtDListFindByData(const _Asn1RTDList* list, const void* data);
MIRVANE_API int rtDListFindIndexByData(const _Asn1RTDList* list, const void* data);

// Unlinks `node`, which must be in the list, and leaves it as it is: it is not freed.
MIRVANE_API void rtDListRemove(_Asn1RTDList* list, _Asn1RTDListNode* node);

// Makes the list empty and frees its nodes but not the values. A node with its value directly behind it is
// left to the context, since freeing it would free the value.
MIRVANE_API void rtDListFreeNodes(ASN1CTXT* ctxt, _Asn1RTDList* list);

// Makes the list empty and frees nodes and values. The values must be blocks of a heap; what they point at
// stays.
MIRVANE_API void rtDListFreeAll(ASN1CTXT* ctxt, _Asn1RTDList* list);

// Copies the first `elementSize` octets of each value, in order, into `*array`. With `capacity`, a count of
// elements, below that of the list, a new array from typeMemHeap comes to `*array` first and its count to
// `*capacity`; without `capacity` the array must be large enough. The count of elements, or 0 with both
// arguments as they were when the new array does not fit memory.
MIRVANE_API std::uint32_t rtDListToArray(ASN1CTXT* ctxt, const _Asn1RTDList* list, void** array,
                                         std::uint32_t* capacity, std::uint32_t elementSize);

// Appends a node for each of `count` elements; the nodes point into the array, which must outlive the list.
// An element whose node can't be had is left out.
MIRVANE_API void rtDListAppendArray(ASN1CTXT* ctxt, _Asn1RTDList* list, void* base, std::uint32_t count,
                                    std::uint32_t elementSize);

// Appends copies of the elements in `byteCount` octets at `base`: unlike rtDListAppendArray this counts
// octets. A last element that is cut short is filled up with zeros. An element that memory fails for is left
// out, and an element size of 0 appends nothing.
MIRVANE_API void rtDListAppendArrayCopy(ASN1CTXT* ctxt, _Asn1RTDList* list, const void* base,
                                        std::uint32_t byteCount, std::uint32_t elementSize);

// Frees a list of ASN1OpenType values with the octets that they hold, which must be blocks of a heap.
MIRVANE_API void rtMemFreeOpenSeqExt(ASN1CTXT* ctxt, _Asn1RTDList* list);

}  // extern "C"

#endif
