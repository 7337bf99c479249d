#include "platform/keys.h"
#include "provider_support.h"

using namespace test;

namespace {

struct Pair {
    const char* key;
    ALG_ID hash;
    const char* digest;  // OpenSSL's name
};

void PrintTo(const Pair& pair, std::ostream* stream) {
    *stream << pair.key << " with " << pair.digest;
}

const Pair pairs[] = {
    {"RSA", CALG_SHA1, "SHA1"},
    {"RSA", CALG_SHA_256, "SHA256"},
    {"RSA", CALG_SHA_512, "SHA512"},
    {"RSA", CALG_SHA3_256, "SHA3-256"},
    {"DSA", CALG_SHA_256, "SHA256"},
    {"P-256", CALG_SHA1, "SHA1"},
    {"P-256", CALG_SHA_256, "SHA256"},
    {"P-521", CALG_SHA_512, "SHA512"},
    {"P-521", CALG_SHA3_384, "SHA3-384"},
    {"GOST2001", CALG_GR3411, "md_gost94"},
    {"GOST2012-256", CALG_GR3411_2012_256, "md_gost12_256"},
    {"GOST2012-512", CALG_GR3411_2012_512, "md_gost12_512"},
};

Octets opensslSignature(const Pair& pair) {
    return test::opensslSignature(keyOfKind(pair.key), EVP_get_digestbyname(pair.digest));
}

bool opensslAccepts(const Pair& pair, const Octets& signature) {
    const Octets data = message();
    const auto context = owned(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestVerifyInit(context.get(), nullptr, EVP_get_digestbyname(pair.digest), nullptr,
                         keyOfKind(pair.key).get());
    return EVP_DigestVerify(context.get(), signature.data(), signature.size(), data.data(), data.size()) == 1;
}

// A public key and a hash of the message, ready for signatures to be checked.
class Check {
  public:
    Check(const char* key, ALG_ID algorithm) {
        const PublicKeyInfo info(keyOfKind(key));
        const ALG_ID kind = CertOIDToAlgId(info.identifier.c_str());
        *keyProvider_.place() = MVCAPI_I_CryptGetDefaultCryptProv(kind, 0);
        *hashProvider_.place() = MVCAPI_I_CryptGetDefaultCryptProv(algorithm, 0);
        EXPECT_TRUE(import(keyProvider_, keyOfKind(key), this->key));
        EXPECT_TRUE(makeHash(hashProvider_, algorithm, hash));
    }
    DWORD code(const Octets& signature) {
        return codeOf([&] {
            return CryptVerifySignatureA(hash, signature.data(), static_cast<DWORD>(signature.size()), key,
                                         nullptr, 0);
        });
    }

    test::PublicKey key;
    Hash hash;

  private:
    Provider keyProvider_;
    Provider hashProvider_;
};

Octets signatureOf(HCRYPTHASH hash, DWORD specification = AT_SIGNATURE) {
    DWORD length = 0;
    EXPECT_TRUE(CryptSignHashA(hash, specification, nullptr, 0, nullptr, &length));
    Octets signature(length);
    EXPECT_TRUE(CryptSignHashA(hash, specification, nullptr, 0, signature.data(), &length));
    signature.resize(length);
    return signature;
}

// A context with the private key, and a hash of the message in it.
class Signer {
  public:
    Signer(const char* key, ALG_ID algorithm) {
        EXPECT_TRUE(
            CryptAcquireContextA(provider.place(), writeKey(folder_, keyOfKind(key)).c_str(), nullptr, 0, 0));
        EXPECT_TRUE(makeHash(provider, algorithm, hash));
    }
    Octets sign(DWORD specification = AT_SIGNATURE) { return signatureOf(hash, specification); }

    Provider provider;
    Hash hash;

  private:
    TemporaryFolder folder_;
};

class Signature : public testing::TestWithParam<Pair> {
  protected:
    void SetUp() override {
        if (keyOfKind(GetParam().key) == nullptr) GTEST_SKIP() << "the gost engine is not installed";
    }
};

std::string nameOf(const testing::TestParamInfo<Pair>& info) {
    std::string name = std::string(info.param.key) + "_" + info.param.digest;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Pairs, Signature, testing::ValuesIn(pairs), nameOf);

TEST_P(Signature, OfOpensslIsAcceptedTurnedRound) {
    Check check(GetParam().key, GetParam().hash);
    const Octets signature = opensslSignature(GetParam());
    EXPECT_EQ(check.code(reversed(signature)), 0u);
    EXPECT_EQ(check.code(signature), NTE_BAD_SIGNATURE);
}

TEST_P(Signature, IsAcceptedByOpensslTurnedRound) {
    Signer signer(GetParam().key, GetParam().hash);
    for (DWORD specification : {AT_KEYEXCHANGE, AT_SIGNATURE}) {
        const Octets signature = signer.sign(specification);
        EXPECT_TRUE(opensslAccepts(GetParam(), reversed(signature)));
        EXPECT_FALSE(opensslAccepts(GetParam(), signature));
    }
}

TEST_P(Signature, ChangedInAnyWayIsWrongAndNoOtherFailure) {
    Check check(GetParam().key, GetParam().hash);
    const Octets good = reversed(opensslSignature(GetParam()));
    for (std::size_t i = 0; i < good.size(); ++i) {
        Octets changed = good;
        changed[i] ^= static_cast<unsigned char>(1 << (i % 8));
        ASSERT_EQ(check.code(changed), NTE_BAD_SIGNATURE) << "octet " << i;
        changed.resize(i);
        ASSERT_EQ(check.code(changed), NTE_BAD_SIGNATURE) << "length " << i;
        ASSERT_EQ(check.code(Octets(good.end() - static_cast<std::ptrdiff_t>(i), good.end())),
                  NTE_BAD_SIGNATURE);
    }
    for (std::size_t extra : {1, 64, 100'000}) {
        Octets longer(extra);
        longer.insert(longer.end(), good.begin(), good.end());
        EXPECT_EQ(check.code(longer), NTE_BAD_SIGNATURE);
        std::rotate(longer.begin(), longer.begin() + static_cast<std::ptrdiff_t>(extra), longer.end());
        EXPECT_EQ(check.code(longer), NTE_BAD_SIGNATURE);
    }
    EXPECT_EQ(check.code(Octets(good.size(), 0xFF)), NTE_BAD_SIGNATURE);
    EXPECT_EQ(check.code(Octets(good.size(), 0x00)), NTE_BAD_SIGNATURE);
    EXPECT_CODE(NTE_BAD_SIGNATURE, CryptVerifySignatureA(check.hash, nullptr, 0, check.key, nullptr, 0));
    EXPECT_EQ(check.code(good), 0u);
}

TEST_P(Signature, LeavesOpensslsErrorsAsTheyWere) {
    ERR_clear_error();
    ERR_raise(ERR_LIB_USER, 77);
    Check check(GetParam().key, GetParam().hash);
    check.code(Octets(64, 0xFF));
    check.code(reversed(opensslSignature(GetParam())));
    EXPECT_EQ(ERR_GET_REASON(ERR_get_error()), 77);
    EXPECT_EQ(ERR_get_error(), 0u);
}

// A stranger's message names the hash, and the GOST engine would end the process over a wrong length.
TEST(SignaturePairs, AHashThatDoesNotFitTheKeyIsRefusedBeforeTheSignature) {
    const std::pair<const char*, std::vector<ALG_ID>> rows[] = {
        {"P-256", {CALG_MD5, CALG_GR3411_2012_256}},
        {"DSA", {CALG_MD5}},
        {"RSA", {CALG_GR3411, CALG_GR3411_2012_256}},
        {"GOST2001", {CALG_SHA1, CALG_SHA_256, CALG_GR3411_2012_256}},
        {"GOST2012-256", {CALG_SHA1, CALG_GR3411, CALG_GR3411_2012_512}},
        {"GOST2012-512", {CALG_GR3411_2012_256, CALG_SHA_512}},
    };
    for (const auto& [key, hashes] : rows) {
        for (const ALG_ID hash : hashes) {
            const bool needsGost = std::string(key).starts_with("GOST") || (hash & 0xFFF0) == 0x8120;
            if (needsGost && !hasGost()) continue;
            Check check(key, hash);
            for (const Octets& signature : {Octets(), Octets(64, 1), Octets(128, 0xFF)})
                EXPECT_EQ(check.code(signature), NTE_BAD_ALGID) << key << ' ' << hash;
        }
    }
}

TEST(SignaturePairs, OneKeyServesItsHashesInTurn) {
    Signer signer("RSA", CALG_SHA1);
    for (const Pair& pair : {pairs[0], pairs[1], pairs[1], pairs[0], pairs[2]}) {
        Hash hash;
        ASSERT_TRUE(makeHash(signer.provider, pair.hash, hash));
        const Octets signature = signatureOf(hash);
        EXPECT_TRUE(opensslAccepts(pair, reversed(signature)));
        EXPECT_EQ(Check("RSA", pair.hash).code(signature), 0u);
    }
}

TEST(SignaturePairs, Md5IsCheckedButNotMade) {
    Check check("RSA", CALG_MD5);
    EXPECT_EQ(check.code(reversed(opensslSignature({"RSA", CALG_MD5, "MD5"}))), 0u);
    Signer signer("RSA", CALG_MD5);
    BYTE buffer[256];
    DWORD length = sizeof buffer;
    EXPECT_CODE(NTE_BAD_ALGID, CryptSignHashA(signer.hash, 1, nullptr, 0, buffer, &length));
}

TEST(Signing, RefusalsHaveTheirCodes) {
    Signer signer("P-256", CALG_SHA_256);
    BYTE buffer[200];
    DWORD length = 71;
    const auto sign = [&](HCRYPTHASH hash, DWORD specification, const char* description, DWORD flags) {
        return codeOf(
            [&] { return CryptSignHashA(hash, specification, description, flags, buffer, &length); });
    };
    EXPECT_EQ(sign(signer.hash, AT_SIGNATURE, nullptr, 0), ERROR_MORE_DATA);
    EXPECT_EQ(length, 72u);
    EXPECT_EQ(sign(signer.hash, 0, nullptr, 0), NTE_NO_KEY);
    EXPECT_EQ(sign(signer.hash, 3, nullptr, 0), NTE_NO_KEY);
    EXPECT_EQ(sign(signer.hash, AT_SIGNATURE, "text", 0), E_INVALIDARG);
    EXPECT_EQ(sign(signer.hash, AT_SIGNATURE, nullptr, 1), NTE_BAD_FLAGS);
    EXPECT_CODE(E_INVALIDARG, CryptSignHashA(signer.hash, 1, nullptr, 0, buffer, nullptr));
    Check withoutKey("P-256", CALG_SHA_256);
    EXPECT_EQ(sign(withoutKey.hash, AT_SIGNATURE, nullptr, 0), NTE_NO_KEY);
    // None of these settled the hash.
    EXPECT_CODE(0u, CryptHashData(signer.hash, buffer, 1, 0));
}

TEST(Signing, SettlesTheHashAndMayBeRepeatedAfterTheContextIsGone) {
    Signer signer("P-256", CALG_SHA_256);
    CryptReleaseContext(signer.provider, 0);
    *signer.provider.place() = 0;
    const Octets first = signer.sign();
    const Octets second = signer.sign();
    EXPECT_NE(first, second);
    Check check("P-256", CALG_SHA_256);
    EXPECT_EQ(check.code(first), 0u);
    EXPECT_EQ(check.code(second), 0u);
    const BYTE octet = 0;
    EXPECT_CODE(NTE_BAD_HASH_STATE, CryptHashData(signer.hash, &octet, 1, 0));
}

TEST(ImportedKey, RefusalsHaveTheirCodes) {
    const Provider rsa(MVCAPI_I_CryptGetDefaultCryptProv(CALG_RSA_KEYX, 0));
    const Provider ecdsa(MVCAPI_I_CryptGetDefaultCryptProv(CALG_ECDSA, 0));
    test::PublicKey key;
    const auto code = [&](HCRYPTPROV provider, PublicKeyInfo& info, DWORD encodingType = encoding) {
        const CERT_PUBLIC_KEY_INFO view = info.info();
        return codeOf([&] { return CryptImportPublicKeyInfo(provider, encodingType, &view, key.place()); });
    };
    PublicKeyInfo rsaKey(keyOfKind("RSA"));
    PublicKeyInfo ecKey(keyOfKind("P-256"));
    PublicKeyInfo otherKey(keyOfKind("Ed25519"));
    EXPECT_EQ(code(ecdsa, rsaKey), NTE_BAD_ALGID);
    EXPECT_EQ(code(rsa, ecKey), NTE_BAD_ALGID);
    EXPECT_EQ(code(rsa, otherKey), NTE_BAD_ALGID);
    EXPECT_EQ(code(rsa, rsaKey, 1), E_INVALIDARG);
    EXPECT_CODE(E_INVALIDARG, CryptImportPublicKeyInfo(rsa, encoding, nullptr, key.place()));
    rsaKey.bits.pop_back();
    EXPECT_EQ(code(rsa, rsaKey), NTE_BAD_KEY);
    rsaKey.bits.clear();
    EXPECT_EQ(code(rsa, rsaKey), NTE_BAD_KEY);
    ecKey.bits.back() ^= 1;  // a point that is not on the curve
    EXPECT_EQ(code(ecdsa, ecKey), NTE_BAD_KEY);
    ecKey = PublicKeyInfo(keyOfKind("P-256"));
    ecKey.parameters.push_back(0);
    EXPECT_EQ(code(ecdsa, ecKey), NTE_BAD_KEY);
    ecKey.parameters.clear();
    EXPECT_EQ(code(ecdsa, ecKey), NTE_BAD_KEY);
    EXPECT_EQ(key, 0u);
}

TEST(ImportedKey, WithACurveSpelledOutIsRefused) {
    const OpensslKey key = keyOfKind("P-256");
    EVP_PKEY_set_utf8_string_param(key.get(), "encoding", "explicit");
    PublicKeyInfo info(key);
    EVP_PKEY_set_utf8_string_param(key.get(), "encoding", "named_curve");
    ASSERT_EQ(info.parameters[0], 0x30);
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_ECDSA, 0));
    const CERT_PUBLIC_KEY_INFO view = info.info();
    test::PublicKey imported;
    EXPECT_CODE(NTE_BAD_KEY, CryptImportPublicKeyInfo(provider, encoding, &view, imported.place()));
}

// Every octet of every kind of key damaged: read or refused, and whatever was read only ever says no.
TEST(ImportedKey, DamagedKeysAreRefusedOrVerifyNothing) {
    for (const Pair& pair : pairs) {
        if (keyOfKind(pair.key) == nullptr) continue;
        const Octets signature = reversed(opensslSignature(pair));
        const PublicKeyInfo whole(keyOfKind(pair.key));
        const ALG_ID kind = CertOIDToAlgId(whole.identifier.c_str());
        const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(kind, pair.hash));
        Hash hash;
        ASSERT_TRUE(makeHash(provider, pair.hash, hash));
        for (std::size_t i = 0; i < whole.bits.size() + whole.parameters.size(); ++i) {
            PublicKeyInfo damaged = whole;
            const bool inBits = i < whole.bits.size();
            (inBits ? damaged.bits[i] : damaged.parameters[i - whole.bits.size()]) ^= 0x81;
            const CERT_PUBLIC_KEY_INFO view = damaged.info();
            test::PublicKey key;
            const DWORD code =
                codeOf([&] { return CryptImportPublicKeyInfo(provider, encoding, &view, key.place()); });
            if (code != 0) {
                EXPECT_EQ(code, NTE_BAD_KEY);
                continue;
            }
            if (!inBits) continue;  // parameters that OpenSSL does not look at, a NULL of RSA
            const auto length = static_cast<DWORD>(signature.size());
            ASSERT_NE(codeOf([&] {
                          return CryptVerifySignatureA(hash, signature.data(), length, key, nullptr, 0);
                      }),
                      0u)
                << pair.key << " octet " << i;
        }
    }
}

