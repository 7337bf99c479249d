#include "asn1data/information_object.h"

#include <algorithm>

#include "asn1rt/allocate.h"
#include "asn1rt/cursor.h"

namespace asn1data::object_value {
namespace {

// A NULL has a record of no octets, and yet its presence shows.
void* allocateRecord(ASN1CTXT* ctxt, const TypeDescriptor& type) {
    return rtMemHeapAllocZ(&ctxt->typeMemHeap,
                           static_cast<std::int32_t>(std::max<std::uint32_t>(type.size, 1)));
}

}  // namespace

void* construct(ASN1CTXT* ctxt, const TypeDescriptor& type) {
    void* record = allocateRecord(ctxt, type);
    if (!record) throw std::bad_alloc();
    return record;
}

int encodeBER(ASN1CTXT* ctxt, const TypeDescriptor& type, const Asn1TObject& object) {
    return object.decoded ? encode(ctxt, type, object.decoded, ASN1EXPL) : 0;
}

int decodeBER(ASN1CTXT* ctxt, const TypeDescriptor& type, Asn1TObject& object) {
    object.decoded = allocateRecord(ctxt, type);
    if (!object.decoded) return asn1rt::record(ctxt, RTS_NO_MEMORY);
    return decode(ctxt, type, object.decoded, ASN1EXPL, 0);
}

void* copy(ASN1CTXT* ctxt, const TypeDescriptor& type, const Asn1TObject& source, Asn1TObject& target) {
    target.decoded = nullptr;
    if (source.decoded) {
        target.decoded = construct(ctxt, type);
        asn1data::copy(ctxt, type, source.decoded, target.decoded);
    }
    return target.decoded;
}

void free(ASN1CTXT* ctxt, const TypeDescriptor& type, Asn1TObject& object) {
    if (object.decoded) freeValue(ctxt, type, object.decoded);
    object.decoded = nullptr;
}

}  // namespace asn1data::object_value
