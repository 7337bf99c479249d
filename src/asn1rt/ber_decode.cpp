// The decoder's primitives.
#include "asn1rt/ber_decode.h"

#include <algorithm>
#include <cstring>

#include "asn1rt/cursor.h"
#include "asn1rt/universal_tags.h"

namespace {

using asn1rt::record;
using asn1rt::room;

constexpr std::uint32_t kSmallestJoinedUnder2 = 80;

// A caller's buffer that the segments of a string are gathered in.
struct Target {
    unsigned char* data;
    std::uint32_t capacity;  // what a single length is held against
    std::uint32_t room;      // octets that the memory really has
};

// The header of a string under ASN1EXPL, or of a segment. A length that can't be read is recorded, and the
// string then counts as long as the length argument says, which is nothing for a segment.
int readStringHeader(ASN1CTXT* ctxt, int* length) {
    if (room(ctxt) == 0) return record(ctxt, RTS_END_OF_BUFFER);
    if (*asn1rt::cursor(ctxt) != TAG_OCTET_STRING) return record(ctxt, RTS_TAG_MISMATCH);
    ++ctxt->buffer.byteIndex;
    asn1rt::setConstructed(ctxt, false);
    if (room(ctxt) == 0) {
        record(ctxt, RTS_END_OF_BUFFER);
    } else if (*asn1rt::cursor(ctxt) < 0x80) {
        *length = ctxt->buffer.data[ctxt->buffer.byteIndex++];
    } else {
        xd_len(ctxt, length);  // records its failure
    }
    return RTS_OK;
}

int copyContent(ASN1CTXT* ctxt, const Target& target, std::uint32_t length) {
    if (length > room(ctxt)) return record(ctxt, RTS_END_OF_BUFFER);
    if (length > target.room) return record(ctxt, RTS_BAD_LENGTH);  // segments longer than the whole
    if (length > 0) xd_memcpy(ctxt, target.data, length);
    return RTS_OK;
}

int copySegment(ASN1CTXT* ctxt, const Target& target, std::uint32_t* count) {
    int length = 0;
    if (int status = readStringHeader(ctxt, &length); status != RTS_OK) return status;
    if (length < 0) return record(ctxt, RTS_BAD_LENGTH);
    *count = static_cast<std::uint32_t>(length);
    if (*count > target.capacity) return record(ctxt, RTS_BUFFER_TOO_SMALL);
    return copyContent(ctxt, target, *count);
}

int copySegments(ASN1CTXT* ctxt, Target target, std::uint32_t length, std::uint32_t* count) {
    const std::uint32_t start = ctxt->buffer.byteIndex;
    std::uint32_t total = 0;
    target.capacity = length;
    while (ctxt->buffer.byteIndex - start < length && room(ctxt) > 0) {
        std::uint32_t segment = 0;
        if (int status = copySegment(ctxt, target, &segment); status != RTS_OK) return status;
        target.data += segment;
        target.room -= segment;
        total += segment;
    }
    if (ctxt->buffer.byteIndex - start != length) return record(ctxt, RTS_BAD_LENGTH);
    *count = total;
    return RTS_OK;
}

int copyString(ASN1CTXT* ctxt, const Target& target, int length, std::uint32_t* count) {
    if (length < 0) return record(ctxt, RTS_BAD_LENGTH);
    const auto octets = static_cast<std::uint32_t>(length);
    if (octets > target.capacity) return record(ctxt, RTS_BUFFER_TOO_SMALL);
    if (asn1rt::isConstructed(ctxt)) return copySegments(ctxt, target, octets, count);
    if (int status = copyContent(ctxt, target, octets); status != RTS_OK) return status;
    *count = octets;
    return RTS_OK;
}

// Arcs of base 128 (X.690, 8.19.2). The last may lack its final octet, which is meant.
std::uint32_t readArc(ASN1CTXT* ctxt, std::uint32_t end) {
    std::uint32_t arc = 0;
    while (ctxt->buffer.byteIndex < end) {
        const unsigned char octet = ctxt->buffer.data[ctxt->buffer.byteIndex++];
        arc = arc << 7 | (octet & 0x7F);
        if (!(octet & 0x80)) break;
    }
    return arc;
}

int readExplicit(ASN1CTXT* ctxt, unsigned char identifier, ASN1TagType tagging, int* length) {
    return tagging == ASN1EXPL ? asn1rt::readPrimitiveHeader(ctxt, identifier, length) : int{RTS_OK};
}

}  // namespace

