// ASN1CType, the base of all control classes: it ties a value record to a message buffer, and shares the
// buffer's context.
#ifndef MIRVANE_ASN1RT_CONTROL_H
#define MIRVANE_ASN1RT_CONTROL_H

#include "asn1rt/message_buffer.h"

class ASN1CType {
  public:
    // Shares the context of `buffer`, which must outlive this object's use of it.
    explicit ASN1CType(ASN1MessageBufferIF& buffer) : mpContext(buffer.getContext()), mpMsgBuf(&buffer) {}
    virtual ~ASN1CType() = default;

    ASN1CType& operator=(const ASN1CType&) = delete;

    // EncodeTo and DecodeFrom on the buffer that this object remembers; RTS_BAD_ARGUMENT if there is none.
    virtual int Encode() { return mpMsgBuf ? EncodeTo(*mpMsgBuf) : int{RTS_BAD_ARGUMENT}; }
    virtual int Decode() { return mpMsgBuf ? DecodeFrom(*mpMsgBuf) : int{RTS_BAD_ARGUMENT}; }

    // The encoded length, or a negative status. The base does nothing and returns 0.
    virtual int EncodeTo(ASN1MessageBufferIF&) { return RTS_OK; }
    // 0 or a negative status. The base does nothing and returns 0.
    virtual int DecodeFrom(ASN1MessageBufferIF&) { return RTS_OK; }

    // Remembers another buffer and takes memory for values from its context's heap from now on. The former
    // heap is given up: what this object allocated there dies with it unless another context holds that heap.
    void setMsgBuf(ASN1MessageBufferIF& buffer) {
        mpMsgBuf = &buffer;
        rtCtxtSetMemHeap(mpContext, buffer.getCtxtPtr());
    }

  protected:
    // A new context of its own, and no buffer.
    ASN1CType() : mpContext(new ASN1Context), mpMsgBuf(nullptr) {}
    // One more reference to `context`, and no buffer.
    explicit ASN1CType(ASN1Context& context) : mpContext(&context), mpMsgBuf(nullptr) {}
    ASN1CType(const ASN1CType& other) = default;

    // The steps that every EncodeTo and DecodeFrom begin with: RTS_NOT_SUPPORTED for a buffer of the other
    // direction, else binds and initialises the buffer. Throws what init() throws.
    int prepare(ASN1MessageBufferIF& buffer, ASN1MessageBufferIF::Type direction) {
        if (!buffer.isA(direction)) return RTS_NOT_SUPPORTED;
        setMsgBuf(buffer);
        buffer.init();
        return RTS_OK;
    }

    ASN1CtxtPtr mpContext;
    ASN1MessageBufferIF* mpMsgBuf;  // not owned, may be null
};

#endif
