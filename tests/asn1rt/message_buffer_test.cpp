#include "asn1rt/message_buffer.h"

#include <functional>
#include <memory>

#include "asn1rt/control.h"
#include "runtime_test.h"

namespace {

// The smallest control class: an INTEGER.
class IntegerControl : public ASN1CType {
  public:
    IntegerControl(ASN1MessageBufferIF& buffer, std::int32_t& value) : ASN1CType(buffer), mValue(value) {}

    int EncodeTo(ASN1MessageBufferIF& buffer) override {
        if (int status = prepare(buffer, ASN1MessageBufferIF::BEREncode); status != RTS_OK) return status;
        return xe_integer(buffer.getCtxtPtr(), &mValue, ASN1EXPL);
    }
    int DecodeFrom(ASN1MessageBufferIF& buffer) override {
        if (int status = prepare(buffer, ASN1MessageBufferIF::BERDecode); status != RTS_OK) return status;
        return xd_integer(buffer.getCtxtPtr(), &mValue, ASN1EXPL, 0);
    }

  private:
    std::int32_t& mValue;
};

class EmptyControl : public ASN1CType {
  public:
    using ASN1CType::ASN1CType;
};

// An INTEGER, 5.
const unsigned char kFive[] = {0x02, 0x01, 0x05};

int statusOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ASN1RTLException& failure) {
        return failure.getStatus();
    }
    return RTS_OK;
}

TEST(EncodeMessage, EachEncodingStartsANewMessage) {
    ASN1BEREncodeBuffer buffer;
    std::int32_t value = 300;
    IntegerControl control(buffer, value);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(control.Encode(), 4);
        EXPECT_EQ(test::text(buffer.getMsgPtr(), 4), "02 02 01 2C");
    }
    std::unique_ptr<unsigned char[]> copy(buffer.getMsgCopy());
    EXPECT_EQ(test::text(copy.get(), 5), "02 02 01 2C 00")
        << "the octet that is never written is 0 in a copy";
    ASN1BEREncodeBuffer fresh;
    copy.reset(fresh.getMsgCopy());
    EXPECT_EQ(test::text(copy.get(), 1), "00");
    unsigned char memory[1];
    EXPECT_EQ(fresh.setBuffer(memory, 0), RTS_OK);
    EXPECT_EQ(fresh.getMsgCopy(), nullptr);
    EXPECT_EQ(control.EncodeTo(fresh), RTS_ENCODE_OVERFLOW);
}

TEST(EncodeMessage, ShiftOperatorTakesOnlyAnEmptyEncoding) {
    ASN1BEREncodeBuffer buffer;
    std::int32_t value = 1;
    IntegerControl control(buffer, value);
    EXPECT_EQ(statusOf([&] { buffer << control; }), 3) << "a length throws";
    EmptyControl empty(buffer);
    EXPECT_EQ(statusOf([&] { buffer << empty; }), RTS_OK);
}

TEST(Directions, AreNotInterchangeable) {
    ASN1BERDecodeBuffer decodeBuffer(kFive, 3);
    ASN1BEREncodeBuffer encodeBuffer;
    EXPECT_FALSE(decodeBuffer.isA(ASN1MessageBufferIF::BEREncode));
    EXPECT_TRUE(encodeBuffer.isA(ASN1MessageBufferIF::BEREncode));
    std::int32_t value = 7;
    IntegerControl onDecode(decodeBuffer, value);
    IntegerControl onEncode(encodeBuffer, value);
    EXPECT_EQ(onDecode.EncodeTo(decodeBuffer), RTS_NOT_SUPPORTED);
    EXPECT_EQ(onEncode.DecodeFrom(encodeBuffer), RTS_NOT_SUPPORTED);
    EXPECT_EQ(statusOf([&] { encodeBuffer << onDecode; }), 3);
    EXPECT_EQ(statusOf([&] { decodeBuffer >> onEncode; }), RTS_OK);
    EXPECT_EQ(value, 5);
    char narrow[] = "x";
    unsigned short wide[] = {0};
    EXPECT_EQ(decodeBuffer.initBuffer(narrow), RTS_NOT_SUPPORTED);
    EXPECT_EQ(encodeBuffer.initBuffer(wide), RTS_NOT_SUPPORTED);
    EXPECT_EQ(decodeBuffer.getMsgCopy(), nullptr);
}

TEST(DecodeMessage, SecondDecodeGoesOnWhereTheFirstStopped) {
    ASN1BERDecodeBuffer buffer(kFive, 3);
    std::int32_t value = 0;
    IntegerControl control(buffer, value);
    EXPECT_EQ(control.Decode(), RTS_OK);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(control.Decode(), RTS_END_OF_BUFFER);
    buffer.setBuffer(kFive, 3, true);
    EXPECT_EQ(control.Decode(), RTS_END_OF_BUFFER) << "the same message was skipped";
    buffer.setBuffer(kFive, 3);
    EXPECT_EQ(control.Decode(), RTS_OK);
}

