// What holds for every type, walked by descriptor.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/random_record.h"
#include "support/recode.h"

namespace {

using asn1data::kAllTypes;
using asn1data::kAllTypesCount;
using test::Octets;

std::size_t blocksOf(ASN1CTXT* ctxt) {
    std::size_t count = 0;
    for (auto* block = ctxt->typeMemHeap->blockList; block; block = block->next)
        ++count;
    return count;
}

Octets encoded(const asn1data::TypeDescriptor& type, const void* record) {
    test::Encoder output;
    const int length = asn1data::encode(output, type, record, ASN1EXPL);
    EXPECT_GE(length, 0) << type.name;
    if (length < 0) return {};
    const unsigned char* first = xe_getp(output);
    return Octets(first, first + length);
}

TEST(AllTypes, AreSortedByName) {
    ASSERT_GE(kAllTypesCount, 525u);
    for (std::uint32_t i = 1; i < kAllTypesCount; ++i) {
        EXPECT_LT(std::string(kAllTypes[i - 1].name), kAllTypes[i].name);
    }
}

TEST(AllTypes, EmptyRecordEncodesOrGivesAStatedStatus) {
    const std::set<int> stated = {RTS_BAD_OBJID, RTS_BAD_ENUM, RTS_BAD_CHOICE, RTS_BAD_VALUE, RTS_CONSTRAINT};
    for (std::uint32_t i = 0; i < kAllTypesCount; ++i) {
        test::Encoder context;
        void* record = asn1data::newRecord(context, *kAllTypes[i].type);
        const int result = asn1data::encode(context, *kAllTypes[i].type, record, ASN1EXPL);
        EXPECT_TRUE(result >= 0 || stated.contains(result)) << kAllTypes[i].name << " " << result;
        EXPECT_EQ(context.recorded(), std::min(result, 0)) << kAllTypes[i].name;
    }
}

TEST(AllTypes, RandomRecordsSurviveEncodeDecodeAndCopy) {
    for (std::uint32_t i = 0; i < kAllTypesCount; ++i) {
        const auto& type = *kAllTypes[i].type;
        for (unsigned round = 0; round < 12; ++round) {
            SCOPED_TRACE(std::string(kAllTypes[i].name) + " round " + std::to_string(round));
            Octets octets;
            test::LiveContext target;
            void* copied = asn1data::newRecord(target, type);
            {
                test::LiveContext source;
                void* record = asn1data::newRecord(source, type);
                test::RandomRecord(source, i * 1000 + round).fill(type, record);
                octets = encoded(type, record);
                asn1data::copy(target, type, record, copied);
            }
            EXPECT_EQ(encoded(type, copied), octets) << "a copy has nothing of its source";
            const test::Recoded recoded = test::recode(type, octets);
            ASSERT_EQ(recoded.status, RTS_OK) << test::text(octets);
            EXPECT_EQ(test::text(recoded.octets), test::text(octets));
        }
    }
}

TEST(AllTypes, FreeingGivesBackAllThatACopyTook) {
    for (std::uint32_t i = 0; i < kAllTypesCount; ++i) {
        const auto& type = *kAllTypes[i].type;
        for (unsigned round = 0; round < 6; ++round) {
            test::LiveContext source;
            void* record = asn1data::newRecord(source, type);
            test::RandomRecord random(source, i * 1000 + round);
            random.fill(type, record);
            test::LiveContext target;
            void* copied = asn1data::newRecord(target, type);
            const std::size_t before = blocksOf(target);
            asn1data::copy(target, type, record, copied);
            asn1data::freeValue(target, type, copied);
            // The records of resolved values stay in the heap themselves.
            EXPECT_EQ(blocksOf(target), before + random.resolved())
                << kAllTypes[i].name << " round " << round;
        }
    }
}

TEST(AllIdentifiers, AreSortedAndHaveZeroArcsBehindTheirCount) {
    EXPECT_EQ(asn1data::kAllIdentifiersCount, 390u);
    for (std::uint32_t i = 0; i < asn1data::kAllIdentifiersCount; ++i) {
        const auto& entry = asn1data::kAllIdentifiers[i];
        if (i > 0) {
            EXPECT_LT(std::string(asn1data::kAllIdentifiers[i - 1].name), entry.name);
        }
        EXPECT_GE(entry.id->numids, 2u);
        for (std::uint32_t arc = entry.id->numids; arc < 128; ++arc)
            EXPECT_EQ(entry.id->subid[arc], 0u);
    }
}

}  // namespace
