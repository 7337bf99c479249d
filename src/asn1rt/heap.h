// A memory heap of the runtime: every block is one allocation, and all blocks go at once when the last
// reference to the heap is released.
//
// Each function takes the address of a heap handle, that is of ASN1CTXT::msgMemHeap or ASN1CTXT::typeMemHeap.
// A handle that holds null is "empty". Sizes are octets in signed 32 bits; a negative size counts as above
// the limit. Heaps have no locks: a heap, and every context that shares it, belongs to one thread at a time.
#ifndef MIRVANE_ASN1RT_HEAP_H
#define MIRVANE_ASN1RT_HEAP_H

#include <cstddef>
#include <cstdint>

#include "asn1rt/export.h"

// Stands right before the user's octets; `blockSize` is the last member, so that it is found one word back
// from the user pointer.
struct alignas(16) rtMemBlock {
    rtMemBlock* next;
    rtMemBlock* prev;
    struct rtMemHeap* heap;  // where the block is linked, whatever handle a later call names
    std::uint64_t reserved[2];
    std::int64_t blockSize;  // what the user asked for
};
static_assert(sizeof(rtMemBlock) == 48 && offsetof(rtMemBlock, blockSize) == 40);

struct rtMemHeap {
    rtMemBlock* blockList;  // the most recent block first
    std::uint32_t defBlkSize;
    std::uint32_t refCount;
    std::uint32_t heapFlags;
    void* memApp;
};

enum : std::uint32_t { RT_MH_OWNS_RECORD = 0x10000000 };  // the heap record came from rtMemHeapCreate

// The largest request that a heap serves: 0x7FFFFFFF less the block header.
enum : std::int32_t { RT_MH_MAX_SIZE = 0x7FFFFFCF };

extern "C" {

// Allocator hooks, process wide and read without synchronisation: set them before the first context is made.
// `memApp` is what the context was initialised with. The initial ones are the C library's and ignore it. The
// heap never calls the reallocation hook.
extern MIRVANE_API void* (*g_malloc_func)(void* memApp, std::size_t size);
extern MIRVANE_API void* (*g_realloc_func)(void* memApp, void* pointer, std::size_t size);
extern MIRVANE_API void (*g_free_func)(void* memApp, void* pointer);
extern MIRVANE_API std::uint32_t g_defBlkSize;  // copied into each new heap, decides nothing

MIRVANE_API void* rtDefaultMalloc(void* memApp, std::size_t size);
MIRVANE_API void* rtDefaultRealloc(void* memApp, void* pointer, std::size_t size);
MIRVANE_API void rtDefaultFree(void* memApp, void* pointer);

// The C library's allocator for code outside the heaps. Never pass such a pointer to a heap.
MIRVANE_API void* MV_malloc(std::size_t size);
MIRVANE_API void* MV_calloc(std::size_t count, std::size_t size);
MIRVANE_API void* MV_realloc(void* pointer, std::size_t size);
MIRVANE_API void MV_free(void* pointer);

// Makes a heap with one reference and stores it in `*handle`, whatever that held before. RTS_BAD_ARGUMENT for
// a null `handle`, RTS_NO_MEMORY if the allocator fails; 0 otherwise.
MIRVANE_API int rtMemHeapCreate(rtMemHeap** handle, void* memApp);

// One block of `size` octets, aligned to 16, contents undefined; size 0 gives a distinct pointer. An empty
// handle gets a new heap first. Null for a null `handle`, a size above RT_MH_MAX_SIZE or below 0, or if the
// allocator fails.
MIRVANE_API void* rtMemHeapAlloc(rtMemHeap** handle, std::int32_t size);

// As rtMemHeapAlloc, with the octets zeroed.
MIRVANE_API void* rtMemHeapAllocZ(rtMemHeap** handle, std::int32_t size);

// Resizes a block. A null pointer allocates, but an empty handle yields null: no heap is made here. A size
// not above the present one gives the same pointer back and releases nothing. Growth moves to a new block of
// this handle's heap. Null if the size is out of range or the allocator fails; the block then stays as it
// was.
MIRVANE_API void* rtMemHeapRealloc(rtMemHeap** handle, void* pointer, std::int32_t size);

// Frees one block, unlinking it from the heap that it belongs to. A null handle, an empty one and a null
// pointer do nothing. `pointer` must come from a heap: it is not checked.
MIRVANE_API void rtMemHeapFreePtr(rtMemHeap** handle, void* pointer);

// Always 1: whether a pointer belongs to the heap is not looked at.
MIRVANE_API int rtMemHeapCheckPtr(rtMemHeap** handle, const void* pointer);

// Always 0; does nothing.
MIRVANE_API int rtMemHeapMarkSaved(rtMemHeap** handle, const void* pointer);

// One more reference; nothing for an empty handle.
MIRVANE_API void rtMemHeapAddRef(rtMemHeap** handle);

// Drops a reference. The last one frees all blocks and the heap and empties the handle; before that the
// handle keeps its value. Nothing for a null or an empty handle.
MIRVANE_API void rtMemHeapRelease(rtMemHeap** handle);

}  // extern "C"

#endif
