// The working record of all encoding and decoding: two heaps, the message buffer with its cursor, the first
// failure and the flags.
//
// A context is dead, alive without a buffer (after rtInitContext), or alive with one. Nothing in the plain
// functions throws: a failure is a status of asn1rt/status.h or a null pointer. A context, with the heaps
// that it shares, belongs to one thread at a time.
#ifndef MIRVANE_ASN1RT_CONTEXT_H
#define MIRVANE_ASN1RT_CONTEXT_H

#include <cstdint>

#include "asn1rt/export.h"
#include "asn1rt/heap.h"
#include "asn1rt/slist.h"
#include "asn1rt/status.h"

struct ASN1Stream;

// Bits 31 and 30 are the class, bit 29 says constructed, bits 28 to 0 are the tag number (X.690, 8.1.2): the
// top three bits of the identifier octet, moved up by 24 places, plus the number.
using ASN1TAG = std::uint32_t;

enum : ASN1TAG {
    TM_UNIVERSAL = 0x00000000,
    TM_APPLICATION = 0x40000000,
    TM_CONTEXT = 0x80000000,
    TM_PRIVATE = 0xC0000000,
    TM_CLASS = 0xC0000000,
    TM_CONSTRUCTED = 0x20000000,
    TM_NUMBER = 0x1FFFFFFF,
};

// Who writes or reads the universal tag of a value: the operation itself, or its caller, who then hands a
// decoder the length of the content.
enum ASN1TagType : int { ASN1IMPL = 0, ASN1EXPL = 1 };

// Stands for the indefinite length wherever a length may stand.
enum : int { ASN1_INDEFLEN = -9999 };

// Bits of ASN1CTXT::flags.
enum : std::uint16_t {
    ASN1_LAX_LENGTH = 0x0040,   // definite lengths are not held against the buffer (a negative one still is)
    ASN1_KEEP_BUFFER = 0x0100,  // rtFreeContext leaves a dynamic buffer to its heap
    ASN1_CONSTRUCTED = 0x0400,  // the tag read last had its constructed bit
    ASN1_NO_COPY = 0x0800,      // octet strings, bit strings and open types are pointers into the message
    ASN1_END_REACHED = 0x1000,  // with ASN1_INDEF_MESSAGE: tag reads give RTS_END_OF_BUFFER at once
    ASN1_INDEF_MESSAGE = 0x4000,  // the outermost element has indefinite length
};

enum : std::uint32_t { ASN1_CONTEXT_ALIVE = 0x1AA2A34A };

struct ASN1ErrInfo {
    std::int32_t status;  // the first failure, 0 if there was none
};

struct ASN1CTXT {
    rtMemHeap* msgMemHeap;   // message-level memory: the first buffer of an encoder
    rtMemHeap* typeMemHeap;  // decoded values and all that the codecs allocate
    struct {
        unsigned char* data;
        std::uint32_t byteIndex;  // decoding: the next octet to read; encoding: the first octet written
        std::uint32_t size;       // octets; while decoding, the end of the outermost element
        std::int16_t bitOffset;
        std::uint8_t dynamic;  // 1: the runtime allocated the buffer, owns it and may grow it
    } buffer;
    ASN1Stream* stream;  // null but where a caller filled it
    struct {
        std::uint32_t byteIndex;
        std::uint16_t bitOffset;
        std::uint16_t flags;
    } savedInfo;  // the position at the start of the last xd_tag_len
    ASN1ErrInfo errInfo;
    rtSList errParmList;
    rtSList auxList;
    std::uint32_t initCode;  // ASN1_CONTEXT_ALIVE, or 0 when dead
    std::uint16_t flags;
    void* memApp;  // handed to the allocator hooks
};

extern "C" {

// Makes a live context without a buffer: everything zero, one heap under both handles, empty lists. 0, or the
// status of a failed rtMemHeapCreate; rtFreeContext is safe after either.
MIRVANE_API int rtInitContext(ASN1CTXT* ctxt, void* memApp);

// Gives the context a buffer of `size` octets: the caller's, which must outlive its use, or with null one
// from msgMemHeap (16384 octets when `size` is 0). The former buffer is not freed. RTS_NOT_INITIALISED on a
// dead context, RTS_NO_MEMORY, or 0; nothing is recorded.
MIRVANE_API int rtInitContextBuffer(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t size);

// Ends the context: frees a dynamic buffer (unless ASN1_KEEP_BUFFER), the stream record and the lists, and
// gives back both heap references, which frees all memory unless another context holds the heap. A kept
// buffer stays on its heap and goes with it; on a heap that another context holds, rtMemHeapFreePtr frees it
// there. A dead context is passed by.
MIRVANE_API void rtFreeContext(ASN1CTXT* ctxt);

// Copies the buffer group and the flags, and nothing else.
MIRVANE_API void rtCopyContext(ASN1CTXT* destination, const ASN1CTXT* source);

// Sets the bits of `mask`; no operation clears one. RTS_NOT_INITIALISED on a dead context, else 0.
MIRVANE_API int rtCtxtSetFlag(ASN1CTXT* ctxt, std::uint16_t mask);

// Lets `ctxt` allocate its values from the typeMemHeap (the msgMemHeap) of `other`: gives up its present heap
// and takes a reference to the other. A null context, or a heap that is the same already, is passed by.
MIRVANE_API void rtCtxtSetMemHeap(ASN1CTXT* ctxt, const ASN1CTXT* other);
MIRVANE_API void rtCtxtSetMsgMemHeap(ASN1CTXT* ctxt, const ASN1CTXT* other);

// Keeps the first failure: stores `status` if nothing is stored yet. Returns `status`, stored or not.
// `module` and `line` are ignored.
MIRVANE_API int rtErrSetData(ASN1ErrInfo* errInfo, int status, const char* module, int line);

// Forgets the stored failure. 0.
MIRVANE_API int rtErrReset(ASN1ErrInfo* errInfo);

// Copies the stored status and returns it.
MIRVANE_API int rtErrCopyData(const ASN1ErrInfo* source, ASN1ErrInfo* destination);

// Accept a detail of a failure and store nothing. Always 1.
MIRVANE_API int rtErrAddIntParm(ASN1ErrInfo* errInfo, int value);
MIRVANE_API int rtErrAddStrParm(ASN1ErrInfo* errInfo, const char* text);

// Always the empty text: statuses have no texts.
MIRVANE_API const char* rtErrGetText(const ASN1CTXT* ctxt);

// Writes "ASN.1 ERROR: Status %d\n" to standard output; what printf returned.
MIRVANE_API int rtErrPrint(const ASN1ErrInfo* errInfo);

}  // extern "C"

#endif
