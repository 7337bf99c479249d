#include "asn1rt/heap.h"

#include <cstdlib>
#include <cstring>

#include "asn1rt/status.h"

namespace {

rtMemBlock* blockOf(void* pointer) {
    return static_cast<rtMemBlock*>(pointer) - 1;
}

void link(rtMemHeap* heap, rtMemBlock* block) {
    block->next = heap->blockList;
    block->prev = nullptr;
    block->heap = heap;
    if (heap->blockList) heap->blockList->prev = block;
    heap->blockList = block;
}

// Goes by the heap that the block remembers: a control class may have moved the context to another one since.
void unlink(rtMemBlock* block) {
    if (block->next) block->next->prev = block->prev;
    if (block->prev) {
        block->prev->next = block->next;
    } else {
        block->heap->blockList = block->next;
    }
}

bool isAcceptable(std::int32_t size) {
    return size >= 0 && size <= RT_MH_MAX_SIZE;
}

}  // namespace

extern "C" {

void* rtDefaultMalloc(void*, std::size_t size) {
    return std::malloc(size);
}
void* rtDefaultRealloc(void*, void* pointer, std::size_t size) {
    return std::realloc(pointer, size);
}
void rtDefaultFree(void*, void* pointer) {
    std::free(pointer);
}

void* (*g_malloc_func)(void*, std::size_t) = rtDefaultMalloc;
void* (*g_realloc_func)(void*, void*, std::size_t) = rtDefaultRealloc;
void (*g_free_func)(void*, void*) = rtDefaultFree;
std::uint32_t g_defBlkSize = 4096;

void* MV_malloc(std::size_t size) {
    return std::malloc(size);
}
void* MV_calloc(std::size_t count, std::size_t size) {
    return std::calloc(count, size);
}
void* MV_realloc(void* pointer, std::size_t size) {
    return std::realloc(pointer, size);
}
void MV_free(void* pointer) {
    std::free(pointer);
}

int rtMemHeapCreate(rtMemHeap** handle, void* memApp) {
    if (!handle) return RTS_BAD_ARGUMENT;
    auto* heap = static_cast<rtMemHeap*>(g_malloc_func(memApp, sizeof(rtMemHeap)));
    if (!heap) return RTS_NO_MEMORY;
    *heap = rtMemHeap{nullptr, g_defBlkSize, 1, RT_MH_OWNS_RECORD, memApp};
    *handle = heap;
    return RTS_OK;
}

void* rtMemHeapAlloc(rtMemHeap** handle, std::int32_t size) {
    if (!handle || !isAcceptable(size)) return nullptr;
    if (!*handle && rtMemHeapCreate(handle, nullptr) != RTS_OK) return nullptr;
    rtMemHeap* heap = *handle;
    auto* block = static_cast<rtMemBlock*>(
        g_malloc_func(heap->memApp, static_cast<std::size_t>(size) + sizeof(rtMemBlock)));
    if (!block) return nullptr;
    link(heap, block);
    block->blockSize = size;
    return block + 1;
}

void* rtMemHeapAllocZ(rtMemHeap** handle, std::int32_t size) {
    void* pointer = rtMemHeapAlloc(handle, size);
    if (pointer) std::memset(pointer, 0, static_cast<std::size_t>(size));
    return pointer;
}

void* rtMemHeapRealloc(rtMemHeap** handle, void* pointer, std::int32_t size) {
    if (!handle || !*handle || !isAcceptable(size)) return nullptr;
    if (!pointer) return rtMemHeapAlloc(handle, size);
    rtMemBlock* block = blockOf(pointer);
    if (block->blockSize >= size) {
        block->blockSize = size;
        return pointer;
    }
    void* grown = rtMemHeapAlloc(handle, size);
    if (!grown) return nullptr;
    std::memcpy(grown, pointer, static_cast<std::size_t>(block->blockSize));
    rtMemHeapFreePtr(handle, pointer);
    return grown;
}

void rtMemHeapFreePtr(rtMemHeap** handle, void* pointer) {
    if (!handle || !*handle || !pointer) return;
    rtMemBlock* block = blockOf(pointer);
    unlink(block);
    g_free_func(block->heap->memApp, block);
}

int rtMemHeapCheckPtr(rtMemHeap**, const void*) {
    return 1;
}
int rtMemHeapMarkSaved(rtMemHeap**, const void*) {
    return 0;
}

void rtMemHeapAddRef(rtMemHeap** handle) {
    if (handle && *handle) ++(*handle)->refCount;
}

void rtMemHeapRelease(rtMemHeap** handle) {
    if (!handle || !*handle) return;
    rtMemHeap* heap = *handle;
    if (--heap->refCount > 0) return;
    for (rtMemBlock* block = heap->blockList; block != nullptr;) {
        rtMemBlock* next = block->next;
        g_free_func(heap->memApp, block);
        block = next;
    }
    *handle = nullptr;
    if (heap->heapFlags & RT_MH_OWNS_RECORD) g_free_func(heap->memApp, heap);
}

}  // extern "C"
