#include <gtest/gtest.h>

#include "platform/last_error.h"
#include "provider/find_algorithm.h"
#include "provider/hashing.h"
#include "scripted_platform.h"
#include "support/failures.h"

using namespace test;
using Mirvane::CBlob;
using Mirvane::MakeHash;
using Mirvane::MVGetDefaultCSPThrow;

namespace {

constexpr ALG_ID known = 0x8004;
constexpr ALG_ID second = 0x2400;

// Starts every test with an empty platform, and sees that nothing stays behind.
class ProviderSelection : public testing::Test {
  protected:
    ProviderSelection() { platform = {}; }

    // The type of the context chosen, 0 for none; gives the context back.
    static DWORD chosenType(ALG_ID id, ALG_ID id2 = 0) {
        const HCRYPTPROV provider = MVGetDefaultCSPThrow(id, id2);
        EXPECT_EQ(platform.totalReferences(), provider != 0 ? 1 : 0);
        if (provider == 0) return 0;
        EXPECT_TRUE(CryptReleaseContext(provider, 0));
        return platform.contexts[provider].type;
    }
};

class MakingAHash : public ProviderSelection {
  protected:
    MakingAHash() : provider(platform.addContext({1, "own", {known}})) {}

    HCRYPTPROV provider;
    CBlob data{4};
};

std::string longName(std::size_t size) {
    return std::string(size, 'n');
}

}  // namespace

TEST_F(ProviderSelection, WithoutAnAlgorithmAsksNothing) {
    EXPECT_EQ(MVGetDefaultCSPThrow(0, known), 0u);
    EXPECT_TRUE(platform.calls.empty());
}

TEST_F(ProviderSelection, TakesThePlatformsAnswerWithoutAWalk) {
    platform.defaultAnswer = platform.addContext({9, "default", {}});
    platform.types = {{1, "one", {known}}};
    EXPECT_EQ(chosenType(known, second), 9u);
    EXPECT_EQ(platform.calls["EnumTypes"] + platform.calls["EnumProviders"] + platform.calls["Acquire"], 0);
}

TEST_F(ProviderSelection, StopsAtTheFirstTypeThatListsBothAlgorithmsInAnyOrder) {
    platform.types = {{1, "one", {second}}, {2, "two", {second, 5, known}}, {3, "three", {known, second}}};
    EXPECT_EQ(chosenType(known, second), 2u);
    EXPECT_EQ(platform.calls["EnumTypes"], 2);
    EXPECT_EQ(chosenType(second), 1u);
    // Each algorithm is looked for from the first record on.
    EXPECT_EQ(platform.walkFlags, (std::vector<DWORD>{1, 0, 1, 0, 0, 1, 1}));
}

TEST_F(ProviderSelection, WithoutAMatchKeepsTheLastTypeAndWalksNoNames) {
    platform.types = {{1, "one", {5}}, {2, "two", {}}};
    platform.providers = {{3, "named", {known}}};
    EXPECT_EQ(chosenType(known), 2u);
    EXPECT_EQ(platform.calls["EnumProviders"], 0);
}

TEST_F(ProviderSelection, WithoutTypesWalksTheNames) {
    platform.providers = {{3, "other", {5}}, {4, "named", {known}}, {5, "third", {known}}};
    EXPECT_EQ(chosenType(known), 4u);
    EXPECT_EQ(platform.calls["EnumProviders"], 2);
    platform.providers = {};
    EXPECT_EQ(chosenType(known), 0u);
}

TEST_F(ProviderSelection, ANameTooLongIsAskedForAgainWithDoubleTheLength) {
    platform.types = {{1, longName(127), {5}}, {2, longName(128), {known}}};
    EXPECT_EQ(chosenType(known), 2u);
    EXPECT_EQ(platform.capacities, (std::vector<DWORD>{128, 128, 258}));
    platform = {};
    platform.providers = {{1, longName(300), {5}}, {4, longName(700), {known}}};
    EXPECT_EQ(chosenType(known), 4u);
    EXPECT_EQ(platform.capacities, (std::vector<DWORD>{128, 256, 602, 602, 1402}));
}

TEST_F(ProviderSelection, ASecondFailureAtOneIndexEndsTheTypesButOnlySkipsAName) {
    const std::vector<DWORD> twice = {ERROR_MORE_DATA, ERROR_MORE_DATA};
    platform.types = {{1, longName(200), {known}, twice}, {2, "two", {known}}};
    EXPECT_EQ(chosenType(known), 0u);
    EXPECT_EQ(platform.calls["EnumTypes"], 2);
    platform = {};
    platform.providers = {{3, longName(300), {known}, twice}, {4, "named", {known}}};
    EXPECT_EQ(chosenType(known), 4u);
    EXPECT_EQ(platform.calls["EnumProviders"], 3);
}

TEST_F(ProviderSelection, OtherFailuresEndTheTypesButOnlySkipAName) {
    platform.types = {{1, "one", {known}, {NTE_FAIL}}, {2, "two", {known}}};
    EXPECT_EQ(chosenType(known), 0u);
    platform = {};
    platform.providers = {{3, "other", {known}, {NTE_FAIL}}, {4, "named", {known}}};
    EXPECT_EQ(chosenType(known), 4u);
}

TEST_F(ProviderSelection, ALengthThatIsNoReasonToRetryEndsEitherWalk) {
    for (DWORD reported : {1u, 128u, 256u, 0x40000000u, 0xFFFFFFFFu}) {
        platform = {};
        platform.reportedLength = reported;
        platform.types = {{1, "one", {known}, {ERROR_MORE_DATA}}, {2, "two", {known}}};
        platform.types.resize(reported == 256 ? 0 : 2);
        platform.providers = {{3, "other", {known}, {ERROR_MORE_DATA}}, {4, "named", {known}}};
        EXPECT_EQ(chosenType(known), 0u) << reported;
        EXPECT_EQ(platform.calls["EnumProviders"], 1);
    }
}