TEST(DecodeMessage, DamagedMessageThrowsEachTimeButNotAfterSetBuffer) {
    const auto message = test::octets("02 03 05");
    ASN1BERDecodeBuffer buffer(message.data(), 3);
    std::int32_t value = 0;
    IntegerControl control(buffer, value);
    EXPECT_EQ(statusOf([&] { control.Decode(); }), RTS_BAD_LENGTH);
    EXPECT_EQ(statusOf([&] { buffer >> control; }), RTS_BAD_LENGTH);
    buffer.setBuffer(message.data(), 3);
    EXPECT_EQ(control.Decode(), RTS_END_OF_BUFFER) << "the decoder's own status, within the three octets";
}

TEST(DecodeMessage, WithoutAMessageEveryReadEnds) {
    ASN1BERDecodeBuffer none;
    std::int32_t value = 0;
    IntegerControl control(none, value);
    EXPECT_EQ(control.Decode(), RTS_END_OF_BUFFER);
    int length = 0;
    EXPECT_EQ(none.findElement(2, length), nullptr);

    auto message = std::make_unique<test::Octets>(std::begin(kFive), std::end(kFive));
    none.setBuffer(message->data(), 3);
    EXPECT_EQ(control.Decode(), RTS_OK);
    none.setBuffer(nullptr, 3);
    message.reset();
    EXPECT_EQ(control.Decode(), RTS_END_OF_BUFFER) << "the former message is forgotten";
}

TEST(FindElement, WalksFromOneToTheNext) {
    const auto message = test::octets("30 09 02 01 01 04 01 41 02 01 02");
    ASN1BERDecodeBuffer buffer(message.data(), static_cast<int>(message.size()));
    int length = 0;
    EXPECT_EQ(buffer.findElement(2, length), message.data() + 2);
    EXPECT_EQ(length, 1);
    EXPECT_EQ(buffer.findElement(2, length, false), message.data() + 8);
    EXPECT_EQ(buffer.findElement(2, length, false), nullptr);
    EXPECT_EQ(buffer.findElement(2, length, false), nullptr);
    EXPECT_EQ(buffer.findElement(4, length), message.data() + 5);
}

TEST(MemoryBuffer, IsTakenAsTheMessage) {
    ASN1BERDecodeBuffer buffer;
    ASN1MemBuf memory;
    rtMemBufInit(buffer.getCtxtPtr(), &memory, 16);
    EXPECT_EQ(buffer.initBuffer(memory), RTS_OK);
    EXPECT_EQ(buffer.getCtxtPtr()->buffer.size, 0u) << "an empty one is no message";
    ASSERT_EQ(rtMemBufAppend(&memory, kFive, 3), RTS_OK);
    EXPECT_EQ(buffer.initBuffer(memory), RTS_OK);
    std::int32_t value = 0;
    EXPECT_EQ(xd_integer(buffer.getCtxtPtr(), &value, ASN1EXPL, 0), RTS_OK);
    EXPECT_EQ(value, 5);
}

TEST(SharedContext, LivesAsLongAsAReference) {
    ASN1CtxtPtr holder;
    const unsigned char* data = nullptr;
    {
        const auto message = test::octets("04 02 41 42");
        ASN1BERDecodeBuffer buffer(message.data(), 4);
        buffer.init();
        std::uint32_t count = 0;
        ASSERT_EQ(xd_octstr(buffer.getCtxtPtr(), &data, &count, ASN1EXPL, 0), RTS_OK);
        holder = buffer.getContext();
        EXPECT_EQ(holder->getRefCount(), 2);
    }
    EXPECT_EQ(holder->getRefCount(), 1);
    EXPECT_EQ(test::text(data, 2), "41 42");
    ASN1CtxtPtr& same = holder;
    holder = same;
    EXPECT_EQ(holder->getRefCount(), 1);
    ASN1CtxtPtr moved = std::move(holder);
    EXPECT_EQ(moved->getRefCount(), 1);
    EXPECT_EQ(holder, nullptr);
}

TEST(SharedContext, FailedMemoryIsAnExceptionAndNoLeak) {
    for (int allowed : {0, 1}) {
        CountedAllocations memory;
        memory.allow(allowed);
        EXPECT_EQ(statusOf([] { ASN1BEREncodeBuffer buffer; }), RTS_NO_MEMORY) << allowed;
        EXPECT_EQ(memory.alive(), 0);
    }
}

}  // namespace
