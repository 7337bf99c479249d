// The decoder's tags, lengths and steps over elements.
#include <algorithm>
#include <cstring>

#include "asn1rt/ber_decode.h"
#include "asn1rt/cursor.h"

namespace {

using asn1rt::room;
using asn1rt::stepOver;

constexpr std::uint32_t kUnknownSize = 0x7FFFFFFF;
constexpr std::int64_t kLargestLength = 0x7FFFFFFF;
constexpr int kMostTagOctets = 9;  // behind the leading one

bool endIsKnownReached(const ASN1CTXT* ctxt) {
    return (ctxt->flags & ASN1_INDEF_MESSAGE) && (ctxt->flags & ASN1_END_REACHED);
}

int readLongTagNumber(ASN1CTXT* ctxt, std::uint32_t* number) {
    std::uint64_t value = 0;
    for (int octets = 0;; ++octets) {
        if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
        if (octets == kMostTagOctets) return RTS_BAD_TAG;
        const unsigned char octet = ctxt->buffer.data[ctxt->buffer.byteIndex++];
        value = value << 7 | (octet & 0x7F);
        if (value > TM_NUMBER) return RTS_BAD_TAG;
        if (!(octet & 0x80)) break;
    }
    *number = static_cast<std::uint32_t>(value);
    return RTS_OK;
}

// Whether the next two octets are there, and the second is a whole length.
bool hasShortLength(const ASN1CTXT* ctxt) {
    return room(ctxt) >= 2 && asn1rt::cursor(ctxt)[1] < 0x80;
}

// A length octet below 0x80 is taken as it is: the next read finds one that passes the end.
int readLength(ASN1CTXT* ctxt, int* length) {
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    const unsigned char octet = *asn1rt::cursor(ctxt);
    if (octet >= 0x80) return xd_len(ctxt, length);
    ++ctxt->buffer.byteIndex;
    *length = octet;
    return RTS_OK;
}

ASN1TAG tagOf(unsigned char octet, std::uint32_t number) {
    return static_cast<ASN1TAG>(octet & 0xE0) << 24 | number;
}

int readTagAndLength(ASN1CTXT* ctxt, ASN1TAG* tag, int* length) {
    if (hasShortLength(ctxt) && (*asn1rt::cursor(ctxt) & 0x1F) != 0x1F) {
        const unsigned char octet = *asn1rt::cursor(ctxt);
        asn1rt::setConstructed(ctxt, (octet & 0x20) != 0);
        *tag = tagOf(octet, octet & 0x1F);
        *length = asn1rt::cursor(ctxt)[1];
        ctxt->buffer.byteIndex += 2;
        return RTS_OK;
    }
    ASN1TAG readTag = 0;
    int readLengthValue = 0;
    if (int status = xd_tag(ctxt, &readTag); status != RTS_OK) return status;
    if (int status = readLength(ctxt, &readLengthValue); status != RTS_OK) return status;
    if (readLengthValue == ASN1_INDEFLEN && !(readTag & TM_CONSTRUCTED)) return RTS_BAD_LENGTH;
    *tag = readTag;
    *length = readLengthValue;
    return RTS_OK;
}

// xd_match1 for all forms of a length, and all failures.
[[gnu::noinline]] int matchSlowly(ASN1CTXT* ctxt, unsigned char identifier, int* length) {
    if (room(ctxt) == 0) return asn1rt::record(ctxt, RTS_END_OF_BUFFER);
    const unsigned char octet = *asn1rt::cursor(ctxt);
    if (((octet ^ identifier) & ~0x20) != 0) return asn1rt::record(ctxt, RTS_TAG_MISMATCH);
    ++ctxt->buffer.byteIndex;
    asn1rt::setConstructed(ctxt, (octet & 0x20) != 0);
    int read = 0;
    if (int status = readLength(ctxt, &read); status != RTS_OK) return asn1rt::record(ctxt, status);
    if (!length)
        return RTS_OK;  // the indefinite form included: a caller that asks for no length has no use for it
    if (read == ASN1_INDEFLEN && !(octet & 0x20)) return asn1rt::record(ctxt, RTS_BAD_LENGTH);
    *length = read;
    return RTS_OK;
}

bool isEndOfContents(ASN1TAG tag, int length) {
    return tag == 0 && length == 0;
}

int endToMismatch(int status) {
    return status == RTS_END_OF_BUFFER ? RTS_TAG_MISMATCH : status;
}

// XD_SKIP: a constructed element is entered, so its contents are looked at next. On failure nothing moves.
int skipOne(ASN1CTXT* ctxt) {
    const std::uint32_t position = ctxt->buffer.byteIndex;
    const std::uint16_t flags = ctxt->flags;
    ASN1TAG tag = 0;
    int length = 0;
    if (int status = xd_tag_len(ctxt, &tag, &length, XD_ADVANCE); status != RTS_OK) {
        ctxt->buffer.byteIndex = position;
        ctxt->flags = flags;
        return endToMismatch(status);
    }
    if (!(tag & TM_CONSTRUCTED)) stepOver(ctxt, length);
    return RTS_OK;
}

// Reads on to the element that fits; the cursor then stands behind its header.
int seekTag(ASN1CTXT* ctxt, ASN1TAG wanted, bool seek, int* length) {
    const ASN1TAG ignored = seek ? ASN1TAG{TM_CONSTRUCTED} : 0;
    for (;;) {
        ASN1TAG tag = 0;
        if (int status = xd_tag_len(ctxt, &tag, length, XD_ADVANCE); status != RTS_OK)
            return endToMismatch(status);
        if ((tag & ~ignored) == (wanted & ~ignored)) return RTS_OK;
        if (!seek) return RTS_TAG_MISMATCH;
        if (!(tag & TM_CONSTRUCTED)) stepOver(ctxt, *length);
    }
}

// Walks over elements until the nesting of indefinite ones falls below 1.
int walkIndefinite(ASN1CTXT* ctxt, std::uint32_t depth) {
    do {
        ASN1TAG tag = 0;
        int length = 0;
        if (int status = xd_tag_len(ctxt, &tag, &length, XD_ADVANCE); status != RTS_OK) return status;
        if (length == ASN1_INDEFLEN) {
            ++depth;
        } else if (isEndOfContents(tag, length)) {
            if (depth > 0) --depth;
        } else {
            stepOver(ctxt, length);
        }
    } while (depth > 0);
    return RTS_OK;
}

}  // namespace

