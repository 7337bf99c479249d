// Traits of the primitive types, in the form that asn1/bridge.h tells.
//
// `set` and `copy` throw 0x80093106 for memory that the context does not have, and for blobs above 0x7FFFFFCF
// bytes; what else is thrown stands with each.
#ifndef MIRVANE_ASN1_PRIMITIVE_TRAITS_H
#define MIRVANE_ASN1_PRIMITIVE_TRAITS_H

#include "asn1rt/message_buffer.h"
#include "asn1rt/object_identifier.h"
#include "asn1rt/value_types.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

struct ASN1IA5String_traits {
    using ASN1_T = char const*;

    // Throws 0x80070057 for null.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, char const* text);
    static void get(ASN1_T const& rec, CStringProxy& text);
    // Shares the text of `src`, unlike all other copies, which is meant.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

struct ASN1UTF8String_traits {
    using ASN1_T = char const*;

    // Throws 0x80070057 for null and for a character that UTF-8 does not have.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, wchar_t const* text);
    // Throws 0x80093101 for what is no UTF-8.
    static void get(ASN1_T const& rec, CWStringProxy& text);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

struct ASN1TObjId_traits {
    using ASN1_T = ASN1OBJID;

    // Throws 0x80070057 for what str2oid refuses.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, char const* text);
    static void get(ASN1_T const& rec, CStringProxy& text);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

// What the records that are a count of octets and a pointer to them have in common.
template <typename Record>
struct OctetsTraits {
    using ASN1_T = Record;

    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& value);
    static void get(ASN1_T const& rec, CBlob& value);
};

struct ASN1TDynOctStr_traits : OctetsTraits<ASN1TDynOctStr> {
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

// The blob is one whole encoded element.
struct ASN1TOpenType_traits : OctetsTraits<ASN1OpenType> {
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

// The blob holds whole octets: the count of bits in the last one is not kept.
struct ASN1TDynBitStr_traits {
    using ASN1_T = ASN1TDynBitStr;

    // Throws 0x80093106 from 0x20000000 bytes on too, where the count of bits passes 32 bits.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& value);
    static void get(ASN1_T const& rec, CBlob& value);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

}  // namespace Mirvane::ASN1

#endif
