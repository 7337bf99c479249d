// Encoding of BER primitives (X.690). The encoder fills its buffer from the end towards the start, so a value
// is written before its length and tag, and no length has to be known ahead.
//
// Every operation but xe_setp, xe_getp, xe_getBufLocDescr, xe_free and xe_expandBuffer returns the octets
// written, or a negative status. None of them records a failure in errInfo: the codecs above do. With
// ASN1EXPL a primitive appends its universal tag and length; with ASN1IMPL it writes and counts the content
// alone.
#ifndef MIRVANE_ASN1RT_BER_ENCODE_H
#define MIRVANE_ASN1RT_BER_ENCODE_H

#include <cstdint>

#include "asn1rt/context.h"
#include "asn1rt/object_identifier.h"

// The least by which a dynamic buffer grows, and its first size.
enum : std::uint32_t { XE_GROWTH_STEP = 16384 };

// Where an encoded element lies: this stays valid when the buffer grows.
struct ASN1BufLocDescr {
    std::int32_t numocts;  // the element's length
    // From its first octet to the buffer's end, the octet that is never written left out.
    std::uint32_t offset;
};

extern "C" {

// Gives the context a buffer as rtInitContextBuffer does (null: a dynamic one) and sets the cursor to its
// end. The last octet is never written: a static buffer of n octets takes n - 1. A status; errInfo is left
// alone.
MIRVANE_API int xe_setp(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t size);

// The first octet of the encoding so far. It dies when the buffer grows, and with the context.
MIRVANE_API unsigned char* xe_getp(const ASN1CTXT* ctxt);

// Stores `length` and where the octets written last begin.
MIRVANE_API void xe_getBufLocDescr(const ASN1CTXT* ctxt, int length, ASN1BufLocDescr* location);

// Frees a dynamic buffer and leaves the context without one; a static buffer stays.
MIRVANE_API void xe_free(ASN1CTXT* ctxt);

// Makes room for at least `wanted` more octets in front, by the larger of that and 16384. Pointers into the
// old buffer die. RTS_ENCODE_OVERFLOW for a static buffer, RTS_NO_MEMORY (then the buffer stays as it was),
// or 0.
MIRVANE_API int xe_expandBuffer(ASN1CTXT* ctxt, std::uint32_t wanted);

// Puts `count` octets in front of what stands. RTS_BAD_VALUE for a null source, RTS_ENCODE_OVERFLOW,
// RTS_NO_MEMORY, and RTS_BAD_LENGTH for a count above 0x7FFFFFFF.
MIRVANE_API int xe_memcpy(ASN1CTXT* ctxt, const void* source, std::uint32_t count);

// An identifier of one or more octets.
MIRVANE_API int xe_tag(ASN1CTXT* ctxt, ASN1TAG tag);

// A length. ASN1_INDEFLEN writes 80; any other negative length writes nothing and gives 0.
MIRVANE_API int xe_len(ASN1CTXT* ctxt, int length);

// Length and tag, and the sum of `length` and what was written; for ASN1_INDEFLEN only what was written. Any
// other negative length comes back untouched with nothing written, so that a failed content passes through.
// RTS_BAD_LENGTH for a sum above 0x7FFFFFFF.
MIRVANE_API int xe_tag_len(ASN1CTXT* ctxt, ASN1TAG tag, int length);

// A value in base 128, as object identifier arcs are written.
MIRVANE_API int xe_identifier(ASN1CTXT* ctxt, std::uint32_t value);

// INTEGER in the shortest two's complement form. RTS_BAD_VALUE for null.
MIRVANE_API int xe_integer(ASN1CTXT* ctxt, const std::int32_t* value, ASN1TagType tagging);
MIRVANE_API int xe_unsigned(ASN1CTXT* ctxt, const std::uint32_t* value, ASN1TagType tagging);

// ENUMERATED. RTS_BAD_VALUE for null.
MIRVANE_API int xe_enum(ASN1CTXT* ctxt, const std::int32_t* value, ASN1TagType tagging);

// BOOLEAN: FF for any value but 0. RTS_BAD_VALUE for null.
MIRVANE_API int xe_boolean(ASN1CTXT* ctxt, const unsigned char* value, ASN1TagType tagging);

MIRVANE_API int xe_null(ASN1CTXT* ctxt, ASN1TagType tagging);

// OCTET STRING. Null data is an empty string, whatever the count. RTS_BAD_LENGTH for a count above
// 0x7FFFFFFF.
MIRVANE_API int xe_octstr(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count,
                          ASN1TagType tagging);

// OBJECT IDENTIFIER. RTS_BAD_OBJID for null, fewer than 2 or more than 128 arcs, a first arc above 2, a
// second above 39 under 0 or 1, and a second under 2 that leaves no room for the 80 that the joined
// subidentifier adds.
MIRVANE_API int xe_objid(ASN1CTXT* ctxt, const ASN1OBJID* value, ASN1TagType tagging);

}  // extern "C"

#endif
