// Object identifiers: values of fixed capacity that need no heap.
//
// Readers (comparison, text, encoding, copying) stop at arc 128 whatever the count says. Nothing here touches
// a context or keeps state; where a context is passed, it is not looked at.
#ifndef MIRVANE_ASN1RT_OBJECT_IDENTIFIER_H
#define MIRVANE_ASN1RT_OBJECT_IDENTIFIER_H

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "asn1rt/export.h"

struct ASN1CTXT;

enum : std::uint32_t { ASN1_K_MAXSUBIDS = 128 };

// `numids` arcs; the first two stand apart, not joined as on the wire.
struct ASN1OBJID {
    std::uint32_t numids;
    std::uint32_t subid[ASN1_K_MAXSUBIDS];
};

// The same with arcs beyond 32 bits. It is stored and copied; no codec knows it.
struct ASN1OID64 {
    std::uint32_t numids;
    std::int64_t subid[ASN1_K_MAXSUBIDS];
};

extern "C" {

// Copies the count and as many arcs, but never more than 128: a larger count is stored as it is.
MIRVANE_API void rtSetOID(ASN1OBJID* target, const ASN1OBJID* source);

// The same with the arguments the other way round. 1, or 0 if either is null.
MIRVANE_API int rtCopyOID(ASN1CTXT* ctxt, const ASN1OBJID* source, ASN1OBJID* target);

// Reads dotted text like 1.2.643. Each arc is read as the C library's strtoul does in base 10, so blanks and
// a sign may stand in front, no digits at all are 0, and a value above 32 bits is cut. 1, or 0 for null, for
// text that an arc does not end in a dot or the terminator, and for arc 129; the arcs up to there are then
// stored. Whether the first two arcs are possible is not looked at.
MIRVANE_API int rtStrToOid(const char* text, ASN1OBJID* oid);

// Writes dotted text and a terminator. `room` counts digits and dots only, so `text` must hold one octet
// more. 1, or 0 when out of room: the text then ends behind the last arc that fitted. With room below 0
// nothing is written. A null identifier has the empty text.
MIRVANE_API int rtOidToStr(const ASN1OBJID* oid, char* text, int room);

// The length of that text, its terminator not counted.
MIRVANE_API int rtOidToStrLen(const ASN1OBJID* oid);

// 1 if the two are equal, and `*result` is left alone. Otherwise, and if either is null, 0, and `*result`
// becomes 0 unless `result` is null.
MIRVANE_API int rtCmpOID(ASN1CTXT* ctxt, const ASN1OBJID* left, const ASN1OBJID* right,
                         unsigned char* result);
MIRVANE_API int rtCmpOIDValue(ASN1CTXT* ctxt, const ASN1OBJID* left, const ASN1OBJID* right,
                              unsigned char* result);

}  // extern "C"

inline bool operator==(const ASN1OBJID& left, const ASN1OBJID& right) {
    if (left.numids != right.numids) return false;
    const std::uint32_t arcs = std::min<std::uint32_t>(left.numids, ASN1_K_MAXSUBIDS);
    return std::memcmp(left.subid, right.subid, arcs * sizeof(left.subid[0])) == 0;
}

// Object identifiers as values. Constructors and assignments take the count as it is and at most 128 arcs.
struct ASN1TObjId : ASN1OBJID {
    ASN1TObjId() : ASN1OBJID{} {}
    ASN1TObjId(std::uint8_t count, const std::uint32_t* arcs) : ASN1OBJID{} {
        numids = count;
        std::copy_n(arcs, std::min<std::uint32_t>(count, ASN1_K_MAXSUBIDS), subid);
    }
    ASN1TObjId(const ASN1OBJID& other) : ASN1OBJID(other) {}
    ASN1TObjId(const ASN1TObjId&) = default;

    ASN1TObjId& operator=(const ASN1TObjId&) = default;
    ASN1TObjId& operator=(const ASN1OBJID& other) {
        rtSetOID(this, &other);
        return *this;
    }
};

struct ASN1TObjId64 : ASN1OID64 {
    ASN1TObjId64() : ASN1OID64{} {}
    ASN1TObjId64(std::uint8_t count, const std::int64_t* arcs) : ASN1OID64{} {
        numids = count;
        std::copy_n(arcs, std::min<std::uint32_t>(count, ASN1_K_MAXSUBIDS), subid);
    }
    ASN1TObjId64(const ASN1OID64& other) : ASN1OID64(other) {}
    ASN1TObjId64(const ASN1TObjId64&) = default;

    ASN1TObjId64& operator=(const ASN1TObjId64&) = default;
    ASN1TObjId64& operator=(const ASN1OID64& other) { return *this = ASN1TObjId64(other); }
};

#endif
