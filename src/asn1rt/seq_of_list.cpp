#include "asn1rt/seq_of_list.h"

#include <new>
#include <utility>

ASN1CSeqOfListIterator::ASN1CSeqOfListIterator(ASN1CSeqOfList& list, _Asn1RTDListNode* start)
    : pSeqList(&list), nextNode(start), lastNode(nullptr), expectedModCount(list.modCount), stat(RTS_OK) {}

bool ASN1CSeqOfListIterator::isStale() const {
    return expectedModCount != pSeqList->modCount;
}

bool ASN1CSeqOfListIterator::mayStep() {
    stat = isStale() ? RTS_STALE_ITERATOR : nextNode ? RTS_OK : RTS_MISSING_ELEMENT;
    return stat == RTS_OK;
}

bool ASN1CSeqOfListIterator::hasCurrent() {
    stat = isStale() ? RTS_STALE_ITERATOR : lastNode ? RTS_OK : RTS_NO_CURRENT_ELEMENT;
    return stat == RTS_OK;
}

void ASN1CSeqOfListIterator::countOwnChange() {
    pSeqList->countChange();
    lastNode = nullptr;
    expectedModCount = pSeqList->modCount;
}

void* ASN1CSeqOfListIterator::next() {
    if (!mayStep()) return nullptr;
    lastNode = nextNode;
    nextNode = nextNode->next;
    return lastNode->data;
}

void* ASN1CSeqOfListIterator::prev() {
    if (!mayStep()) return nullptr;
    _Asn1RTDListNode* target = lastNode ? nextNode->prev : nextNode;
    if (!target) {
        stat = RTS_MISSING_ELEMENT;
        return nullptr;
    }
    lastNode = nextNode = target;
    return target->data;
}

int ASN1CSeqOfListIterator::remove() {
    if (!hasCurrent()) return stat;
    rtDListRemove(pSeqList->pList, lastNode);
    if (nextNode == lastNode) nextNode = lastNode->next;
    countOwnChange();
    return stat;
}

int ASN1CSeqOfListIterator::set(void* data) {
    if (hasCurrent()) lastNode->data = data;
    return stat;
}

int ASN1CSeqOfListIterator::insert(void* data) {
    stat = isStale() ? RTS_STALE_ITERATOR : RTS_OK;
    if (stat != RTS_OK || !pSeqList->mpContext) return stat;
    if (!rtDListInsertBefore(pSeqList->mpContext, pSeqList->pList, nextNode, data)) stat = RTS_NO_MEMORY;
    countOwnChange();
    return stat;
}

ASN1CSeqOfList::ASN1CSeqOfList(ASN1MessageBufferIF& buffer, _Asn1RTDList& list, bool initialise)
    : ASN1CType(buffer), pList(&list), wasAssigned(1) {
    if (initialise) rtDListInit(pList);
}

ASN1CSeqOfList::ASN1CSeqOfList(ASN1Context& context, _Asn1RTDList& list, bool initialise)
    : ASN1CType(context), pList(&list), wasAssigned(1) {
    if (initialise) rtDListInit(pList);
}

ASN1CSeqOfList::ASN1CSeqOfList(_Asn1RTDList& list, bool initialise) : pList(&list), wasAssigned(1) {
    if (initialise) rtDListInit(pList);
}

ASN1CSeqOfList::ASN1CSeqOfList(ASN1MessageBufferIF& buffer)
    : ASN1CType(buffer), pList(makeList()), wasAssigned(0) {}
ASN1CSeqOfList::ASN1CSeqOfList(ASN1Context& context)
    : ASN1CType(context), pList(makeList()), wasAssigned(0) {}
ASN1CSeqOfList::ASN1CSeqOfList() : pList(makeList()), wasAssigned(0) {}

ASN1CSeqOfList::~ASN1CSeqOfList() {
    if (wasAssigned) return;
    rtDListFreeNodes(mpContext, pList);
    rtMemHeapFreePtr(&mpContext->typeMemHeap, pList);
}

