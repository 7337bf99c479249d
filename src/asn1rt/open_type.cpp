#include "asn1rt/open_type.h"

#include <cstring>

#include "asn1rt/allocate.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/cursor.h"
#include "asn1rt/growth.h"
#include "asn1rt/open_type_node.h"

namespace {

using asn1rt::record;
using asn1rt::room;

constexpr std::uint32_t kLargestLength = 0x7FFFFFFF;

// The whole length of the element that begins at `data`, or a status. Reading a header needs no heap.
int measureElement(const unsigned char* data, std::uint32_t count) {
    ASN1CTXT reader{};
    reader.initCode = ASN1_CONTEXT_ALIVE;
    int length = 0;
    const int status = xd_setp(&reader, data, static_cast<int>(count), nullptr, &length);
    if (status != RTS_OK) return status;
    return length == ASN1_INDEFLEN ? asn1rt::measureIndefinite(data, count) : length;
}

// Moves the cursor over one element that is no end-of-contents.
int stepOverElement(ASN1CTXT* ctxt) {
    ASN1TAG tag = 0;
    int length = 0;
    if (int status = xd_tag_len(ctxt, &tag, &length, XD_ADVANCE); status != RTS_OK) return status;
    if (length == ASN1_INDEFLEN) return xd_MovePastEOC(ctxt);
    if (length == 0) return tag == 0 ? RTS_BAD_VALUE : RTS_OK;
    if (static_cast<std::uint32_t>(length) > room(ctxt)) return RTS_BAD_VALUE;
    asn1rt::stepOver(ctxt, length);
    return RTS_OK;
}

bool parentHasEnded(const ASN1CTXT* ctxt, const ASN1CCB& parent) {
    if (parent.len == ASN1_INDEFLEN) return room(ctxt) < 2 || asn1rt::atEndOfContents(ctxt);
    return room(ctxt) == 0 || asn1rt::cursor(ctxt) - parent.ptr >= parent.len;
}

// Appends one element, if the cursor can move at all: an end that xd_OpenType lets pass must not be met for
// ever.
int takeExtension(ASN1CTXT* ctxt, _Asn1RTDList* list, bool* moved) {
    const std::uint32_t before = ctxt->buffer.byteIndex;
    const int status = xd_OpenTypeAppend(ctxt, list);
    *moved = ctxt->buffer.byteIndex != before;
    return status;
}

int takeAllExtensions(ASN1CTXT* ctxt, const ASN1CCB& parent, _Asn1RTDList* list) {
    for (bool moved = true; moved && !parentHasEnded(ctxt, parent);) {
        if (int status = takeExtension(ctxt, list, &moved); status != RTS_OK) return status;
    }
    return RTS_OK;
}

int takeExtensionsBefore(ASN1CTXT* ctxt, const ASN1CCB& parent, ASN1TAG tag, _Asn1RTDList* list) {
    for (bool moved = true;;) {
        if (int status = xd_match(ctxt, tag, nullptr, 0); status != RTS_TAG_MISMATCH) return status;
        if (!moved || parentHasEnded(ctxt, parent)) return record(ctxt, RTS_END_OF_BUFFER);
        if (int status = takeExtension(ctxt, list, &moved); status != RTS_OK) return status;
    }
}

}  // namespace

extern "C" {

int xe_OpenType(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count) {
    if (count == 0) return 0;
    if (!data) return RTS_BAD_VALUE;
    if (count > kLargestLength) return RTS_BAD_LENGTH;
    const int length = measureElement(data, count);
    if (length < 0) return length;
    if (data == xe_getp(ctxt)) return length;
    return xe_memcpy(ctxt, data, static_cast<std::uint32_t>(length));
}

int xd_OpenType(ASN1CTXT* ctxt, const unsigned char** data, std::uint32_t* count) {
    const std::uint32_t start = ctxt->buffer.byteIndex;
    const int status = stepOverElement(ctxt);
    if (status != RTS_OK) return status == RTS_END_OF_BUFFER ? int{RTS_OK} : status;
    const unsigned char* element = ctxt->buffer.data + start;
    const std::uint32_t length = ctxt->buffer.byteIndex - start;
    if (!(ctxt->flags & ASN1_NO_COPY)) {
        unsigned char* copy = asn1rt::allocateOctets(ctxt, length);
        if (!copy) return RTS_NO_MEMORY;
        std::memcpy(copy, element, length);
        element = copy;
    }
    *data = element;
    *count = length;
    return RTS_OK;
}

int xd_OpenTypeAppend(ASN1CTXT* ctxt, _Asn1RTDList* list) {
    if (!list) {
        const int status = xd_NextElement(ctxt);
        return status == RTS_OK ? status : record(ctxt, status);
    }
    asn1rt::OpenTypeNode* node = asn1rt::newOpenTypeNode(ctxt);
    if (!node) return record(ctxt, RTS_NO_MEMORY);
    const int status = xd_OpenType(ctxt, &node->value.data, &node->value.numocts);
    if (status != RTS_OK) return record(ctxt, status);
    rtDListAppendNode(ctxt, list, &node->value);
    return RTS_OK;
}

int xe_OpenTypeExt(ASN1CTXT* ctxt, const _Asn1RTDList* list) {
    if (!list) return 0;
    std::int64_t total = 0;
    for (const _Asn1RTDListNode* node = list->tail; node; node = node->prev) {
        if (!node->data) continue;
        const auto* value = static_cast<const ASN1OpenType*>(node->data);
        asn1rt::growAhead(ctxt);
        const int written = xe_OpenType(ctxt, value->data, value->numocts);
        if (written < 0) return record(ctxt, written);
        total += written;
    }
    return total > kLargestLength ? record(ctxt, RTS_BAD_LENGTH) : static_cast<int>(total);
}

int xd_OpenTypeExt(ASN1CTXT* ctxt, const ASN1CCB* parent, ASN1TAG tag, _Asn1RTDList* list) {
    return tag == XD_ANY_TAG ? takeAllExtensions(ctxt, *parent, list)
                             : takeExtensionsBefore(ctxt, *parent, tag, list);
}

int xd_count(ASN1CTXT* ctxt, int length, std::uint32_t* count) {
    const std::uint32_t start = ctxt->buffer.byteIndex;
    const std::uint16_t flags = ctxt->flags;
    const auto goesOn = [&] {
        if (length == ASN1_INDEFLEN) return room(ctxt) >= 2 && !asn1rt::atEndOfContents(ctxt);
        return std::int64_t{ctxt->buffer.byteIndex} - start < length && room(ctxt) > 0;
    };
    *count = 0;
    while (goesOn()) {
        if (int status = xd_NextElement(ctxt); status != RTS_OK) return status;
        ++*count;
    }
    ctxt->buffer.byteIndex = start;
    ctxt->flags = flags;
    return RTS_OK;
}

}  // extern "C"