namespace asn1rt {

// The walk needs a cursor and no memory, so the context here has no heap.
int measureIndefinite(const unsigned char* message, std::uint32_t size) {
    if (size > kUnknownSize) return RTS_BAD_LENGTH;
    ASN1CTXT walker{};
    walker.buffer.data = const_cast<unsigned char*>(message);
    walker.buffer.size = size;
    ASN1TAG tag = 0;
    int length = 0;
    if (int status = xd_tag_len(&walker, &tag, &length, 0); status != RTS_OK) return status;
    if (length != ASN1_INDEFLEN) return RTS_BAD_LENGTH;
    if (int status = walkIndefinite(&walker, 0); status != RTS_OK) return status;
    return walker.buffer.byteIndex <= size ? static_cast<int>(walker.buffer.byteIndex)
                                           : int{RTS_END_OF_BUFFER};
}

}  // namespace asn1rt

extern "C" {

int xd_setp(ASN1CTXT* ctxt, const unsigned char* message, int size, ASN1TAG* tag, int* length) {
    if (!message) return RTS_BAD_VALUE;
    const std::uint32_t given = size < 1 ? kUnknownSize : static_cast<std::uint32_t>(size);
    // The decoder never writes through this pointer.
    if (int status = rtInitContextBuffer(ctxt, const_cast<unsigned char*>(message), given);
        status != RTS_OK) {
        return status;
    }
    ctxt->flags = static_cast<std::uint16_t>(ctxt->flags & ~(ASN1_INDEF_MESSAGE | ASN1_END_REACHED));

    ASN1TAG outerTag = 0;
    int contentLength = 0;
    const int status = xd_tag_len(ctxt, &outerTag, &contentLength, XD_ADVANCE);
    if (status != RTS_OK && status != RTS_BAD_LENGTH) return status;
    const std::uint32_t headerLength = ctxt->buffer.byteIndex;
    ctxt->buffer.byteIndex = 0;
    if (status != RTS_OK) return status;

    if (tag) *tag = outerTag;
    if (contentLength == ASN1_INDEFLEN) {
        ctxt->flags |= ASN1_INDEF_MESSAGE;
        if (length) *length = ASN1_INDEFLEN;
        return RTS_OK;
    }
    const std::int64_t total = std::int64_t{contentLength} + headerLength;
    if (total > kLargestLength) return RTS_BAD_LENGTH;
    if (length) *length = static_cast<int>(total);
    if (total <= given) {
        ctxt->buffer.size = static_cast<std::uint32_t>(total);
        return RTS_OK;
    }
    // Cut short: the size stays at what was given.
    return ctxt->flags & ASN1_LAX_LENGTH ? RTS_OK : RTS_BAD_LENGTH;
}

int xd_tag(ASN1CTXT* ctxt, ASN1TAG* tag) {
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    const unsigned char octet = ctxt->buffer.data[ctxt->buffer.byteIndex++];
    asn1rt::setConstructed(ctxt, (octet & 0x20) != 0);
    std::uint32_t number = octet & 0x1F;
    if (number == 0x1F) {
        if (int status = readLongTagNumber(ctxt, &number); status != RTS_OK) return status;
    }
    *tag = tagOf(octet, number);
    return RTS_OK;
}

int xd_len(ASN1CTXT* ctxt, int* length) {
    if (room(ctxt) == 0) return asn1rt::record(ctxt, RTS_END_OF_BUFFER);
    const unsigned char first = ctxt->buffer.data[ctxt->buffer.byteIndex++];
    std::uint32_t value = first;
    if (first == 0x80) {
        *length = ASN1_INDEFLEN;
        return RTS_OK;
    }
    if (first > 0x80) {
        const int octets = first & 0x7F;
        if (octets > 4) return asn1rt::record(ctxt, RTS_BAD_LENGTH);
        value = 0;
        const std::uint32_t here = std::min(room(ctxt), static_cast<std::uint32_t>(octets));
        for (std::uint32_t i = 0; i < here; ++i)
            value = value << 8 | ctxt->buffer.data[ctxt->buffer.byteIndex++];
        if (here < static_cast<std::uint32_t>(octets)) return asn1rt::record(ctxt, RTS_END_OF_BUFFER);
        // Four octets that happen to be the pattern of ASN1_INDEFLEN count as indefinite, and always have.
        if (value == static_cast<std::uint32_t>(ASN1_INDEFLEN)) {
            *length = ASN1_INDEFLEN;
            return RTS_OK;
        }
    }
    const bool fits = ctxt->flags & ASN1_LAX_LENGTH ? value <= kLargestLength : value <= room(ctxt);
    if (!fits || value > kLargestLength) return asn1rt::record(ctxt, RTS_BAD_LENGTH);
    *length = static_cast<int>(value);
    return RTS_OK;
}

int xd_tag_len(ASN1CTXT* ctxt, ASN1TAG* tag, int* length, int flags) {
    if (endIsKnownReached(ctxt)) return RTS_END_OF_BUFFER;
    if (!(ctxt->flags & ASN1_INDEF_MESSAGE) && room(ctxt) == 0) return RTS_END_OF_BUFFER;
    xu_SaveBufferState(ctxt, nullptr);
    const int status = readTagAndLength(ctxt, tag, length);
    if (!(flags & XD_ADVANCE)) {
        ctxt->buffer.byteIndex = ctxt->savedInfo.byteIndex;
        ctxt->flags = ctxt->savedInfo.flags;
    }
    return status;
}

int xd_Tag1AndLen(ASN1CTXT* ctxt, int* length) {
    if (endIsKnownReached(ctxt) || room(ctxt) == 0) return RTS_END_OF_BUFFER;
    asn1rt::setConstructed(ctxt, (*asn1rt::cursor(ctxt) & 0x20) != 0);
    ++ctxt->buffer.byteIndex;
    return readLength(ctxt, length);
}

int xd_match(ASN1CTXT* ctxt, ASN1TAG tag, int* length, int flags) {
    if (flags & XD_SKIP) {
        if (int status = skipOne(ctxt); status != RTS_OK) return status;
    }
    ASN1BufferState before;
    xu_SaveBufferState(ctxt, &before);
    int found = 0;
    if (int status = seekTag(ctxt, tag, (flags & XD_SEEK) != 0, &found); status != RTS_OK) {
        xu_RestoreBufferState(ctxt, &before);
        return status;
    }
    if (length) *length = found;
    if (!(flags & XD_ADVANCE)) xu_RestoreBufferState(ctxt, nullptr);
    return RTS_OK;
}

int xd_match1(ASN1CTXT* ctxt, unsigned char identifier, int* length) {
    if (hasShortLength(ctxt) && ((*asn1rt::cursor(ctxt) ^ identifier) & ~0x20) == 0) {
        asn1rt::setConstructed(ctxt, (*asn1rt::cursor(ctxt) & 0x20) != 0);
        if (length) *length = asn1rt::cursor(ctxt)[1];
        ctxt->buffer.byteIndex += 2;
        return RTS_OK;
    }
    return matchSlowly(ctxt, identifier, length);
}

int xd_NextElement(ASN1CTXT* ctxt) {
    ASN1TAG tag = 0;
    int length = 0;
    if (int status = xd_tag_len(ctxt, &tag, &length, XD_ADVANCE); status != RTS_OK) return status;
    if (length == ASN1_INDEFLEN) return xd_MovePastEOC(ctxt);
    stepOver(ctxt, length);
    return RTS_OK;
}

int xd_MovePastEOC(ASN1CTXT* ctxt) {
    return walkIndefinite(ctxt, 1);
}

int xd_indeflen_ex(const unsigned char* message, int size) {
    if (size < 5) return 0;  // so an empty indefinite element, four octets, counts as nothing
    return asn1rt::measureIndefinite(message, static_cast<std::uint32_t>(size));
}

void xu_SaveBufferState(ASN1CTXT* ctxt, ASN1BufferState* state) {
    if (state) {
        *state = {ctxt->buffer.byteIndex, static_cast<std::uint16_t>(ctxt->buffer.bitOffset), ctxt->flags};
    } else {
        ctxt->savedInfo = {ctxt->buffer.byteIndex, static_cast<std::uint16_t>(ctxt->buffer.bitOffset),
                           ctxt->flags};
    }
}

void xu_RestoreBufferState(ASN1CTXT* ctxt, const ASN1BufferState* state) {
    const ASN1BufferState saved =
        state ? *state
              : ASN1BufferState{ctxt->savedInfo.byteIndex, ctxt->savedInfo.bitOffset, ctxt->savedInfo.flags};
    ctxt->buffer.byteIndex = saved.byteIndex;
    ctxt->buffer.bitOffset = static_cast<std::int16_t>(saved.bitOffset);
    ctxt->flags = static_cast<std::uint16_t>(saved.flags & ~ASN1_END_REACHED);
}

}  // extern "C"
