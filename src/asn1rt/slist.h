// A singly linked list of pointers, for the runtime's own use: the error parameters of a context, and the
// element positions that the DER sort of a SET OF works on.
#ifndef MIRVANE_ASN1RT_SLIST_H
#define MIRVANE_ASN1RT_SLIST_H

#include <cstdint>

#include "asn1rt/export.h"

struct ASN1CTXT;

struct rtSListNode {
    void* data;  // not owned
    rtSListNode* next;
};

struct rtSList {
    std::uint32_t count;
    rtSListNode* head;
    rtSListNode* tail;
    ASN1CTXT* owner;  // nodes come from its typeMemHeap; null: from the C library
};

extern "C" {

// Makes the list empty without freeing anything, and sets its owner. A null list is passed by.
MIRVANE_API void rtSListInitEx(ASN1CTXT* ctxt, rtSList* list);

// Appends a node that holds `data`, from the owner's typeMemHeap, or from the C library without an owner. The
// new node, or null when memory fails.
MIRVANE_API rtSListNode* rtSListAppend(rtSList* list, void* data);

// Frees the nodes, not what they hold, and zeroes the list, its owner included.
MIRVANE_API void rtSListFree(rtSList* list);

}  // extern "C"

#endif
