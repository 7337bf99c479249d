#include "asn1rt/ber_encode.h"

#include <algorithm>
#include <cstring>

#include "asn1rt/universal_tags.h"

namespace {

constexpr std::uint32_t kLargestLength = 0x7FFFFFFF;

// Header octets are put together here, back to front, and written at once.
class HeaderOctets {
  public:
    void prepend(std::uint32_t octet) { *--mFirst = static_cast<unsigned char>(octet); }
    std::uint32_t count() const { return static_cast<std::uint32_t>(mOctets + sizeof mOctets - mFirst); }
    int write(ASN1CTXT* ctxt) const { return xe_memcpy(ctxt, mFirst, count()); }

    void prependBase128(std::uint32_t value) {
        prepend(value & 0x7F);
        while ((value >>= 7) != 0)
            prepend((value & 0x7F) | 0x80);
    }

    void prependTag(ASN1TAG tag) {
        const std::uint32_t number = tag & TM_NUMBER;
        if (number <= 30) {
            prepend(((tag >> 24) & 0xE0) | number);
        } else {
            prependBase128(number);
            prepend((tag >> 24) | 0x1F);
        }
    }

    void prependLength(int length) {
        if (length == ASN1_INDEFLEN) {
            prepend(0x80);
            return;
        }
        std::uint32_t rest = static_cast<std::uint32_t>(length);
        std::uint32_t octets = 0;
        do {
            prepend(rest & 0xFF);
            rest >>= 8;
            ++octets;
        } while (rest != 0);
        if (length >= 0x80) prepend(0x80 | octets);
    }

  private:
    unsigned char mOctets[16];  // five of a length and six of a tag at most
    unsigned char* mFirst = mOctets + sizeof mOctets;
};

int withUniversalTag(ASN1CTXT* ctxt, ASN1TAG tag, int length, ASN1TagType tagging) {
    return tagging == ASN1EXPL && length >= 0 ? xe_tag_len(ctxt, tag, length) : length;
}

int writeSigned(ASN1CTXT* ctxt, std::int32_t value) {
    HeaderOctets octets;
    std::int32_t rest = value;
    do {
        octets.prepend(static_cast<std::uint32_t>(rest) & 0xFF);
        // What is left must be nothing but the sign of the octet just written.
        const bool signFits = (rest & 0x80) ? rest >> 8 == -1 : rest >> 8 == 0;
        rest >>= 8;
        if (signFits) break;
    } while (true);
    return octets.write(ctxt);
}

bool isEncodable(const ASN1OBJID* value) {
    if (!value || value->numids < 2 || value->numids > ASN1_K_MAXSUBIDS || value->subid[0] > 2) return false;
    if (value->subid[0] < 2) return value->subid[1] <= 39;
    return value->subid[1] <= 0xFFFFFFFF - 80;
}

}  // namespace

