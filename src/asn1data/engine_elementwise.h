// Two ways to decode that do not hold all of a large value at once; not part of the interface. Both accept
// and refuse exactly what decode() with ASN1EXPL does, and give back the memory of what they do not keep
// while they go on.
#ifndef MIRVANE_ASN1DATA_ENGINE_ELEMENTWISE_H
#define MIRVANE_ASN1DATA_ENGINE_ELEMENTWISE_H

#include "asn1data/engine.h"

namespace asn1data {

// Takes the elements of one list of the value, in their order: not those of a list of the same type in a
// message within the message. An element and what it points at live for the call only. `take` must not throw.
struct ElementTaker {
    const void* list;  // its record
    void (*take)(void* taker, const void* element);
    void* taker;
};

// The list whose elements were taken has its count in the record, and no nodes.
int decodeElementwise(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, const ElementTaker& taker);

// Values that a table resolves are tried, so that a bad one is refused, and not kept: their `decoded` is
// null.
int decodeUnresolved(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value);

}  // namespace asn1data

#endif
