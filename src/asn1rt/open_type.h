// Open types: whole encoded elements, header included, that pass through a codec as they stand; the lists of
// unknown elements behind the known ones of an extensible type; and the count of a constructed value's
// elements.
#ifndef MIRVANE_ASN1RT_OPEN_TYPE_H
#define MIRVANE_ASN1RT_OPEN_TYPE_H

#include <cstdint>

#include "asn1rt/context.h"
#include "asn1rt/list.h"
#include "asn1rt/value_types.h"

// In place of a tag for xd_OpenTypeExt: all elements to the end of the parent are unknown ones.
enum : ASN1TAG { XD_ANY_TAG = 0xFFFFFFFF };

extern "C" {

// Writes the element that begins at `data`; octets of `count` behind it are dropped. An element that stands
// at the cursor of the buffer already is only counted. A count of 0 writes nothing and gives 0. The octets of
// the element, or RTS_BAD_VALUE for null, RTS_BAD_LENGTH for an element cut short or a count above
// 0x7FFFFFFF, RTS_END_OF_BUFFER for an indefinite one without its end, or what reading the header gives. Not
// recorded.
MIRVANE_API int xe_OpenType(ASN1CTXT* ctxt, const unsigned char* data, std::uint32_t count);

// Takes one whole element, into memory of the context or, under ASN1_NO_COPY, as a pointer into the message.
// The end of the message is no failure: the status is then 0, and `*data` and `*count` are as the caller left
// them, as they are on failure. RTS_BAD_VALUE for an end-of-contents and content beyond the buffer. Not
// recorded, but for what xd_len gives.
MIRVANE_API int xd_OpenType(ASN1CTXT* ctxt, const unsigned char** data, std::uint32_t* count);

// Takes one whole element and appends it as an ASN1OpenType, one allocation with its node; with a null list
// the element is passed over. Recorded.
MIRVANE_API int xd_OpenTypeAppend(ASN1CTXT* ctxt, _Asn1RTDList* list);

// Writes the ASN1OpenType elements of a list so that they stand in its order. The sum of their octets, 0 for
// a null or empty list, or the first failure of xe_OpenType, recorded.
MIRVANE_API int xe_OpenTypeExt(ASN1CTXT* ctxt, const _Asn1RTDList* list);

// Gathers the unknown elements of `parent` in front of the known element `tag` and leaves the cursor there
// with 0; with XD_ANY_TAG all to the parent's end. A null list passes over them. RTS_END_OF_BUFFER if the
// parent ends before `tag` comes, or the failure of an element, both recorded; what xd_match gives for the
// header in front of the cursor is not.
MIRVANE_API int xd_OpenTypeExt(ASN1CTXT* ctxt, const ASN1CCB* parent, ASN1TAG tag, _Asn1RTDList* list);

// Counts the elements in `length` octets of content, or to the end-of-contents under ASN1_INDEFLEN, and
// leaves cursor and flags as they were; on failure the cursor stays where it stopped. Not recorded, but for
// what xd_len gives.
MIRVANE_API int xd_count(ASN1CTXT* ctxt, int length, std::uint32_t* count);

}  // extern "C"

#endif