extern "C" {

int xe_setp(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t size) {
    if (int status = rtInitContextBuffer(ctxt, buffer, size); status != RTS_OK) return status;
    ctxt->buffer.byteIndex = ctxt->buffer.size > 0 ? ctxt->buffer.size - 1 : 0;
    return RTS_OK;
}

unsigned char* xe_getp(const ASN1CTXT* ctxt) {
    return ctxt->buffer.data + ctxt->buffer.byteIndex;
}

void xe_getBufLocDescr(const ASN1CTXT* ctxt, int length, ASN1BufLocDescr* location) {
    location->numocts = length;
    location->offset = ctxt->buffer.size - ctxt->buffer.byteIndex - 1;
}

void xe_free(ASN1CTXT* ctxt) {
    if (!ctxt->buffer.dynamic) return;
    rtMemHeapFreePtr(&ctxt->typeMemHeap, ctxt->buffer.data);
    ctxt->buffer.data = nullptr;
    ctxt->buffer.dynamic = 0;
    ctxt->buffer.size = 0;
    ctxt->buffer.byteIndex = 0;
}

int xe_expandBuffer(ASN1CTXT* ctxt, std::uint32_t wanted) {
    if (!ctxt->buffer.dynamic) return RTS_ENCODE_OVERFLOW;
    const std::uint32_t step = std::max<std::uint32_t>(wanted, XE_GROWTH_STEP);
    const std::uint64_t size = std::uint64_t{ctxt->buffer.size} + step;
    if (size > kLargestLength) return RTS_NO_MEMORY;
    auto* data =
        static_cast<unsigned char*>(rtMemHeapAlloc(&ctxt->typeMemHeap, static_cast<std::int32_t>(size)));
    if (!data) return RTS_NO_MEMORY;
    const std::uint32_t written = ctxt->buffer.size - ctxt->buffer.byteIndex;
    std::memcpy(data + size - written, xe_getp(ctxt), written);
    rtMemHeapFreePtr(&ctxt->typeMemHeap, ctxt->buffer.data);
    ctxt->buffer.data = data;
    ctxt->buffer.size += step;
    ctxt->buffer.byteIndex += step;
    return RTS_OK;
}

int xe_memcpy(ASN1CTXT* ctxt, const void* source, std::uint32_t count) {
    if (!source) return RTS_BAD_VALUE;
    if (count > kLargestLength) return RTS_BAD_LENGTH;
    if (ctxt->buffer.byteIndex < count) {
        if (int status = xe_expandBuffer(ctxt, count); status != RTS_OK) return status;
    }
    ctxt->buffer.byteIndex -= count;
    unsigned char* target = xe_getp(ctxt);
    if (count == 1) {
        *target = *static_cast<const unsigned char*>(source);
    } else if (count > 0) {
        std::memcpy(target, source, count);
    }
    return static_cast<int>(count);
}

int xe_tag(ASN1CTXT* ctxt, ASN1TAG tag) {
    HeaderOctets octets;
    octets.prependTag(tag);
    return octets.write(ctxt);
}

int xe_len(ASN1CTXT* ctxt, int length) {
    if (length < 0 && length != ASN1_INDEFLEN) return 0;
    HeaderOctets octets;
    octets.prependLength(length);
    return octets.write(ctxt);
}

int xe_tag_len(ASN1CTXT* ctxt, ASN1TAG tag, int length) {
    if (length < 0 && length != ASN1_INDEFLEN) return length;
    HeaderOctets octets;
    octets.prependLength(length);
    octets.prependTag(tag);
    const std::int64_t total = std::int64_t{length == ASN1_INDEFLEN ? 0 : length} + octets.count();
    if (total > kLargestLength) return RTS_BAD_LENGTH;
    const int written = octets.write(ctxt);
    return written < 0 ? written : static_cast<int>(total);
}

int xe_identifier(ASN1CTXT* ctxt, std::uint32_t value) {
    HeaderOctets octets;
    octets.prependBase128(value);
    return octets.write(ctxt);
}

int xe_integer(ASN1CTXT* ctxt, const std::int32_t* value, ASN1TagType tagging) {
    if (!value) return RTS_BAD_VALUE;
    return withUniversalTag(ctxt, TAG_INTEGER, writeSigned(ctxt, *value), tagging);
}

int xe_unsigned(ASN1CTXT* ctxt, const std::uint32_t* value, ASN1TagType tagging) {
    if (!value) return RTS_BAD_VALUE;
    HeaderOctets octets;
    std::uint32_t rest = *value;
    while (rest > 0x7F) {
        octets.prepend(rest & 0xFF);
        rest >>= 8;
    }
    octets.prepend(rest);  // below 0x80: the last octet, or the 00 in front of one with its top bit set
    return withUniversalTag(ctxt, TAG_INTEGER, octets.write(ctxt), tagging);
}

int xe_enum(ASN1CTXT* ctxt, const std::int32_t* value, ASN1TagType tagging) {
    if (!value) return RTS_BAD_VALUE;
    return withUniversalTag(ctxt, TAG_ENUMERATED, writeSigned(ctxt, *value), tagging);
}

int xe_boolean(ASN1CTXT* ctxt, const unsigned char* value, ASN1TagType tagging) {
    if (!value) return RTS_BAD_VALUE;
    const unsigned char octet = *value ? 0xFF : 0x00;
    return withUniversalTag(ctxt, TAG_BOOLEAN, xe_memcpy(ctxt, &octet, 1), tagging);
}

int xe_null(ASN1CTXT* ctxt, ASN1TagType tagging) {
    return withUniversalTag(ctxt, TAG_NULL, 0, tagging);
}

int xe_octstr(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count, ASN1TagType tagging) {
    return withUniversalTag(ctxt, TAG_OCTET_STRING, data ? xe_memcpy(ctxt, data, count) : 0, tagging);
}

int xe_objid(ASN1CTXT* ctxt, const ASN1OBJID* value, ASN1TagType tagging) {
    if (!isEncodable(value)) return RTS_BAD_OBJID;
    int length = 0;
    for (std::uint32_t arc = value->numids - 1; arc >= 1; --arc) {
        // The first two arcs share a subidentifier (X.690, 8.19.4).
        const std::uint32_t joined = arc == 1 ? value->subid[0] * 40 + value->subid[1] : value->subid[arc];
        const int written = xe_identifier(ctxt, joined);
        if (written < 0) return written;
        length += written;
    }
    return withUniversalTag(ctxt, TAG_OBJECT_IDENTIFIER, length, tagging);
}

}  // extern "C"
