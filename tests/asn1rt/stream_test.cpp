#include "asn1rt/stream.h"

#include <string>
#include <string_view>
#include <vector>

#include "runtime_test.h"

namespace {

constexpr int kBroken = -77;

// What the stream is told to do, and what reached it.
struct Script {
    std::vector<std::string> writes;
    int flushes = 0;
    bool isBroken = false;
} script;

int scriptedWrite(ASN1Stream*, const unsigned char* data, std::uint32_t count) {
    if (script.isBroken) return kBroken;
    script.writes.emplace_back(data, data + count);
    return 0;
}

int scriptedFlush(ASN1Stream*) {
    ++script.flushes;
    return 0;
}

constexpr ASN1StreamOperations kOperations = {scriptedWrite, scriptedFlush};
constexpr ASN1StreamOperations kNoOperations = {nullptr, nullptr};

class StreamTest : public ::testing::Test {
  protected:
    using Writes = std::vector<std::string>;

    StreamTest() { script = {}; }

    ASN1Stream* open(int flags, const ASN1StreamOperations* operations = &kOperations) {
        void* memory = rtMemHeapAllocZ(&ctxt->msgMemHeap, sizeof(ASN1Stream));
        ctxt->stream = static_cast<ASN1Stream*>(memory);
        ctxt->stream->operations = operations;
        ctxt->stream->flags = static_cast<std::uint16_t>(flags);
        return ctxt->stream;
    }

    void useBuffer(std::uint32_t size) { rtInitContextBuffer(ctxt, fixed, size); }

    int write(std::string_view octets) {
        return rtWriteBytes(ctxt, reinterpret_cast<const unsigned char*>(octets.data()),
                            static_cast<std::uint32_t>(octets.size()));
    }

    std::string waiting() {
        return std::string(ctxt->buffer.data, ctxt->buffer.data + ctxt->buffer.byteIndex);
    }

    // Fails unless the status is the expected one and is recorded; forgets it then.
    void expectRecorded(int status, int expected) {
        EXPECT_EQ(status, expected);
        EXPECT_EQ(ctxt.recorded(), expected);
        rtErrReset(&ctxt->errInfo);
    }

    unsigned char fixed[8] = {};
    LiveContext ctxt;
};

TEST_F(StreamTest, WritingNeedsAStreamThatIsOpenAndCanWrite) {
    const unsigned char octet = 1;
    expectRecorded(rtStreamWrite(ctxt, &octet, 1), RTS_NOT_INITIALISED);
    open(RT_STREAM_BUFFERED);
    EXPECT_EQ(rtStreamWrite(ctxt, &octet, 1), RTS_NOT_INITIALISED);
    open(RT_STREAM_OUTPUT, &kNoOperations);
    EXPECT_EQ(rtStreamWrite(ctxt, &octet, 1), RTS_NOT_INITIALISED);
    open(RT_STREAM_OUTPUT);
    EXPECT_EQ(rtStreamWrite(ctxt, &octet, 1), 0);
    EXPECT_EQ(ctxt->stream->bytesIndex, 1u);
}

TEST_F(StreamTest, OctetsWaitUntilTheyDoNotFit) {
    open(RT_STREAM_OUTPUT | RT_STREAM_BUFFERED);
    useBuffer(8);
    EXPECT_EQ(write("abcde"), RTS_OK);
    EXPECT_EQ(write("fgh"), RTS_OK);
    EXPECT_EQ(script.writes, Writes{});
    EXPECT_EQ(write("i"), RTS_OK);
    EXPECT_EQ(script.writes, Writes{"abcdefgh"});
    EXPECT_EQ(waiting(), "i");
    EXPECT_EQ(write("12345678"), RTS_OK);
    EXPECT_EQ(script.writes, (Writes{"abcdefgh", "i", "12345678"}));
    EXPECT_EQ(waiting(), "");
    EXPECT_EQ(write(""), RTS_OK);
    EXPECT_EQ(ctxt->stream->bytesIndex, 17u);
}

TEST_F(StreamTest, FailedWriteKeepsWhatWaits) {
    ASN1Stream* stream = open(RT_STREAM_OUTPUT);
    useBuffer(8);
    write("abcdefgh");  // goes straight on
    write("abc");
    script.isBroken = true;
    EXPECT_EQ(write("123456"), kBroken);
    EXPECT_EQ(rtStreamBufFlush(ctxt), kBroken);
    EXPECT_EQ(waiting(), "abc");
    EXPECT_EQ(stream->bytesIndex, 8u);
    script.isBroken = false;
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_OK);
    EXPECT_EQ(script.writes.back(), "abc");
    EXPECT_EQ(stream->bytesIndex, 11u);
}

