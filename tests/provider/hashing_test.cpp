#include "provider/hashing.h"

#include <gtest/gtest.h>

#include "platform/hash.h"
#include "support/failures.h"
#include "support/octets.h"

using namespace test;
using Mirvane::CBlob;
using Mirvane::MakeHash;

namespace {

const CBlob abc(reinterpret_cast<unsigned char const*>("abc"), 3);
constexpr const char* sha1OfAbc = "A9 99 3E 36 47 06 81 6A BA 3E 25 71 78 50 C2 6C 9C D0 D8 9D";

std::string textOf(const CBlob& blob) {
    return text(blob.pbData(), blob.cbData());
}

}  // namespace

TEST(Hashing, NeedsNoProvider) {
    EXPECT_EQ(textOf(MakeHash(0, CALG_SHA1, abc, nullptr)), sha1OfAbc);
    EXPECT_EQ(MakeHash(0, CALG_SHA_512, CBlob(), nullptr).cbData(), 64u);
}

TEST(Hashing, OfAnAlgorithmThatIsNoHashIsABadAlgorithm) {
    for (ALG_ID id : std::initializer_list<ALG_ID>{CALG_RSA_KEYX, 0x8FFF})
        EXPECT_EQ(thrownCode([&] { MakeHash(0, id, abc, nullptr); }), NTE_BAD_ALGID);
    EXPECT_EQ(thrownCode([] { MakeHash(12345, CALG_SHA1, abc, nullptr); }), NTE_BAD_UID);
}

TEST(Hashing, LeavesAHashThatOutlivesItsProvider) {
    HCRYPTPROV provider = 0;
    ASSERT_TRUE(CryptAcquireContextA(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT));
    unsigned long long hash = 0;
    MakeHash(provider, CALG_SHA1, abc, &hash);
    EXPECT_TRUE(CryptReleaseContext(provider, 0));
    EXPECT_FALSE(CryptReleaseContext(provider, 0));
    BYTE value[20];
    DWORD length = sizeof value;
    EXPECT_TRUE(CryptGetHashParam(hash, HP_HASHVAL, value, &length, 0));
    EXPECT_EQ(text(value, length), sha1OfAbc);
    EXPECT_TRUE(CryptDestroyHash(hash));
}
