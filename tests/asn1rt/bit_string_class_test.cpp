#include "asn1rt/bit_string_class.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "asn1rt/bit_string.h"
#include "runtime_test.h"

namespace {

using Octets = std::vector<unsigned char>;
using Bits = std::vector<bool>;

// A fixed array for `bits` bits behind a control, and a context whose record of failures can be seen.
struct Fixed {
    explicit Fixed(std::uint32_t bits, Octets start = {}, std::uint32_t count = 0)
        : data(std::move(start)), numbits(count), string(*context, prepared(bits), numbits, bits) {}
    unsigned char* prepared(std::uint32_t bits) {
        data.resize((bits + 7) / 8);
        return data.data();
    }
    int recorded() const { return context->errInfo.status; }

    ASN1CtxtPtr context = new ASN1Context;
    Octets data;
    std::uint32_t numbits;
    ASN1CBitStr string;
};

// A record whose data is memory of the context.
struct Dynamic {
    explicit Dynamic(const Octets& start, std::uint32_t count) {
        auto* copy = static_cast<unsigned char*>(
            rtMemHeapAlloc(&context->typeMemHeap, static_cast<std::int32_t>(start.size())));
        std::copy(start.begin(), start.end(), copy);
        record = {count, copy};
    }
    ASN1CtxtPtr context = new ASN1Context;
    ASN1TDynBitStr record;
};

Octets octetsOf(ASN1CBitStr& string) {
    Octets octets(string.size());
    EXPECT_EQ(string.getBytes(octets.data(), string.size()), RTS_OK);
    return octets;
}

TEST(BitString, InitialBitsBehindTheCountAreCleared) {
    Fixed fixed(24, {0xFF, 0xFF, 0xFF}, 10);
    EXPECT_EQ(fixed.data, (Octets{0xFF, 0xC0, 0x00}));
    EXPECT_EQ(fixed.string.size(), 2u);
    Fixed cut(9, {0xFF, 0xFF}, 40);
    EXPECT_EQ(cut.numbits, 9u);
    EXPECT_EQ(cut.data, (Octets{0xFF, 0x80}));
}

TEST(BitString, DynamicRecordLosesItsLowestBitOnTheHeapOnly) {
    Dynamic heap({0xFF, 0xFF}, 16);
    ASN1CBitStr control(*heap.context, heap.record);
    EXPECT_EQ(control.length(), 15u);

    const unsigned char message[] = {0xFF, 0xFF};
    ASN1TDynBitStr record{16, message};
    EXPECT_EQ(ASN1CBitStr(*heap.context, record).length(), 16u);
    record = {0, message + 1};
    EXPECT_EQ(ASN1CBitStr(*heap.context, record).length(), 0u);
}

TEST(BitString, EmptyRangeRaisesTheCountButWritesNothing) {
    Fixed fixed(16);
    EXPECT_EQ(fixed.string.set(3, 3), RTS_OK);
    EXPECT_EQ(fixed.numbits, 3u);
    EXPECT_EQ(fixed.data, (Octets{0, 0}));
    ASN1CBitStr empty;
    EXPECT_EQ(empty.set(0, 0) | empty.invert(0, 0), RTS_OK);
    EXPECT_EQ(empty.size(), 0u);
}

struct Refusal {
    const char* name;
    std::uint32_t bits;  // 0: unbounded
    std::function<int(ASN1CBitStr&)> operation;
    int status;
};

TEST(BitString, RefusedOperationsChangeNothing) {
    constexpr std::uint32_t last = 0xFFFFFFFF;
    static unsigned char out[4];
    const Refusal rows[] = {
        {"set above the maximum", 16, [](auto& s) { return s.set(17); }, RTS_BAD_INDEX},
        {"set at the maximum without an octet", 16, [](auto& s) { return s.set(16); }, RTS_BAD_LENGTH},
        {"set at the maximum with an octet", 10, [](auto& s) { return s.set(10); }, RTS_OK},
        {"invert at the maximum with an octet", 10, [](auto& s) { return s.invert(10); }, RTS_OK},
        {"set above the maximum with an octet", 10, [](auto& s) { return s.set(11); }, RTS_BAD_INDEX},
        {"invert above the maximum", 16, [](auto& s) { return s.invert(17); }, RTS_BAD_INDEX},
        {"invert at the maximum without an octet", 16, [](auto& s) { return s.invert(16); }, RTS_BAD_LENGTH},
        {"clear above the maximum", 16, [](auto& s) { return s.clear(17); }, RTS_BAD_INDEX},
        {"clear behind the octets", 16, [](auto& s) { return s.clear(16); }, RTS_OK},
        {"range that starts above the maximum", 16, [](auto& s) { return s.set(17, 3); }, RTS_BAD_INDEX},
        {"range that ends above the maximum", 16, [](auto& s) { return s.clear(3, 17); }, RTS_BAD_INDEX},
        {"reversed range", 16, [](auto& s) { return s.invert(9, 3); }, RTS_BAD_RANGE},
        {"last index", 0, [](auto& s) { return s.set(last); }, RTS_BAD_INDEX},
        {"range to the last index", 0, [](auto& s) { return s.set(1, last); }, RTS_BAD_INDEX},
        {"reading above the maximum", 16, [](auto& s) { return s.get(0, 17, out, 4); }, RTS_BAD_INDEX},
        {"reading a reversed range", 16, [](auto& s) { return s.get(4, 3, out, 4); }, RTS_BAD_RANGE},
        {"reading more than fits", 16, [](auto& s) { return s.get(0, 9, out, 1); }, RTS_BUFFER_TOO_SMALL},
        {"reading to nowhere", 16, [](auto& s) { return s.get(0, 1, nullptr, 1); }, RTS_BAD_ARGUMENT},
        {"octets that do not fit", 16, [](auto& s) { return s.getBytes(out, 0); }, RTS_BAD_LENGTH},
        {"and of null", 16, [](auto& s) { return s.doAnd(nullptr, 1); }, RTS_BAD_ARGUMENT},
        {"or of null", 16, [](auto& s) { return s.doOr(nullptr, 1); }, RTS_BAD_ARGUMENT},
        {"xor of null", 16, [](auto& s) { return s.doXor(nullptr, 1); }, RTS_BAD_ARGUMENT},
        {"and not of null", 16, [](auto& s) { return s.doAndNot(nullptr, 1); }, RTS_BAD_ARGUMENT},
        {"xor of no bits", 16, [](auto& s) { return s.doXor(nullptr, 0); }, RTS_OK},
        {"and not of no bits", 16, [](auto& s) { return s.doAndNot(nullptr, 0); }, RTS_OK},
        {"or of no bits without a maximum", 0, [](auto& s) { return s.doOr(nullptr, 0); }, RTS_BAD_ARGUMENT},
        {"shift beyond all counts", 0, [](auto& s) { return s.shiftRight(last - 2); }, RTS_BAD_INDEX},
        {"and with itself", 16, [](auto& s) { return s.doAnd(ASN1TDynBitStr(s).data, 3); }, RTS_BAD_ARGUMENT},
        {"or with itself", 16, [](auto& s) { return s.doOr(ASN1TDynBitStr(s).data, 3); }, RTS_BAD_ARGUMENT},
    };
    for (const Refusal& row : rows) {
        SCOPED_TRACE(row.name);
        ASN1CtxtPtr context = new ASN1Context;
        ASN1CBitStr string(*context, row.bits);
        string.set(0, 3);
        EXPECT_EQ(row.operation(string), row.status);
        EXPECT_EQ(context->errInfo.status, row.status);
        if (row.status == RTS_OK) continue;
        EXPECT_EQ(octetsOf(string), Octets{0xE0});
        EXPECT_EQ(string.length(), 3u);
    }
}

TEST(BitString, OrOfNoBitsSetsAllUpToTheMaximum) {
    Fixed fixed(10);
    EXPECT_EQ(fixed.string.doOr(nullptr, 0), RTS_OK);
    EXPECT_EQ(fixed.data, (Octets{0xFF, 0xC0}));
    EXPECT_EQ(fixed.numbits, 10u);
    EXPECT_EQ(fixed.string.doAnd(nullptr, 0), RTS_OK);
    EXPECT_EQ(fixed.numbits, 0u);
}

TEST(BitString, ArgumentBitsBehindCountAndMaximumAreClear) {
    const unsigned char ones[] = {0xFF, 0xFF, 0xFF};
    Fixed fixed(10, {0xA0, 0x00}, 10);
    EXPECT_EQ(fixed.string.doXor(ones, 24), RTS_OK);
    EXPECT_EQ(fixed.data, (Octets{0x5F, 0xC0}));
    EXPECT_EQ(fixed.string.doAndNot(ones, 4), RTS_OK);
    EXPECT_EQ(fixed.data, (Octets{0x0F, 0xC0}));
    EXPECT_EQ(fixed.string.doAnd(ones, 6), RTS_OK);
    EXPECT_EQ(fixed.data, (Octets{0x0C, 0x00}));
}

TEST(BitString, CombinesWithItsOwnStorageAlsoWhenThatMoves) {
    Dynamic heap({0xF0, 0x0E}, 16);
    ASN1CBitStr string(*heap.context, heap.record);
    EXPECT_EQ(string.doXor(heap.record.data + 1, 800), RTS_OK);
    EXPECT_EQ(octetsOf(string), (Octets{0xFE, 0x0E}));
    EXPECT_EQ(string.doXor(heap.record.data, 800), RTS_OK);
    EXPECT_EQ(string.size(), 0u);
}

TEST(BitString, RecordThatGrewOutlivesItsControl) {
    Dynamic heap({0x80}, 1);
    {
        ASN1CBitStr string(*heap.context, heap.record);
        EXPECT_EQ(string.set(5000), RTS_OK);
        EXPECT_EQ(string.set(50000), RTS_OK);
    }
    ASSERT_EQ(heap.record.numbits, 50001u);
    EXPECT_EQ(heap.record.data[0], 0x80);
    EXPECT_EQ(heap.record.data[6250], 0x80);
}

TEST(BitString, UnboundedArrayMovesToOwnStorage) {
    unsigned char array[] = {0xFF, 0x55};
    std::uint32_t count = 8;
    ASN1CBitStr string(array, count, ASN1CBitStr::unbounded);
    EXPECT_EQ(array[1], 0x55);
    EXPECT_EQ(string.set(15), RTS_OK);
    EXPECT_EQ(octetsOf(string), (Octets{0xFF, 0x01}));
    EXPECT_EQ(array[1], 0x55);
    EXPECT_EQ(count, 16u);
}

TEST(BitString, InitGivesUpTheFormerStorage) {
    ASN1CBitStr string;
    string.set(9000);
    unsigned char array[2] = {};
    std::uint32_t count = 0;
    string.init(array, count, 16);
    EXPECT_EQ(string.set(1), RTS_OK);
    EXPECT_EQ(array[0], 0x40);
    ASN1TDynBitStr record{0, nullptr};
    string.init(record);
    EXPECT_EQ(string.set(2), RTS_OK);
    EXPECT_EQ(record.data[0], 0x20);
    EXPECT_EQ(record.numbits, 3u);
}

TEST(BitString, CopiesAreApartAndMayGrow) {
    Fixed fixed(16, {0x81}, 8);
    ASN1CBitStr same(fixed.string), wider(fixed.string, true);
    fixed.string.clear();
    EXPECT_EQ(octetsOf(same), Octets{0x81});
    EXPECT_EQ(same.set(17), RTS_BAD_INDEX);
    EXPECT_EQ(wider.set(100000), RTS_OK);
    EXPECT_EQ(wider.cardinality(), 3u);
    EXPECT_EQ(same.cardinality(), 2u);
}

TEST(BitString, ConversionsShareOrCopy) {
    Fixed fixed(16, {0x81, 0x40}, 16);
    const ASN1TDynBitStr shared = fixed.string;
    EXPECT_EQ(shared.data, fixed.data.data());
    EXPECT_EQ(shared.numbits, 10u);
    const ASN1TDynBitStr* copy = fixed.string;
    fixed.string.clear();
    EXPECT_EQ(copy->numbits, 10u);
    EXPECT_EQ(Octets(copy->data, copy->data + 2), (Octets{0x81, 0x40}));
}

TEST(BitString, UnusedBitsAreThoseBehindTheLastSetBit) {
    Fixed fixed(16, {0x81, 0x40}, 16);
    EXPECT_EQ(fixed.string.unusedBitsInLastUnit(), 6u);
    fixed.string.clear();
    EXPECT_EQ(fixed.string.unusedBitsInLastUnit(), 0u);
}

TEST(BitString, FailedMemoryChangesNothing) {
    Dynamic heap({0x81}, 8);
    ASN1CBitStr string(*heap.context, heap.record);
    const unsigned char* data = heap.record.data;
    {
        CountedAllocations allocations;
        allocations.allow(0);
        EXPECT_EQ(string.set(9), RTS_NO_MEMORY);
    }
    EXPECT_EQ(heap.record.data, data);
    EXPECT_EQ(string.size(), 1u);
    CountedAllocations allocations;
    allocations.allow(0);
    EXPECT_THROW(ASN1CBitStr copy(string), ASN1RTLException);
}

TEST(BitString, LongRunOfSetsRarelyAllocates) {
    ASN1CBitStr string;
    const CountedAllocations memory;
    for (std::uint32_t bit = 0; bit < 80000; ++bit)
        string.set(bit);
    EXPECT_LE(memory.made(), 10);
    EXPECT_EQ(string.cardinality(), 80000u);
}

// A string and a vector of bits that get the same random operations.
class Twins {
  public:
    // The vector stands for the first `bits` bits; an unbounded string is kept within them.
    Twins(ASN1CBitStr& string, std::size_t bits, bool bounded, unsigned seed)
        : mString(string), mModel(bits), mBounded(bounded), mRandom(seed) {}

