// Message buffers: a working context with a direction.
//
// A buffer owns one ASN1Context; what is decoded through it lives on that context's heap, and so as long as a
// reference to the context exists. Constructors and init() throw ASN1MessageBuffer::RTLError with a status of
// asn1rt/status.h.
#ifndef MIRVANE_ASN1RT_MESSAGE_BUFFER_H
#define MIRVANE_ASN1RT_MESSAGE_BUFFER_H

#include <cstdint>

#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/memory_buffer.h"
#include "asn1rt/shared_context.h"

class ASN1CType;

class ASN1MessageBufferIF {
  public:
    enum Type { BEREncode = 0, BERDecode = 1 };

    virtual ~ASN1MessageBufferIF() = default;
    // The context, with one more reference.
    virtual ASN1CtxtPtr getContext() = 0;
    // The context, with no new reference.
    virtual ASN1CTXT* getCtxtPtr() = 0;
    // The encoding in a new array, one octet longer than the message, which the caller deletes as an array;
    // null when there is nothing to copy, and from a decode buffer.
    virtual unsigned char* getMsgCopy() = 0;
    // The first octet of the message; it belongs to the buffer.
    virtual const unsigned char* getMsgPtr() = 0;
    // Makes the buffer ready for the next operation, see the two descendants.
    virtual void init() = 0;
    // Takes the octets of a memory buffer, which must outlive their use, as the context's buffer; a status.
    virtual int initBuffer(ASN1MemBuf& memoryBuffer) = 0;
    // Texts are no BER: RTS_NOT_SUPPORTED.
    virtual int initBuffer(unsigned short* text) = 0;
    virtual int initBuffer(char* text) = 0;
    virtual bool isA(Type type) = 0;
};

class ASN1MessageBuffer : public ASN1MessageBufferIF {
  public:
    class RTLError : public ASN1RTLException {
      public:
        using ASN1RTLException::ASN1RTLException;
    };

    ASN1MessageBuffer(const ASN1MessageBuffer&) = delete;
    ASN1MessageBuffer& operator=(const ASN1MessageBuffer&) = delete;

    ASN1CtxtPtr getContext() override { return mpContext; }
    ASN1CTXT* getCtxtPtr() override { return mpContext; }
    unsigned char* getMsgCopy() override { return nullptr; }
    const unsigned char* getMsgPtr() override { return getCtxtPtr()->buffer.data; }
    void init() override {}
    int initBuffer(ASN1MemBuf& memoryBuffer) override;
    int initBuffer(unsigned short*) override { return RTS_NOT_SUPPORTED; }
    int initBuffer(char*) override { return RTS_NOT_SUPPORTED; }

  protected:
    explicit ASN1MessageBuffer(Type type);

    ASN1CtxtPtr mpContext;
    Type mBufferType;
};

class ASN1BERMessageBuffer : public ASN1MessageBuffer {
  protected:
    using ASN1MessageBuffer::ASN1MessageBuffer;
};

class ASN1BEREncodeBuffer : public ASN1BERMessageBuffer {
  public:
    // A buffer that grows.
    ASN1BEREncodeBuffer();
    // The caller's `size` octets, of which the last is never written.
    ASN1BEREncodeBuffer(unsigned char* buffer, std::uint32_t size);

    unsigned char* getMsgCopy() override;
    const unsigned char* getMsgPtr() override { return xe_getp(getCtxtPtr()); }
    // Starts a new message over the old one. The recorded failure stays.
    void init() override;
    bool isA(Type type) override { return type == BEREncode; }

    // Takes another buffer, as the constructor does; the former one is not freed. A status.
    int setBuffer(unsigned char* buffer, std::uint32_t size);

    // Runs EncodeTo and throws ASN1RTLException for any result but 0, a length included. Kept for its
    // callers; to encode, call EncodeTo.
    ASN1BEREncodeBuffer& operator<<(ASN1CType& value);
};

class ASN1BERDecodeBuffer : public ASN1BERMessageBuffer {
  public:
    ASN1BERDecodeBuffer() : ASN1BERMessageBuffer(BERDecode) {}
    // Decodes `length` octets, which must outlive the buffer: they are not copied. Nothing is read yet.
    ASN1BERDecodeBuffer(const unsigned char* message, int length);

    // Reads the outermost header, once: a second decode goes on where the first stopped. Throws RTLError if
    // xd_setp fails, and so does every further call on the same message.
    void init() override;
    bool isA(Type type) override { return type == BERDecode; }

    // Takes another message. With `skip` and the message that is set up already, nothing is done. A status of
    // xd_setp is not told: the decoder then meets it. Null, or a length below 1, leaves the buffer without a
    // message.
    void setBuffer(const unsigned char* message, int length, bool skip = false);

    // The first octet of the first element with this tag, at any depth, or of the next one after the last
    // found; null if there is none. `length` gets the length of its content.
    const unsigned char* findElement(ASN1TAG tag, int& length, bool first = true);

    // Runs DecodeFrom and throws ASN1RTLException for any result but 0.
    ASN1BERDecodeBuffer& operator>>(ASN1CType& value);

  private:
    bool hasMessage() const { return mpMsg != nullptr && mMsgLen >= 1; }
    int setUp();

    const unsigned char* mpMsg = nullptr;
    std::int32_t mMsgLen = 0;
    std::uint8_t mInitialized = 0;
};

#endif
