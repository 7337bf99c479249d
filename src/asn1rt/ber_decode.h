// Decoding of BER (X.690): a cursor over one flat buffer, without a stack; nesting lives in the callers.
//
// Every operation returns 0 or a negative status. "Recorded" means that the failure is also kept in errInfo
// if it is the first there. No operation reads at or behind buffer.size: such a read is RTS_END_OF_BUFFER. On
// failure the cursor stays where it stopped, unless told otherwise. With ASN1EXPL an operation reads the
// universal tag and length itself and ignores its length argument; with ASN1IMPL the caller has read them and
// passes the length. Memory for values comes from typeMemHeap and is not given back on failure: it goes with
// the context.
#ifndef MIRVANE_ASN1RT_BER_DECODE_H
#define MIRVANE_ASN1RT_BER_DECODE_H

#include <cstdint>

#include "asn1rt/context.h"
#include "asn1rt/object_identifier.h"

// How xd_match and xd_tag_len look at elements; xd_tag_len honours XD_ADVANCE alone.
enum ASN1MatchFlags : int {
    XD_SEEK = 1,     // go on over elements until the tag is found
    XD_ADVANCE = 2,  // leave the cursor behind tag and length, otherwise it returns to the element
    XD_SKIP = 8,     // step over one element first
};

struct ASN1BufferState {
    std::uint32_t byteIndex;
    std::uint16_t bitOffset;
    std::uint16_t flags;
};