    void change() {
        const auto from = any(mModel.size());
        const auto to = from + any(mModel.size() - from + 1);
        switch (any(11)) {
            case 0:
                return apply(mString.set(from), from, from + 1, [](bool, std::size_t) { return true; });
            case 1:
                return apply(mString.clear(from), from, from + 1, [](bool, std::size_t) { return false; });
            case 2:
                return apply(mString.invert(from), from, from + 1,
                             [](bool bit, std::size_t) { return !bit; });
            case 3:
                return apply(mString.set(from, to), from, to, [](bool, std::size_t) { return true; });
            case 4:
                return apply(mString.clear(from, to), from, to, [](bool, std::size_t) { return false; });
            case 5:
                return apply(mString.invert(from, to), from, to, [](bool bit, std::size_t) { return !bit; });
            case 6:
                return combine(&ASN1CBitStr::doAnd, [](bool bit, bool other) { return bit && other; });
            case 7:
                return combine(&ASN1CBitStr::doOr, [](bool bit, bool other) { return bit || other; });
            case 8:
                return combine(&ASN1CBitStr::doXor, [](bool bit, bool other) { return bit != other; });
            case 9:
                return combine(&ASN1CBitStr::doAndNot, [](bool bit, bool other) { return bit && !other; });
            default:
                return shift();
        }
    }

