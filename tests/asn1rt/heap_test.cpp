#include "asn1rt/heap.h"

#include <cstdint>
#include <cstring>

#include "asn1rt/context.h"
#include "runtime_test.h"

namespace {

class HeapTest : public ::testing::Test {
  protected:
    // Every test ends with no heap left, so all that was taken has come back.
    ~HeapTest() override {
        rtMemHeapRelease(&heap);
        EXPECT_EQ(memory.freed(), memory.made());
    }

    CountedAllocations memory;
    rtMemHeap* heap = nullptr;
};

TEST_F(HeapTest, EachAllocationIsOneAlignedBlockThatGoesWithTheHeap) {
    ASSERT_EQ(rtMemHeapCreate(&heap, nullptr), RTS_OK);
    void* first = rtMemHeapAlloc(&heap, 0);
    void* second = rtMemHeapAlloc(&heap, 0);
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, second);
    for (std::int32_t size = 1; size <= 33; ++size) {
        void* pointer = rtMemHeapAllocZ(&heap, size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pointer) % 16, 0u);
        EXPECT_EQ(static_cast<std::int64_t*>(pointer)[-1], size);
    }
    EXPECT_EQ(memory.made(), 1 + 2 + 33);
    rtMemHeapRelease(&heap);
    EXPECT_EQ(heap, nullptr);
}

TEST_F(HeapTest, SizesOutOfRangeAreRefusedWithoutAskingTheAllocator) {
    rtMemHeapCreate(&heap, nullptr);
    void* block = rtMemHeapAlloc(&heap, 8);
    const int before = memory.made();
    for (std::int32_t size : {0x7FFFFFD0, 0x7FFFFFFF, -1, INT32_MIN}) {
        EXPECT_EQ(rtMemHeapAlloc(&heap, size), nullptr);
        EXPECT_EQ(rtMemHeapAllocZ(&heap, size), nullptr);
        EXPECT_EQ(rtMemHeapRealloc(&heap, block, size), nullptr);
        EXPECT_EQ(rtMemHeapRealloc(&heap, nullptr, size), nullptr);
    }
    EXPECT_EQ(rtMemHeapAlloc(nullptr, 8), nullptr);
    EXPECT_EQ(memory.made(), before);
    EXPECT_EQ(static_cast<std::int64_t*>(block)[-1], 8);
}

TEST_F(HeapTest, ShrinkStaysAndGrowthMovesTheBytes) {
    EXPECT_EQ(rtMemHeapRealloc(&heap, nullptr, 8), nullptr)
        << "an empty handle gets no heap from a reallocation";
    rtMemHeapCreate(&heap, nullptr);
    auto* block = static_cast<char*>(rtMemHeapRealloc(&heap, nullptr, 8));
    std::memcpy(block, "12345678", 8);
    const int before = memory.made();
    for (int size : {3, 0, 0})
        EXPECT_EQ(rtMemHeapRealloc(&heap, block, size), block);
    EXPECT_EQ(memory.made(), before);
    auto* other = static_cast<char*>(rtMemHeapAlloc(&heap, 3));
    std::memcpy(other, "abc", 3);
    auto* grown = static_cast<char*>(rtMemHeapRealloc(&heap, other, 100));
    EXPECT_NE(grown, other);
    EXPECT_EQ(std::memcmp(grown, "abc", 3), 0);
    EXPECT_EQ(memory.freed(), 1);
}

TEST_F(HeapTest, FreeingUnlinksFromFrontMiddleAndEnd) {
    void* a = rtMemHeapAlloc(&heap, 1);  // makes the heap
    void* b = rtMemHeapAlloc(&heap, 1);
    void* c = rtMemHeapAlloc(&heap, 1);
    rtMemHeapFreePtr(&heap, b);
    rtMemHeapFreePtr(&heap, c);
    rtMemHeapFreePtr(&heap, a);
    EXPECT_EQ(heap->blockList, nullptr);
    rtMemHeapFreePtr(&heap, nullptr);
    rtMemHeapFreePtr(nullptr, nullptr);
}

TEST_F(HeapTest, BlockIsUnlinkedFromItsOwnHeapWhateverTheHandle) {
    rtMemHeap* own = nullptr;
    rtMemHeap* foreign = nullptr;
    void* first = rtMemHeapAlloc(&own, 1);
    void* second = rtMemHeapAlloc(&own, 1);
    rtMemHeapAlloc(&foreign, 1);
    rtMemHeapFreePtr(&foreign, second);
    EXPECT_EQ(rtMemHeapRealloc(&foreign, first, 0), first);
    EXPECT_NE(rtMemHeapRealloc(&foreign, first, 64), first);
    EXPECT_EQ(own->blockList, nullptr);
    rtMemHeapRelease(&own);
    rtMemHeapRelease(&foreign);
}

