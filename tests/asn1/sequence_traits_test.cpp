#include "asn1/sequence_traits.h"

#include <vector>

#include "asn1/primitive_traits.h"
#include "base/lists.h"
#include "value_test.h"

namespace {

using ListTraits = ASN1TSeqOfList_traits<ASN1TDynOctStr, ASN1TDynOctStr_traits, CBlob, CBlobList>;

CBlobList blobs(std::initializer_list<unsigned char> values) {
    CBlobList list;
    for (const unsigned char value : values)
        list.push_back(CBlob(&value, 1));
    return list;
}

std::vector<int> valuesIn(const _Asn1RTDList& record) {
    CBlobList list = blobs({99});
    ListTraits::get(record, list);
    std::vector<int> values;
    for (const CBlob& blob : list)
        values.push_back(blob.pbData()[0]);
    return values;
}

// Refuses the value 0.
struct PickyTraits : ASN1TDynOctStr_traits {
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, const CBlob& value) {
        if (value.pbData()[0] == 0) failure::raise(failure::invalidArgument);
        ASN1TDynOctStr_traits::set(ctxt, rec, value);
    }
};

}  // namespace

TEST(SequenceTraits, ElementsKeepTheirOrderBothWays) {
    test::LiveContext context;
    ASN1TSeqOfList record{};
    ListTraits::set(context, record, blobs({3, 1, 2}));
    EXPECT_EQ(record.count, 3u);
    EXPECT_EQ(valuesIn(record), (std::vector{3, 1, 2}));
    ListTraits::set(context, record, {});
    EXPECT_EQ(record.count, 0u);
    EXPECT_EQ(record.head, nullptr);
    EXPECT_EQ(valuesIn(record), std::vector<int>());
}

TEST(SequenceTraits, ACopyOutlivesItsSource) {
    const CBlobList read = test::throughCopiedRecord<ListTraits, ASN1TSeqOfList>(blobs({1, 2}));
    EXPECT_EQ(read, blobs({1, 2}));
}

TEST(SequenceTraits, AnElementThatFailsLeavesTheRecordAsItWas) {
    using Picky = ASN1TSeqOfList_traits<ASN1TDynOctStr, PickyTraits, CBlob, CBlobList>;
    test::LiveContext context;
    ASN1TSeqOfList record{};
    ListTraits::set(context, record, blobs({5}));
    EXPECT_EQ(thrownCode([&] { Picky::set(context, record, blobs({1, 0, 2})); }), 0x80070057u);
    EXPECT_EQ(valuesIn(record), (std::vector{5}));
}
