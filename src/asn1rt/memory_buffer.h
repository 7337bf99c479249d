// A byte buffer that grows by whole segments on the heap of a context.
//
// The octets from startidx up to usedcnt are its content. What it allocated belongs to the typeMemHeap of its
// context, and goes with that heap at the latest. A buffer belongs to one thread at a time, with its context.
#ifndef MIRVANE_ASN1RT_MEMORY_BUFFER_H
#define MIRVANE_ASN1RT_MEMORY_BUFFER_H

#include <cstdint>

#include "asn1rt/context.h"

struct rtMemBuf {
    ASN1CTXT* pctxt;
    std::uint32_t segsize;   // octets of a segment; 0 stands for RT_MEMBUF_SEGMENT
    std::uint32_t startidx;  // where the data starts
    std::uint32_t usedcnt;   // where it ends
    std::uint32_t bufsize;   // octets that `buffer` holds
    std::uint32_t bitOffset;
    std::uint32_t reserved;
    unsigned char* buffer;
    // 1: `buffer` is the runtime's; 0: the caller's, which growth replaces and never frees.
    std::uint8_t isDynamic;
};

// The form that message buffers take, see ASN1MessageBufferIF::initBuffer.
struct ASN1MemBuf : rtMemBuf {};

enum : std::uint32_t { RT_MEMBUF_SEGMENT = 1024 };

extern "C" {

// Makes the buffer empty, without memory, whatever it held before. It grows by multiples of `segmentSize`
// octets.
MIRVANE_API void rtMemBufInit(ASN1CTXT* ctxt, rtMemBuf* buffer, std::uint32_t segmentSize);

// Frees memory that is the runtime's. No field is cleared: before the next use, initialise.
MIRVANE_API void rtMemBufFree(rtMemBuf* buffer);

// Forgets the content and keeps the memory.
MIRVANE_API void rtMemBufReset(rtMemBuf* buffer);

// Appends `count` octets, which must not lie in the buffer itself; null `data` only makes room for them. 0,
// or RTS_NO_MEMORY with the buffer as it was; nothing is recorded.
MIRVANE_API int rtMemBufAppend(rtMemBuf* buffer, const unsigned char* data, std::uint32_t count);

// Makes room for `count` more octets. Result as rtMemBufAppend.
MIRVANE_API int rtMemBufPreAllocate(rtMemBuf* buffer, std::uint32_t count);

// Appends `count` octets of the value `value`. Result as rtMemBufAppend.
MIRVANE_API int rtMemBufSet(rtMemBuf* buffer, unsigned char value, std::uint32_t count);

// The first octet of the content, null if no memory was ever taken; `length`, unless null, gets the count of
// octets. The pointer is good until the buffer grows.
MIRVANE_API unsigned char* rtMemBufGetData(const rtMemBuf* buffer, std::uint32_t* length);

}  // extern "C"

#endif
