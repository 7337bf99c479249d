#include "asn1rt/canonical_sort.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "asn1rt/ber_encode.h"
#include "runtime_test.h"

namespace {

class CanonicalSort : public ::testing::Test {
  protected:
    CanonicalSort() {
        xe_memcpy(mEncoder, "behind", 6);
        useNodesOf(mEncoder);
    }

    void useNodesOf(ASN1CTXT* owner) { rtSListInitEx(owner, &mList); }

    void encode(const std::string& element) {
        const int length = xe_memcpy(mEncoder, element.data(), static_cast<std::uint32_t>(element.size()));
        auto* location =
            static_cast<ASN1BufLocDescr*>(rtMemHeapAlloc(&mEncoder->typeMemHeap, sizeof(ASN1BufLocDescr)));
        xe_getBufLocDescr(mEncoder, length, location);
        rtSListAppend(&mList, location);
    }

    // What stands in front of the octets written first.
    std::string sorted() {
        const int length = xe_derCanonicalSort(mEncoder, &mList);
        if (length < 0) return std::to_string(length);
        const std::string message(reinterpret_cast<const char*>(xe_getp(mEncoder)),
                                  static_cast<std::size_t>(length) + 6);
        EXPECT_EQ(message.substr(static_cast<std::size_t>(length)), "behind");
        return message.substr(0, static_cast<std::size_t>(length));
    }

    std::size_t liveBlocks() {
        std::size_t count = 0;
        for (const rtMemBlock* block = mEncoder->typeMemHeap->blockList; block; block = block->next)
            ++count;
        return count;
    }

    Encoder mEncoder;
    rtSList mList;
};

TEST_F(CanonicalSort, ElementsAscendAndAllElseIsFreed) {
    std::mt19937 random(7);
    for (const int count : {0, 1, 2, 3, 7, 20000}) {  // the last across growth of the buffer
        for (ASN1CTXT* owner : {static_cast<ASN1CTXT*>(mEncoder), static_cast<ASN1CTXT*>(nullptr)}) {
            useNodesOf(owner);
            std::vector<std::string> elements;
            for (int i = 0; i < count; ++i) {
                std::string element(random() % 6, '\0');
                for (char& octet : element)
                    octet = static_cast<char>(random() % 3 * 0x7F);
                elements.push_back(element);
                encode(element);
            }
            std::sort(elements.begin(), elements.end());  // by unsigned octets, the shorter first
            std::string expected;
            for (const std::string& element : elements)
                expected += element;
            EXPECT_EQ(sorted(), expected);
            EXPECT_EQ(liveBlocks(), 1u) << "the buffer alone";
            mEncoder->buffer.byteIndex += static_cast<std::uint32_t>(expected.size());
        }
    }
}

// A sort that compares every pair would take minutes.
TEST_F(CanonicalSort, AscendingEncodingOfManyElements) {
    std::string expected;
    for (unsigned i = 0; i < 200000; ++i) {
        const std::string element{static_cast<char>(i >> 16), static_cast<char>(i >> 8),
                                  static_cast<char>(i)};
        encode(element);
        expected += element;
    }
    EXPECT_EQ(sorted(), expected);
}

TEST_F(CanonicalSort, LocationOutsideTheBufferIsRefused) {
    encode("b");
    encode("a");
    auto* location = static_cast<ASN1BufLocDescr*>(mList.head->data);
    const ASN1BufLocDescr good = *location;
    for (const ASN1BufLocDescr bad : {ASN1BufLocDescr{-1, 7}, ASN1BufLocDescr{8, 7}, ASN1BufLocDescr{1, 9}}) {
        *location = bad;
        EXPECT_EQ(xe_derCanonicalSort(mEncoder, &mList), RTS_BAD_LENGTH);
    }
    *location = good;
    EXPECT_EQ(sorted(), "ab");
}

}  // namespace
