#include "asn1rt/bit_string_class.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <numeric>

#include "asn1rt/allocate.h"
#include "asn1rt/bit_string.h"
#include "asn1rt/cursor.h"

namespace {

constexpr std::int32_t growthStep = 1024;

std::int32_t octetsOf(std::uint64_t bits) {
    return static_cast<std::int32_t>((bits + 7) / 8);
}

unsigned char bitMask(std::uint32_t bit) {
    return static_cast<unsigned char>(0x80 >> bit % 8);
}

// The mask of the first `count` bits of an octet, 0 to 8.
unsigned char leadingBits(std::uint32_t count) {
    return static_cast<unsigned char>(0xFF00 >> count);
}

// Clears the bits of the last octet behind `bits`.
void maskTail(unsigned char* units, std::uint32_t bits) {
    if (bits % 8 != 0) units[bits / 8] &= leadingBits(bits % 8);
}

std::int32_t withoutTrailingZeros(const unsigned char* units, std::int32_t used) {
    while (used > 0 && units[used - 1] == 0)
        --used;
    return used;
}

// The position behind the last set bit, where the last octet is not 0.
std::uint32_t bitLength(const unsigned char* units, std::int32_t used) {
    if (used == 0) return 0;
    const std::uint64_t bits = (std::uint64_t{static_cast<std::uint32_t>(used)} - 1) * 8 +
                               static_cast<std::uint64_t>(rtOctetBitLen(units[used - 1]));
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(bits, ASN1CBitStr::unbounded));
}

// Hands every octet of the range to `change`, with the mask of the range's bits in it.
template <typename Operation>
void forRange(unsigned char* units, std::uint32_t from, std::uint32_t to, Operation change) {
    if (from >= to) return;
    const std::uint32_t first = from / 8;
    const std::uint32_t last = (to - 1) / 8;
    const auto head = static_cast<unsigned char>(0xFF >> from % 8);
    const unsigned char tail = leadingBits((to - 1) % 8 + 1);
    if (first == last) return change(units[first], static_cast<unsigned char>(head & tail));
    change(units[first], head);
    for (std::uint32_t index = first + 1; index < last; ++index)
        change(units[index], static_cast<unsigned char>(0xFF));
    change(units[last], tail);
}

// The bits of another array; those behind its count are clear.
struct BitSource {
    const unsigned char* bytes;
    std::uint32_t bitCount;

    std::int32_t octets() const { return octetsOf(bitCount); }
    unsigned char operator[](std::int32_t index) const {
        const std::uint32_t left = bitCount - static_cast<std::uint32_t>(index) * 8;
        return bytes[index] & leadingBits(std::min<std::uint32_t>(left, 8));
    }
};

// Eight bits of two neighbouring octets, those that lie `bits` (0 to 8) before the end.
unsigned char joined(unsigned char left, unsigned char right, std::uint32_t bits) {
    return static_cast<unsigned char>((left << 8 | right) >> bits);
}

// Walks the heap's blocks: what stands before a pointer that is not one of them must not be read.
bool isHeapBlock(const rtMemHeap* heap, const unsigned char* data) {
    const rtMemBlock* block = heap ? heap->blockList : nullptr;
    while (block && reinterpret_cast<const unsigned char*>(block + 1) != data)
        block = block->next;
    return block != nullptr;
}

}  // namespace

ASN1CBitStr::ASN1CBitStr(ASN1MessageBufferIF& buffer, std::uint32_t bitCount) : ASN1CType(buffer) {
    initOwn(bitCount);
}

ASN1CBitStr::ASN1CBitStr(ASN1Context& context, std::uint32_t bitCount) : ASN1CType(context) {
    initOwn(bitCount);
}

ASN1CBitStr::ASN1CBitStr(std::uint32_t bitCount) {
    initOwn(bitCount);
}

ASN1CBitStr::ASN1CBitStr(ASN1MessageBufferIF& buffer, unsigned char* data, std::uint32_t& numbits,
                         std::uint32_t maxNumBits)
    : ASN1CType(buffer) {
    init(data, numbits, maxNumBits);
}