TEST_F(ProviderSelection, AListOfNamesWithoutAnEndIsLeft) {
    platform.providersEnd = false;
    EXPECT_EQ(chosenType(known), 0u);
    EXPECT_EQ(platform.calls["EnumProviders"], 0x10000);
}

TEST_F(ProviderSelection, AFailedAcquisitionEndsTheSearchThoughALaterTypeWouldServe) {
    platform.types = {{1, "one", {5}}, {2, "two", {}, {}, 5}, {3, "three", {known}}};
    EXPECT_EQ(thrownCode([] { MVGetDefaultCSPThrow(known, 0); }), 0x80070005u);
    EXPECT_EQ(platform.totalReferences(), 0);
}

TEST_F(ProviderSelection, AListThatFailsThrowsEvenWithoutACode) {
    platform.types = {{1, "one", {5}, {}, 0, NTE_FAIL}};
    EXPECT_EQ(thrownCode([] { MVGetDefaultCSPThrow(known, 0); }), 0x80090020u);
    platform.types[0].listEnd = 0;
    EXPECT_THROW(MVGetDefaultCSPThrow(known, 0), ATL::CAtlException);
    EXPECT_EQ(platform.totalReferences(), 0);
}

TEST_F(ProviderSelection, WithoutAReferenceGivesNothing) {
    platform.types = {{1, "one", {known}}};
    platform.refusesReferences = true;
    EXPECT_EQ(chosenType(known), 0u);
}

TEST_F(MakingAHash, LeavesTheCallersProviderAsItWas) {
    const CBlob value = MakeHash(provider, known, data, nullptr);
    EXPECT_EQ(platform.references[provider], 1);
    EXPECT_EQ(platform.liveHashes, 0);
    // The size told first stays, though the value came shorter.
    EXPECT_EQ(value, CBlob(reinterpret_cast<unsigned char const*>("abc"), 4));
    platform.refusesReferences = true;
    MakeHash(provider, known, data, nullptr);
    EXPECT_EQ(platform.references[provider], 1);
}

TEST_F(MakingAHash, FailuresThrowTheirCodeAndGiveEverythingBack) {
    for (const char* step : {"CreateHash", "HashData", "HashSize", "HashValue"}) {
        unsigned long long hash = 99;
        platform.failures = {{step, 5}};
        EXPECT_EQ(thrownCode([&] { MakeHash(provider, known, data, &hash); }), 0x80070005u) << step;
        EXPECT_EQ(hash, 99u);
        EXPECT_EQ(platform.references[provider], 1) << step;
        EXPECT_EQ(platform.liveHashes, 0) << step;
    }
}

TEST_F(MakingAHash, AFailureWithoutACodeCountsAsSuccess) {
    platform.failures = {{"HashData", 0}};
    EXPECT_EQ(MakeHash(provider, known, data, nullptr).cbData(), 4u);
    platform.failures = {{"CreateHash", 0}, {"HashSize", 0}};
    EXPECT_EQ(MakeHash(provider, known, data, nullptr).cbData(), 0u);
    EXPECT_EQ(platform.liveHashes, 0);
}

TEST_F(MakingAHash, GivesTheLiveHashAway) {
    unsigned long long hash = 0;
    MakeHash(provider, known, data, &hash);
    EXPECT_EQ(hash, 7u);
    EXPECT_EQ(platform.liveHashes, 1);
}

TEST_F(MakingAHash, WithoutAProviderChoosesOneAndGivesItBack) {
    platform.types = {{1, "one", {known}}};
    EXPECT_EQ(MakeHash(0, known, data, nullptr).cbData(), 4u);
    EXPECT_EQ(platform.totalReferences(), 1);
}

TEST_F(MakingAHash, WithoutAProviderOrAnAlgorithmThrowsWhatStandsInTheSlot) {
    for (DWORD code : {0x80090008u, 0u}) {
        SetLastError(code);
        bool threw = false;
        try {
            MakeHash(0, 0, data, nullptr);
        } catch (const ATL::CAtlException& failure) {
            threw = static_cast<DWORD>(failure.m_hr) == code;
        }
        EXPECT_TRUE(threw) << code;
    }
}

TEST(HandleOwner, OfNothingNeverReachesThePlatform) {
    platform = {};
    { const ATL::CCryptProv none; }
    EXPECT_TRUE(platform.calls.empty());
    EXPECT_FALSE(ATL::CCryptHash::EmptyHash || ATL::CCryptKey::EmptyKey || ATL2::EmptyProv);
}

TEST(TempBuffer, MovesToTheHeapWithItsContentAndBack) {
    ATL2::CTempBufferEx<char, 4> buffer;
    char* const inner = buffer.Pointer();
    std::copy_n("abc", 4, inner);
    EXPECT_EQ(buffer.Reallocate(4), inner);
    EXPECT_NE(buffer.Reallocate(5), inner);
    EXPECT_STREQ(buffer.Pointer(), "abc");
    buffer.Reallocate(100'000);
    EXPECT_STREQ(buffer.Pointer(), "abc");
    EXPECT_EQ(buffer.Reallocate(1), inner);
}

TEST(TempBuffer, ASizeThatOverflowsIsOutOfMemory) {
    ATL2::CTempBufferEx<int, 4> buffer;
    EXPECT_EQ(thrownCode([&] { buffer.Reallocate(SIZE_MAX / 2); }), 0x8007000Eu);
    EXPECT_NE(buffer.Reallocate(5), nullptr);
}
