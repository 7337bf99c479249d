// Copies of values, each with its octets on the typeMemHeap of the context given.
//
// The result is 1, or 0 for a null argument and where memory fails; the target then has a count of 0 and no
// data. A source whose count stands beside null data is copied as an empty one. Sources and targets may be
// the same record: it then gets memory of its own.
#ifndef MIRVANE_ASN1RT_COPY_H
#define MIRVANE_ASN1RT_COPY_H

#include <cstdint>

#include "asn1rt/char_string.h"
#include "asn1rt/context.h"
#include "asn1rt/list.h"
#include "asn1rt/value_types.h"

extern "C" {

// Bits into the caller's memory, which must hold (numbits + 7) / 8 octets. No bits are stored as a count of
// 0, with the result 0.
MIRVANE_API int rtCopyBitStr(ASN1CTXT* ctxt, std::uint32_t sourceBits, const unsigned char* source,
                             std::uint32_t* targetBits, unsigned char* target);

MIRVANE_API int rtCopyDynBitStr(ASN1CTXT* ctxt, const ASN1TDynBitStr* source, ASN1TDynBitStr* target);

// Octets into the caller's memory, which must hold them. None are stored as a count of 0, with the result 0.
MIRVANE_API int rtCopyOctStr(ASN1CTXT* ctxt, std::uint32_t sourceCount, const unsigned char* source,
                             std::uint32_t* targetCount, unsigned char* target);

MIRVANE_API int rtCopyDynOctStr(ASN1CTXT* ctxt, const ASN1TDynOctStr* source, ASN1TDynOctStr* target);

// A text with its terminator; null gives 0 and a null target.
MIRVANE_API int rtCopyCharStr(ASN1CTXT* ctxt, const char* source, const char** target);

MIRVANE_API int rtCopy16BitCharStr(ASN1CTXT* ctxt, const Asn116BitCharString* source,
                                   Asn116BitCharString* target);
MIRVANE_API int rtCopy32BitCharStr(ASN1CTXT* ctxt, const Asn132BitCharString* source,
                                   Asn132BitCharString* target);

MIRVANE_API int rtCopyOpenType(ASN1CTXT* ctxt, const ASN1OpenType* source, ASN1OpenType* target);

// A new list of the ASN1OpenType values, each one allocation with its node and with octets of its own; nodes
// without a value are left out. What the target held before is not freed. On failure it has the values copied
// so far.
MIRVANE_API int rtCopyOpenTypeExt(ASN1CTXT* ctxt, const _Asn1RTDList* source, _Asn1RTDList* target);

}  // extern "C"

#endif
