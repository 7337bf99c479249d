// Memory for values, asked for in 64 bits; not part of the interface.
#ifndef MIRVANE_ASN1RT_ALLOCATE_H
#define MIRVANE_ASN1RT_ALLOCATE_H

#include <cstdint>

#include "asn1rt/context.h"

namespace asn1rt {

// `size` octets of typeMemHeap, or null: a size that passes the heap's limit counts as memory that is not
// there.
inline void* allocate(ASN1CTXT* ctxt, std::uint64_t size) {
    if (size > RT_MH_MAX_SIZE) return nullptr;
    return rtMemHeapAlloc(&ctxt->typeMemHeap, static_cast<std::int32_t>(size));
}

inline unsigned char* allocateOctets(ASN1CTXT* ctxt, std::uint64_t size) {
    return static_cast<unsigned char*>(allocate(ctxt, size));
}

}  // namespace asn1rt

#endif
