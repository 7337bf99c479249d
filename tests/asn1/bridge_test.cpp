#include "asn1/bridge.h"

#include "asn1/algorithm_identifier_traits.h"
#include "value_test.h"

namespace {

using Traits = ASN1T_AlgorithmIdentifier_traits;

// AlgorithmIdentifier { an algorithm without a schema, 01 02 03 }, put together by hand.
constexpr char message[] = "30 12 06 09 2B 06 01 05 05 07 30 01 63 04 05 01 02 03 04 05";

CAlgorithmIdentifier algorithm(char const* oid, char const* parameters) {
    CAlgorithmIdentifier value(oid);
    value.put_parameters(blob(parameters));
    return value;
}

const CAlgorithmIdentifier kValue = algorithm("1.3.6.1.5.5.7.48.1.99", "04 05 01 02 03 04 05");
const CAlgorithmIdentifier kOther = algorithm("1.2", "05 00");

}  // namespace

TEST(Bridge, AValueTravelsBothWaysAndBytesBehindItAreIgnored) {
    EXPECT_EQ(test::text(asn1Encode<Traits>(kValue)), message);
    for (char const* behind : {"", "DE AD BE EF"}) {
        CBlob encoded = blob(message);
        encoded += blob(behind);
        CAlgorithmIdentifier read = kOther;
        asn1Decode<Traits>(encoded, read);
        EXPECT_EQ(read, kValue);
    }
}

TEST(Bridge, EveryTruncationIsRefusedWithOneCodeAndTheValueStays) {
    const CBlob whole = blob(message);
    for (unsigned long length = 0; length < whole.cbData(); ++length) {
        CAlgorithmIdentifier read = kOther;
        const CBlob cut(whole.pbData(), length);
        EXPECT_EQ(thrownCode([&] { asn1Decode<Traits>(cut, read); }), 0x80093101u) << length;
        EXPECT_EQ(read, kOther);
    }
}

TEST(Bridge, ARecordLivesInTheCallersContext) {
    test::LiveContext context;
    asn1data::ASN1T_AlgorithmIdentifier record;
    {
        const CBlob source = blob(message);
        asn1DecodeT<Traits>(source, context, record);
    }
    EXPECT_EQ(test::text(record.parameters.data, record.parameters.numocts), "04 05 01 02 03 04 05");
    EXPECT_EQ(test::text(asn1EncodeT<Traits>(record)), message);
    EXPECT_EQ(thrownCode([&] { asn1DecodeT<Traits>(blob("30 03"), context, record); }), 0x80093101u);
    record.algorithm.numids = 0;
    EXPECT_EQ(thrownCode([&] { asn1EncodeT<Traits>(record); }), 0x80093101u);
}

TEST(OptionalMember, TakesACopyOrNothing) {
    std::unique_ptr<CBlob> member;
    const CBlob value = blob("01 02");
    copy_to_auto_ptr(member, &value);
    ASSERT_NE(member, nullptr);
    EXPECT_EQ(*member, value);
    const CBlob* const former = member.get();
    copy_to_auto_ptr(member, member.get());
    EXPECT_EQ(*member, value);
    EXPECT_NE(member.get(), former);
    copy_to_auto_ptr(member, nullptr);
    EXPECT_EQ(member, nullptr);
}
