// The runtime's primitives in all their modes. In front of the encoding stand the flags of the context and
// sixteen steps of an octet each: which primitive reads next, and whether it reads its own header.
#include <array>
#include <cstring>

#include "asn1rt/big_integer_codec.h"
#include "asn1rt/bit_string.h"
#include "asn1rt/char_string.h"
#include "asn1rt/list.h"
#include "asn1rt/open_type.h"
#include "asn1rt/small_integer.h"
#include "asn1rt/universal_tags.h"
#include "fuzz/fields.h"
#include "fuzz/target.h"
#include "support/contexts.h"

namespace {

using fuzz::require;

constexpr std::size_t kSteps = 16;

// One read: with ASN1EXPL it takes the header itself, with ASN1IMPL the caller did and knows the length.
struct Read {
    ASN1CTXT* context;
    ASN1TagType tagging;
    int length;
};

// What is written of a value that was read, and read again by `compare`, is the value.
template <typename Write, typename Compare>
void comesBack(Write write, Compare compare) {
    test::Encoder output;
    const int count = write(output);
    if (count <= 0) return;
    test::Decoder again(test::Octets(xe_getp(output), xe_getp(output) + count));
    require(compare(again), "what was written is read as the same value");
}

template <typename Value, int (*decode)(ASN1CTXT*, Value*, ASN1TagType, int),
          int (*encode)(ASN1CTXT*, const Value*, ASN1TagType)>
int number(const Read& read) {
    Value value{};
    const int status = decode(read.context, &value, read.tagging, read.length);
    if (status == RTS_OK) {
        comesBack([&](ASN1CTXT* output) { return encode(output, &value, ASN1EXPL); },
                  [&](ASN1CTXT* input) {
                      Value again{};
                      return decode(input, &again, ASN1EXPL, 0) == RTS_OK && again == value;
                  });
    }
    return status;
}

// FF for all that is true.
int boolean(const Read& read) {
    unsigned char value = 0;
    const int status = xd_boolean(read.context, &value, read.tagging, read.length);
    fuzz::seen = fuzz::seen + value;
    return status;
}

int null(const Read& read) {
    return xd_null(read.context, read.tagging);
}

int octetString(const Read& read) {
    const unsigned char* data = nullptr;
    std::uint32_t count = 0;
    const int status = xd_octstr(read.context, &data, &count, read.tagging, read.length);
    if (status != RTS_OK) return status;
    fuzz::readOctets({data, count});
    comesBack([&](ASN1CTXT* output) { return xe_octstr(output, data, count, ASN1EXPL); },
              [&](ASN1CTXT* input) {
                  const unsigned char* again = nullptr;
                  std::uint32_t size = 0;
                  return xd_octstr(input, &again, &size, ASN1EXPL, 0) == RTS_OK && size == count &&
                         (count == 0 || std::memcmp(again, data, count) == 0);
              });
    return status;
}

int octetStringInto(const Read& read) {
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[37]);
    std::uint32_t count = 37;
    const int status = xd_octstr_s(read.context, buffer.get(), &count, read.tagging, read.length);
    if (status == RTS_OK) fuzz::readOctets({buffer.get(), count});
    return status;
}

int bitString(const Read& read) {
    const unsigned char* data = nullptr;
    std::uint32_t bits = 0;
    const int status = xd_bitstr(read.context, &data, &bits, read.tagging, read.length);
    if (status != RTS_OK || !data) return status;
    fuzz::readOctets({data, bits / 8 + (bits % 8 ? 1 : 0)});
    for (const std::uint32_t index : {0u, bits / 2, bits - 1, bits})
        require(rtTestBit(data, bits, index) >= 0, "a bit is asked for");
    comesBack([&](ASN1CTXT* output) { return xe_bitstr(output, data, bits, ASN1EXPL); },
              [&](ASN1CTXT* input) {
                  const unsigned char* again = nullptr;
                  std::uint32_t size = 0;
                  return xd_bitstr(input, &again, &size, ASN1EXPL, 0) == RTS_OK && size == bits;
              });
    return status;
}

int bitStringInto(const Read& read) {
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[9]);
    std::uint32_t bits = 72;
    const int status = xd_bitstr_s(read.context, buffer.get(), &bits, read.tagging, read.length);
    if (status == RTS_OK) fuzz::readOctets({buffer.get(), (bits + 7) / 8});
    return status;
}

int identifier(const Read& read) {
    ASN1OBJID value{};
    const int status = xd_objid(read.context, &value, read.tagging, read.length);
    if (status == RTS_OK) {
        comesBack([&](ASN1CTXT* output) { return xe_objid(output, &value, ASN1EXPL); },
                  [&](ASN1CTXT* input) {
                      ASN1OBJID again{};
                      return xd_objid(input, &again, ASN1EXPL, 0) == RTS_OK && again == value;
                  });
    }
    return status;
}

int bigInteger(const Read& read) {
    const char* text = nullptr;
    const int status = xd_bigint(read.context, &text, read.tagging, read.length);
    if (status != RTS_OK) return status;
    fuzz::read(text);
    comesBack([&](ASN1CTXT* output) { return xe_bigint(output, text, ASN1EXPL); },
              [&](ASN1CTXT* input) {
                  const char* again = nullptr;
                  return xd_bigint(input, &again, ASN1EXPL, 0) == RTS_OK;
              });
    return status;
}

