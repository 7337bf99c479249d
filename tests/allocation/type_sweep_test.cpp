// The codecs of all types while memory fails, walked by descriptor.
#include <gtest/gtest.h>

#include "support/failing_memory.h"
#include "support/random_record.h"
#include "support/recode.h"

namespace {

using asn1data::kAllTypes;
using asn1data::kAllTypesCount;
using test::FailingMemory;
using test::Octets;

// Runs `action` with its first, second, ... allocation failing. `action` yields whether it told a failure.
template <typename Action>
void sweep(const char* name, Action action) {
    for (int index = 0;; ++index) {
        bool told = false;
        bool happened = false;
        {
            const FailingMemory failing(index);
            try {
                told = action();
            } catch (const std::bad_alloc&) {
                told = true;
            }
            happened = failing.happened();
        }
        ASSERT_EQ(told, happened) << name << ", allocation " << index;
        if (!happened) return;
    }
}

// One random record of each type, in DER.
Octets sampleOf(const asn1data::TypeDescriptor& type, unsigned seed) {
    test::LiveContext source;
    void* record = asn1data::newRecord(source, type);
    test::RandomRecord(source, seed).fill(type, record);
    test::Encoder output;
    const int length = asn1data::encode(output, type, record, ASN1EXPL);
    if (length <= 0) return {};
    const unsigned char* first = xe_getp(output);
    return Octets(first, first + length);
}

TEST(TypesWithoutMemory, RecodingTellsEveryFailure) {
    for (std::uint32_t i = 0; i < kAllTypesCount; ++i) {
        const auto& type = *kAllTypes[i].type;
        const Octets octets = sampleOf(type, i);
        if (octets.empty()) continue;
        sweep(kAllTypes[i].name, [&] { return test::recode(type, octets).octets != octets; });
    }
}

TEST(TypesWithoutMemory, CopyingThrows) {
    for (std::uint32_t i = 0; i < kAllTypesCount; ++i) {
        const auto& type = *kAllTypes[i].type;
        test::LiveContext source;
        void* record = asn1data::newRecord(source, type);
        test::RandomRecord(source, i).fill(type, record);
        sweep(kAllTypes[i].name, [&] {
            test::LiveContext target;
            asn1data::copy(target, type, record, asn1data::newRecord(target, type));
            return false;
        });
    }
}

}  // namespace
