// Memory of an ASN.1 context for the records that traits fill: it lives as long as the context's heap and is
// not given back item by item. Each function throws 0x80093106 for what the heap cannot give, and for sizes
// above its limit.
#ifndef MIRVANE_ASN1_CONTEXT_MEMORY_H
#define MIRVANE_ASN1_CONTEXT_MEMORY_H

#include <cstdint>
#include <new>

#include "asn1rt/context.h"
#include "asn1rt/list.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

// Octets of no certain value, aligned to 16.
void* allocate(ASN1CTXT* ctxt, std::uint64_t size);

// A record as value initialisation makes it: zero, or by its constructor. It is never destroyed.
template <typename Record>
Record* newRecord(ASN1CTXT* ctxt) {
    static_assert(alignof(Record) <= 16);
    return ::new (allocate(ctxt, sizeof(Record))) Record();
}

// Runs a step of a codec, all of whose std::bad_alloc tell of the context's memory: copies, and the order of
// a SET OF, have no status for it.
template <typename Step>
auto inContextMemory(Step step) {
    try {
        return step();
    } catch (std::bad_alloc const&) {
        failure::raise(failure::contextMemory);
    }
}

// Links a record to the end of a list by a node from the context.
void append(ASN1CTXT* ctxt, _Asn1RTDList& list, void* record);

// A copy of the octets, null for none.
unsigned char const* copyOctets(ASN1CTXT* ctxt, unsigned char const* octets, std::uint64_t count);

// A copy of the text with its terminator. Throws 0x80070057 for null.
char const* copyText(ASN1CTXT* ctxt, char const* text);

}  // namespace Mirvane::ASN1

#endif
