#include "asn1rt/list.h"

#include <vector>

#include "asn1rt/slist.h"
#include "runtime_test.h"

namespace {

struct NodeWithValue {
    _Asn1RTDListNode node;
    int value;
};

class ListTest : public ::testing::Test {
  protected:
    ListTest() { rtDListInit(&list); }

    void append(std::initializer_list<int> indices) {
        for (int index : indices)
            rtDListAppend(ctxt, &list, &values[index]);
    }

    int* allocated(int value) {
        auto* pointer = static_cast<int*>(rtMemHeapAlloc(&ctxt->typeMemHeap, sizeof(int)));
        *pointer = value;
        return pointer;
    }

    void appendWithValue(int value) {
        auto* both = static_cast<NodeWithValue*>(rtMemHeapAlloc(&ctxt->typeMemHeap, sizeof(NodeWithValue)));
        both->value = value;
        ASSERT_EQ(rtDListAppendNode(ctxt, &list, &both->value), &both->node);
    }

    // The values in order; fails if the way back, the ends or the count tell something else.
    std::vector<int> content() const {
        std::vector<int> forwards, backwards;
        for (auto* node = list.head; node; node = node->next)
            forwards.push_back(*static_cast<int*>(node->data));
        for (auto* node = list.tail; node; node = node->prev)
            backwards.push_back(*static_cast<int*>(node->data));
        EXPECT_EQ(forwards, std::vector<int>(backwards.rbegin(), backwards.rend()));
        EXPECT_EQ(list.count, forwards.size());
        return forwards;
    }