int charString(const Read& read) {
    const char* text = nullptr;
    const int status = xd_charstr(read.context, &text, read.tagging, TAG_UTF8_STRING, read.length);
    fuzz::read(text);
    return status;
}

template <typename String, ASN1TAG tag, int (*decode)(ASN1CTXT*, String*, ASN1TagType, ASN1TAG, int),
          int (*encode)(ASN1CTXT*, const String*, ASN1TagType, ASN1TAG)>
int wideString(const Read& read) {
    String value{};
    const int status = decode(read.context, &value, read.tagging, tag, read.length);
    if (status != RTS_OK) return status;
    for (std::uint32_t i = 0; i < value.nchars; ++i)
        fuzz::seen = fuzz::seen + value.data[i];
    comesBack([&](ASN1CTXT* output) { return encode(output, &value, ASN1EXPL, tag); },
              [&](ASN1CTXT* input) {
                  String again{};
                  return decode(input, &again, ASN1EXPL, tag, 0) == RTS_OK && again.nchars == value.nchars;
              });
    return status;
}

int openType(const Read& read) {
    const unsigned char* data = nullptr;
    std::uint32_t count = 0;
    const int status = xd_OpenType(read.context, &data, &count);
    if (status != RTS_OK || !data) return status;
    fuzz::readOctets({data, count});
    test::Encoder output;
    const int written = xe_OpenType(output, data, count);
    require(written < 0 || static_cast<std::uint32_t>(written) <= count, "an open type stays as it is");
    return status;
}

int openTypeIntoList(const Read& read) {
    _Asn1RTDList list;
    rtDListInit(&list);
    const int status = xd_OpenTypeAppend(read.context, &list);
    test::Encoder output;
    if (status == RTS_OK) xe_OpenTypeExt(output, &list);
    return status;
}

int count(const Read& read) {
    std::uint32_t elements = 0;
    const std::uint32_t before = read.context->buffer.byteIndex;
    const int status = xd_count(read.context, read.length, &elements);
    require(status != RTS_OK || read.context->buffer.byteIndex == before, "counting leaves the cursor");
    return status;
}

int segments(const Read& read) {
    int content = 0;
    int span = 0;
    return xd_consStrIndefLenAndSize(read.context, TAG_OCTET_STRING, &content, &span);
}

int nextElement(const Read& read) {
    return xd_NextElement(read.context);
}

int endOfContents(const Read& read) {
    return xd_MovePastEOC(read.context);
}

int search(const Read& read) {
    int length = 0;
    return xd_match(read.context, read.length & 0xFF, &length, XD_SEEK | XD_ADVANCE);
}

int header(const Read& read) {
    ASN1TAG tag = 0;
    int length = 0;
    return xd_tag_len(read.context, &tag, &length, XD_ADVANCE);
}

constexpr int (*kPrimitives[])(const Read&) = {
    number<std::int32_t, xd_integer, xe_integer>,
    number<std::uint32_t, xd_unsigned, xe_unsigned>,
    number<std::int32_t, xd_enum, xe_enum>,
    number<std::uint16_t, xd_uint16, xe_uint16>,
    boolean,
    null,
    octetString,
    octetStringInto,
    bitString,
    bitStringInto,
    identifier,
    bigInteger,
    charString,
    wideString<Asn116BitCharString, TAG_BMP_STRING, xd_16BitCharStr, xe_16BitCharStr>,
    wideString<Asn132BitCharString, TAG_UNIVERSAL_STRING, xd_32BitCharStr, xe_32BitCharStr>,
    openType,
    openTypeIntoList,
    count,
    segments,
    nextElement,
    endOfContents,
    search,
    header,
};

// The step with the top bit set takes the header first, as a generated decoder does for an implicit tag.
int take(ASN1CTXT* context, unsigned step) {
    Read read{context, ASN1EXPL, 0};
    if (step & 0x80) {
        ASN1TAG tag = 0;
        read.tagging = ASN1IMPL;
        const int status = xd_tag_len(context, &tag, &read.length, XD_ADVANCE);
        if (status != RTS_OK) return status;
    }
    return kPrimitives[(step & 0x7F) % std::size(kPrimitives)](read);
}

}  // namespace

MIRVANE_FUZZ_TARGET(primitives, kSteps + 1) {
    const unsigned mode = input.number();
    std::array<unsigned, kSteps> steps{};
    for (unsigned& step : steps)
        step = input.number();
    const unsigned flags = (mode & 1 ? ASN1_NO_COPY : 0) | (mode & 2 ? ASN1_LAX_LENGTH : 0) |
                           (mode & 4 ? ASN1_INDEF_MESSAGE : 0);
    test::Decoder decoder(test::Octets(input.bytes().begin(), input.bytes().end()), flags);
    if (decoder.size() == 0) return;
    if (mode & 8) xd_setp(decoder, decoder.data(), decoder.size(), nullptr, nullptr);
    for (const unsigned step : steps) {
        if (take(decoder, step) != RTS_OK && !(mode & 16)) break;
    }
    const int whole = xd_indeflen_ex(decoder.data(), decoder.size());
    require(whole <= decoder.size(), "an element does not end behind the octets");
}
