// Writing forwards: into the context's buffer, and from there to an output stream if the context has one.
//
// Unlike the BER encoder, these writers start at the front: `byteIndex` counts the octets that wait in the
// buffer. The runtime creates no stream; ASN1CTXT::stream is null but where a caller filled it. A context
// with its stream belongs to one thread at a time.
#ifndef MIRVANE_ASN1RT_STREAM_H
#define MIRVANE_ASN1RT_STREAM_H

#include <cstdint>

#include "asn1rt/context.h"

// What a kind of stream does; each entry may be null. Failures are negative statuses.
struct ASN1StreamOperations {
    // Takes all octets or fails.
    int (*write)(ASN1Stream* stream, const unsigned char* data, std::uint32_t count);
    int (*flush)(ASN1Stream* stream);
};

// Bits of ASN1Stream::flags.
enum : std::uint16_t {
    RT_STREAM_OUTPUT = 0x0002,    // open for output
    RT_STREAM_BUFFERED = 0x8000,  // the context's buffer stands in front of it
};

// Comes from the msgMemHeap of its context, which frees it. A kind of stream that needs more derives from
// this.
struct ASN1Stream {
    const ASN1StreamOperations* operations;
    std::uint32_t bytesIndex;  // octets written so far
    std::uint16_t flags;
};

extern "C" {

// Hands octets straight to the stream. What its `write` returned; RTS_NOT_INITIALISED, recorded, without a
// stream that is open for output and can write.
MIRVANE_API int rtStreamWrite(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count);

// Runs the stream's `flush`: its result, 0 if it has none; RTS_BAD_ARGUMENT, recorded, without an open
// stream.
MIRVANE_API int rtStreamFlush(ASN1CTXT* ctxt);

// Collects octets in the context's buffer, sending out what waits there when they don't fit. Octets that
// would fill the whole buffer go straight to the stream. Not below 0, or the failure of rtStreamWrite; what
// waited then still does.
MIRVANE_API int rtStreamBufWrite(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count);

// Sends out what waits in the context's buffer and flushes the stream. RTS_BAD_ARGUMENT, recorded, for a
// stream that is neither open nor buffered; RTS_NOT_INITIALISED, recorded, if it can't write; else what
// `write` or rtStreamFlush returned. After a failed `write` the octets still wait.
MIRVANE_API int rtStreamBufFlush(ASN1CTXT* ctxt);

// Frees the stream record; it is not flushed.
MIRVANE_API void rtStreamRelease(ASN1CTXT* ctxt);

// Makes sure that `count` octets fit behind `byteIndex`: sends out what waits if there is a stream, else, or
// if that is not enough, lets a dynamic buffer grow. 0, or recorded: RTS_ENCODE_OVERFLOW for a static buffer,
// RTS_NO_MEMORY, or what the flush gave.
MIRVANE_API int rtCheckBuffer(ASN1CTXT* ctxt, std::uint32_t count);

// Writes octets, to the stream by way of the buffer if there is one, else to the buffer. Not below 0, or the
// failure of rtStreamBufWrite or rtCheckBuffer.
MIRVANE_API int rtWriteBytes(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count);

}  // extern "C"

#endif