    using Ints = std::vector<int>;
    CountedAllocations memory;  // lives longer than the context
    LiveContext ctxt;
    _Asn1RTDList list;
    int values[5] = {0, 1, 2, 3, 4};
};

TEST_F(ListTest, InsertCountsFromTheFrontUpToTheCount) {
    EXPECT_EQ(rtDListInsert(ctxt, &list, 1, &values[0]), nullptr);
    EXPECT_NE(rtDListInsert(ctxt, &list, 0, &values[1]), nullptr);
    EXPECT_NE(rtDListInsert(ctxt, &list, 1, &values[3]), nullptr);
    EXPECT_NE(rtDListInsert(ctxt, &list, 1, &values[2]), nullptr);
    EXPECT_NE(rtDListInsert(ctxt, &list, 0, &values[0]), nullptr);
    EXPECT_EQ(rtDListInsert(ctxt, &list, 5, &values[4]), nullptr);
    EXPECT_EQ(rtDListInsert(ctxt, &list, static_cast<std::uint32_t>(-1), &values[4]), nullptr);
    EXPECT_EQ(content(), (Ints{0, 1, 2, 3}));
}

TEST_F(ListTest, NullNeighbourMeansTheFarEnd) {
    rtDListInsertBefore(ctxt, &list, nullptr, &values[1]);
    rtDListInsertBefore(ctxt, &list, nullptr, &values[3]);
    rtDListInsertAfter(ctxt, &list, nullptr, &values[0]);
    rtDListInsertAfter(ctxt, &list, list.tail, &values[4]);
    rtDListInsertBefore(ctxt, &list, list.tail->prev, &values[2]);
    EXPECT_EQ(content(), (Ints{0, 1, 2, 3, 4}));
    rtDListInsertBefore(ctxt, &list, list.head, &values[4]);
    rtDListInsertAfter(ctxt, &list, list.head, &values[0]);
    EXPECT_EQ(content(), (Ints{4, 0, 0, 1, 2, 3, 4}));
}

TEST_F(ListTest, IsSearchedByIndexWhereNegativeIsTheHeadAndByPointer) {
    EXPECT_EQ(rtDListFindByIndex(&list, -1), nullptr);
    append({0, 1, 1});
    EXPECT_EQ(rtDListFindByIndex(&list, -1), list.head);
    EXPECT_EQ(rtDListFindByIndex(&list, 2), list.tail);
    EXPECT_EQ(rtDListFindByIndex(&list, 3), nullptr);
    const int equal = 1;
    EXPECT_EQ(rtDListFindByData(&list, &equal), nullptr);
    EXPECT_EQ(rtDListFindIndexByData(&list, &equal), -1);
    EXPECT_EQ(rtDListFindByData(&list, &values[1]), list.head->next);
    EXPECT_EQ(rtDListFindIndexByData(&list, &values[1]), 1);
}

TEST_F(ListTest, RemoveUnlinksWithoutFreeing) {
    append({0, 1, 2});
    const int before = memory.alive();
    _Asn1RTDListNode* middle = list.head->next;
    rtDListRemove(&list, middle);
    EXPECT_EQ(content(), (Ints{0, 2}));
    rtDListRemove(&list, list.head);
    EXPECT_EQ(content(), (Ints{2}));
    rtDListRemove(&list, list.head);
    EXPECT_EQ(content(), Ints{});
    EXPECT_EQ(memory.alive(), before);
    EXPECT_EQ(middle->data, &values[1]);
}

TEST_F(ListTest, FreeNodesKeepsEveryValue) {
    const int before = memory.alive();
    int* value = allocated(7);
    rtDListAppend(ctxt, &list, value);
    appendWithValue(8);
    auto* behindNode = static_cast<int*>(list.tail->data);
    rtDListFreeNodes(ctxt, &list);
    EXPECT_EQ(content(), Ints{});
    EXPECT_EQ(memory.alive(), before + 2);
    EXPECT_EQ(*value + *behindNode, 15);
}

TEST_F(ListTest, FreeAllFreesEachBlockOnce) {
    const int before = memory.alive();
    rtDListAppend(ctxt, &list, allocated(7));
    appendWithValue(8);
    rtDListAppend(ctxt, &list, nullptr);
    rtDListFreeAll(ctxt, &list);
    EXPECT_EQ(content(), Ints{});
    EXPECT_EQ(memory.alive(), before);
}

TEST_F(ListTest, ArraysAreTakenByElementAndCopiedByOctet) {
    rtDListAppendArray(ctxt, &list, values, 3, sizeof(int));
    EXPECT_EQ(list.head->next->data, &values[1]);
    rtDListAppendArrayCopy(ctxt, &list, values, 2 * sizeof(int), sizeof(int));
    EXPECT_NE(list.tail->data, &values[1]);
    rtDListAppendArrayCopy(ctxt, &list, values, sizeof(values), 0);
    EXPECT_EQ(content(), (Ints{0, 1, 2, 0, 1}));
    const unsigned char octets[] = {1, 2, 3, 4, 5, 6};
    rtDListAppendArrayCopy(ctxt, &list, octets, sizeof(octets), 4);
    EXPECT_EQ(test::text(static_cast<const unsigned char*>(list.tail->data), 4), "05 06 00 00");
}

TEST_F(ListTest, ArrayIsFilledOrReplacedWhenTooSmall) {
    append({2, 1, 0});
    int room[3] = {};
    void* array = room;
    std::uint32_t capacity = 3;
    EXPECT_EQ(rtDListToArray(ctxt, &list, &array, &capacity, sizeof(int)), 3u);
    EXPECT_EQ(array, room);
    EXPECT_EQ((Ints{room, room + 3}), (Ints{2, 1, 0}));

    capacity = 2;
    EXPECT_EQ(rtDListToArray(ctxt, &list, &array, &capacity, sizeof(int)), 3u);
    EXPECT_NE(array, room);
    EXPECT_EQ(capacity, 3u);
    EXPECT_EQ(static_cast<int*>(array)[2], 0);

    std::fill(room, room + 3, 9);
    array = room;
    EXPECT_EQ(rtDListToArray(ctxt, &list, &array, nullptr, sizeof(int)), 3u);
    EXPECT_EQ(room[0], 2);
}

TEST_F(ListTest, ArrayThatCannotBeHadChangesNothing) {
    append({0, 1, 2});
    void* array = values;
    std::uint32_t capacity = 1;
    EXPECT_EQ(rtDListToArray(ctxt, &list, &array, &capacity, 0x55555556), 0u);  // 3 times this is 0x100000002
    memory.allow(0);
    EXPECT_EQ(rtDListToArray(ctxt, &list, &array, &capacity, sizeof(int)), 0u);
    EXPECT_EQ(array, values);
    EXPECT_EQ(capacity, 1u);
}

TEST_F(ListTest, FailedMemoryLeavesTheListWhole) {
    append({0, 1});
    memory.allow(0);
    EXPECT_EQ(rtDListAppend(ctxt, &list, &values[2]), nullptr);
    EXPECT_EQ(rtDListInsert(ctxt, &list, 1, &values[2]), nullptr);
    EXPECT_EQ(content(), (Ints{0, 1}));
    memory.allow(1);
    rtDListAppendArray(ctxt, &list, values, 5, sizeof(int));
    EXPECT_EQ(content(), (Ints{0, 1, 0}));
    const int before = memory.alive();
    memory.allow(1);  // for the copy, not for its node
    rtDListAppendArrayCopy(ctxt, &list, values, sizeof(int), sizeof(int));
    EXPECT_EQ(content(), (Ints{0, 1, 0}));
    EXPECT_EQ(memory.alive(), before);
}

TEST_F(ListTest, SinglyLinkedNodesComeFromTheOwnerOrTheLibrary) {
    for (ASN1CTXT* owner : {static_cast<ASN1CTXT*>(ctxt), static_cast<ASN1CTXT*>(nullptr)}) {
        const int before = memory.alive();
        rtSList nodes;
        rtSListInitEx(owner, &nodes);
        rtSListNode* first = rtSListAppend(&nodes, &values[0]);
        rtSListNode* second = rtSListAppend(&nodes, &values[1]);
        EXPECT_TRUE(nodes.head == first && first->next == second);
        EXPECT_TRUE(nodes.tail == second && second->next == nullptr);
        EXPECT_EQ(nodes.count, 2u);
        EXPECT_EQ(memory.alive(), owner ? before + 2 : before);
        rtSListFree(&nodes);
        EXPECT_EQ(memory.alive(), before);
        EXPECT_TRUE(nodes.count == 0 && nodes.head == nullptr && nodes.owner == nullptr);
    }
}

}  // namespace
