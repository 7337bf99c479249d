#include "asn1rt/slist.h"

#include <cstdlib>

#include "asn1rt/context.h"

namespace {

rtSListNode* newNode(ASN1CTXT* owner) {
    void* memory =
        owner ? rtMemHeapAlloc(&owner->typeMemHeap, sizeof(rtSListNode)) : std::malloc(sizeof(rtSListNode));
    return static_cast<rtSListNode*>(memory);
}

void freeNode(ASN1CTXT* owner, rtSListNode* node) {
    if (owner) {
        rtMemHeapFreePtr(&owner->typeMemHeap, node);
    } else {
        std::free(node);
    }
}

}  // namespace

extern "C" {

void rtSListInitEx(ASN1CTXT* ctxt, rtSList* list) {
    if (list) *list = {0, nullptr, nullptr, ctxt};
}

rtSListNode* rtSListAppend(rtSList* list, void* data) {
    rtSListNode* node = newNode(list->owner);
    if (!node) return nullptr;
    *node = {data, nullptr};
    (list->tail ? list->tail->next : list->head) = node;
    list->tail = node;
    ++list->count;
    return node;
}

void rtSListFree(rtSList* list) {
    for (rtSListNode* node = list->head; node;) {
        rtSListNode* next = node->next;
        freeNode(list->owner, node);
        node = next;
    }
    *list = {};
}

}  // extern "C"