    void compare() {
        const std::uint32_t length = modelLength();
        ASSERT_EQ(mString.length(), length);
        ASSERT_EQ(mString.cardinality(), std::count(mModel.begin(), mModel.end(), true));
        for (std::uint32_t bit = 0; bit < mModel.size(); ++bit)
            ASSERT_EQ(mString.get(bit), mModel[bit]) << bit;
        const auto from = any(mModel.size());
        const auto to = from + any(mModel.size() - from + 1);
        Octets out(60, 0xA5);
        ASSERT_EQ(mString.get(from, to, out.data(), 60), RTS_OK);
        for (std::uint32_t bit = 0; bit < 480; ++bit)
            ASSERT_EQ((out[bit / 8] >> (7 - bit % 8) & 1) != 0, from + bit < to && mModel[from + bit]) << bit;
    }

  private:
    std::uint32_t any(std::size_t below) { return static_cast<std::uint32_t>(mRandom() % below); }

    std::uint32_t modelLength() const {
        return static_cast<std::uint32_t>(mModel.rend() - std::find(mModel.rbegin(), mModel.rend(), true));
    }

    template <typename Rule>
    void apply(int status, std::size_t from, std::size_t to, Rule rule) {
        ASSERT_EQ(status, RTS_OK);
        for (std::size_t bit = from; bit < to; ++bit)
            mModel[bit] = rule(mModel[bit], bit);
    }