TEST(KeyContainer, IsAFileOrAUriOfAnyForm) {
    const TemporaryFolder folder;
    const std::string pem = writeKey(folder, keyOfKind("RSA"));
    const std::string der = folder.path("key.der");
    const std::string pfx = folder.path("key.p12");
    const std::string locked = folder.path("locked.pem");
    ASSERT_EQ(
        run("openssl pkey -in " + pem + " -outform DER -out " + der + " && openssl pkey -in " + pem +
            " -aes128 -passout pass:secret -out " + locked + " && openssl req -x509 -new -subj /CN=x -key " +
            pem + " -out " + folder.path("cert.pem") + " && openssl pkcs12 -export -inkey " + pem + " -in " +
            folder.path("cert.pem") + " -passout pass:secret -out " + pfx)
            .status,
        0);
    const auto open = [](const std::string& container) {
        Provider provider;
        return codeOf([&] {
            return CryptAcquireContextA(provider.place(), container.c_str(), nullptr, PROV_RSA_AES, 0);
        });
    };
    for (const std::string& container : {pem, der, "file:" + pem})
        EXPECT_EQ(open(container), 0u) << container;

    for (const std::string& container : {pfx, locked}) {
        EXPECT_EQ(open(container), NTE_BAD_KEYSET) << "nobody to ask";
        std::string answer = "wrong";
        std::string asked;
        std::pair<std::string*, std::string*> both(&answer, &asked);
        MVCAPI_I_SetPassphraseCallback(
            [](void* argument, const char* name, char* passphrase, int capacity) {
                const auto [given, seen] = *static_cast<std::pair<std::string*, std::string*>*>(argument);
                *seen = name;
                SetLastError(5);
                return static_cast<int>(given->copy(passphrase, static_cast<std::size_t>(capacity)));
            },
            &both);
        EXPECT_EQ(open(container), NTE_BAD_KEYSET) << container;
        EXPECT_EQ(asked, container);
        answer = "secret";
        EXPECT_EQ(open(container), 0u) << container;
        MVCAPI_I_SetPassphraseCallback(nullptr, nullptr);
    }
    EXPECT_EQ(open(folder.path("cert.pem")), NTE_BAD_KEYSET) << "no key in it";
    EXPECT_EQ(open(folder.write("noise", "no key at all")), NTE_BAD_KEYSET);
    EXPECT_EQ(open(folder.path("")), NTE_BAD_KEYSET) << "a folder";
}

