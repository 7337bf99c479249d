// What the decoders of this folder share; not part of the interface.
#ifndef MIRVANE_ASN1RT_CURSOR_H
#define MIRVANE_ASN1RT_CURSOR_H

#include <algorithm>
#include <cstdint>

#include "asn1rt/context.h"

namespace asn1rt {

// Octets left in front of the cursor; a step over a length may have moved it behind the end.
inline std::uint32_t room(const ASN1CTXT* ctxt) {
    return ctxt->buffer.byteIndex < ctxt->buffer.size ? ctxt->buffer.size - ctxt->buffer.byteIndex : 0;
}

inline const unsigned char* cursor(const ASN1CTXT* ctxt) {
    return ctxt->buffer.data + ctxt->buffer.byteIndex;
}

inline void setConstructed(ASN1CTXT* ctxt, bool constructed) {
    ctxt->flags =
        static_cast<std::uint16_t>((ctxt->flags & ~ASN1_CONSTRUCTED) | (constructed ? ASN1_CONSTRUCTED : 0));
}

inline bool isConstructed(const ASN1CTXT* ctxt) {
    return (ctxt->flags & ASN1_CONSTRUCTED) != 0;
}

inline bool atEndOfContents(const ASN1CTXT* ctxt) {
    return room(ctxt) >= 2 && cursor(ctxt)[0] == 0 && cursor(ctxt)[1] == 0;
}

// Moves the cursor over a length that was read, which may lead behind the end but never round to the front.
inline void stepOver(ASN1CTXT* ctxt, int length) {
    const auto step = static_cast<std::uint32_t>(length);
    ctxt->buffer.byteIndex += std::min(step, UINT32_MAX - ctxt->buffer.byteIndex);
}

// Keeps the first failure of the context and passes the status on.
inline int record(ASN1CTXT* ctxt, int status) {
    return rtErrSetData(&ctxt->errInfo, status, nullptr, 0);
}

// Reads the universal tag of a primitive, which must be `identifier` exactly, and its length; clears
// ASN1_CONSTRUCTED. RTS_TAG_MISMATCH with the cursor unmoved. Not recorded, but for what xd_len gives.
int readPrimitiveHeader(ASN1CTXT* ctxt, unsigned char identifier, int* length);

// How long a string is: the sum of its contents, and the octets that it takes up behind its header.
struct StringSpan {
    int contentLength;
    int span;
};

// Copies an OCTET STRING under ASN1IMPL, primitive or in segments as ASN1_CONSTRUCTED says, to typeMemHeap,
// with `spare` more octets behind it. `*data` is null only if the allocation failed. Recorded.
int copyStringToHeap(ASN1CTXT* ctxt, const StringSpan& string, std::uint32_t spare, unsigned char** data,
                     std::uint32_t* count);

// Takes the two octets of an end-of-contents, or records RTS_BAD_LENGTH.
int takeEndOfContents(ASN1CTXT* ctxt);

// As xd_indeflen_ex without its lower limit on the size.
int measureIndefinite(const unsigned char* message, std::uint32_t size);

}  // namespace asn1rt

#endif
