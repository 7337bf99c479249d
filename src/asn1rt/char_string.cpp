#include "asn1rt/char_string.h"

#include <cstring>
#include <type_traits>

#include "asn1rt/allocate.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/cursor.h"
#include "asn1rt/growth.h"
#include "asn1rt/universal_tags.h"

namespace {

using asn1rt::record;
using asn1rt::StringSpan;

constexpr std::uint64_t kLargestLength = 0x7FFFFFFF;

int withTag(ASN1CTXT* ctxt, ASN1TAG tag, int length, ASN1TagType tagging) {
    return tagging == ASN1EXPL && length >= 0 ? xe_tag_len(ctxt, tag, length) : length;
}

struct StringHeader {
    StringSpan span;
    bool endsWithContents;  // an end-of-contents closes it
};

// Reads the tag of a string if that is its decoder's business, and measures the content.
int startString(ASN1CTXT* ctxt, ASN1TagType tagging, ASN1TAG tag, int length, StringHeader* header) {
    if (tagging == ASN1EXPL) {
        const auto identifier = static_cast<unsigned char>((tag & TM_CLASS) >> 24 | (tag & 0x1F));
        if (int status = xd_match1(ctxt, identifier, &length); status != RTS_OK) return status;
    }
    header->span = {length, length};
    header->endsWithContents = asn1rt::isConstructed(ctxt) && length == ASN1_INDEFLEN;
    if (length != ASN1_INDEFLEN) return RTS_OK;
    const int status =
        xd_consStrIndefLenAndSize(ctxt, TAG_OCTET_STRING, &header->span.contentLength, &header->span.span);
    return status == RTS_OK ? status : record(ctxt, status);
}

int finishString(ASN1CTXT* ctxt, const StringHeader& header, int status) {
    if (!header.endsWithContents) return status;
    const int end = asn1rt::takeEndOfContents(ctxt);
    return end == RTS_OK ? status : end;
}

template <typename Unit>
Unit fromBigEndian(const unsigned char* octets) {
    Unit unit = 0;
    for (std::size_t i = 0; i < sizeof(Unit); ++i)
        unit = static_cast<Unit>(unit << 8 | octets[i]);
    return unit;
}

template <typename Unit>
int writeUnit(ASN1CTXT* ctxt, Unit unit) {
    unsigned char octets[sizeof(Unit)];
    for (std::size_t i = sizeof(Unit); i-- > 0; unit = static_cast<Unit>(unit >> 8)) {
        octets[i] = static_cast<unsigned char>(unit & 0xFF);
    }
    return xe_memcpy(ctxt, octets, sizeof octets);
}

template <typename String>
int encodeUnits(ASN1CTXT* ctxt, const String* value, ASN1TagType tagging, ASN1TAG tag) {
    if (!value || (value->nchars > 0 && !value->data)) return RTS_BAD_VALUE;
    const std::uint64_t length = std::uint64_t{value->nchars} * sizeof(*value->data);
    if (length > kLargestLength) return RTS_BAD_LENGTH;
    for (std::uint32_t i = value->nchars; i-- > 0;) {
        asn1rt::growAhead(ctxt);
        if (int written = writeUnit(ctxt, value->data[i]); written < 0) return written;
    }
    return withTag(ctxt, tag, static_cast<int>(length), tagging);
}

template <typename String>
int decodeUnits(ASN1CTXT* ctxt, String* value, ASN1TagType tagging, ASN1TAG tag, int length) {
    using Unit = std::remove_pointer_t<decltype(value->data)>;
    *value = {};
    StringHeader header;
    if (int status = startString(ctxt, tagging, tag, length, &header); status != RTS_OK) return status;
    if (header.span.contentLength < 1) return finishString(ctxt, header, RTS_OK);

    unsigned char* octets = nullptr;
    std::uint32_t count = 0;
    const int status = asn1rt::copyStringToHeap(ctxt, header.span, 0, &octets, &count);
    value->data = reinterpret_cast<Unit*>(octets);
    if (status != RTS_OK) return status;
    value->nchars = count / sizeof(Unit);
    for (std::uint32_t i = 0; i < value->nchars; ++i) {
        value->data[i] = fromBigEndian<Unit>(octets + std::size_t{i} * sizeof(Unit));
    }
    return finishString(ctxt, header, RTS_OK);
}

}  // namespace

extern "C" {

int xe_charstr(ASN1CTXT* ctxt, const char* text, ASN1TagType tagging, ASN1TAG tag) {
    if (!text) return RTS_BAD_VALUE;
    const std::size_t length = std::strlen(text);
    if (length > kLargestLength) return RTS_BAD_LENGTH;
    const auto* octets = reinterpret_cast<const unsigned char*>(text);
    return withTag(ctxt, tag, xe_octstr(ctxt, octets, static_cast<std::uint32_t>(length), ASN1IMPL), tagging);
}

int xd_charstr(ASN1CTXT* ctxt, const char** text, ASN1TagType tagging, ASN1TAG tag, int length) {
    StringHeader header;
    if (int status = startString(ctxt, tagging, tag, length, &header); status != RTS_OK) return status;

    int status = RTS_OK;
    unsigned char* octets = nullptr;
    std::uint32_t count = 0;
    if (header.span.contentLength >= 1) {
        status = asn1rt::copyStringToHeap(ctxt, header.span, 1, &octets, &count);
        if (!octets) return status;
    } else {
        octets = asn1rt::allocateOctets(ctxt, 1);
        if (!octets) return record(ctxt, RTS_NO_MEMORY);
    }
    octets[count] = 0;
    *text = reinterpret_cast<const char*>(octets);
    return finishString(ctxt, header, status);
}

int xe_16BitCharStr(ASN1CTXT* ctxt, const Asn116BitCharString* value, ASN1TagType tagging, ASN1TAG tag) {
    return encodeUnits(ctxt, value, tagging, tag);
}

int xe_32BitCharStr(ASN1CTXT* ctxt, const Asn132BitCharString* value, ASN1TagType tagging, ASN1TAG tag) {
    return encodeUnits(ctxt, value, tagging, tag);
}

int xd_16BitCharStr(ASN1CTXT* ctxt, Asn116BitCharString* value, ASN1TagType tagging, ASN1TAG tag,
                    int length) {
    return decodeUnits(ctxt, value, tagging, tag, length);
}

int xd_32BitCharStr(ASN1CTXT* ctxt, Asn132BitCharString* value, ASN1TagType tagging, ASN1TAG tag,
                    int length) {
    return decodeUnits(ctxt, value, tagging, tag, length);
}

}  // extern "C"
