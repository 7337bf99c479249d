#include "platform/hash.h"

#include "provider_support.h"

using namespace test;

namespace {

struct Row {
    ALG_ID id;
    const char* name;   // for OpenSSL
    const char* ofAbc;  // the hash of "abc", as FIPS 180-4, FIPS 202 and RFC 1321 print it
};

const Row rows[] = {
    {CALG_MD5, "MD5", "900150983cd24fb0d6963f7d28e17f72"},
    {CALG_SHA1, "SHA1", "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {CALG_SHA_224, "SHA224", "23097d223405d8228642a477bda255b32aadbce4bda0b3f7e36c9da7"},
    {CALG_SHA_256, "SHA256", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {CALG_SHA_384, "SHA384", nullptr},
    {CALG_SHA_512, "SHA512", nullptr},
    {CALG_SHA3_224, "SHA3-224", nullptr},
    {CALG_SHA3_256, "SHA3-256", "3a985da74fe225b2045c172d6bd390bd855f086e3e9d525b46bfe24511431532"},
    {CALG_SHA3_384, "SHA3-384", nullptr},
    {CALG_SHA3_512, "SHA3-512", nullptr},
    {CALG_GR3411, "md_gost94", nullptr},
    {CALG_GR3411_2012_256, "md_gost12_256", nullptr},
    {CALG_GR3411_2012_512, "md_gost12_512", nullptr},
};

Octets valueOf(HCRYPTHASH hash) {
    Octets value(64);
    DWORD length = 64;
    EXPECT_TRUE(CryptGetHashParam(hash, HP_HASHVAL, value.data(), &length, 0));
    value.resize(length);
    return value;
}

Octets hashOf(ALG_ID id, const Octets& data, std::size_t piece) {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(id, 0));
    Hash hash;
    EXPECT_TRUE(CryptCreateHash(provider, id, 0, 0, hash.place()));
    for (std::size_t at = 0; at < data.size(); at += piece) {
        const auto count = static_cast<DWORD>(std::min(piece, data.size() - at));
        EXPECT_TRUE(CryptHashData(hash, data.data() + at, count, 0));
    }
    return valueOf(hash);
}

}  // namespace

TEST(HashObject, EqualsOpensslWhateverThePieces) {
    const Octets data = message();
    for (const Row& row : rows) {
        if (row.id >= CALG_GR3411 && !hasGost()) continue;
        Octets expected(64);
        unsigned length = 0;
        const int done = EVP_Digest(data.data(), data.size(), expected.data(), &length,
                                    EVP_get_digestbyname(row.name), nullptr);
        ASSERT_EQ(done, 1) << row.name;
        expected.resize(length);
        for (std::size_t piece : {1, 64, 300}) {
            EXPECT_EQ(text(hashOf(row.id, data, piece)), text(expected)) << row.name;
        }
        if (row.ofAbc == nullptr) continue;
        EXPECT_EQ(hashOf(row.id, octets("616263"), 3), octets(row.ofAbc)) << row.name;
    }
}

// RFC 6986, 10.1: the first example message.
TEST(HashObject, Gost2012GivesThePublishedValue) {
    if (!hasGost()) GTEST_SKIP() << "the gost engine is not installed";
    const std::string digits = "012345678901234567890123456789012345678901234567890123456789012";
    EXPECT_EQ(hashOf(CALG_GR3411_2012_256, Octets(digits.begin(), digits.end()), 63),
              octets("9d151eefd8590b89daa6ba6cb74af9275dd051026bb149a452fd84e5e57b5500"));
}

TEST(HashObject, TakesNoDataOnceItsValueWasReadAndGivesItAgain) {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA_256, 0));
    Hash hash;
    ASSERT_TRUE(makeHash(provider, CALG_SHA_256, hash));
    BYTE buffer[32];
    DWORD length = 31;
    EXPECT_CODE(ERROR_MORE_DATA, CryptGetHashParam(hash, HP_HASHVAL, buffer, &length, 0));
    EXPECT_EQ(length, 32u);
    length = 0;
    EXPECT_CODE(0u, CryptGetHashParam(hash, HP_HASHVAL, nullptr, &length, 0));
    EXPECT_EQ(length, 32u);
    // Neither of these was a reading.
    EXPECT_CODE(0u, CryptHashData(hash, nullptr, 0, 0));
    const Octets value = valueOf(hash);
    EXPECT_CODE(NTE_BAD_HASH_STATE, CryptHashData(hash, buffer, 1, 0));
    EXPECT_EQ(valueOf(hash), value);
}

TEST(HashObject, RefusalsHaveTheirCodes) {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0));
    Hash hash;
    ASSERT_TRUE(makeHash(provider, CALG_SHA1, hash));
    HCRYPTHASH other = 0;
    DWORD size = 0;
    DWORD length = sizeof size;
    EXPECT_CODE(NTE_BAD_KEY, CryptCreateHash(provider, CALG_SHA1, 1, 0, &other));
    EXPECT_CODE(NTE_BAD_FLAGS, CryptCreateHash(provider, CALG_SHA1, 0, 1, &other));
    EXPECT_CODE(E_INVALIDARG, CryptCreateHash(provider, CALG_SHA1, 0, 0, nullptr));
    EXPECT_EQ(other, 0u);
    EXPECT_CODE(E_INVALIDARG, CryptHashData(hash, nullptr, 1, 0));
    EXPECT_CODE(NTE_BAD_FLAGS, CryptHashData(hash, nullptr, 0, 1));
    auto* const place = reinterpret_cast<BYTE*>(&size);
    EXPECT_CODE(0u, CryptGetHashParam(hash, HP_HASHSIZE, place, &length, 0));
    EXPECT_EQ(size, 20u);
    EXPECT_EQ(length, 4u);
    length = 3;
    EXPECT_CODE(ERROR_MORE_DATA, CryptGetHashParam(hash, HP_HASHSIZE, place, &length, 0));
    EXPECT_CODE(NTE_BAD_TYPE, CryptGetHashParam(hash, 99, place, &length, 0));
    EXPECT_CODE(NTE_BAD_FLAGS, CryptGetHashParam(hash, HP_HASHVAL, place, &length, 1));
    EXPECT_CODE(E_INVALIDARG, CryptGetHashParam(hash, HP_HASHVAL, place, nullptr, 0));
}

TEST(HashObject, HandlesStayApartWhenThousandsLive) {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0));
    std::vector<HCRYPTHASH> hashes(3000);
    for (auto& hash : hashes)
        ASSERT_TRUE(CryptCreateHash(provider, CALG_SHA1, 0, 0, &hash));
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        const auto number = static_cast<BYTE>(i % 251);
        ASSERT_TRUE(CryptHashData(hashes[i], &number, 1, 0));
    }
    for (std::size_t i = 0; i < hashes.size(); i += 500)
        EXPECT_EQ(valueOf(hashes[i]), hashOf(CALG_SHA1, {static_cast<BYTE>(i % 251)}, 1));
    for (HCRYPTHASH hash : hashes)
        EXPECT_TRUE(CryptDestroyHash(hash));
}