    // With a bounded string the argument may be longer than the bound.
    template <typename Rule>
    void combine(int (ASN1CBitStr::*operation)(const unsigned char*, std::uint32_t), Rule rule) {
        Octets bytes(60);
        for (unsigned char& octet : bytes)
            octet = static_cast<unsigned char>(mRandom());
        const std::uint32_t count = 1 + any(mBounded ? 480 : mModel.size());
        apply((mString.*operation)(bytes.data(), count), 0, mModel.size(), [&](bool bit, std::size_t index) {
            return rule(bit, index < count && (bytes[index / 8] >> (7 - index % 8) & 1) != 0);
        });
    }

    void shift() {
        const bool left = any(2) == 0;
        const std::size_t room = left || mBounded ? mModel.size() + 9 : mModel.size() - modelLength() + 1;
        const std::uint32_t count = any(room);
        const Bits former = mModel;
        apply(left ? mString.shiftLeft(count) : mString.shiftRight(count), 0, former.size(),
              [&](bool, std::size_t index) {
                  const std::size_t source = left ? index + count : index - count;
                  return source < former.size() && former[source];
              });
    }

    ASN1CBitStr& mString;
    Bits mModel;
    bool mBounded;
    std::mt19937 mRandom;
};

void runTwins(ASN1CBitStr& string, std::size_t bits, bool bounded, unsigned seed) {
    Twins twins(string, bits, bounded, seed);
    for (int round = 0; round < 600 && !testing::Test::HasFatalFailure(); ++round) {
        twins.change();
        twins.compare();
    }
}

TEST(BitString, RandomOperationsAgreeWithAVectorOfBits) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        for (const std::uint32_t bits : {1, 7, 8, 9, 16, 61, 200}) {
            SCOPED_TRACE(bits);
            Fixed fixed(bits);
            runTwins(fixed.string, bits, true, seed);
            ASN1CBitStr own(bits);
            runTwins(own, bits, true, seed);
        }
        ASN1CBitStr unbounded;
        runTwins(unbounded, 400, false, seed);
        Dynamic heap({}, 0);
        ASN1CBitStr record(*heap.context, heap.record);
        runTwins(record, 400, false, seed);
    }
}

}  // namespace
