#include "asn1rt/bit_string.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "asn1rt/allocate.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/cursor.h"
#include "asn1rt/universal_tags.h"

namespace {

using asn1rt::record;
using asn1rt::room;
using asn1rt::StringSpan;

constexpr std::uint64_t kMostOctets = 0x1FFFFFFF;  // the bits of more do not fit 32 bits
constexpr unsigned char kMostUnusedBits = 7;

// The bit count of so many octets.
int countBits(std::uint64_t octets, unsigned char unusedBits, std::uint32_t* numbits) {
    if (unusedBits > kMostUnusedBits) return RTS_BAD_VALUE;
    if (octets > kMostOctets || (octets == 0 && unusedBits != 0)) return RTS_BAD_LENGTH;
    *numbits = static_cast<std::uint32_t>(octets * 8 - unusedBits);
    return RTS_OK;
}

// Content of one octet, which can only say that there are no bits, or of none.
int readNoBits(ASN1CTXT* ctxt, int contentLength) {
    if (contentLength != 1) return RTS_OK;
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    return ctxt->buffer.data[ctxt->buffer.byteIndex++] == 0 ? RTS_OK : RTS_BAD_LENGTH;
}

int copyPrimitive(ASN1CTXT* ctxt, unsigned char* buffer, std::uint64_t capacity, int length,
                  std::uint32_t* numbits) {
    if (length < 0) return RTS_BAD_LENGTH;
    if (length <= 1) return readNoBits(ctxt, length);
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    const unsigned char unusedBits = ctxt->buffer.data[ctxt->buffer.byteIndex++];
    const auto octets = static_cast<std::uint32_t>(length - 1);
    std::uint32_t bits = 0;
    if (int status = countBits(octets, unusedBits, &bits); status != RTS_OK) return status;
    if (octets > capacity) return RTS_BUFFER_TOO_SMALL;
    if (int status = xd_memcpy(ctxt, buffer, octets); status != RTS_OK) return status;
    *numbits = bits;
    return RTS_OK;
}

// Gathers the segments of a constructed BIT STRING in a buffer of `capacity` octets.
class SegmentGatherer {
  public:
    SegmentGatherer(ASN1CTXT* ctxt, unsigned char* buffer, std::uint64_t capacity)
        : mCtxt(ctxt), mBuffer(buffer), mCapacity(capacity) {}

    int takeSegment() {
        int length = 0;
        if (int status = xd_match1(mCtxt, TAG_BIT_STRING, &length); status != RTS_OK) return status;
        if (length < 0) return record(mCtxt, RTS_BAD_LENGTH);
        if (length == 0) return RTS_OK;  // without an octet of unused bits it can't be the last one
        auto octets = static_cast<std::uint32_t>(length);
        const std::uint64_t size = mCount + octets;
        if (mLastIsKnown || size > mCapacity + 1) return record(mCtxt, RTS_BUFFER_TOO_SMALL);
        mLastBegin = mCount;
        if (size == mCapacity + 1) {
            if (room(mCtxt) == 0) return RTS_END_OF_BUFFER;
            mUnusedBits = mCtxt->buffer.data[mCtxt->buffer.byteIndex++];
            mLastIsKnown = true;
            --octets;
        }
        return append(octets);
    }

    // If no segment filled the capacity, the one copied last has its octet of unused bits in the buffer
    // still.
    int finish(std::uint32_t* numbits) {
        if (!mLastIsKnown && mCount > 0) {
            unsigned char* last = mBuffer + mLastBegin;
            mUnusedBits = *last;
            std::memmove(last, last + 1, mCount - mLastBegin - 1);
            --mCount;
        }
        return countBits(mCount, mUnusedBits, numbits);
    }

  private:
    int append(std::uint32_t octets) {
        if (octets == 0) return RTS_OK;
        if (int status = xd_memcpy(mCtxt, mBuffer + mCount, octets); status != RTS_OK) return status;
        mCount += octets;
        return RTS_OK;
    }