_Asn1RTDList* ASN1CSeqOfList::makeList() {
    void* memory = mpContext ? rtMemHeapAllocZ(&mpContext->typeMemHeap, sizeof(_Asn1RTDList)) : nullptr;
    if (!memory) throw ASN1MessageBuffer::RTLError(RTS_NO_MEMORY);
    return static_cast<_Asn1RTDList*>(memory);
}

ASN1CSeqOfListIterator* ASN1CSeqOfList::makeIterator(_Asn1RTDListNode* start) {
    if (!mpContext) return nullptr;
    void* memory = rtMemHeapAlloc(&mpContext->typeMemHeap, sizeof(ASN1CSeqOfListIterator));
    return memory ? new (memory) ASN1CSeqOfListIterator(*this, start) : nullptr;
}

// The count may wrap: only whether two counts differ is ever asked.
void ASN1CSeqOfList::countChange() {
    modCount = static_cast<std::int32_t>(static_cast<std::uint32_t>(modCount) + 1);
}

void ASN1CSeqOfList::append(void* data) {
    if (!mpContext) return;
    rtDListAppend(mpContext, pList, data);
    countChange();
}

void ASN1CSeqOfList::appendArray(void* base, std::uint32_t count, std::uint32_t elementSize) {
    if (!mpContext) return;
    rtDListAppendArray(mpContext, pList, base, count, elementSize);
    countChange();
}

void ASN1CSeqOfList::appendArrayCopy(const void* base, std::uint32_t byteCount, std::uint32_t elementSize) {
    if (!mpContext) return;
    rtDListAppendArrayCopy(mpContext, pList, base, byteCount, elementSize);
    countChange();
}

void ASN1CSeqOfList::insert(std::uint32_t index, void* data) {
    if (!mpContext) return;
    rtDListInsert(mpContext, pList, index, data);
    countChange();
}

void ASN1CSeqOfList::insertBefore(void* data, _Asn1RTDListNode* node) {
    if (!mpContext) return;
    rtDListInsertBefore(mpContext, pList, node, data);
    countChange();
}

void ASN1CSeqOfList::insertAfter(void* data, _Asn1RTDListNode* node) {
    if (!mpContext) return;
    rtDListInsertAfter(mpContext, pList, node, data);
    countChange();
}

void ASN1CSeqOfList::remove(int index) {
    remove(rtDListFindByIndex(pList, index));
}

void ASN1CSeqOfList::remove(void* data) {
    remove(rtDListFindByData(pList, data));
}

void ASN1CSeqOfList::remove(_Asn1RTDListNode* node) {
    if (!node) return;
    rtDListRemove(pList, node);
    countChange();
}

void ASN1CSeqOfList::clear() {
    if (!mpContext) return;
    rtDListFreeNodes(mpContext, pList);
    countChange();
}

void ASN1CSeqOfList::freeAll() {
    if (!mpContext) return;
    rtDListFreeAll(mpContext, pList);
    countChange();
}

void* ASN1CSeqOfList::set(int index, void* data) {
    _Asn1RTDListNode* node = rtDListFindByIndex(pList, index);
    if (!node) return nullptr;
    countChange();
    return std::exchange(node->data, data);
}

void* ASN1CSeqOfList::get(int index) const {
    const _Asn1RTDListNode* node = rtDListFindByIndex(pList, index);
    return node ? node->data : nullptr;
}

void* ASN1CSeqOfList::getFirst() const {
    return pList->head ? pList->head->data : nullptr;
}

void* ASN1CSeqOfList::getLast() const {
    return pList->tail ? pList->tail->data : nullptr;
}

void* ASN1CSeqOfList::toArray(std::uint32_t elementSize) const {
    return toArray(nullptr, elementSize, 0);
}

void* ASN1CSeqOfList::toArray(void* array, std::uint32_t elementSize, std::uint32_t capacity) const {
    if (!mpContext) return nullptr;
    std::uint32_t copied = rtDListToArray(mpContext, pList, &array, &capacity, elementSize);
    return copied == pList->count ? array : nullptr;
}