namespace asn1rt {

int readPrimitiveHeader(ASN1CTXT* ctxt, unsigned char identifier, int* length) {
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    if (*cursor(ctxt) != identifier) return RTS_TAG_MISMATCH;
    ++ctxt->buffer.byteIndex;
    setConstructed(ctxt, false);
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    if (*cursor(ctxt) >= 0x80) return xd_len(ctxt, length);
    *length = ctxt->buffer.data[ctxt->buffer.byteIndex++];
    return RTS_OK;
}

int takeEndOfContents(ASN1CTXT* ctxt) {
    if (!atEndOfContents(ctxt)) return record(ctxt, RTS_BAD_LENGTH);
    ctxt->buffer.byteIndex += 2;
    return RTS_OK;
}

// Content is bounded by what is left of the message, so no more than that is ever asked for.
int copyStringToHeap(ASN1CTXT* ctxt, const StringSpan& string, std::uint32_t spare, unsigned char** data,
                     std::uint32_t* count) {
    const std::uint32_t space = std::min(static_cast<std::uint32_t>(string.contentLength), room(ctxt));
    if (space > static_cast<std::uint32_t>(RT_MH_MAX_SIZE) - spare) return record(ctxt, RTS_NO_MEMORY);
    *data = static_cast<unsigned char*>(
        rtMemHeapAlloc(&ctxt->typeMemHeap, static_cast<std::int32_t>(space + spare)));
    if (!*data) return record(ctxt, RTS_NO_MEMORY);
    return copyString(ctxt, {*data, static_cast<std::uint32_t>(string.span), space}, string.span, count);
}

}  // namespace asn1rt