TEST(KeyContainer, FitsTheTypeOrIsRefused) {
    const TemporaryFolder folder;
    const auto open = [&](const char* kind, DWORD type, DWORD flags = 0) {
        Provider provider;
        const std::string path = writeKey(folder, keyOfKind(kind));
        return codeOf(
            [&] { return CryptAcquireContextA(provider.place(), path.c_str(), nullptr, type, flags); });
    };
    EXPECT_EQ(open("RSA", PROV_EC_ECDSA_FULL), NTE_BAD_KEYSET);
    EXPECT_EQ(open("P-256", PROV_EC_ECDSA_FULL), 0u);
    EXPECT_EQ(open("P-256", PROV_GOST_2001_DH), NTE_BAD_KEYSET);
    EXPECT_EQ(open("DSA", 0), 0u);
    EXPECT_EQ(open("Ed25519", 0), NTE_BAD_KEYSET);
    EXPECT_TRUE(!hasGost() || open("GOST2001", PROV_GOST_2012) == 0);

    Provider provider;
    const std::string path = writeKey(folder, keyOfKind("RSA"));
    ASSERT_TRUE(CryptAcquireContextA(provider.place(), path.c_str(), nullptr, 1, CRYPT_VERIFYCONTEXT));
    Hash hash;
    DWORD length = 0;
    makeHash(provider, CALG_SHA1, hash);
    EXPECT_CODE(NTE_NO_KEY, CryptSignHashA(hash, 1, nullptr, 0, nullptr, &length));
}
