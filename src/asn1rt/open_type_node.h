// The node of an open type list and its value as one allocation; not part of the interface.
#ifndef MIRVANE_ASN1RT_OPEN_TYPE_NODE_H
#define MIRVANE_ASN1RT_OPEN_TYPE_NODE_H

#include <cstddef>

#include "asn1rt/context.h"
#include "asn1rt/list.h"
#include "asn1rt/value_types.h"

namespace asn1rt {

struct OpenTypeNode {
    _Asn1RTDListNode node;
    ASN1OpenType value;
};

// rtDListAppendNode finds the node right in front of the value.
static_assert(offsetof(OpenTypeNode, value) == sizeof(_Asn1RTDListNode));

// Zeroed, in no list yet; null when memory fails.
inline OpenTypeNode* newOpenTypeNode(ASN1CTXT* ctxt) {
    return static_cast<OpenTypeNode*>(rtMemHeapAllocZ(&ctxt->typeMemHeap, sizeof(OpenTypeNode)));
}

}  // namespace asn1rt

#endif
