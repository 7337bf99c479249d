// Copies of strings and lists. That records of all types come out of a copy as they went in, on memory of
// their own, is tested with the types themselves; here stands what such records do not show.
#include "asn1rt/copy.h"

#include <memory>

#include "asn1rt/open_type.h"
#include "runtime_test.h"

namespace {

const unsigned char kOctets[] = {0x30, 0x03, 0x02, 0x01, 0x05};

TEST(Copy, RecordOntoItselfGetsMemoryOfItsOwn) {
    LiveContext ctxt;
    ASN1TDynOctStr octets{5, kOctets};
    ASSERT_EQ(rtCopyDynOctStr(ctxt, &octets, &octets), 1);
    EXPECT_NE(octets.data, kOctets);
    EXPECT_EQ(test::text(octets.data, octets.numocts), "30 03 02 01 05");
}

TEST(Copy, EmptyAndMissingDataCopyAsEmpty) {
    LiveContext ctxt;
    for (const ASN1TDynOctStr source : {ASN1TDynOctStr{0, kOctets}, ASN1TDynOctStr{9, nullptr}}) {
        ASN1TDynOctStr target{7, kOctets};
        EXPECT_EQ(rtCopyDynOctStr(ctxt, &source, &target), 1);
        EXPECT_EQ(target.numocts, 0u);
        EXPECT_EQ(target.data, nullptr);
    }
    EXPECT_EQ(ctxt->typeMemHeap->blockList, nullptr);
}

TEST(Copy, CallersMemoryTakesWholeOctetsAndNothingIsZeroWithTheCountStored) {
    LiveContext ctxt;
    for (std::uint32_t numbits = 0; numbits <= 40; ++numbits) {
        const std::size_t size = (numbits + 7) / 8;
        const std::unique_ptr<unsigned char[]> target(new unsigned char[size]);
        std::uint32_t copied = 77;
        EXPECT_EQ(rtCopyBitStr(ctxt, numbits, kOctets, &copied, target.get()), numbits == 0 ? 0 : 1);
        EXPECT_EQ(copied, numbits);
        EXPECT_EQ(test::text(target.get(), size), test::text(kOctets, size));
    }
    unsigned char target[5];
    std::uint32_t copied = 77;
    EXPECT_EQ(rtCopyOctStr(ctxt, 0, kOctets, &copied, target), 0);
    EXPECT_EQ(copied, 0u);
}

TEST(Copy, NullArgumentsAreZero) {
    LiveContext ctxt;
    ASN1TDynOctStr octets{};
    std::uint32_t count = 0;
    unsigned char target[1];
    _Asn1RTDList list{};
    const char* text = "left";
    EXPECT_EQ(rtCopyDynOctStr(ctxt, nullptr, &octets), 0);
    EXPECT_EQ(rtCopyDynOctStr(ctxt, &octets, nullptr), 0);
    EXPECT_EQ(rtCopyOctStr(ctxt, 1, kOctets, nullptr, target), 0);
    EXPECT_EQ(rtCopyOctStr(ctxt, 1, nullptr, &count, target), 0);
    EXPECT_EQ(rtCopyCharStr(ctxt, "a", nullptr), 0);
    EXPECT_EQ(rtCopyCharStr(ctxt, nullptr, &text), 0);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(rtCopyOpenTypeExt(ctxt, nullptr, &list), 0);
    EXPECT_EQ(rtCopyOpenTypeExt(ctxt, &list, nullptr), 0);
}

TEST(CopyWithoutMemory, TargetsAreEmpty) {
    LiveContext ctxt;
    const ASN1TDynBitStr bits{33, kOctets};
    const ASN1TDynOctStr beyondTheHeap{0xFFFFFFFF, kOctets};
    ASN1TDynBitStr bitsCopy{7, kOctets};
    ASN1TDynOctStr octetsCopy{7, kOctets};
    const char* text = "left";
    CountedAllocations memory;
    memory.allow(0);
    EXPECT_EQ(rtCopyDynBitStr(ctxt, &bits, &bitsCopy), 0);
    EXPECT_EQ(rtCopyDynOctStr(ctxt, &beyondTheHeap, &octetsCopy), 0);
    EXPECT_EQ(rtCopyCharStr(ctxt, "a", &text), 0);
    EXPECT_EQ(bitsCopy.numbits, 0u);
    EXPECT_EQ(octetsCopy.data, nullptr);
    EXPECT_EQ(text, nullptr);
}

TEST(CopyWithoutMemory, OpenTypeListKeepsWhatItGot) {
    Decoder decoder("02 01 05 04 00 30 00");
    _Asn1RTDList list{};
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(xd_OpenTypeAppend(decoder, &list), RTS_OK);
    for (int allocations = 0; allocations <= 6; ++allocations) {
        LiveContext ctxt;
        _Asn1RTDList copy{9, nullptr, nullptr};
        {
            CountedAllocations memory;
            memory.allow(allocations);
            EXPECT_EQ(rtCopyOpenTypeExt(ctxt, &list, &copy), allocations == 6);
        }
        EXPECT_EQ(copy.count, static_cast<std::uint32_t>(allocations / 2));
        Encoder encoder;
        EXPECT_GE(xe_OpenTypeExt(encoder, &copy), 0);
        const std::string whole = "02 01 05 04 00 30 00";
        EXPECT_EQ(encoder.message(), whole.substr(0, encoder.message().size()));
        rtMemFreeOpenSeqExt(ctxt, &copy);
    }
}

}  // namespace