ASN1CBitStr::ASN1CBitStr(ASN1Context& context, unsigned char* data, std::uint32_t& numbits,
                         std::uint32_t maxNumBits)
    : ASN1CType(context) {
    init(data, numbits, maxNumBits);
}

ASN1CBitStr::ASN1CBitStr(unsigned char* data, std::uint32_t& numbits, std::uint32_t maxNumBits) {
    init(data, numbits, maxNumBits);
}

ASN1CBitStr::ASN1CBitStr(ASN1MessageBufferIF& buffer, ASN1TDynBitStr& bitString) : ASN1CType(buffer) {
    init(bitString);
}

ASN1CBitStr::ASN1CBitStr(ASN1Context& context, ASN1TDynBitStr& bitString) : ASN1CType(context) {
    init(bitString);
}

ASN1CBitStr::ASN1CBitStr(ASN1TDynBitStr& bitString) {
    init(bitString);
}

ASN1CBitStr::ASN1CBitStr(const ASN1CBitStr& other) : ASN1CBitStr(other, false) {}

ASN1CBitStr::ASN1CBitStr(const ASN1CBitStr& other, bool extendable)
    : ASN1CType(other),
      numbitsStore(*other.mpNumBits),
      maxNumBits(extendable ? unbounded : other.maxNumBits),
      unitsUsed(other.unitsUsed),
      unitsAllocated(extendable ? other.unitsUsed + growthStep : other.unitsAllocated),
      dynAlloc(1) {
    if (unitsAllocated == 0) return;
    unitsStore = static_cast<unsigned char*>(rtMemHeapAllocZ(&mpContext->typeMemHeap, unitsAllocated));
    if (!unitsStore) throw ASN1MessageBuffer::RTLError(RTS_NO_MEMORY);
    std::copy_n(other.units(), unitsUsed, units());
}

ASN1CBitStr::~ASN1CBitStr() {
    freeOwn();
}

void ASN1CBitStr::initOwn(std::uint32_t bitCount) {
    dynAlloc = 1;
    if (bitCount == 0) return;
    unitsStore = static_cast<unsigned char*>(rtMemHeapAllocZ(&mpContext->typeMemHeap, octetsOf(bitCount)));
    if (!unitsStore) throw ASN1MessageBuffer::RTLError(RTS_NO_MEMORY);
    maxNumBits = bitCount;
    unitsAllocated = octetsOf(bitCount);
}

// What a record points at is left to the context.
void ASN1CBitStr::freeOwn() {
    if (dynAlloc && !isRecord()) rtMemHeapFreePtr(&mpContext->typeMemHeap, units());
    unitsStore = nullptr;
    dynAlloc = 0;
}

void ASN1CBitStr::init(unsigned char* data, std::uint32_t& numbits, std::uint32_t maximum) {
    freeOwn();
    unitsStore = data;
    mpUnits = &unitsStore;
    mpNumBits = &numbits;
    maxNumBits = maximum;
    numbits = std::min(numbits, maximum);
    unitsUsed = data ? octetsOf(numbits) : 0;
    unitsAllocated = data && isBounded() ? octetsOf(maximum) : unitsUsed;
    if (!data) return;
    maskTail(data, numbits);
    std::fill(data + unitsUsed, data + unitsAllocated, static_cast<unsigned char>(0));
}

void ASN1CBitStr::init(ASN1TDynBitStr& bitString) {
    freeOwn();
    mpUnits = &bitString.data;
    mpNumBits = &bitString.numbits;
    maxNumBits = unbounded;
    recordReplaced();
    if (unitsUsed > 0 && isHeapBlock(mpContext->typeMemHeap, units())) units()[unitsUsed - 1] &= 0xFE;
}

void ASN1CBitStr::recordReplaced() {
    unitsUsed = units() ? octetsOf(*mpNumBits) : 0;
    if (isRecord()) {
        unitsAllocated = unitsUsed;
        dynAlloc = 0;
    }
    unitsUsed = std::min(unitsUsed, unitsAllocated);
}

int ASN1CBitStr::fail(int status) const {
    return asn1rt::record(mpContext, status);
}

int ASN1CBitStr::checkIndex(std::uint32_t bit) const {
    return bit > maxNumBits || bit == unbounded ? fail(RTS_BAD_INDEX) : RTS_OK;
}

