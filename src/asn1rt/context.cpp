#include "asn1rt/context.h"

#include <cstdio>

#include "asn1rt/ber_encode.h"
#include "asn1rt/stream.h"

namespace {

bool isAlive(const ASN1CTXT* ctxt) {
    return ctxt->initCode == ASN1_CONTEXT_ALIVE;
}

// The `field` heap of `ctxt` becomes the one of `other`, with a reference of its own.
void shareHeap(ASN1CTXT* ctxt, const ASN1CTXT* other, rtMemHeap* ASN1CTXT::*field) {
    if (!ctxt || !other || ctxt->*field == other->*field) return;
    rtMemHeapRelease(&(ctxt->*field));
    ctxt->*field = other->*field;
    rtMemHeapAddRef(&(ctxt->*field));
}

}  // namespace

extern "C" {

int rtInitContext(ASN1CTXT* ctxt, void* memApp) {
    *ctxt = ASN1CTXT{};
    ctxt->initCode = ASN1_CONTEXT_ALIVE;
    if (int status = rtMemHeapCreate(&ctxt->typeMemHeap, memApp); status != RTS_OK) return status;
    ctxt->memApp = memApp;
    ctxt->msgMemHeap = ctxt->typeMemHeap;
    rtMemHeapAddRef(&ctxt->msgMemHeap);
    rtSListInitEx(ctxt, &ctxt->errParmList);
    rtSListInitEx(ctxt, &ctxt->auxList);
    return RTS_OK;
}

int rtInitContextBuffer(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t size) {
    if (!isAlive(ctxt)) return RTS_NOT_INITIALISED;
    const bool own = buffer == nullptr;
    if (own) {
        if (size == 0) size = XE_GROWTH_STEP;
        buffer =
            static_cast<unsigned char*>(rtMemHeapAlloc(&ctxt->msgMemHeap, static_cast<std::int32_t>(size)));
        if (!buffer) return RTS_NO_MEMORY;
    }
    ctxt->buffer = {buffer, 0, size, 8, own};
    return RTS_OK;
}

void rtFreeContext(ASN1CTXT* ctxt) {
    if (!isAlive(ctxt)) return;
    if (ctxt->buffer.dynamic && ctxt->buffer.data && !(ctxt->flags & ASN1_KEEP_BUFFER)) {
        rtMemHeapFreePtr(&ctxt->msgMemHeap, ctxt->buffer.data);
    }
    if (ctxt->stream) rtStreamRelease(ctxt);
    rtSListFree(&ctxt->errParmList);
    rtSListFree(&ctxt->auxList);
    rtMemHeapRelease(&ctxt->typeMemHeap);
    rtMemHeapRelease(&ctxt->msgMemHeap);
    ctxt->typeMemHeap = nullptr;
    ctxt->msgMemHeap = nullptr;
    ctxt->buffer = {};
    ctxt->initCode = 0;
}

void rtCopyContext(ASN1CTXT* destination, const ASN1CTXT* source) {
    destination->buffer = source->buffer;
    destination->flags = source->flags;
}

int rtCtxtSetFlag(ASN1CTXT* ctxt, std::uint16_t mask) {
    if (!isAlive(ctxt)) return RTS_NOT_INITIALISED;
    ctxt->flags = static_cast<std::uint16_t>(ctxt->flags | mask);
    return RTS_OK;
}

void rtCtxtSetMemHeap(ASN1CTXT* ctxt, const ASN1CTXT* other) {
    shareHeap(ctxt, other, &ASN1CTXT::typeMemHeap);
}

void rtCtxtSetMsgMemHeap(ASN1CTXT* ctxt, const ASN1CTXT* other) {
    shareHeap(ctxt, other, &ASN1CTXT::msgMemHeap);
}

int rtErrSetData(ASN1ErrInfo* errInfo, int status, const char*, int) {
    if (errInfo->status == RTS_OK) errInfo->status = status;
    return status;
}

int rtErrReset(ASN1ErrInfo* errInfo) {
    errInfo->status = RTS_OK;
    return RTS_OK;
}

int rtErrCopyData(const ASN1ErrInfo* source, ASN1ErrInfo* destination) {
    destination->status = source->status;
    return source->status;
}

int rtErrAddIntParm(ASN1ErrInfo*, int) {
    return 1;
}
int rtErrAddStrParm(ASN1ErrInfo*, const char*) {
    return 1;
}
const char* rtErrGetText(const ASN1CTXT*) {
    return "";
}

int rtErrPrint(const ASN1ErrInfo* errInfo) {
    return std::printf("ASN.1 ERROR: Status %d\n", errInfo->status);
}

}  // extern "C"
