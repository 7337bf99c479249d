#include "asn1rt/object_identifier.h"

#include <cerrno>
#include <charconv>
#include <cstdlib>

namespace {

constexpr int kLongestPiece = 11;  // a dot and the ten digits of a 32-bit arc

std::uint32_t arcCount(const ASN1OBJID* oid) {
    return oid ? std::min<std::uint32_t>(oid->numids, ASN1_K_MAXSUBIDS) : 0;
}

int digitCount(std::uint32_t number) {
    int count = 1;
    for (; number >= 10; number /= 10)
        ++count;
    return count;
}

// The text of one arc, with a dot in front unless it is the first. Returns its length.
int formatPiece(const ASN1OBJID* oid, std::uint32_t index, char* piece) {
    char* digits = piece;
    if (index > 0) *digits++ = '.';
    if (oid->subid[index] < 10) {  // most are
        *digits++ = static_cast<char>('0' + oid->subid[index]);
        return static_cast<int>(digits - piece);
    }
    return static_cast<int>(std::to_chars(digits, piece + kLongestPiece, oid->subid[index]).ptr - piece);
}

// Stores the number at the start of `text` as the next arc and returns where it ends; null if there is no
// room for it.
const char* takeArc(const char* text, ASN1OBJID* oid) {
    if (oid->numids == ASN1_K_MAXSUBIDS) return nullptr;
    char* end = nullptr;
    oid->subid[oid->numids++] = static_cast<std::uint32_t>(std::strtoull(text, &end, 10));
    return end;
}

int parse(const char* text, ASN1OBJID* oid) {
    while (std::strchr(text, '.')) {
        text = takeArc(text, oid);
        if (!text || *text != '.') return 0;
        ++text;
    }
    text = takeArc(text, oid);
    return text && *text == '\0';
}

}  // namespace

extern "C" {

void rtSetOID(ASN1OBJID* target, const ASN1OBJID* source) {
    target->numids = source->numids;
    std::memmove(target->subid, source->subid, arcCount(source) * sizeof(source->subid[0]));
}

int rtCopyOID(ASN1CTXT*, const ASN1OBJID* source, ASN1OBJID* target) {
    if (!source || !target) return 0;
    rtSetOID(target, source);
    return 1;
}

int rtStrToOid(const char* text, ASN1OBJID* oid) {
    oid->numids = 0;
    if (!text) return 0;
    const int callersErrno = errno;  // a number out of range is no error here
    const int result = parse(text, oid);
    errno = callersErrno;
    return result;
}

int rtOidToStr(const ASN1OBJID* oid, char* text, int room) {
    if (room < 0) return 0;
    *text = '\0';
    for (std::uint32_t index = 0; index < arcCount(oid); ++index) {
        char piece[kLongestPiece];
        const bool fits = room >= kLongestPiece;
        const int length = formatPiece(oid, index, fits ? text : piece);
        if (length > room) return 0;
        if (!fits) std::copy_n(piece, length, text);
        text += length;
        *text = '\0';
        room -= length;
    }
    return 1;
}

int rtOidToStrLen(const ASN1OBJID* oid) {
    int total = 0;
    for (std::uint32_t index = 0; index < arcCount(oid); ++index) {
        total += digitCount(oid->subid[index]) + (index > 0);
    }
    return total;
}

int rtCmpOID(ASN1CTXT*, const ASN1OBJID* left, const ASN1OBJID* right, unsigned char* result) {
    if (left && right && *left == *right) return 1;
    if (result) *result = 0;
    return 0;
}

int rtCmpOIDValue(ASN1CTXT* ctxt, const ASN1OBJID* left, const ASN1OBJID* right, unsigned char* result) {
    return rtCmpOID(ctxt, left, right, result);
}

}  // extern "C"