int ASN1CBitStr::checkRange(std::uint32_t from, std::uint32_t to) const {
    if (from > maxNumBits) return fail(RTS_BAD_INDEX);
    if (const int status = checkIndex(to); status != RTS_OK) return status;
    return from > to ? fail(RTS_BAD_RANGE) : RTS_OK;
}

// Takes the octets into use. A status, recorded.
int ASN1CBitStr::checkCapacity(std::int32_t bytes) {
    if (unitsAllocated < bytes) {
        if (const int status = grow(bytes); status != RTS_OK) return fail(status);
    }
    if (unitsUsed < bytes) {
        std::fill(units() + unitsUsed, units() + bytes, static_cast<unsigned char>(0));
        unitsUsed = bytes;
    }
    return RTS_OK;
}

int ASN1CBitStr::grow(std::int32_t bytes) {
    if (isBounded()) return RTS_BAD_LENGTH;
    const std::int32_t size = bytes + growthStep;
    rtMemHeap** const heap = &mpContext->typeMemHeap;
    void* const memory = dynAlloc ? rtMemHeapRealloc(heap, units(), size) : rtMemHeapAlloc(heap, size);
    if (!memory) return RTS_NO_MEMORY;
    auto* const grown = static_cast<unsigned char*>(memory);
    if (!dynAlloc) std::copy_n(units(), unitsAllocated, grown);
    std::fill(grown + unitsAllocated, grown + size, static_cast<unsigned char>(0));
    *mpUnits = grown;
    unitsAllocated = size;
    dynAlloc = 1;
    return RTS_OK;
}

void ASN1CBitStr::recount() {
    unitsUsed = withoutTrailingZeros(units(), unitsUsed);
    *mpNumBits = bitLength(units(), unitsUsed);
}

int ASN1CBitStr::set(std::uint32_t bit) {
    if (const int status = checkIndex(bit); status != RTS_OK) return status;
    if (const int status = checkCapacity(octetsOf(std::uint64_t{bit} + 1)); status != RTS_OK) return status;
    units()[bit / 8] |= bitMask(bit);
    *mpNumBits = std::max(*mpNumBits, bit + 1);
    return RTS_OK;
}

// A range that ends at 0 has no last bit to make room for.
template <typename Operation>
int ASN1CBitStr::changeRange(std::uint32_t from, std::uint32_t to, Operation change) {
    if (const int status = checkRange(from, to); status != RTS_OK || to == 0) return status;
    if (const int status = checkCapacity(octetsOf(to)); status != RTS_OK) return status;
    forRange(units(), from, to, change);
    return RTS_OK;
}

int ASN1CBitStr::set(std::uint32_t from, std::uint32_t to) {
    const int status = changeRange(from, to, [](unsigned char& unit, unsigned char mask) { unit |= mask; });
    if (status == RTS_OK) *mpNumBits = std::max(*mpNumBits, to);
    return status;
}

int ASN1CBitStr::clear(std::uint32_t bit) {
    if (const int status = checkIndex(bit); status != RTS_OK) return status;
    if (bit / 8 >= static_cast<std::uint32_t>(unitsUsed)) return RTS_OK;
    units()[bit / 8] &= static_cast<unsigned char>(~bitMask(bit));
    recount();
    return RTS_OK;
}

int ASN1CBitStr::clear(std::uint32_t from, std::uint32_t to) {
    if (const int status = checkRange(from, to); status != RTS_OK) return status;
    const std::uint64_t used = std::uint64_t{static_cast<std::uint32_t>(unitsUsed)} * 8;
    forRange(units(), from, static_cast<std::uint32_t>(std::min<std::uint64_t>(to, used)),
             [](unsigned char& unit, unsigned char mask) { unit &= static_cast<unsigned char>(~mask); });
    recount();
    return RTS_OK;
}

int ASN1CBitStr::clear() {
    std::fill_n(units(), unitsUsed, static_cast<unsigned char>(0));
    unitsUsed = 0;
    *mpNumBits = 0;
    return RTS_OK;
}

