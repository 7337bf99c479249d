#include "asn1/context_memory.h"

#include <cstring>

#include "asn1rt/allocate.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

void* allocate(ASN1CTXT* ctxt, std::uint64_t size) {
    void* const memory = asn1rt::allocate(ctxt, size);
    if (memory == nullptr) failure::raise(failure::contextMemory);
    return memory;
}

void append(ASN1CTXT* ctxt, _Asn1RTDList& list, void* record) {
    if (rtDListAppend(ctxt, &list, record) == nullptr) failure::raise(failure::contextMemory);
}

unsigned char const* copyOctets(ASN1CTXT* ctxt, unsigned char const* octets, std::uint64_t count) {
    if (count == 0) return nullptr;
    return static_cast<unsigned char*>(std::memcpy(allocate(ctxt, count), octets, count));
}

char const* copyText(ASN1CTXT* ctxt, char const* text) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(allocate(ctxt, size), text, size));
}

}  // namespace Mirvane::ASN1
