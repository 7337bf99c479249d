// CBigInteger, an ASN.1 INTEGER of any size, such as a serial number: its bytes in two's complement, the most
// significant first.
//
// No normal form is kept: leading 00 and FF bytes stay as they are, and a value may be empty. Comparison is
// meant to be as odd as it is told below. It is NO ORDER that a sorted container could use, nor may it decide
// who is to be trusted: FF FF equals FF, while FF 00 is below the one and above the other. To tell bytes
// apart, compare as CBlob.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException.
#ifndef MIRVANE_ASN1_BIG_INTEGER_H
#define MIRVANE_ASN1_BIG_INTEGER_H

#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CBigInteger : public CBlob {
  public:
    // Empty.
    CBigInteger() = default;
    CBigInteger(unsigned char const* bytes, unsigned long count) : CBlob(bytes, count) {}
    // `count` bytes of value 0: a size, not the number.
    explicit CBigInteger(unsigned long count) : CBlob(count) {}

    // Adds 1 to the bytes from index `stop` to the end, as to a number without sign: FF FF becomes 00 00. A
    // negative `stop` is taken as 0, one at or past the end as the last byte. An empty value stays empty.
    void increment(int stop);
    // Adds a value of the same length, as numbers without sign. The length stays; the result is the carry out
    // of the first byte, 0 or 1. Throws 0x80070057 for distinct lengths.
    int add(CBigInteger const& other);
    // As increment(0).
    CBigInteger& operator++();
    CBigInteger operator++(int);

    // A copy without the top bit of the first byte, which is meant: -1 (FF) gives 127.
    CBigInteger abs() const;

    // Below, equal to or above 0, in the order of numbers whatever the leading sign bytes, but for two
    // negative values of distinct lengths: of these the one with more bytes behind its sign bytes is the
    // greater, so that -256 (FF 00) is above -1 (FF), which is meant. An empty value equals another, is above
    // negative values and below all others, 0 included.
    int compare(CBigInteger const& other) const;

    // The DER form. Throws 0x80093101 if there is none, as for an empty value.
    CBlob encode() const;
    // Reads the INTEGER at the start of the blob; leading 00 bytes are left out where they are not needed.
    // Throws 0x80093101 for what is none; the object is then as it was.
    void decode(CBlob const& encoded);
};

// By compare.
MIRVANE_API bool operator==(CBigInteger const& left, CBigInteger const& right);
MIRVANE_API bool operator!=(CBigInteger const& left, CBigInteger const& right);
MIRVANE_API bool operator<(CBigInteger const& left, CBigInteger const& right);
MIRVANE_API bool operator>(CBigInteger const& left, CBigInteger const& right);
MIRVANE_API bool operator<=(CBigInteger const& left, CBigInteger const& right);
MIRVANE_API bool operator>=(CBigInteger const& left, CBigInteger const& right);

}  // namespace Mirvane::ASN1

#endif