int ASN1CBitStr::invert(std::uint32_t bit) {
    if (const int status = checkIndex(bit); status != RTS_OK) return status;
    if (const int status = checkCapacity(octetsOf(std::uint64_t{bit} + 1)); status != RTS_OK) return status;
    units()[bit / 8] ^= bitMask(bit);
    recount();
    return RTS_OK;
}

int ASN1CBitStr::invert(std::uint32_t from, std::uint32_t to) {
    const int status = changeRange(from, to, [](unsigned char& unit, unsigned char mask) { unit ^= mask; });
    if (status == RTS_OK && to != 0) recount();
    return status;
}

bool ASN1CBitStr::get(std::uint32_t bit) const {
    if (bit > maxNumBits || bit / 8 >= static_cast<std::uint32_t>(unitsUsed)) return false;
    return (units()[bit / 8] & bitMask(bit)) != 0;
}

int ASN1CBitStr::get(std::uint32_t from, std::uint32_t to, unsigned char* out, std::uint32_t outSize) {
    if (const int status = checkRange(from, to); status != RTS_OK) return status;
    if (to - from > std::uint64_t{outSize} * 8) return fail(RTS_BUFFER_TOO_SMALL);
    if (!out) return outSize == 0 ? RTS_OK : fail(RTS_BAD_ARGUMENT);
    std::fill_n(out, outSize, static_cast<unsigned char>(0));
    to = std::min(to, length());
    if (from >= to) return RTS_OK;
    const unsigned char* const source = units() + from / 8;
    const std::int32_t sourceOctets = unitsUsed - static_cast<std::int32_t>(from / 8);
    for (std::int32_t index = 0; index < octetsOf(to - from); ++index) {
        const unsigned char right = index + 1 < sourceOctets ? source[index + 1] : 0;
        out[index] = joined(source[index], right, 8 - from % 8);
    }
    maskTail(out, to - from);
    return RTS_OK;
}

int ASN1CBitStr::getBytes(unsigned char* out, std::uint32_t outSize) {
    if (size() > outSize) return fail(RTS_BAD_LENGTH);
    if (!out) return outSize == 0 ? RTS_OK : fail(RTS_BAD_ARGUMENT);
    std::fill(std::copy_n(units(), unitsUsed, out), out + outSize, static_cast<unsigned char>(0));
    return RTS_OK;
}

std::uint32_t ASN1CBitStr::length() const {
    return bitLength(units(), withoutTrailingZeros(units(), unitsUsed));
}

std::uint32_t ASN1CBitStr::size() const {
    return static_cast<std::uint32_t>(unitsUsed);
}

std::uint32_t ASN1CBitStr::cardinality() const {
    return std::accumulate(units(), units() + unitsUsed, std::uint32_t{0},
                           [](std::uint32_t sum, unsigned char unit) {
                               return sum + static_cast<std::uint32_t>(std::popcount(unit));
                           });
}

std::uint32_t ASN1CBitStr::unusedBitsInLastUnit() const {
    return unitsUsed == 0 ? 0 : 8 - static_cast<std::uint32_t>(rtOctetBitLen(units()[unitsUsed - 1]));
}

int ASN1CBitStr::doAnd(const unsigned char* bytes, std::uint32_t bitCount) {
    if (bitCount == 0) return clear();
    if (!bytes || bytes == units()) return fail(RTS_BAD_ARGUMENT);
    const BitSource source{bytes, std::min(bitCount, maxNumBits)};
    const std::int32_t common = std::min(unitsUsed, source.octets());
    for (std::int32_t index = 0; index < common; ++index)
        units()[index] &= source[index];
    std::fill(units() + common, units() + unitsUsed, static_cast<unsigned char>(0));
    unitsUsed = common;
    recount();
    return RTS_OK;
}

int ASN1CBitStr::doAndNot(const unsigned char* bytes, std::uint32_t bitCount) {
    if (bitCount == 0) return RTS_OK;
    if (!bytes) return fail(RTS_BAD_ARGUMENT);
    const BitSource source{bytes, std::min(bitCount, maxNumBits)};
    const std::int32_t common = std::min(unitsUsed, source.octets());
    for (std::int32_t index = 0; index < common; ++index)
        units()[index] &= static_cast<unsigned char>(~source[index]);
    recount();
    return RTS_OK;
}