TEST_F(HeapTest, OnlyTheLastReferenceReleases) {
    rtMemHeapCreate(&heap, nullptr);
    rtMemHeapAddRef(&heap);
    rtMemHeap* const made = heap;
    rtMemHeapRelease(&heap);
    EXPECT_EQ(memory.freed(), 0);
    EXPECT_EQ(heap, made);
    rtMemHeapRelease(&heap);
    EXPECT_EQ(memory.freed(), 1);
    EXPECT_EQ(heap, nullptr);
}

TEST_F(HeapTest, ContextOwnsOneHeapUnderTwoHandles) {
    ASN1CTXT ctxt;
    ASSERT_EQ(rtInitContext(&ctxt, nullptr), RTS_OK);
    EXPECT_EQ(ctxt.msgMemHeap, ctxt.typeMemHeap);
    EXPECT_EQ(ctxt.msgMemHeap->refCount, 2u);
    ASSERT_EQ(rtInitContextBuffer(&ctxt, nullptr, 0), RTS_OK);
    EXPECT_EQ(ctxt.buffer.size, 16384u);
    EXPECT_EQ(ctxt.buffer.dynamic, 1);
    EXPECT_EQ(ctxt.buffer.bitOffset, 8);
    rtFreeContext(&ctxt);
    EXPECT_EQ(ctxt.msgMemHeap, nullptr);
    EXPECT_EQ(ctxt.typeMemHeap, nullptr);
    EXPECT_EQ(ctxt.buffer.data, nullptr);
    rtFreeContext(&ctxt);
    unsigned char buffer[4];
    EXPECT_EQ(rtInitContextBuffer(&ctxt, buffer, 4), RTS_NOT_INITIALISED);
    EXPECT_EQ(rtCtxtSetFlag(&ctxt, ASN1_NO_COPY), RTS_NOT_INITIALISED);
}

TEST_F(HeapTest, ValuesOutliveTheirContextOnASharedHeap) {
    ASN1CTXT first;
    rtInitContext(&first, nullptr);
    {
        ASN1CTXT second;
        rtInitContext(&second, nullptr);
        rtCtxtSetMemHeap(&first, &second);
        rtCtxtSetMemHeap(&first, &second);
        rtFreeContext(&second);
    }
    auto* value = static_cast<char*>(rtMemHeapAlloc(&first.typeMemHeap, 4));
    ASSERT_NE(value, nullptr);
    std::memcpy(value, "abc", 4);
    rtFreeContext(&first);
}

TEST_F(HeapTest, KeptBufferGoesWithTheHeap) {
    ASN1CTXT holder;
    rtInitContext(&holder, nullptr);
    ASN1CTXT ctxt;
    rtInitContext(&ctxt, nullptr);
    rtCtxtSetMsgMemHeap(&holder, &ctxt);
    rtInitContextBuffer(&ctxt, nullptr, 100);
    rtCtxtSetFlag(&ctxt, ASN1_KEEP_BUFFER);
    unsigned char* kept = ctxt.buffer.data;
    rtFreeContext(&ctxt);
    kept[0] = 1;
    rtMemHeapFreePtr(&holder.msgMemHeap, kept);
    rtFreeContext(&holder);
}

TEST(ErrorRecord, KeepsTheFirstFailureAndReturnsTheLatest) {
    ASN1ErrInfo error{};
    EXPECT_EQ(rtErrSetData(&error, 0, nullptr, 0), 0);
    EXPECT_EQ(rtErrSetData(&error, RTS_BAD_LENGTH, nullptr, 0), RTS_BAD_LENGTH);
    EXPECT_EQ(rtErrSetData(&error, RTS_END_OF_BUFFER, nullptr, 0), RTS_END_OF_BUFFER);
    EXPECT_EQ(error.status, RTS_BAD_LENGTH);
    ASN1ErrInfo copy{};
    EXPECT_EQ(rtErrCopyData(&error, &copy), RTS_BAD_LENGTH);
    EXPECT_EQ(copy.status, RTS_BAD_LENGTH);
    EXPECT_EQ(rtErrReset(&error), 0);
    EXPECT_EQ(error.status, 0);
    ::testing::internal::CaptureStdout();
    rtErrPrint(&copy);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "ASN.1 ERROR: Status -5\n");
}

}  // namespace
