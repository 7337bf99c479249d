#include "asn1rt/memory_buffer.h"

#include <string>

#include "runtime_test.h"

namespace {

class MemoryBufferTest : public ::testing::Test {
  protected:
    MemoryBufferTest() { rtMemBufInit(ctxt, &buffer, 1024); }

    int append(const std::string& octets) {
        return rtMemBufAppend(&buffer, reinterpret_cast<const unsigned char*>(octets.data()),
                              static_cast<std::uint32_t>(octets.size()));
    }

    std::string content() const {
        std::uint32_t length = 0;
        const unsigned char* data = rtMemBufGetData(&buffer, &length);
        return std::string(data, data + length);
    }

    LiveContext ctxt;
    rtMemBuf buffer;
};

TEST_F(MemoryBufferTest, CapacityIsWholeSegments) {
    struct {
        std::uint32_t segment, count, capacity;
    } const rows[] = {{1024, 1, 1024},    {1024, 1024, 1024}, {1024, 1025, 2048}, {1, 77, 77},
                      {1000, 1001, 2000}, {0, 1, 1024},       {0, 1025, 2048}};
    for (const auto& row : rows) {
        rtMemBufInit(ctxt, &buffer, row.segment);
        EXPECT_EQ(append(std::string(row.count, 'x')), RTS_OK);
        EXPECT_EQ(buffer.bufsize, row.capacity) << row.segment << " " << row.count;
    }
}

TEST_F(MemoryBufferTest, ContentSurvivesGrowth) {
    std::string expected;
    for (int i = 0; i < 300; ++i) {
        const std::string piece(static_cast<std::size_t>(i), static_cast<char>('a' + i % 26));
        ASSERT_EQ(append(piece), RTS_OK);
        expected += piece;
    }
    ASSERT_EQ(rtMemBufSet(&buffer, '!', 2000), RTS_OK);
    EXPECT_EQ(content(), expected + std::string(2000, '!'));
}

TEST_F(MemoryBufferTest, RoomAloneAddsNoContentAndACountOfZeroNothingAtAll) {
    EXPECT_EQ(append(""), RTS_OK);
    EXPECT_EQ(rtMemBufSet(&buffer, 1, 0), RTS_OK);
    EXPECT_EQ(rtMemBufPreAllocate(&buffer, 0), RTS_OK);
    EXPECT_EQ(rtMemBufGetData(&buffer, nullptr), nullptr);
    EXPECT_EQ(rtMemBufAppend(&buffer, nullptr, 1500), RTS_OK);
    EXPECT_EQ(buffer.bufsize, 2048u);
    EXPECT_EQ(rtMemBufPreAllocate(&buffer, 2049), RTS_OK);
    EXPECT_EQ(buffer.bufsize, 3072u);
    EXPECT_EQ(content(), "");
}

TEST_F(MemoryBufferTest, DataStartsAtItsIndexAndResetKeepsTheMemory) {
    append("abcdef");
    buffer.startidx = 2;
    EXPECT_EQ(content(), "cdef");
    const unsigned char* memory = buffer.buffer;
    rtMemBufReset(&buffer);
    EXPECT_EQ(content(), "");
    append("xyz");
    EXPECT_EQ(buffer.buffer, memory);
    EXPECT_EQ(content(), "xyz");
    rtMemBufFree(&buffer);
    EXPECT_EQ(buffer.buffer, memory);
}

TEST_F(MemoryBufferTest, CallersMemoryIsCopiedWhenItIsOutgrown) {
    unsigned char own[4] = {'a', 'b', 'c', '-'};
    buffer.buffer = own;
    buffer.bufsize = sizeof(own);
    buffer.usedcnt = 3;
    buffer.isDynamic = 0;
    append("d");
    EXPECT_EQ(buffer.buffer, own);
    append("e");
    EXPECT_NE(buffer.buffer, own);
    EXPECT_EQ(buffer.isDynamic, 1);
    EXPECT_EQ(content(), "abcde");
    EXPECT_EQ(own[3], 'd');
}

TEST_F(MemoryBufferTest, SizeBeyondTheHeapIsNoMemoryAndChangesNothing) {
    append("abc");
    EXPECT_EQ(rtMemBufPreAllocate(&buffer, 0xFFFFFFFF), RTS_NO_MEMORY);  // the sum passes 32 bits
    EXPECT_EQ(rtMemBufPreAllocate(&buffer, 0x7FFFFFFF), RTS_NO_MEMORY);
    EXPECT_EQ(content(), "abc");
    EXPECT_EQ(buffer.bufsize, 1024u);
    EXPECT_EQ(ctxt.recorded(), RTS_OK);
}

}  // namespace
