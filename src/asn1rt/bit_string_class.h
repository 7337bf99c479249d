// ASN1CBitStr, a BIT STRING as a set of bit positions. Bit 0 is the top bit of the first octet, so "left" is
// towards bit 0.
//
// It works in place: on a fixed array with its counter, on the fields of an ASN1TDynBitStr (both must outlive
// it), or on storage of its own. The bit count is the position behind the last set bit, so a value never ends
// in clear bits, as DER asks of named bits (X.690, 11.2.2). A dynamic record that has to grow gets new memory
// of the context, which goes with that; own storage is freed by the destructor.
//
// Operations return 0 or a status, which is also recorded in the context's errInfo; a failed one changes
// nothing. An object belongs to one thread at a time. Constructors throw ASN1MessageBuffer::RTLError when
// memory fails.
#ifndef MIRVANE_ASN1RT_BIT_STRING_CLASS_H
#define MIRVANE_ASN1RT_BIT_STRING_CLASS_H

#include <cstdint>

#include "asn1rt/control.h"
#include "asn1rt/value_types.h"

class ASN1CBitStr : public ASN1CType {
  public:
    // The maximum of a string that grows without bound.
    static constexpr std::uint32_t unbounded = 0xFFFFFFFF;

    // Empty, with own storage: unbounded, or for `bitCount` bits, where 0 means unbounded too. Without a
    // buffer or context, here and below, a new context is made.
    explicit ASN1CBitStr(ASN1MessageBufferIF& buffer, std::uint32_t bitCount = 0);
    explicit ASN1CBitStr(ASN1Context& context, std::uint32_t bitCount = 0);
    explicit ASN1CBitStr(std::uint32_t bitCount = 0);

    // Over a record, see the two forms of init.
    ASN1CBitStr(ASN1MessageBufferIF& buffer, unsigned char* data, std::uint32_t& numbits,
                std::uint32_t maxNumBits);
    ASN1CBitStr(ASN1Context& context, unsigned char* data, std::uint32_t& numbits, std::uint32_t maxNumBits);
    ASN1CBitStr(unsigned char* data, std::uint32_t& numbits, std::uint32_t maxNumBits);
    ASN1CBitStr(ASN1MessageBufferIF& buffer, ASN1TDynBitStr& bitString);
    ASN1CBitStr(ASN1Context& context, ASN1TDynBitStr& bitString);
    explicit ASN1CBitStr(ASN1TDynBitStr& bitString);

    // Shares the context and copies the bits to own storage, with the same bound or, if `extendable`, with
    // none.
    ASN1CBitStr(const ASN1CBitStr& other);
    ASN1CBitStr(const ASN1CBitStr& other, bool extendable);
    ~ASN1CBitStr() override;

    ASN1CBitStr& operator=(const ASN1CBitStr&) = delete;

    // A fixed array of the octets for `maxNumBits` and its counter, which is cut to that. Bits behind the
    // counter are cleared. With `unbounded` the array is taken to have the octets of its counter. Former own
    // storage is freed.
    void init(unsigned char* data, std::uint32_t& numbits, std::uint32_t maxNumBits);
    // A dynamic record, unbounded. If its data is a block of the context's heap, the lowest bit of the last
    // octet is cleared, whatever the count: kept so for its callers. Former own storage is freed.
    void init(ASN1TDynBitStr& bitString);

    // Ranges run from `from` up to but not including `to`. RTS_BAD_INDEX for an index or end above the
    // maximum (equal to it is in bounds, and fails only for want of an octet) or at 0xFFFFFFFF, RTS_BAD_RANGE
    // for a reversed range, RTS_BAD_LENGTH if a bounded string has no octet for the bit, RTS_NO_MEMORY.
    int set(std::uint32_t bit);
    int set(std::uint32_t from, std::uint32_t to);  // the count rises to `to` in any case
    int clear(std::uint32_t bit);
    int clear(std::uint32_t from, std::uint32_t to);
    int clear();
    int invert(std::uint32_t bit);
    int invert(std::uint32_t from, std::uint32_t to);

    // Whether the bit is set; false wherever there is no bit.
    bool get(std::uint32_t bit) const;
    // Copies a range to the front of `out` and zeroes the rest of its `outSize` octets; what lies behind the
    // last set bit is 0. RTS_BUFFER_TOO_SMALL if the range is wider than `out`, RTS_BAD_ARGUMENT for a null
    // `out` with a size.
    int get(std::uint32_t from, std::uint32_t to, unsigned char* out, std::uint32_t outSize);
    // Copies the octets in use and zeroes the rest. RTS_BAD_LENGTH if they do not fit, RTS_BAD_ARGUMENT as
    // above.
    int getBytes(unsigned char* out, std::uint32_t outSize);

    std::uint32_t length() const;       // the position behind the last set bit
    std::uint32_t size() const;         // octets in use
    std::uint32_t cardinality() const;  // bits that are set
    std::uint32_t unusedBitsInLastUnit() const;

    // Combine with `bitCount` bits of `bytes`, behind which, and behind the maximum, all its bits count as
    // clear. A count of 0 clears everything in doAnd, sets everything up to the maximum in doOr, and does
    // nothing in the others. RTS_BAD_ARGUMENT for null, in doAnd and doOr for the object's own storage, and
    // for a count of 0 in doOr if there is no maximum.
    int doAnd(const unsigned char* bytes, std::uint32_t bitCount);
    int doOr(const unsigned char* bytes, std::uint32_t bitCount);
    int doXor(const unsigned char* bytes, std::uint32_t bitCount);
    int doAndNot(const unsigned char* bytes, std::uint32_t bitCount);

    // Move all bits; those that pass bit 0 or the maximum are lost. RTS_BAD_INDEX if an unbounded string
    // would get more than 0xFFFFFFFE bits.
    int shiftLeft(std::uint32_t count);
    int shiftRight(std::uint32_t count);

    // A record that shows the bits in this object's storage.
    operator ASN1TDynBitStr() const;
    // A record with a copy of the bits, both in the context's memory; null when that fails (RTS_NO_MEMORY,
    // recorded).
    operator ASN1TDynBitStr*() const;

  protected:
    // For a control class whose DecodeFrom or operator= filled the record anew: takes over its count, and the
    // data of a dynamic record, without clearing anything.
    void recordReplaced();

  private:
    void initOwn(std::uint32_t bitCount);
    void freeOwn();
    unsigned char* units() const { return const_cast<unsigned char*>(*mpUnits); }
    bool isRecord() const { return mpUnits != &unitsStore; }
    bool isBounded() const { return maxNumBits != unbounded; }
    int fail(int status) const;
    int checkIndex(std::uint32_t bit) const;
    int checkRange(std::uint32_t from, std::uint32_t to) const;
    int checkCapacity(std::int32_t bytes);
    int grow(std::int32_t bytes);
    void recount();
    template <typename Operation>
    int changeRange(std::uint32_t from, std::uint32_t to, Operation change);
    template <typename Operation>
    int combineGrowing(const unsigned char* bytes, std::uint32_t bitCount, Operation combine);

    std::uint32_t numbitsStore = 0;
    const unsigned char* unitsStore = nullptr;
    const unsigned char** mpUnits = &unitsStore;
    std::uint32_t maxNumBits = unbounded;
    std::uint32_t* mpNumBits = &numbitsStore;
    std::int32_t unitsUsed = 0;  // octets up to the last one that has a set bit
    std::int32_t unitsAllocated = 0;
    std::uint8_t dynAlloc = 0;  // the storage is memory that this object asked for
};

#endif