TEST_F(StreamTest, FlushAsksForAnOpenStream) {
    expectRecorded(rtStreamFlush(ctxt), RTS_BAD_ARGUMENT);
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_BAD_ARGUMENT);
    open(0);
    EXPECT_EQ(rtStreamFlush(ctxt), RTS_BAD_ARGUMENT);
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_BAD_ARGUMENT);
    open(RT_STREAM_OUTPUT, &kNoOperations);
    EXPECT_EQ(rtStreamFlush(ctxt), RTS_OK);
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_OK);  // nothing waits, so nothing is written
    open(RT_STREAM_OUTPUT);
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_OK);
    EXPECT_EQ(script.flushes, 1);
    EXPECT_EQ(script.writes, Writes{});

    ASN1Stream* notOpen = open(RT_STREAM_BUFFERED);
    useBuffer(8);
    write("abc");
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_BAD_ARGUMENT) << "sends, and then fails";
    EXPECT_EQ(script.writes, Writes{"abc"});
    notOpen->operations = &kNoOperations;
    write("abc");
    EXPECT_EQ(rtStreamBufFlush(ctxt), RTS_NOT_INITIALISED);
    EXPECT_EQ(waiting(), "abc");
}

TEST_F(StreamTest, RoomComesFromTheStreamFirst) {
    open(RT_STREAM_OUTPUT);
    useBuffer(8);
    write("abcde");
    EXPECT_EQ(rtCheckBuffer(ctxt, 3), RTS_OK);
    EXPECT_EQ(script.flushes, 0);
    EXPECT_EQ(rtCheckBuffer(ctxt, 8), RTS_OK);
    EXPECT_EQ(script.writes, Writes{"abcde"});
    expectRecorded(rtCheckBuffer(ctxt, 9), RTS_ENCODE_OVERFLOW);
    write("x");
    script.isBroken = true;
    expectRecorded(rtCheckBuffer(ctxt, 8), kBroken);
}

TEST_F(StreamTest, WithoutAStreamTheBufferFillsForwards) {
    useBuffer(8);
    EXPECT_EQ(write("abcde"), RTS_OK);
    EXPECT_EQ(write("fgh"), RTS_OK);
    EXPECT_EQ(waiting(), "abcdefgh");
    expectRecorded(write("i"), RTS_ENCODE_OVERFLOW);
    EXPECT_EQ(waiting(), "abcdefgh");
}

TEST_F(StreamTest, DynamicBufferGrowsByAStepOrWhatIsWanted) {
    rtInitContextBuffer(ctxt, nullptr, 4);
    write("abcd");
    EXPECT_EQ(write("e"), RTS_OK);
    EXPECT_EQ(ctxt->buffer.size, 4u + 16384);
    EXPECT_EQ(waiting(), "abcde");
    EXPECT_EQ(write(std::string(20000, 'x')), RTS_OK);
    EXPECT_EQ(ctxt->buffer.size, 4u + 16384 + 20000);
    EXPECT_EQ(waiting(), "abcde" + std::string(20000, 'x'));
    expectRecorded(rtCheckBuffer(ctxt, 0xFFFFFFFF), RTS_NO_MEMORY);
    EXPECT_EQ(ctxt->buffer.size, 4u + 16384 + 20000);
}

TEST_F(StreamTest, CursorBehindTheEndNeitherReadsNorWritesThere) {
    open(RT_STREAM_OUTPUT);
    useBuffer(8);
    ctxt->buffer.byteIndex = 5000;
    EXPECT_EQ(write("abc"), RTS_OK);
    EXPECT_EQ(script.writes.at(0).size(), 8u);
    rtStreamRelease(ctxt);
    EXPECT_EQ(ctxt->stream, nullptr);
    rtInitContextBuffer(ctxt, nullptr, 4);
    ctxt->buffer.byteIndex = 50000;
    EXPECT_EQ(write("abc"), RTS_OK);
    EXPECT_EQ(ctxt->buffer.size, 50003u);
}

}  // namespace
