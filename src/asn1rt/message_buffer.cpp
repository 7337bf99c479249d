#include "asn1rt/message_buffer.h"

#include <cstring>

#include "asn1rt/control.h"

ASN1MessageBuffer::ASN1MessageBuffer(Type type) : mpContext(new ASN1Context), mBufferType(type) {}

int ASN1MessageBuffer::initBuffer(ASN1MemBuf& memoryBuffer) {
    std::uint32_t length = 0;
    unsigned char* data = rtMemBufGetData(&memoryBuffer, &length);
    if (!data || length == 0) {
        mpContext->buffer = {};
        return RTS_OK;
    }
    return rtInitContextBuffer(mpContext, data, length);
}

ASN1BEREncodeBuffer::ASN1BEREncodeBuffer() : ASN1BEREncodeBuffer(nullptr, 0) {}

ASN1BEREncodeBuffer::ASN1BEREncodeBuffer(unsigned char* buffer, std::uint32_t size)
    : ASN1BERMessageBuffer(BEREncode) {
    if (int status = setBuffer(buffer, size); status != RTS_OK) throw RTLError(status);
}

unsigned char* ASN1BEREncodeBuffer::getMsgCopy() {
    const auto& buffer = getCtxtPtr()->buffer;
    if (buffer.byteIndex == buffer.size || !buffer.data) return nullptr;
    const std::uint32_t count = buffer.size - buffer.byteIndex;
    auto* copy = new unsigned char[count];
    std::memcpy(copy, getMsgPtr(), count - 1);
    copy[count - 1] = 0;  // the octet of the buffer that nobody writes
    return copy;
}

void ASN1BEREncodeBuffer::init() {
    auto& buffer = getCtxtPtr()->buffer;
    buffer.byteIndex = buffer.size > 0 ? buffer.size - 1 : 0;
}

int ASN1BEREncodeBuffer::setBuffer(unsigned char* buffer, std::uint32_t size) {
    return xe_setp(getCtxtPtr(), buffer, size);
}

ASN1BEREncodeBuffer& ASN1BEREncodeBuffer::operator<<(ASN1CType& value) {
    // A length fails here as well: only an empty encoding passes.
    if (int result = value.EncodeTo(*this); result != 0) throw ASN1RTLException(result);
    return *this;
}

ASN1BERDecodeBuffer::ASN1BERDecodeBuffer(const unsigned char* message, int length)
    : ASN1BERMessageBuffer(BERDecode), mpMsg(message), mMsgLen(length) {}

int ASN1BERDecodeBuffer::setUp() {
    mInitialized = 1;
    return xd_setp(getCtxtPtr(), mpMsg, mMsgLen, nullptr, nullptr);
}

void ASN1BERDecodeBuffer::init() {
    if (mInitialized || !hasMessage()) return;
    if (int status = setUp(); status != RTS_OK) {
        mInitialized = 0;
        throw RTLError(status);
    }
}

void ASN1BERDecodeBuffer::setBuffer(const unsigned char* message, int length, bool skip) {
    if (skip && mInitialized && message == mpMsg && length == mMsgLen) return;
    mpMsg = message;
    mMsgLen = length;
    if (hasMessage()) {
        setUp();
    } else {
        mInitialized = 0;
        getCtxtPtr()->buffer = {};
    }
}

const unsigned char* ASN1BERDecodeBuffer::findElement(ASN1TAG tag, int& length, bool first) {
    if (first && (!hasMessage() || setUp() != RTS_OK)) return nullptr;
    if (xd_match(getCtxtPtr(), tag, &length, first ? XD_SEEK : XD_SEEK | XD_SKIP) != RTS_OK) return nullptr;
    return getMsgPtr() + getCtxtPtr()->buffer.byteIndex;
}

ASN1BERDecodeBuffer& ASN1BERDecodeBuffer::operator>>(ASN1CType& value) {
    if (int result = value.DecodeFrom(*this); result != 0) throw ASN1RTLException(result);
    return *this;
}
