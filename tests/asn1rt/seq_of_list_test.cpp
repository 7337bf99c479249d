#include "asn1rt/seq_of_list.h"

#include <memory>
#include <vector>

#include "runtime_test.h"

namespace {

using Ints = std::vector<int>;

class SeqOfListTest : public ::testing::Test {
  protected:
    SeqOfListTest() : list(buffer) {
        for (int i = 0; i < 3; ++i)
            list.append(&values[i]);
    }

    Ints content() {
        Ints result;
        for (auto* node = firstNode(); node; node = node->next)
            result.push_back(*static_cast<int*>(node->data));
        EXPECT_EQ(list.size(), result.size());
        return result;
    }

    _Asn1RTDListNode* firstNode() { return list.nodes()->head; }

    static int valueOf(void* element) { return element ? *static_cast<int*>(element) : -1; }

    struct OpenList : ASN1CSeqOfList {
        using ASN1CSeqOfList::ASN1CSeqOfList;
        _Asn1RTDList* nodes() { return pList; }
        int changes() const { return modCount; }
    };

    ASN1BEREncodeBuffer buffer;
    OpenList list;
    int values[5] = {0, 1, 2, 3, 4};
};

TEST_F(SeqOfListTest, IteratorWalksBothWays) {
    auto* iterator = list.iterator();
    EXPECT_EQ(valueOf(iterator->next()), 0);
    EXPECT_EQ(valueOf(iterator->next()), 1);
    EXPECT_EQ(valueOf(iterator->prev()), 1);
    EXPECT_EQ(valueOf(iterator->prev()), 0);
    EXPECT_EQ(iterator->prev(), nullptr) << "a step before the first element stays there";
    EXPECT_EQ(iterator->getStatus(), RTS_MISSING_ELEMENT);
    EXPECT_EQ(valueOf(iterator->next()), 0);
    EXPECT_EQ(iterator->getStatus(), RTS_OK);
    iterator = list.iteratorFromLast();
    EXPECT_EQ(valueOf(iterator->prev()), 2);
    EXPECT_EQ(valueOf(iterator->prev()), 1);
    EXPECT_EQ(valueOf(iterator->next()), 1);
    EXPECT_EQ(valueOf(iterator->next()), 2);
    for (const bool forwards : {true, false}) {
        EXPECT_EQ(forwards ? iterator->next() : iterator->prev(), nullptr) << "behind the last: no way back";
        EXPECT_EQ(iterator->getStatus(), RTS_MISSING_ELEMENT);
    }
}

TEST_F(SeqOfListTest, IteratorStartsAtAnElementOrNowhere) {
    auto* iterator = list.iteratorFrom(&values[1]);
    EXPECT_EQ(valueOf(iterator->next()), 1);
    EXPECT_EQ(valueOf(iterator->next()), 2);
    iterator = list.iteratorFrom(&values[4]);
    EXPECT_EQ(iterator->next(), nullptr);
    EXPECT_EQ(iterator->getStatus(), RTS_MISSING_ELEMENT);
    EXPECT_EQ(iterator->insert(&values[4]), RTS_OK);
    EXPECT_EQ(content(), (Ints{0, 1, 2, 4}));
}

TEST_F(SeqOfListTest, IteratorChangesTheListUnderItself) {
    auto* iterator = list.iterator();
    EXPECT_EQ(iterator->remove(), RTS_NO_CURRENT_ELEMENT);
    iterator->next();
    iterator->next();
    EXPECT_EQ(iterator->set(&values[3]), RTS_OK);
    EXPECT_EQ(iterator->insert(&values[4]), RTS_OK);
    EXPECT_EQ(content(), (Ints{0, 3, 4, 2}));
    EXPECT_EQ(iterator->set(&values[0]), RTS_NO_CURRENT_ELEMENT);
    EXPECT_EQ(valueOf(iterator->next()), 2);
    EXPECT_EQ(iterator->remove(), RTS_OK);
    EXPECT_EQ(iterator->remove(), RTS_NO_CURRENT_ELEMENT);
    EXPECT_EQ(iterator->getStatus(), RTS_NO_CURRENT_ELEMENT);
    EXPECT_EQ(content(), (Ints{0, 3, 4}));

    iterator = list.iterator();
    iterator->next();
    iterator->next();
    iterator->prev();
    EXPECT_EQ(iterator->remove(), RTS_OK);
    EXPECT_EQ(valueOf(iterator->next()), 4) << "goes on behind the gap";
}

TEST_F(SeqOfListTest, ForeignChangeStopsEveryStep) {
    auto* iterator = list.iterator();
    iterator->next();
    list.append(&values[3]);
    EXPECT_EQ(iterator->next(), nullptr);
    EXPECT_EQ(iterator->getStatus(), RTS_STALE_ITERATOR);
    EXPECT_EQ(iterator->prev(), nullptr);
    EXPECT_EQ(iterator->remove(), RTS_STALE_ITERATOR);
    EXPECT_EQ(iterator->set(&values[4]), RTS_STALE_ITERATOR);
    EXPECT_EQ(iterator->insert(&values[4]), RTS_STALE_ITERATOR);
    EXPECT_EQ(content(), (Ints{0, 1, 2, 3}));
}

TEST_F(SeqOfListTest, OnlyChangesCount) {
    const int before = list.changes();
    list.remove(9);
    list.remove(static_cast<void*>(&values[4]));
    list.remove(static_cast<_Asn1RTDListNode*>(nullptr));
    list.set(9, &values[4]);
    list.iterator()->next();
    auto* iterator = list.iterator();
    iterator->next();
    iterator->set(&values[0]);
    EXPECT_EQ(list.changes(), before);

    list.insert(9, &values[4]);  // changes nothing, and counts
    list.set(0, &values[4]);
    list.remove(0);
    list.remove(static_cast<void*>(&values[1]));
    list.insertAfter(&values[3], nullptr);
    list.insertBefore(&values[3], nullptr);
    list.appendArray(values, 2, sizeof(int));
    list.appendArrayCopy(values, 2 * sizeof(int), sizeof(int));
    EXPECT_EQ(list.changes(), before + 8);
    EXPECT_EQ(content(), (Ints{3, 2, 3, 0, 1, 0, 1}));
    list.clear();
    EXPECT_EQ(list.changes(), before + 9);
    EXPECT_TRUE(list.isEmpty());
}

TEST_F(SeqOfListTest, ElementsAreReachedByIndexAndAsAnArray) {
    EXPECT_EQ(list.set(1, &values[4]), &values[1]);
    EXPECT_EQ(list.get(1), &values[4]);
    EXPECT_EQ(list.get(3), nullptr);
    EXPECT_EQ(list.indexOf(&values[2]), 2);
    int room[3] = {};
    EXPECT_EQ(list.toArray(room, sizeof(int), 3), room);
    EXPECT_NE(list.toArray(room, sizeof(int), 2), room);
    EXPECT_EQ((Ints{room, room + 3}), (Ints{0, 4, 2}));
    EXPECT_EQ(list.toArray(0x80000000), nullptr);
    list.clear();
    EXPECT_EQ(list.getFirst(), nullptr);
    EXPECT_EQ(list.getLast(), nullptr);
}

TEST_F(SeqOfListTest, ListOfARecordStaysWithItsContent) {
    ASN1TSeqOfList field;
    rtDListInit(&field);
    ASN1TPDUSeqOfList record;
    {
        ASN1CSeqOfList overField(buffer, field);
        overField.append(&values[1]);
        ASN1CSeqOfList overRecord(*buffer.getContext(), record);
        overRecord.append(&values[2]);
    }
    EXPECT_EQ(ASN1CSeqOfList(field).getFirst(), &values[1]);
    EXPECT_EQ(ASN1CSeqOfList(record).getFirst(), &values[2]);
    ASN1CSeqOfList kept(buffer, static_cast<_Asn1RTDList&>(field), false);
    EXPECT_EQ(kept.size(), 1u);
    ASN1CSeqOfList emptied(buffer, static_cast<_Asn1RTDList&>(field), true);
    EXPECT_TRUE(kept.isEmpty());
}

TEST_F(SeqOfListTest, OwnContextLivesAsLongAsTheList) {
    auto own = std::make_unique<ASN1CSeqOfList>();
    own->append(&values[0]);
    EXPECT_EQ(own->getFirst(), &values[0]);
    ASN1Context* context = buffer.getContext();
    const int references = context->getRefCount();
    {
        ASN1CSeqOfList sharing(*context);
        EXPECT_EQ(context->getRefCount(), references + 1);
    }
    EXPECT_EQ(context->getRefCount(), references);
}

TEST_F(SeqOfListTest, FailedMemoryIsSeenInSizeAndStatus) {
    auto* iterator = list.iterator();
    CountedAllocations memory;
    memory.allow(0);
    EXPECT_EQ(iterator->insert(&values[3]), RTS_NO_MEMORY);
    EXPECT_EQ(iterator->getStatus(), RTS_NO_MEMORY);
    list.append(&values[3]);
    EXPECT_EQ(list.iterator(), nullptr);
    EXPECT_THROW(ASN1CSeqOfList{buffer}, ASN1MessageBuffer::RTLError);
    EXPECT_THROW(ASN1CSeqOfList{}, ASN1MessageBuffer::RTLError);
    EXPECT_EQ(content(), (Ints{0, 1, 2}));
}

}  // namespace