extern "C" {

int xd_memcpy(ASN1CTXT* ctxt, void* destination, std::uint32_t count) {
    if (count > room(ctxt)) return RTS_END_OF_BUFFER;
    std::memcpy(destination, asn1rt::cursor(ctxt), count);
    ctxt->buffer.byteIndex += count;
    return RTS_OK;
}

int xd_integer(ASN1CTXT* ctxt, std::int32_t* value, ASN1TagType tagging, int length) {
    if (int status = readExplicit(ctxt, TAG_INTEGER, tagging, &length); status != RTS_OK)
        return record(ctxt, status);
    if (static_cast<std::uint32_t>(length) >= 5)
        return record(ctxt, RTS_INT_TOO_LARGE);  // the indefinite form too
    if (length == 0) return record(ctxt, RTS_BAD_LENGTH);
    if (static_cast<std::uint32_t>(length) > room(ctxt)) return record(ctxt, RTS_END_OF_BUFFER);
    const unsigned char* octets = asn1rt::cursor(ctxt);
    std::uint32_t bits = octets[0] & 0x80 ? 0xFFFFFFFF : 0;
    for (int i = 0; i < length; ++i)
        bits = bits << 8 | octets[i];
    ctxt->buffer.byteIndex += static_cast<std::uint32_t>(length);
    *value = static_cast<std::int32_t>(bits);
    return RTS_OK;
}

int xd_enum(ASN1CTXT* ctxt, std::int32_t* value, ASN1TagType tagging, int length) {
    if (int status = readExplicit(ctxt, TAG_ENUMERATED, tagging, &length); status != RTS_OK) {
        return status == RTS_TAG_MISMATCH ? status : record(ctxt, status);
    }
    return xd_integer(ctxt, value, ASN1IMPL, length);
}

int xd_unsigned(ASN1CTXT* ctxt, std::uint32_t* value, ASN1TagType tagging, int length) {
    if (int status = readExplicit(ctxt, TAG_INTEGER, tagging, &length); status != RTS_OK)
        return record(ctxt, status);
    if (static_cast<std::uint32_t>(length) >= 6) return record(ctxt, RTS_INT_TOO_LARGE);
    if (length == 5) {
        if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
        if (*asn1rt::cursor(ctxt) != 0) return record(ctxt, RTS_INT_TOO_LARGE);
    }
    std::uint32_t bits = 0;  // what no content gives, although BER asks for an octet
    for (int i = 0; i < length; ++i) {
        if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
        bits = bits << 8 | ctxt->buffer.data[ctxt->buffer.byteIndex++];
    }
    *value = bits;
    return RTS_OK;
}

int xd_boolean(ASN1CTXT* ctxt, unsigned char* value, ASN1TagType tagging, int length) {
    if (tagging == ASN1EXPL) {
        if (room(ctxt) == 0) return record(ctxt, RTS_END_OF_BUFFER);
        if (*asn1rt::cursor(ctxt) != TAG_BOOLEAN) return record(ctxt, RTS_TAG_MISMATCH);
        ++ctxt->buffer.byteIndex;
        asn1rt::setConstructed(ctxt, false);
        if (room(ctxt) == 0) return record(ctxt, RTS_END_OF_BUFFER);
        length = ctxt->buffer.data[ctxt->buffer.byteIndex++];  // one octet, no long form
    }
    if (length != 1) return record(ctxt, RTS_BAD_LENGTH);
    if (room(ctxt) == 0) return record(ctxt, RTS_END_OF_BUFFER);
    *value = ctxt->buffer.data[ctxt->buffer.byteIndex++];
    return RTS_OK;
}

int xd_null(ASN1CTXT* ctxt, ASN1TagType tagging) {
    if (tagging != ASN1EXPL) return RTS_OK;
    if (room(ctxt) == 0) return record(ctxt, RTS_END_OF_BUFFER);
    if (*asn1rt::cursor(ctxt) != TAG_NULL) return record(ctxt, RTS_TAG_MISMATCH);
    ++ctxt->buffer.byteIndex;
    asn1rt::setConstructed(ctxt, false);
    if (room(ctxt) == 0) return record(ctxt, RTS_END_OF_BUFFER);
    return ctxt->buffer.data[ctxt->buffer.byteIndex++] == 0 ? int{RTS_OK} : record(ctxt, RTS_BAD_LENGTH);
}

int xd_octstr(ASN1CTXT* ctxt, const unsigned char** data, std::uint32_t* count, ASN1TagType tagging,
              int length) {
    *data = nullptr;
    *count = 0;
    if (tagging == ASN1EXPL) {
        if (int status = xd_match1(ctxt, TAG_OCTET_STRING, &length); status != RTS_OK) return status;
    }
    const bool constructed = asn1rt::isConstructed(ctxt);
    asn1rt::StringSpan string{length, length};
    if (length == ASN1_INDEFLEN) {
        const int status =
            xd_consStrIndefLenAndSize(ctxt, TAG_OCTET_STRING, &string.contentLength, &string.span);
        if (status != RTS_OK) return record(ctxt, status);
    }
    if (string.contentLength < 0) return RTS_OK;

    int status = RTS_OK;
    // The indefinite form on a primitive has no content to point at: the copy refuses it.
    if (constructed || length == ASN1_INDEFLEN || !(ctxt->flags & ASN1_NO_COPY)) {
        unsigned char* copy = nullptr;
        status = asn1rt::copyStringToHeap(ctxt, string, 0, &copy, count);
        if (!copy) return status;
        *data = copy;
    } else if (static_cast<std::uint32_t>(string.span) > room(ctxt)) {
        status = record(ctxt, RTS_END_OF_BUFFER);
    } else {
        *data = asn1rt::cursor(ctxt);
        *count = static_cast<std::uint32_t>(string.span);
        ctxt->buffer.byteIndex += *count;
    }
    if (constructed && length == ASN1_INDEFLEN) {
        if (int end = asn1rt::takeEndOfContents(ctxt); end != RTS_OK) return end;
    }
    return status;
}

int xd_octstr_s(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t* count, ASN1TagType tagging,
                int length) {
    const std::uint32_t capacity = *count;
    if (tagging == ASN1EXPL) {
        if (int status = readStringHeader(ctxt, &length); status != RTS_OK) return status;
    }
    return copyString(ctxt, {buffer, capacity, capacity}, length, count);
}

int xd_consStrIndefLenAndSize(ASN1CTXT* ctxt, ASN1TAG segmentTag, int* contentLength, int* span) {
    ASN1BufferState start;
    xu_SaveBufferState(ctxt, &start);
    std::uint64_t sum = 0;
    for (;;) {
        ASN1TAG tag = 0;
        int length = 0;
        if (int status = xd_tag_len(ctxt, &tag, &length, XD_ADVANCE); status != RTS_OK) return status;
        if (tag != 0 && tag != segmentTag) return RTS_BAD_TAG;
        if (tag == 0 && length == 0) break;
        asn1rt::stepOver(ctxt, length);
        sum += static_cast<std::uint32_t>(length);
    }
    *span = static_cast<int>(ctxt->buffer.byteIndex - start.byteIndex - 2);
    *contentLength = static_cast<int>(sum);  // no more than the span
    xu_RestoreBufferState(ctxt, &start);
    return RTS_OK;
}

int xd_objid(ASN1CTXT* ctxt, ASN1OBJID* value, ASN1TagType tagging, int length) {
    if (int status = readExplicit(ctxt, TAG_OBJECT_IDENTIFIER, tagging, &length); status != RTS_OK) {
        return record(ctxt, status);
    }
    if (length < 1) return record(ctxt, RTS_BAD_LENGTH);
    if (static_cast<std::uint32_t>(length) > room(ctxt)) return record(ctxt, RTS_END_OF_BUFFER);
    const std::uint32_t end = ctxt->buffer.byteIndex + static_cast<std::uint32_t>(length);
    const std::uint32_t joined = readArc(ctxt, end);
    value->subid[0] = joined < kSmallestJoinedUnder2 ? joined / 40 : 2;
    value->subid[1] = joined - value->subid[0] * 40;
    std::uint32_t arcs = 2;
    while (ctxt->buffer.byteIndex < end) {
        if (arcs == ASN1_K_MAXSUBIDS) {
            value->numids = arcs;
            return RTS_BAD_OBJID;
        }
        value->subid[arcs++] = readArc(ctxt, end);
    }
    value->numids = arcs;
    return RTS_OK;
}

}  // extern "C"
