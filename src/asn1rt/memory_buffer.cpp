#include "asn1rt/memory_buffer.h"

#include <cstring>

namespace {

int moveToRoomFor(rtMemBuf* buffer, std::uint64_t capacity) {
    if (capacity > RT_MH_MAX_SIZE) return RTS_NO_MEMORY;
    rtMemHeap** heap = &buffer->pctxt->typeMemHeap;
    bool own = buffer->isDynamic && buffer->buffer;
    auto size = static_cast<std::int32_t>(capacity);
    void* memory = own ? rtMemHeapRealloc(heap, buffer->buffer, size) : rtMemHeapAlloc(heap, size);
    if (!memory) return RTS_NO_MEMORY;
    if (!own && buffer->buffer) std::memcpy(memory, buffer->buffer, buffer->usedcnt);
    buffer->buffer = static_cast<unsigned char*>(memory);
    buffer->bufsize = static_cast<std::uint32_t>(capacity);
    buffer->isDynamic = 1;
    return RTS_OK;
}

int reserve(rtMemBuf* buffer, std::uint32_t count) {
    std::uint64_t needed = std::uint64_t{buffer->usedcnt} + count;
    if (count == 0 || needed <= buffer->bufsize) return RTS_OK;
    std::uint64_t segment = buffer->segsize != 0 ? buffer->segsize : RT_MEMBUF_SEGMENT;
    return moveToRoomFor(buffer, ((needed - 1) / segment + 1) * segment);
}

}  // namespace

extern "C" {

void rtMemBufInit(ASN1CTXT* ctxt, rtMemBuf* buffer, std::uint32_t segmentSize) {
    *buffer = {};
    buffer->pctxt = ctxt;
    buffer->segsize = segmentSize;
    buffer->isDynamic = 1;
}

void rtMemBufFree(rtMemBuf* buffer) {
    if (buffer->isDynamic) rtMemHeapFreePtr(&buffer->pctxt->typeMemHeap, buffer->buffer);
}

void rtMemBufReset(rtMemBuf* buffer) {
    buffer->startidx = 0;
    buffer->usedcnt = 0;
    buffer->bitOffset = 0;
}

int rtMemBufAppend(rtMemBuf* buffer, const unsigned char* data, std::uint32_t count) {
    if (int status = reserve(buffer, count); status != RTS_OK) return status;
    if (!data || count == 0) return RTS_OK;
    std::memcpy(buffer->buffer + buffer->usedcnt, data, count);
    buffer->usedcnt += count;
    return RTS_OK;
}

int rtMemBufPreAllocate(rtMemBuf* buffer, std::uint32_t count) {
    return reserve(buffer, count);
}

int rtMemBufSet(rtMemBuf* buffer, unsigned char value, std::uint32_t count) {
    if (int status = reserve(buffer, count); status != RTS_OK || count == 0) return status;
    std::memset(buffer->buffer + buffer->usedcnt, value, count);
    buffer->usedcnt += count;
    return RTS_OK;
}

unsigned char* rtMemBufGetData(const rtMemBuf* buffer, std::uint32_t* length) {
    if (length) *length = buffer->usedcnt - buffer->startidx;
    return buffer->buffer + buffer->startidx;
}

}  // extern "C"
