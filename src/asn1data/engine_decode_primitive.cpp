#include "asn1data/engine_decode_primitive.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "asn1data/constraint.h"
#include "asn1data/record_access.h"
#include "asn1rt/allocate.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/big_integer_codec.h"
#include "asn1rt/bit_string.h"
#include "asn1rt/char_string.h"
#include "asn1rt/cursor.h"
#include "asn1rt/open_type.h"
#include "asn1rt/small_integer.h"
#include "asn1rt/text_digits.h"
#include "asn1rt/universal_tags.h"

namespace asn1data {
namespace {

int passOver(ASN1CTXT* ctxt, int length) {
    if (static_cast<std::uint32_t>(length) > asn1rt::room(ctxt)) return RTS_END_OF_BUFFER;
    ctxt->buffer.byteIndex += static_cast<std::uint32_t>(length);
    return RTS_OK;
}

// What the runtime decodes into a field by itself.
template <typename Value, int (*decode)(ASN1CTXT*, Value*, ASN1TagType, int)>
int decodeBy(ASN1CTXT* ctxt, const TypeDescriptor&, void* value, ASN1TagType tagging, int length, Passing&) {
    return decode(ctxt, static_cast<Value*>(value), tagging, length);
}

// As xd_bigint, without a text for what nobody will see, and without a block for what does not stay.
int passNumber(ASN1CTXT* ctxt, void* value, ASN1TagType tagging, int length, Passing& passing) {
    if (tagging == ASN1EXPL) {
        const int status = asn1rt::readPrimitiveHeader(ctxt, TAG_INTEGER, &length);
        if (status != RTS_OK) return status;
    }
    if (length < 0) return RTS_BAD_LENGTH;
    if (passing.tried > 0) return passOver(ctxt, length);
    const auto count = static_cast<std::uint32_t>(length);
    const bool isWhole = count <= asn1rt::room(ctxt);
    void* const text = isWhole ? passing.room.take(asn1rt::bigIntegerTextSize(count)) : nullptr;
    if (!text) return xd_bigint(ctxt, static_cast<const char**>(value), ASN1IMPL, length);
    const unsigned char* const octets = asn1rt::cursor(ctxt);
    asn1rt::writeBigIntegerText(octets, count, asn1rt::leadingZeros(octets, count), static_cast<char*>(text));
    ctxt->buffer.byteIndex += count;
    *static_cast<const char**>(value) = static_cast<const char*>(text);
    return RTS_OK;
}

int decodeBigInteger(ASN1CTXT* ctxt, const TypeDescriptor&, void* value, ASN1TagType tagging, int length,
                     Passing& passing) {
    if (passing.applies()) return passNumber(ctxt, value, tagging, length, passing);
    return xd_bigint(ctxt, static_cast<const char**>(value), tagging, length);
}

// As xd_charstr, in the way of passNumber.
int passText(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
             Passing& passing) {
    if (tagging == ASN1EXPL) {
        if (int status = xd_match1(ctxt, identifierOf(type.tag), &length); status != RTS_OK) return status;
    }
    const bool primitive = length >= 0 && !asn1rt::isConstructed(ctxt);
    if (primitive && passing.tried > 0 && !type.hasBounds) return passOver(ctxt, length);
    const auto count = static_cast<std::uint32_t>(length);
    const bool isWhole = primitive && count <= asn1rt::room(ctxt);
    auto* const text = static_cast<char*>(isWhole ? passing.room.take(std::uint64_t{count} + 1) : nullptr);
    if (!text) return xd_charstr(ctxt, static_cast<const char**>(value), ASN1IMPL, type.tag, length);
    std::memcpy(text, asn1rt::cursor(ctxt), count);
    text[count] = '\0';
    ctxt->buffer.byteIndex += count;
    *static_cast<const char**>(value) = text;
    return RTS_OK;
}

int decodeCharString(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                     Passing& passing) {
    if (passing.applies()) return passText(ctxt, type, value, tagging, length, passing);
    return xd_charstr(ctxt, static_cast<const char**>(value), tagging, type.tag, length);
}

template <typename String, int (*decode)(ASN1CTXT*, String*, ASN1TagType, ASN1TAG, int)>
int decodeWideString(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                     Passing&) {
    return decode(ctxt, static_cast<String*>(value), tagging, type.tag, length);
}

int decodeEnumerated(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                     Passing&) {
    std::int32_t number = 0;
    if (int status = xd_enum(ctxt, &number, tagging, length); status != RTS_OK) return status;
    if (!isEnumerator(type, static_cast<std::uint32_t>(number))) return RTS_BAD_ENUM;
    *static_cast<std::uint32_t*>(value) = static_cast<std::uint32_t>(number);
    return RTS_OK;
}

int decodeNull(ASN1CTXT* ctxt, const TypeDescriptor&, void*, ASN1TagType tagging, int, Passing&) {
    return xd_null(ctxt, tagging);
}

int decodeOctetString(ASN1CTXT* ctxt, const TypeDescriptor&, void* value, ASN1TagType tagging, int length,
                      Passing&) {
    auto& string = *static_cast<ASN1TDynOctStr*>(value);
    return xd_octstr(ctxt, &string.data, &string.numocts, tagging, length);
}

int decodeBitString(ASN1CTXT* ctxt, const TypeDescriptor&, void* value, ASN1TagType tagging, int length,
                    Passing&) {
    auto& string = *static_cast<ASN1TDynBitStr*>(value);
    return xd_bitstr(ctxt, &string.data, &string.numbits, tagging, length);
}

int decodeInlineOctetString(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging,
                            int length, Passing&) {
    auto& string = *static_cast<InlineString*>(value);
    string.count = type.capacity;
    return xd_octstr_s(ctxt, string.data, &string.count, tagging, length);
}

int decodeInlineBitString(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging,
                          int length, Passing&) {
    auto& string = *static_cast<InlineString*>(value);
    string.count = type.upperBound;
    return xd_bitstr_s(ctxt, string.data, &string.count, tagging, length);
}

// Nothing there is an element of no octets.
int decodeOpenType(ASN1CTXT* ctxt, const TypeDescriptor&, void* value, ASN1TagType, int, Passing&) {
    auto& element = *static_cast<ASN1OpenType*>(value);
    element = {0, nullptr};
    return xd_OpenType(ctxt, &element.data, &element.numocts);
}

// The octets inside the field's tag, whatever they are. Of an indefinite form they end before its
// end-of-contents, which is taken.
// Without a tag around it, it is one element.
int decodeRawContent(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                     Passing& passing) {
    if (tagging == ASN1EXPL) return decodeOpenType(ctxt, type, value, tagging, length, passing);
    auto& content = *static_cast<ASN1TDynOctStr*>(value);
    content = {0, nullptr};
    const std::uint32_t start = ctxt->buffer.byteIndex;
    std::uint32_t count = static_cast<std::uint32_t>(length);
    if (length == ASN1_INDEFLEN) {
        if (int status = xd_MovePastEOC(ctxt); status != RTS_OK) return status;
        count = ctxt->buffer.byteIndex - start - 2;
    } else if (count > asn1rt::room(ctxt)) {
        return RTS_END_OF_BUFFER;
    } else {
        ctxt->buffer.byteIndex += count;
    }
    const unsigned char* octets = ctxt->buffer.data + start;
    if (!(ctxt->flags & ASN1_NO_COPY)) {
        unsigned char* copied = asn1rt::allocateOctets(ctxt, count);
        if (!copied) return RTS_NO_MEMORY;
        std::memcpy(copied, octets, count);
        octets = copied;
    }
    content = {count, octets};
    return RTS_OK;
}

}  // namespace

constinit const std::array<PrimitiveDecoder*, kPrimitiveKinds> primitiveDecoders = std::to_array({
    decodeBy<unsigned char, xd_boolean>,
    decodeBy<std::int32_t, xd_integer>,
    decodeBy<std::uint32_t, xd_unsigned>,
    decodeBy<std::uint16_t, xd_uint16>,
    decodeBigInteger,
    decodeEnumerated,
    decodeNull,
    decodeBy<ASN1OBJID, xd_objid>,
    decodeOctetString,
    decodeInlineOctetString,
    decodeBitString,
    decodeInlineBitString,
    decodeCharString,
    decodeWideString<Asn116BitCharString, xd_16BitCharStr>,
    decodeWideString<Asn132BitCharString, xd_32BitCharStr>,
    decodeOpenType,
    decodeOpenType,
    decodeRawContent,
});

}  // namespace asn1data