extern "C" {

// Takes a message for decoding, reads its outermost tag and length, and narrows buffer.size to that element.
// A `size` below 1 says that the size is not known: the caller vouches for the message. `tag` and `length`
// may be null; `length` gets the whole element's length with its header, or ASN1_INDEFLEN. The cursor then
// stands at 0 again. RTS_BAD_LENGTH if the message is cut short (buffer.size is then the size given),
// RTS_BAD_VALUE for null, RTS_NOT_INITIALISED, or what the header gives. errInfo is not reset.
MIRVANE_API int xd_setp(ASN1CTXT* ctxt, const unsigned char* message, int size, ASN1TAG* tag, int* length);

// An identifier. RTS_BAD_TAG for a number above 29 bits or with more than nine octets. Not recorded.
MIRVANE_API int xd_tag(ASN1CTXT* ctxt, ASN1TAG* tag);

// A length; ASN1_INDEFLEN for the octet 80, and for the four octets FF FF D8 F1 as well. RTS_BAD_LENGTH for
// more than four octets, a negative length, or one beyond the buffer. `length` is stored on success only.
// Recorded.
MIRVANE_API int xd_len(ASN1CTXT* ctxt, int* length);

// Tag and length. A short length is not held against the buffer: the next read finds it. RTS_BAD_LENGTH for
// the indefinite form of a primitive. Without XD_ADVANCE cursor and flags go back in any case. Remembers the
// position in savedInfo. Not recorded, but for what xd_len gives.
MIRVANE_API int xd_tag_len(ASN1CTXT* ctxt, ASN1TAG* tag, int* length, int flags);

// Steps over an identifier of one octet, which the caller knows to be there, and reads the length; accepts
// the indefinite form of a primitive. Not recorded, but for what xd_len gives.
MIRVANE_API int xd_Tag1AndLen(ASN1CTXT* ctxt, int* length);

// Finds `tag`, see ASN1MatchFlags. A search enters constructed elements and runs to the end of the buffer; it
// compares without the constructed bit, a plain match with it. RTS_TAG_MISMATCH, with the cursor where it
// was, if the tag is not there or the buffer ends. `length` may be null. Not recorded.
MIRVANE_API int xd_match(ASN1CTXT* ctxt, ASN1TAG tag, int* length, int flags);

// Matches an identifier octet, primitive or constructed, and reads the length; the cursor then stands on the
// content. RTS_TAG_MISMATCH with the cursor unmoved. The indefinite form is ASN1_INDEFLEN if the octet was
// constructed, RTS_BAD_LENGTH if not; with a null `length` it passes. Recorded.
MIRVANE_API int xd_match1(ASN1CTXT* ctxt, unsigned char identifier, int* length);

// Copies octets. Not recorded.
MIRVANE_API int xd_memcpy(ASN1CTXT* ctxt, void* destination, std::uint32_t count);

// INTEGER into signed 32 bits. RTS_INT_TOO_LARGE for 5 octets or more, RTS_BAD_LENGTH for none. Recorded.
MIRVANE_API int xd_integer(ASN1CTXT* ctxt, std::int32_t* value, ASN1TagType tagging, int length);

// INTEGER into unsigned 32 bits, with no regard to its sign: FF is 255. RTS_INT_TOO_LARGE for 6 octets or
// more, or 5 that do not begin with 00; no octets are the value 0. Recorded, but for content that passes the
// end.
MIRVANE_API int xd_unsigned(ASN1CTXT* ctxt, std::uint32_t* value, ASN1TagType tagging, int length);

// ENUMERATED. As xd_integer; a wrong tag is not recorded.
MIRVANE_API int xd_enum(ASN1CTXT* ctxt, std::int32_t* value, ASN1TagType tagging, int length);

// BOOLEAN: the content octet as it stands, so 01 stays 1. RTS_BAD_LENGTH for a length other than 1, in any
// form. Recorded.
MIRVANE_API int xd_boolean(ASN1CTXT* ctxt, unsigned char* value, ASN1TagType tagging, int length);

// NULL; with ASN1IMPL nothing is read. RTS_BAD_LENGTH for content. Recorded.
MIRVANE_API int xd_null(ASN1CTXT* ctxt, ASN1TagType tagging);

// OCTET STRING, primitive or constructed, into memory of the context or, under ASN1_NO_COPY and primitive, as
// a pointer into the message. `*data` and `*count` are stored in any case. Recorded.
MIRVANE_API int xd_octstr(ASN1CTXT* ctxt, const unsigned char** data, std::uint32_t* count,
                          ASN1TagType tagging, int length);

// OCTET STRING into the caller's buffer: `*count` is its capacity in octets, and on success the octets got.
// RTS_BUFFER_TOO_SMALL for a length, or the length of a segment, above the capacity. Recorded.
MIRVANE_API int xd_octstr_s(ASN1CTXT* ctxt, unsigned char* buffer, std::uint32_t* count, ASN1TagType tagging,
                            int length);

// Measures the segments of a constructed string of indefinite length, from the cursor to the end-of-contents:
// `*contentLength` gets the sum of their contents, `*span` the octets that they take up, end-of-contents left
// out. The cursor comes back on success. RTS_BAD_TAG for any tag but `segmentTag`. Not recorded.
MIRVANE_API int xd_consStrIndefLenAndSize(ASN1CTXT* ctxt, ASN1TAG segmentTag, int* contentLength, int* span);

// OBJECT IDENTIFIER. RTS_BAD_LENGTH for no content; RTS_BAD_OBJID on the 129th arc, with 128 stored. An arc
// above 32 bits loses its upper bits. Recorded, but for RTS_BAD_OBJID.
MIRVANE_API int xd_objid(ASN1CTXT* ctxt, ASN1OBJID* value, ASN1TagType tagging, int length);

// Steps over one whole element. Not recorded.
MIRVANE_API int xd_NextElement(ASN1CTXT* ctxt);

// Steps behind the end-of-contents that closes the present indefinite element. Not recorded.
MIRVANE_API int xd_MovePastEOC(ASN1CTXT* ctxt);

// The whole length of an element of indefinite form, without a context: 0 for a size below 5, RTS_BAD_LENGTH
// for a definite element, RTS_END_OF_BUFFER if its end is not within `size`, or what the header gives.
MIRVANE_API int xd_indeflen_ex(const unsigned char* message, int size);

// Stores cursor and flags in `state`, or in savedInfo if that is null.
MIRVANE_API void xu_SaveBufferState(ASN1CTXT* ctxt, ASN1BufferState* state);

// Brings them back, without ASN1_END_REACHED.
MIRVANE_API void xu_RestoreBufferState(ASN1CTXT* ctxt, const ASN1BufferState* state);

}  // extern "C"

#endif
