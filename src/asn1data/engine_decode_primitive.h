// The decoder of values that have no elements; not part of the interface.
#ifndef MIRVANE_ASN1DATA_ENGINE_DECODE_PRIMITIVE_H
#define MIRVANE_ASN1DATA_ENGINE_DECODE_PRIMITIVE_H

#include "asn1data/descriptor.h"
#include "asn1rt/context.h"

namespace asn1data {

// The one-octet identifier of a tag, without its constructed bit.
inline unsigned char identifierOf(ASN1TAG tag) {
    return static_cast<unsigned char>((tag & TM_CLASS) >> 24 | (tag & 0x1F));
}

// Decodes a value of one of the kinds in front of Kind::Sequence, with memory of the context. One that is
// `dropped` is looked at as closely, but a text or number leaves nothing in `value` where that can be
// avoided. Bounds are the caller's business, and so is recording a failure, where the runtime has not.
int decodePrimitive(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                    bool dropped);

}  // namespace asn1data

#endif
