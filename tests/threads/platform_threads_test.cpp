// The platform's handles, caches and last-error slots under many threads.
#include <gtest/gtest.h>

#include <array>
#include <atomic>

#include "at_once.h"
#include "platform/keys.h"
#include "platform/provider_support.h"

using namespace test;

namespace {

// How a kind of handle comes, is used and goes.
struct HandleKind {
    unsigned long long (*make)();
    BOOL (*use)(unsigned long long);
    BOOL (*end)(unsigned long long);
    DWORD refusal;
};

HCRYPTPROV anyProvider() {
    static const HCRYPTPROV provider = MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0);
    return provider;
}

const HandleKind providers = {
    [] {
        HCRYPTPROV provider = 0;
        CryptAcquireContextA(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT);
        return provider;
    },
    [](HCRYPTPROV provider) {
        PROV_ENUMALGS_EX record;
        DWORD length = sizeof record;
        return CryptGetProvParam(provider, PP_ENUMALGS_EX, reinterpret_cast<BYTE*>(&record), &length,
                                 CRYPT_FIRST);
    },
    [](HCRYPTPROV provider) { return CryptReleaseContext(provider, 0); },
    NTE_BAD_UID,
};

const HandleKind hashes = {
    [] {
        HCRYPTHASH hash = 0;
        CryptCreateHash(anyProvider(), CALG_SHA1, 0, 0, &hash);
        return hash;
    },
    [](HCRYPTHASH hash) {
        BYTE value[20];
        DWORD length = sizeof value;
        return CryptGetHashParam(hash, HP_HASHVAL, value, &length, 0);
    },
    CryptDestroyHash,
    NTE_BAD_HASH,
};

const HandleKind keys = {
    [] {
        PublicKey key;
        import(anyProvider(), keyOfKind("RSA"), key);
        return std::exchange(*key.place(), 0);
    },
    [](HCRYPTKEY key) {
        static const HCRYPTHASH hash = hashes.make();
        const BYTE signature = 0;
        const BOOL right = CryptVerifySignatureA(hash, &signature, 1, key, nullptr, 0);
        return static_cast<BOOL>(right || GetLastError() == NTE_BAD_SIGNATURE);
    },
    CryptDestroyKey,
    NTE_BAD_KEY,
};

// Each thread makes handles and shows them; all use and end what all have shown, however stale it is.
void fightOver(const HandleKind& kind, int rounds) {
    std::array<std::atomic<unsigned long long>, threadCount> shown{};
    std::atomic<int> ended{0};
    atOnce([&](int index) {
        for (int round = 0; round < rounds; ++round) {
            shown[static_cast<std::size_t>(index)] = kind.make();
            for (const auto& place : shown) {
                const unsigned long long handle = place;
                SetLastError(0);
                EXPECT_TRUE(kind.use(handle) || GetLastError() == kind.refusal);
                if (kind.end(handle)) {
                    ++ended;
                } else {
                    EXPECT_EQ(GetLastError(), kind.refusal);
                }
            }
        }
    });
    EXPECT_EQ(ended, threadCount * rounds);
}

struct SignedMessage {
    PublicKeyInfo key;
    Octets signature;
};

SignedMessage signWithFreshKey() {
    const OpensslKey key = own(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    const Octets data = message();
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestSignInit(context.get(), nullptr, EVP_sha1(), nullptr, key.get());
    Octets signature(100);
    std::size_t length = signature.size();
    EVP_DigestSign(context.get(), signature.data(), &length, data.data(), data.size());
    signature.resize(length);
    return {PublicKeyInfo(key), reversed(signature)};
}

bool verifies(HCRYPTHASH hash, const Octets& signature, HCRYPTKEY key) {
    return CryptVerifySignatureA(hash, signature.data(), static_cast<DWORD>(signature.size()), key, nullptr,
                                 0) != 0;
}

}  // namespace

TEST(ThreadsOnHandles, EachIsEndedOnceAndRefusedFromThenOn) {
    keyOfKind("RSA");
    fightOver(providers, 400);
    fightOver(hashes, 400);
    fightOver(keys, 100);
}

// As many references go as came, whoever took and dropped them.
TEST(ThreadsOnHandles, ReferencesAreNeitherLostNorDroppedTwice) {
    for (int round = 0; round < 100; ++round) {
        const HCRYPTPROV provider = providers.make();
        std::atomic<int> references{1};
        atOnce([&](int) {
            if (CryptContextAddRef(provider, nullptr, 0)) ++references;
            providers.use(provider);
            if (CryptReleaseContext(provider, 0)) --references;
        });
        while (CryptReleaseContext(provider, 0))
            --references;
        ASSERT_EQ(references, 0);
    }
}

TEST(ThreadsOnHandles, SharedOnesHashSignAndVerify) {
    const std::pair<const char*, ALG_ID> rows[] = {
        {"RSA", CALG_SHA_256}, {"P-256", CALG_SHA_256}, {"GOST2012-256", CALG_GR3411_2012_256}};
    for (const auto& [kind, algorithm] : rows) {
        if (keyOfKind(kind) == nullptr) continue;
        const TemporaryFolder folder;
        Provider provider;
        ASSERT_TRUE(
            CryptAcquireContextA(provider.place(), writeKey(folder, keyOfKind(kind)).c_str(), nullptr, 0, 0));
        PublicKey key;
        ASSERT_TRUE(import(provider, keyOfKind(kind), key));
        Hash shared;  // settled by whoever comes first
        ASSERT_TRUE(makeHash(provider, algorithm, shared));
        atOnce([&](int) {
            for (int round = 0; round < 8; ++round) {
                Octets signature(512);
                DWORD length = 512;
                EXPECT_TRUE(CryptSignHashA(shared, AT_SIGNATURE, nullptr, 0, signature.data(), &length));
                signature.resize(length);
                EXPECT_TRUE(verifies(shared, signature, key));
                Hash fresh;
                EXPECT_TRUE(makeHash(provider, algorithm, fresh));
                EXPECT_TRUE(verifies(fresh, signature, key));
            }
        });
    }
}

// More keys than the platform remembers, so that they drive each other out while others look them up.
TEST(ThreadsOnKeys, ManyKeysAtOnceAreNeverMixedUp) {
    std::vector<SignedMessage> messages;
    for (int i = 0; i < 200; ++i)
        messages.push_back(signWithFreshKey());
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_ECDSA, CALG_SHA1));
    Hash hash;
    ASSERT_TRUE(makeHash(provider, CALG_SHA1, hash));
    atOnce([&](int index) {
        for (std::size_t i = 0; i < messages.size(); ++i) {
            SignedMessage mine = messages[(i * 7 + static_cast<std::size_t>(index % 2)) % messages.size()];
            const CERT_PUBLIC_KEY_INFO info = mine.key.info();
            PublicKey key;
            ASSERT_TRUE(CryptImportPublicKeyInfo(provider, encoding, &info, key.place()));
            ASSERT_TRUE(verifies(hash, mine.signature, key));
        }
    });
}

TEST(ThreadsOnLastError, EachHasASlotOfItsOwn) {
    atOnce([](int index) {
        const DWORD mark = 1000 + static_cast<DWORD>(index);
        for (int round = 0; round < 1000; ++round) {
            SetLastError(mark);
            const Hash hash(hashes.make());
            ASSERT_EQ(GetLastError(), mark);
            if (index % 2 == 0) {
                CryptDestroyKey(hash);
            } else {
                CertOIDToAlgId("1.2.3");
            }
            ASSERT_EQ(GetLastError(), index % 2 == 0 ? NTE_BAD_KEY : NTE_BAD_ALGID);
        }
    });
}