    ASN1CTXT* mCtxt;
    unsigned char* mBuffer;
    std::uint64_t mCapacity;
    std::uint64_t mCount = 0;
    std::uint64_t mLastBegin = 0;  // of the segment taken last
    unsigned char mUnusedBits = 0;
    bool mLastIsKnown = false;
};

int copyConstructed(ASN1CTXT* ctxt, unsigned char* buffer, std::uint64_t capacity, int length,
                    std::uint32_t* numbits) {
    const std::uint32_t start = ctxt->buffer.byteIndex;
    const bool indefinite = length == ASN1_INDEFLEN;
    const auto span = [&] { return std::int64_t{ctxt->buffer.byteIndex} - start; };
    const auto goesOn = [&] {
        return indefinite ? room(ctxt) >= 2 && !asn1rt::atEndOfContents(ctxt)
                          : span() < length && room(ctxt) > 0;
    };
    SegmentGatherer gatherer(ctxt, buffer, capacity);
    while (goesOn()) {
        if (int status = gatherer.takeSegment(); status != RTS_OK) return status;
    }
    std::uint32_t bits = 0;
    if (int status = gatherer.finish(&bits); status != RTS_OK) return status;
    if (!indefinite && span() != length) return record(ctxt, RTS_BAD_LENGTH);
    *numbits = bits;
    return RTS_OK;
}

// Every octet stored comes from what is left of the message, so no more than that is ever asked for.
int copyToHeap(ASN1CTXT* ctxt, const StringSpan& string, const unsigned char** data, std::uint32_t* numbits) {
    const auto octets = static_cast<std::uint32_t>(string.contentLength - 1);
    if (octets > kMostOctets) return RTS_BAD_LENGTH;
    unsigned char* buffer = asn1rt::allocateOctets(ctxt, std::min(octets, room(ctxt)));
    if (!buffer) return record(ctxt, RTS_NO_MEMORY);
    *data = buffer;
    *numbits = octets * 8;
    return xd_bitstr_s(ctxt, buffer, numbits, ASN1IMPL, string.span);
}

int pointIntoMessage(ASN1CTXT* ctxt, const StringSpan& string, const unsigned char** data,
                     std::uint32_t* numbits) {
    if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
    const unsigned char* content = asn1rt::cursor(ctxt);
    std::uint32_t bits = 0;
    const auto octets = static_cast<std::uint32_t>(string.contentLength - 1);
    if (int status = countBits(octets, content[0], &bits); status != RTS_OK) return status;
    if (static_cast<std::uint32_t>(string.span) > room(ctxt)) return RTS_END_OF_BUFFER;
    ctxt->buffer.byteIndex += static_cast<std::uint32_t>(string.span);
    *data = content + 1;
    *numbits = bits;
    return RTS_OK;
}

unsigned maskOf(std::uint32_t index) {
    return 0x80U >> (index & 7);
}

}  // namespace

extern "C" {

int xe_bitstr(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t numbits, ASN1TagType tagging) {
    if (numbits > 0 && !data) return 0;
    const std::uint32_t octets = numbits / 8 + (numbits % 8 != 0);
    const auto unusedBits = static_cast<unsigned char>((8 - numbits % 8) % 8);
    int length = octets > 0 ? xe_memcpy(ctxt, data, octets) : 0;
    if (length < 0) return length;
    const int prefix = xe_memcpy(ctxt, &unusedBits, 1);
    if (prefix < 0) return prefix;
    length += prefix;
    return tagging == ASN1EXPL ? xe_tag_len(ctxt, TAG_BIT_STRING, length) : length;
}

int xd_bitstr(ASN1CTXT* ctxt, const unsigned char** data, std::uint32_t* numbits, ASN1TagType tagging,
              int length) {
    *data = nullptr;
    *numbits = 0;
    if (tagging == ASN1EXPL) {
        if (int status = xd_match1(ctxt, TAG_BIT_STRING, &length); status != RTS_OK) return status;
    }
    const bool constructed = asn1rt::isConstructed(ctxt);
    StringSpan string{length, length};
    if (length == ASN1_INDEFLEN) {
        const int status =
            xd_consStrIndefLenAndSize(ctxt, TAG_BIT_STRING, &string.contentLength, &string.span);
        if (status != RTS_OK) return status;
    }
    int status = RTS_OK;
    if (string.contentLength < 2) {
        status = readNoBits(ctxt, string.contentLength);
    } else if (constructed || length == ASN1_INDEFLEN || !(ctxt->flags & ASN1_NO_COPY)) {
        // The indefinite form on a primitive has no content to point at: the copy refuses it.
        status = copyToHeap(ctxt, string, data, numbits);
    } else {
        status = pointIntoMessage(ctxt, string, data, numbits);
    }
    if (status != RTS_OK || !constructed || length != ASN1_INDEFLEN) return status;
    return asn1rt::takeEndOfContents(ctxt);
}

int xd_bitstr_s(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t* numbits, ASN1TagType tagging,
                int length) {
    const std::uint64_t capacity = (std::uint64_t{*numbits} + 7) / 8;
    *numbits = 0;
    if (tagging == ASN1EXPL) {
        const int status = asn1rt::readPrimitiveHeader(ctxt, TAG_BIT_STRING, &length);
        if (status != RTS_OK) return record(ctxt, status);
    }
    const auto copy = asn1rt::isConstructed(ctxt) ? copyConstructed : copyPrimitive;
    return copy(ctxt, buffer, capacity, length, numbits);
}

int rtSetBit(unsigned char* bits, std::uint32_t numbits, std::uint32_t index) {
    if (index >= numbits) return RTS_BAD_INDEX;
    const int former = rtTestBit(bits, numbits, index);
    bits[index / 8] = static_cast<unsigned char>(bits[index / 8] | maskOf(index));
    return former;
}

int rtClearBit(unsigned char* bits, std::uint32_t numbits, std::uint32_t index) {
    if (index >= numbits) return RTS_BAD_INDEX;
    const int former = rtTestBit(bits, numbits, index);
    bits[index / 8] = static_cast<unsigned char>(bits[index / 8] & ~maskOf(index));
    return former;
}

int rtTestBit(const unsigned char* bits, std::uint32_t numbits, std::uint32_t index) {
    return index < numbits ? static_cast<int>(bits[index / 8] & maskOf(index)) : 0;
}

int rtOctetBitLen(unsigned char octet) {
    return octet == 0 ? 0 : 8 - std::countr_zero(octet);
}

}  // extern "C"
