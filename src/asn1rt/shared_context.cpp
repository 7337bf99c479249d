#include "asn1rt/shared_context.h"

#include <cassert>

#include "asn1rt/message_buffer.h"

ASN1Context::ASN1Context() : ASN1CTXT{} {
    if (int status = rtInitContext(this, nullptr); status != RTS_OK) {
        rtFreeContext(this);
        throw ASN1MessageBuffer::RTLError(status);
    }
}

ASN1Context::~ASN1Context() {
    rtFreeContext(this);
}

void ASN1Context::_unref() {
    assert(refCount > 0);
    if (--refCount == 0) delete this;
}