// Bytes inside the own storage move with it, and end with it.
template <typename Operation>
int ASN1CBitStr::combineGrowing(const unsigned char* bytes, std::uint32_t bitCount, Operation combine) {
    bitCount = std::min(bitCount, maxNumBits);
    const unsigned char* const former = units();
    const bool inside =
        former && std::less_equal<>()(former, bytes) && std::less<>()(bytes, former + unitsAllocated);
    const std::int64_t offset = inside ? bytes - former : 0;
    if (const int status = checkCapacity(octetsOf(bitCount)); status != RTS_OK) return status;
    BitSource source{bytes, bitCount};
    if (inside) {
        const auto room = static_cast<std::uint64_t>(unitsAllocated - offset) * 8;
        source = {units() + offset, static_cast<std::uint32_t>(std::min<std::uint64_t>(bitCount, room))};
    }
    for (std::int32_t index = 0; index < source.octets(); ++index)
        combine(units()[index], source[index]);
    recount();
    return RTS_OK;
}

int ASN1CBitStr::doOr(const unsigned char* bytes, std::uint32_t bitCount) {
    if (bitCount == 0) return isBounded() ? set(0, maxNumBits) : fail(RTS_BAD_ARGUMENT);
    if (!bytes || bytes == units()) return fail(RTS_BAD_ARGUMENT);
    return combineGrowing(bytes, bitCount, [](unsigned char& unit, unsigned char other) { unit |= other; });
}

int ASN1CBitStr::doXor(const unsigned char* bytes, std::uint32_t bitCount) {
    if (bitCount == 0) return RTS_OK;
    if (!bytes) return fail(RTS_BAD_ARGUMENT);
    return combineGrowing(bytes, bitCount, [](unsigned char& unit, unsigned char other) { unit ^= other; });
}

int ASN1CBitStr::shiftLeft(std::uint32_t count) {
    const auto step = static_cast<std::int32_t>(count / 8);
    if (step >= unitsUsed) return unitsUsed == 0 ? RTS_OK : clear();
    unsigned char* const data = units();
    const std::int32_t kept = unitsUsed - step;
    for (std::int32_t index = 0; index < kept; ++index) {
        const unsigned char right = index + 1 < kept ? data[index + step + 1] : 0;
        data[index] = joined(data[index + step], right, 8 - count % 8);
    }
    std::fill(data + kept, data + unitsUsed, static_cast<unsigned char>(0));
    recount();
    return RTS_OK;
}

int ASN1CBitStr::shiftRight(std::uint32_t count) {
    const std::uint32_t bits = length();
    if (bits == 0) return RTS_OK;
    if (isBounded() && count >= maxNumBits) return clear();
    const std::uint64_t moved = std::uint64_t{bits} + count;
    if (!isBounded() && moved >= unbounded) return fail(RTS_BAD_INDEX);
    const auto end = static_cast<std::uint32_t>(std::min<std::uint64_t>(moved, maxNumBits));
    if (const int status = checkCapacity(octetsOf(end)); status != RTS_OK) return status;
    unsigned char* const data = units();
    const auto step = static_cast<std::int32_t>(count / 8);
    for (std::int32_t index = octetsOf(end) - 1; index >= 0; --index) {
        const unsigned char left = index > step ? data[index - step - 1] : 0;
        const unsigned char right = index >= step ? data[index - step] : 0;
        data[index] = joined(left, right, count % 8);
    }
    maskTail(data, end);
    recount();
    return RTS_OK;
}

ASN1CBitStr::operator ASN1TDynBitStr() const {
    return {length(), units()};
}

ASN1CBitStr::operator ASN1TDynBitStr*() const {
    auto* const record = static_cast<ASN1TDynBitStr*>(asn1rt::allocate(mpContext, sizeof(ASN1TDynBitStr)));
    unsigned char* const data = asn1rt::allocateOctets(mpContext, size());
    if (!record || !data) {
        rtMemHeapFreePtr(&mpContext->typeMemHeap, record);
        rtMemHeapFreePtr(&mpContext->typeMemHeap, data);
        fail(RTS_NO_MEMORY);
        return nullptr;
    }
    std::copy_n(units(), unitsUsed, data);
    *record = {length(), data};
    return record;
}
