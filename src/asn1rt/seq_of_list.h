// ASN1CSeqOfList, the control class over a list of elements, and its iterator.
//
// The list of a record is used in place and stays the record's; a list that the object made itself it frees
// again, without the elements. Every change is counted, so that an iterator that missed one is caught: it
// then answers RTS_STALE_ITERATOR. That is a guard against use in the wrong order, not against threads.
#ifndef MIRVANE_ASN1RT_SEQ_OF_LIST_H
#define MIRVANE_ASN1RT_SEQ_OF_LIST_H

#include <cstdint>

#include "asn1rt/control.h"
#include "asn1rt/list.h"
#include "asn1rt/shared_context.h"

// The value record of a top-level SEQUENCE OF or SET OF. Starts empty.
struct ASN1TPDUSeqOfList : _Asn1RTDList, ASN1TPDU {
    ASN1TPDUSeqOfList() : _Asn1RTDList{}, ASN1TPDU{} {}
};

class ASN1CSeqOfList;

// Stands between two elements. Lives on the typeMemHeap of the list's context and is not freed by itself; it
// must not be used after the list object is gone.
class ASN1CSeqOfListIterator {
  public:
    // The element in front, over which the iterator then moves; null at the end of the list
    // (RTS_MISSING_ELEMENT) and after a foreign change (RTS_STALE_ITERATOR).
    void* next();

    // The element behind, or the one that the iterator was made at if it has not moved yet. Null as with
    // next(), and with RTS_MISSING_ELEMENT in front of the first element, where the iterator stays. Once
    // next() gave the last element, this gives null as well.
    void* prev();

    // Unlinks the element that next() or prev() gave last. 0, RTS_STALE_ITERATOR, or RTS_NO_CURRENT_ELEMENT.
    int remove();

    // Puts another pointer in its place, which counts as no change of the list. Result as remove().
    int set(void* data);

    // Inserts in front of what next() would give; there is no current element then. 0, RTS_STALE_ITERATOR, or
    // RTS_NO_MEMORY.
    int insert(void* data);

    // The status of the last step, 0 if it succeeded.
    int getStatus() const { return stat; }

  private:
    friend class ASN1CSeqOfList;
    ASN1CSeqOfListIterator(ASN1CSeqOfList& list, _Asn1RTDListNode* start);

    bool isStale() const;
    bool mayStep();
    bool hasCurrent();
    void countOwnChange();

    ASN1CSeqOfList* pSeqList;
    _Asn1RTDListNode* nextNode;
    _Asn1RTDListNode* lastNode;
    std::int32_t expectedModCount;
    std::int32_t stat;
};

class ASN1CSeqOfList : public ASN1CType {
  public:
    // Each list source comes with three contexts: that of a message buffer, a given one, and a new one.
    //
    // A list in place, emptied first (nothing is freed) if `initialise` is set.
    ASN1CSeqOfList(ASN1MessageBufferIF& buffer, _Asn1RTDList& list, bool initialise);
    ASN1CSeqOfList(ASN1Context& context, _Asn1RTDList& list, bool initialise);
    ASN1CSeqOfList(_Asn1RTDList& list, bool initialise);
    // The list of a record, in place and with its content.
    ASN1CSeqOfList(ASN1MessageBufferIF& buffer, ASN1TSeqOfList& list) : ASN1CSeqOfList(buffer, list, false) {}
    ASN1CSeqOfList(ASN1Context& context, ASN1TSeqOfList& list) : ASN1CSeqOfList(context, list, false) {}
    explicit ASN1CSeqOfList(ASN1TSeqOfList& list) : ASN1CSeqOfList(list, false) {}
    ASN1CSeqOfList(ASN1MessageBufferIF& buffer, ASN1TPDUSeqOfList& list)
        : ASN1CSeqOfList(buffer, list, false) {}
    ASN1CSeqOfList(ASN1Context& context, ASN1TPDUSeqOfList& list) : ASN1CSeqOfList(context, list, false) {}
    explicit ASN1CSeqOfList(ASN1TPDUSeqOfList& list) : ASN1CSeqOfList(list, false) {}
    // A new list of the object's own. Throws ASN1MessageBuffer::RTLError if there is no memory for it.
    explicit ASN1CSeqOfList(ASN1MessageBufferIF& buffer);
    explicit ASN1CSeqOfList(ASN1Context& context);
    ASN1CSeqOfList();

    ASN1CSeqOfList(const ASN1CSeqOfList&) = delete;
    ~ASN1CSeqOfList() override;

    // Changes, see the rtDList function of the same name. An element that memory fails for is left out
    // without a word; size() tells. Elements are pointers and stay the caller's, but for those that
    // appendArrayCopy makes.
    void append(void* data);
    void appendArray(void* base, std::uint32_t count, std::uint32_t elementSize);
    void appendArrayCopy(const void* base, std::uint32_t byteCount, std::uint32_t elementSize);
    void insert(std::uint32_t index, void* data);
    void insertBefore(void* data, _Asn1RTDListNode* node);
    void insertAfter(void* data, _Asn1RTDListNode* node);

    // Unlink one node and free nothing. Without such a node nothing happens.
    void remove(int index);
    void remove(void* data);
    void remove(_Asn1RTDListNode* node);

    // Empties the list, keeping the elements, or freeing them as well: see rtDListFreeNodes and
    // rtDListFreeAll.
    void clear();
    void freeAll();

    // Puts another pointer at `index` and gives the old one back, null if there is no such node. An element
    // that was allocated with its node goes when the node goes.
    void* set(int index, void* data);

    // The pointer at an index as rtDListFindByIndex takes it, the first and the last; null if there is none.
    void* get(int index) const;
    void* getFirst() const;
    void* getLast() const;
    // The index of the first node that holds this pointer, or -1.
    int indexOf(const void* data) const { return rtDListFindIndexByData(pList, data); }
    std::uint32_t size() const { return pList->count; }
    bool isEmpty() const { return pList->count == 0; }

    // The elements side by side, `elementSize` octets of each, in a new array from typeMemHeap. Null for an
    // empty list and when memory fails.
    void* toArray(std::uint32_t elementSize) const;
    // The same in the given array, if it has room for that many elements, else in a new one.
    void* toArray(void* array, std::uint32_t elementSize, std::uint32_t capacity) const;

    // New iterators in front of the first element, at the last one (for prev()), and at the element that this
    // pointer is, or at no element if it isn't in the list. Null when memory fails.
    ASN1CSeqOfListIterator* iterator() { return makeIterator(pList->head); }
    ASN1CSeqOfListIterator* iteratorFromLast() { return makeIterator(pList->tail); }
    ASN1CSeqOfListIterator* iteratorFrom(const void* data) {
        return makeIterator(rtDListFindByData(pList, data));
    }

  protected:
    _Asn1RTDList* pList;
    std::int32_t modCount = 0;
    std::uint8_t wasAssigned;  // 1: the list is a record's and not freed here

  private:
    friend class ASN1CSeqOfListIterator;

    static _Asn1RTDList* prepared(_Asn1RTDList& list, bool initialise);
    _Asn1RTDList* makeList();
    ASN1CSeqOfListIterator* makeIterator(_Asn1RTDListNode* start);
    void countChange();
};

#endif
