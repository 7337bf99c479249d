// One encoder, decoder, copier and freer for all types: they work on descriptors, and every generated
// function is one call of them.
//
// A value is a pointer to the type's record, or to its field type where it has no record of its own. Encoders
// return the octets written or a negative status, decoders 0 or a negative status; every failure is recorded
// in the context. Nesting is bounded: a decode that goes deeper ends with RTS_NO_MEMORY. On failure a record
// is part filled, and what was allocated stays in the context's heap.
#ifndef MIRVANE_ASN1DATA_ENGINE_H
#define MIRVANE_ASN1DATA_ENGINE_H

#include "asn1data/descriptor.h"
#include "asn1rt/shared_context.h"

namespace asn1data {

// Levels of constructed types and of values that tables resolve, one inside the other, that a decode follows.
inline constexpr int kMostLevels = 100;

// Throws std::bad_alloc only when memory for the order of a SET OF fails.
int encode(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* value, ASN1TagType tagging);

// With ASN1IMPL, `length` is the length of the content, whose tag the caller has read.
int decode(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length);

// A deep copy into an empty target, with memory of the context's heap. Throws std::bad_alloc. A source that
// is the target is left as it is.
void copy(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* source, void* target);

// Frees what the value points at, as far as it is memory of the context's typeMemHeap: literals, the caller's
// memory and octets of a message are left alone. The value is not to be used any more.
void freeValue(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value);

// The steps of a type with a table constraint. The encoder's writes `decoded` and puts the octets, with
// memory of their exact size, into the record; 0 or a negative status. The decoder's reads the record of a
// known type from the raw octets and leaves the context's position as it was. Types of unknown identifiers
// are left alone by both.
int encodeTable(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value);
int decodeTable(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value);

// The object with this identifier, or null.
const ObjectEntry* findObject(const ObjectSet& objects, const ASN1OBJID& id);

// What a record's destructor does while it still has a context: frees its contents, unless the heap goes
// anyway.
void releaseRecord(const TypeDescriptor& type, ASN1TPDU& record, void* value);

template <typename Record>
void release(const TypeDescriptor& type, Record* record) {
    releaseRecord(type, *record, record);
}

// A zeroed record in the context's heap, which is an empty one. Throws std::bad_alloc.
void* newRecord(ASN1CTXT* ctxt, const TypeDescriptor& type);

}  // namespace asn1data

#endif
