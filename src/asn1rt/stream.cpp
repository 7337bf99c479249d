#include "asn1rt/stream.h"

#include <algorithm>

#include "asn1rt/ber_encode.h"
#include "asn1rt/cursor.h"

namespace {

using asn1rt::record;
using asn1rt::room;

bool isOpenForOutput(const ASN1Stream* stream) {
    return stream && (stream->flags & RT_STREAM_OUTPUT);
}

// Calls `write`, whatever the flags say, and counts what it took.
int send(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count) {
    ASN1Stream* stream = ctxt->stream;
    if (!stream->operations || !stream->operations->write) return record(ctxt, RTS_NOT_INITIALISED);
    int result = stream->operations->write(stream, data, count);
    if (result >= 0) stream->bytesIndex += count;
    return result;
}

// Octets in the buffer; a decoder may have left the cursor behind the end.
std::uint32_t waiting(const ASN1CTXT* ctxt) {
    return std::min(ctxt->buffer.byteIndex, ctxt->buffer.size);
}

// Octets whose room has been made sure of.
void append(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count) {
    std::copy_n(data, count, ctxt->buffer.data + ctxt->buffer.byteIndex);
    ctxt->buffer.byteIndex += count;
}

int grow(ASN1CTXT* ctxt, std::uint32_t count) {
    auto& buffer = ctxt->buffer;
    // The last one differs from the first only for a cursor behind the end.
    std::uint64_t size =
        std::max({std::uint64_t{buffer.size} + count, std::uint64_t{buffer.size} + XE_GROWTH_STEP,
                  std::uint64_t{buffer.byteIndex} + count});
    if (size > RT_MH_MAX_SIZE) return record(ctxt, RTS_NO_MEMORY);
    void* memory = rtMemHeapRealloc(&ctxt->msgMemHeap, buffer.data, static_cast<std::int32_t>(size));
    if (!memory) return record(ctxt, RTS_NO_MEMORY);
    buffer.data = static_cast<unsigned char*>(memory);
    buffer.size = static_cast<std::uint32_t>(size);
    return RTS_OK;
}

}  // namespace

extern "C" {

int rtStreamWrite(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count) {
    if (!isOpenForOutput(ctxt->stream)) return record(ctxt, RTS_NOT_INITIALISED);
    return send(ctxt, data, count);
}

int rtStreamFlush(ASN1CTXT* ctxt) {
    ASN1Stream* stream = ctxt->stream;
    if (!isOpenForOutput(stream)) return record(ctxt, RTS_BAD_ARGUMENT);
    return stream->operations && stream->operations->flush ? stream->operations->flush(stream) : RTS_OK;
}

int rtStreamBufWrite(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count) {
    auto& buffer = ctxt->buffer;
    if (count > room(ctxt) && buffer.byteIndex > 0) {
        if (int status = rtStreamWrite(ctxt, buffer.data, waiting(ctxt)); status < 0) return status;
        buffer.byteIndex = 0;
    }
    if (count >= buffer.size) return rtStreamWrite(ctxt, data, count);
    append(ctxt, data, count);
    return RTS_OK;
}

int rtStreamBufFlush(ASN1CTXT* ctxt) {
    auto& buffer = ctxt->buffer;
    if (!ctxt->stream || !(ctxt->stream->flags & (RT_STREAM_OUTPUT | RT_STREAM_BUFFERED))) {
        return record(ctxt, RTS_BAD_ARGUMENT);
    }
    if (buffer.byteIndex > 0) {
        if (int status = send(ctxt, buffer.data, waiting(ctxt)); status < 0) return status;
        buffer.byteIndex = 0;
    }
    return rtStreamFlush(ctxt);
}

void rtStreamRelease(ASN1CTXT* ctxt) {
    rtMemHeapFreePtr(&ctxt->msgMemHeap, ctxt->stream);
    ctxt->stream = nullptr;
}

int rtCheckBuffer(ASN1CTXT* ctxt, std::uint32_t count) {
    const auto fits = [ctxt, count] {
        return std::uint64_t{ctxt->buffer.byteIndex} + count <= ctxt->buffer.size;
    };
    if (fits()) return RTS_OK;
    if (ctxt->stream) {
        if (int status = rtStreamBufFlush(ctxt); status < 0) return record(ctxt, status);
        if (fits()) return RTS_OK;
    }
    return ctxt->buffer.dynamic ? grow(ctxt, count) : record(ctxt, RTS_ENCODE_OVERFLOW);
}

int rtWriteBytes(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count) {
    if (count == 0) return RTS_OK;
    if (ctxt->stream) return rtStreamBufWrite(ctxt, data, count);
    if (int status = rtCheckBuffer(ctxt, count); status != RTS_OK) return status;
    append(ctxt, data, count);
    return RTS_OK;
}

}  // extern "C"
