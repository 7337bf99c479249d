#include "asn1rt/copy.h"

#include <cstring>
#include <type_traits>

#include "asn1rt/allocate.h"
#include "asn1rt/open_type_node.h"

namespace {

constexpr std::uint64_t octetsOfBits(std::uint32_t bits) {
    return (std::uint64_t{bits} + 7) / 8;
}

// `octets` are what the `count` units of `source` take up.
int copyInto(std::uint32_t count, std::uint64_t octets, const unsigned char* source,
             std::uint32_t* targetCount, unsigned char* target) {
    if (!targetCount) return 0;
    *targetCount = 0;
    if (count == 0 || !source || !target) return 0;
    *targetCount = count;
    std::memmove(target, source, octets);
    return 1;
}

// Copies a record of a count and a pointer. `octetsOf` tells what so many units take up.
template <typename Value, typename Count, typename OctetsOf>
int copyRecord(ASN1CTXT* ctxt, const Value* source, Value* target, Count Value::*count, OctetsOf octetsOf) {
    if (!source || !target) return 0;
    const Value original = *source;
    *target = {};
    if (original.*count == 0 || !original.data) return 1;
    const std::uint64_t octets = octetsOf(original.*count);
    void* copy = asn1rt::allocate(ctxt, octets);
    if (!copy) return 0;
    std::memcpy(copy, original.data, octets);
    target->*count = original.*count;
    target->data = static_cast<decltype(target->data)>(copy);
    return 1;
}

template <typename String>
int copyUnits(ASN1CTXT* ctxt, const String* source, String* target) {
    constexpr std::uint64_t unitSize = sizeof(*source->data);
    return copyRecord(ctxt, source, target, &String::nchars,
                      [](std::uint64_t units) { return units * unitSize; });
}

std::uint64_t octetsOfOctets(std::uint32_t octets) {
    return octets;
}

}  // namespace

extern "C" {

int rtCopyBitStr(ASN1CTXT*, std::uint32_t sourceBits, const unsigned char* source, std::uint32_t* targetBits,
                 unsigned char* target) {
    return copyInto(sourceBits, octetsOfBits(sourceBits), source, targetBits, target);
}

int rtCopyDynBitStr(ASN1CTXT* ctxt, const ASN1TDynBitStr* source, ASN1TDynBitStr* target) {
    return copyRecord(ctxt, source, target, &ASN1TDynBitStr::numbits, octetsOfBits);
}

int rtCopyOctStr(ASN1CTXT*, std::uint32_t sourceCount, const unsigned char* source,
                 std::uint32_t* targetCount, unsigned char* target) {
    return copyInto(sourceCount, sourceCount, source, targetCount, target);
}

int rtCopyDynOctStr(ASN1CTXT* ctxt, const ASN1TDynOctStr* source, ASN1TDynOctStr* target) {
    return copyRecord(ctxt, source, target, &ASN1TDynOctStr::numocts, octetsOfOctets);
}

int rtCopyCharStr(ASN1CTXT* ctxt, const char* source, const char** target) {
    if (!target) return 0;
    *target = nullptr;
    if (!source) return 0;
    const std::size_t size = std::strlen(source) + 1;
    void* copy = asn1rt::allocate(ctxt, size);
    if (!copy) return 0;
    *target = static_cast<const char*>(std::memcpy(copy, source, size));
    return 1;
}

int rtCopy16BitCharStr(ASN1CTXT* ctxt, const Asn116BitCharString* source, Asn116BitCharString* target) {
    return copyUnits(ctxt, source, target);
}

int rtCopy32BitCharStr(ASN1CTXT* ctxt, const Asn132BitCharString* source, Asn132BitCharString* target) {
    return copyUnits(ctxt, source, target);
}

int rtCopyOpenType(ASN1CTXT* ctxt, const ASN1OpenType* source, ASN1OpenType* target) {
    return copyRecord(ctxt, source, target, &ASN1OpenType::numocts, octetsOfOctets);
}

int rtCopyOpenTypeExt(ASN1CTXT* ctxt, const _Asn1RTDList* source, _Asn1RTDList* target) {
    if (!source || !target) return 0;
    const _Asn1RTDListNode* node = source->head;
    rtDListInit(target);
    for (; node; node = node->next) {
        if (!node->data) continue;
        asn1rt::OpenTypeNode* copy = asn1rt::newOpenTypeNode(ctxt);
        if (!copy) return 0;
        if (!rtCopyOpenType(ctxt, static_cast<const ASN1OpenType*>(node->data), &copy->value)) return 0;
        rtDListAppendNode(ctxt, target, &copy->value);
    }
    return 1;
}

}  // extern "C"
