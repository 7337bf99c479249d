#include "asn1data/engine_decode_primitive.h"

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
#include "asn1rt/universal_tags.h"

namespace asn1data {
namespace {

int passOver(ASN1CTXT* ctxt, int length) {
    if (static_cast<std::uint32_t>(length) > asn1rt::room(ctxt)) return RTS_END_OF_BUFFER;
    ctxt->buffer.byteIndex += static_cast<std::uint32_t>(length);
    return RTS_OK;
}

// As xd_bigint, without the text that nobody will see.
int passOverNumber(ASN1CTXT* ctxt, ASN1TagType tagging, int length) {
    if (tagging == ASN1EXPL) {
        const int status = asn1rt::readPrimitiveHeader(ctxt, TAG_INTEGER, &length);
        if (status != RTS_OK) return status;
    }
    return length < 0 ? int{RTS_BAD_LENGTH} : passOver(ctxt, length);
}

// As xd_charstr, with a text only for what stands in segments.
int passOverText(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length) {
    if (tagging == ASN1EXPL) {
        if (int status = xd_match1(ctxt, identifierOf(type.tag), &length); status != RTS_OK) return status;
    }
    if (length >= 0 && !asn1rt::isConstructed(ctxt)) return passOver(ctxt, length);
    return xd_charstr(ctxt, static_cast<const char**>(value), ASN1IMPL, type.tag, length);
}

int decodeEnumerated(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging,
                     int length) {
    std::int32_t number = 0;
    if (int status = xd_enum(ctxt, &number, tagging, length); status != RTS_OK) return status;
    if (!isEnumerator(type, static_cast<std::uint32_t>(number))) return RTS_BAD_ENUM;
    *static_cast<std::uint32_t*>(value) = static_cast<std::uint32_t>(number);
    return RTS_OK;
}

int decodeInlineString(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging,
                       int length) {
    auto& string = *static_cast<InlineString*>(value);
    if (type.kind == Kind::InlineBitString) {
        string.count = type.upperBound;
        return xd_bitstr_s(ctxt, string.data, &string.count, tagging, length);
    }
    string.count = type.capacity;
    return xd_octstr_s(ctxt, string.data, &string.count, tagging, length);
}

// Nothing there is an element of no octets.
int decodeOpenType(ASN1CTXT* ctxt, void* value) {
    auto& element = *static_cast<ASN1OpenType*>(value);
    element = {0, nullptr};
    return xd_OpenType(ctxt, &element.data, &element.numocts);
}

// The octets inside the field's tag, whatever they are. Of an indefinite form they end before its
// end-of-contents, which is taken.
int decodeRawContent(ASN1CTXT* ctxt, void* value, int length) {
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

int decodePrimitive(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                    bool dropped) {
    switch (type.kind) {
        case Kind::Boolean:
            return xd_boolean(ctxt, static_cast<unsigned char*>(value), tagging, length);
        case Kind::Integer:
            return xd_integer(ctxt, static_cast<std::int32_t*>(value), tagging, length);
        case Kind::Unsigned:
            return xd_unsigned(ctxt, static_cast<std::uint32_t*>(value), tagging, length);
        case Kind::Uint16:
            return xd_uint16(ctxt, static_cast<std::uint16_t*>(value), tagging, length);
        case Kind::BigInteger:
            if (dropped) return passOverNumber(ctxt, tagging, length);
            return xd_bigint(ctxt, static_cast<const char**>(value), tagging, length);
        case Kind::Enumerated:
            return decodeEnumerated(ctxt, type, value, tagging, length);
        case Kind::Null:
            return xd_null(ctxt, tagging);
        case Kind::ObjectIdentifier:
            return xd_objid(ctxt, static_cast<ASN1OBJID*>(value), tagging, length);
        case Kind::OctetString: {
            auto& string = *static_cast<ASN1TDynOctStr*>(value);
            return xd_octstr(ctxt, &string.data, &string.numocts, tagging, length);
        }
        case Kind::BitString: {
            auto& string = *static_cast<ASN1TDynBitStr*>(value);
            return xd_bitstr(ctxt, &string.data, &string.numbits, tagging, length);
        }
        case Kind::InlineOctetString:
        case Kind::InlineBitString:
            return decodeInlineString(ctxt, type, value, tagging, length);
        case Kind::CharString:
            if (dropped && !type.hasBounds) return passOverText(ctxt, type, value, tagging, length);
            return xd_charstr(ctxt, static_cast<const char**>(value), tagging, type.tag, length);
        case Kind::BmpString:
            return xd_16BitCharStr(ctxt, static_cast<Asn116BitCharString*>(value), tagging, type.tag, length);
        case Kind::UniversalString:
            return xd_32BitCharStr(ctxt, static_cast<Asn132BitCharString*>(value), tagging, type.tag, length);
        case Kind::OpenType:
        case Kind::TableOpenType:
            return decodeOpenType(ctxt, value);
        case Kind::RawContent:
            // Without a tag around it, it is one element.
            return tagging == ASN1IMPL ? decodeRawContent(ctxt, value, length) : decodeOpenType(ctxt, value);
        default:
            return RTS_NOT_SUPPORTED;
    }
}

}  // namespace asn1data
