// A buffer that holds short texts in itself and long ones on the heap.
#ifndef MIRVANE_PROVIDER_TEMP_BUFFER_H
#define MIRVANE_PROVIDER_TEMP_BUFFER_H

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "asn1rt/export.h"
#include "base/exception.h"

namespace ATL {

// The C library's heap. Null when there is no memory.
class MIRVANE_API CCRTHeap {
  public:
    void* Allocate(std::size_t size) noexcept { return std::malloc(size); }
    void* Reallocate(void* block, std::size_t size) noexcept { return std::realloc(block, size); }
    void Free(void* block) noexcept { std::free(block); }
};

}  // namespace ATL

namespace ATL2 {

// Room for `innerCount` elements in the object.
template <typename Element, std::size_t innerCount>
class MIRVANE_API CTempBufferEx {
  public:
    CTempBufferEx() noexcept = default;
    ~CTempBufferEx() { FreeHeap(); }
    CTempBufferEx(CTempBufferEx const&) = delete;
    CTempBufferEx& operator=(CTempBufferEx const&) = delete;

    // Valid until the next Reallocate.
    Element* Pointer() noexcept { return m_pointer; }

    // Makes room for `count` elements. Growing keeps the content; coming back to the inner elements does not.
    // Throws 0x8007000E when there is no memory; the buffer is then as before.
    Element* Reallocate(std::size_t count) {
        if (count <= innerCount) {
            FreeHeap();
            return m_pointer = m_inner;
        }
        if (count > static_cast<std::size_t>(-1) / sizeof(Element))
            Mirvane::failure::raise(Mirvane::failure::outOfMemory);
        bool const isInner = m_pointer == m_inner;
        void* const block = m_crtHeap.Reallocate(isInner ? nullptr : m_pointer, count * sizeof(Element));
        if (block == nullptr) Mirvane::failure::raise(Mirvane::failure::outOfMemory);
        if (isInner) std::memcpy(block, m_inner, sizeof m_inner);
        return m_pointer = static_cast<Element*>(block);
    }

    static inline ATL::CCRTHeap m_crtHeap;

  private:
    void FreeHeap() noexcept {
        if (m_pointer != m_inner) m_crtHeap.Free(m_pointer);
    }

    Element m_inner[innerCount] = {};
    Element* m_pointer = m_inner;
};

}  // namespace ATL2

#endif
