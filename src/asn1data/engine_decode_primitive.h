// The decoder of values that have no elements; not part of the interface.
#ifndef MIRVANE_ASN1DATA_ENGINE_DECODE_PRIMITIVE_H
#define MIRVANE_ASN1DATA_ENGINE_DECODE_PRIMITIVE_H

#include <array>
#include <cstddef>

#include "asn1data/descriptor.h"
#include "asn1data/passing_memory.h"
#include "asn1rt/context.h"

namespace asn1data {

// The one-octet identifier of a tag, without its constructed bit.
inline unsigned char identifierOf(ASN1TAG tag) {
    return static_cast<unsigned char>((tag & TM_CLASS) >> 24 | (tag & 0x1F));
}

// Decodes a value of one kind, with memory of the context. While values are tried, a text or number is looked
// at as closely, but leaves nothing in `value` where that can be avoided. Bounds are the caller's business,
// and so is recording a failure, where the runtime has not.
using PrimitiveDecoder = int(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging,
                             int length, Passing& passing);

// One for each of the kinds in front of Kind::Sequence, in their order.
inline constexpr std::size_t kPrimitiveKinds = static_cast<std::size_t>(Kind::Sequence);
extern const std::array<PrimitiveDecoder*, kPrimitiveKinds> primitiveDecoders;

inline int decodePrimitive(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging,
                           int length, Passing& passing) {
    return primitiveDecoders[static_cast<std::size_t>(type.kind)](ctxt, type, value, tagging, length,
                                                                  passing);
}

}  // namespace asn1data

#endif
