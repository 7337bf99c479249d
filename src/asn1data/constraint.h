// Size and value constraints; not part of the interface.
#ifndef MIRVANE_ASN1DATA_CONSTRAINT_H
#define MIRVANE_ASN1DATA_CONSTRAINT_H

#include <array>
#include <cstdint>

#include "asn1data/descriptor.h"

namespace asn1data {

// Where a value stands, for the text of a failed constraint.
struct Place {
    enum class Kind { Alone, Field, Alternative, Element };
    Kind kind = Kind::Alone;
    const char* name = nullptr;  // of the field or alternative
};

// Whether a number is within the bounds of a type that has them.
inline bool isWithinBounds(const TypeDescriptor& type, std::uint64_t number) {
    if (type.endsOnly) return number == type.lowerBound || number == type.upperBound;
    return number >= type.lowerBound && (type.upperBound == kNoBound || number <= type.upperBound);
}

// Whether an ENUMERATED may have this number. A negative one counts as above all bounds; gaps pass.
inline bool isEnumerator(const TypeDescriptor& type, std::uint32_t number) {
    return type.upperBound == kNoBound || number < type.upperBound;
}

// Whether a value's size, or the value of a bounded number, is within the bounds. A null text has no size and
// passes; a UTF8String that is none has a size outside all bounds.
bool meetsConstraint(const TypeDescriptor& type, const void* value);

// The text that names the value of a failed constraint: "pvalue->count", "pvalue->u.bmpString.nchars",
// "*pvalue". It needs no memory, which may have run out; one that does not fit is cut.
using ConstraintText = std::array<char, 128>;
ConstraintText constraintText(const TypeDescriptor& type, const Place& place);

// Hands text and value of a failed constraint to the error record. Returns RTS_CONSTRAINT, recorded.
int recordConstraint(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* value, const Place& place);

}  // namespace asn1data

#endif
