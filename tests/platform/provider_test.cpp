#include "platform/provider.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "provider_support.h"

using namespace test;

namespace {

std::set<ALG_ID> algorithmsOf(DWORD type) {
    Provider provider;
    std::set<ALG_ID> ids;
    if (!CryptAcquireContextA(provider.place(), nullptr, nullptr, type, CRYPT_VERIFYCONTEXT)) return ids;
    PROV_ENUMALGS_EX record;
    DWORD length = sizeof record;
    for (DWORD flags = CRYPT_FIRST;
         CryptGetProvParam(provider, PP_ENUMALGS_EX, reinterpret_cast<BYTE*>(&record), &length, flags);
         flags = 0) {
        EXPECT_EQ(record.dwNameLen, std::strlen(record.szName) + 1);
        EXPECT_EQ(record.dwLongNameLen, std::strlen(record.szLongName) + 1);
        EXPECT_LE(record.dwMinLen, record.dwMaxLen);
        ids.insert(record.aiAlgid);
    }
    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_ITEMS);
    return ids;
}

DWORD acquireCode(const char* container, const char* name, DWORD type, DWORD flags) {
    Provider provider;
    return codeOf([&] { return CryptAcquireContextA(provider.place(), container, name, type, flags); });
}

using Enumerate = BOOL (*)(DWORD, DWORD*, DWORD, DWORD*, char*, DWORD*);

}  // namespace

TEST(ProviderLists, TypesAndNamesFollowTheTwoCallRule) {
    for (Enumerate enumerate : {CryptEnumProviderTypesA, CryptEnumProvidersA}) {
        DWORD type = 0;
        DWORD length = 0;
        for (DWORD index = 0;; ++index) {
            const DWORD code = codeOf([&] { return enumerate(index, nullptr, 0, &type, nullptr, &length); });
            if (code == ERROR_NO_MORE_ITEMS) break;
            ASSERT_EQ(code, 0u);
            std::string name(length, 'x');
            DWORD capacity = length - 1;
            EXPECT_CODE(ERROR_MORE_DATA, enumerate(index, nullptr, 0, &type, name.data(), &capacity));
            EXPECT_EQ(capacity, length);
            EXPECT_CODE(0u, enumerate(index, nullptr, 0, &type, name.data(), &capacity));
            EXPECT_EQ(std::strlen(name.c_str()) + 1, length);
        }
        EXPECT_CODE(NTE_BAD_FLAGS, enumerate(0, nullptr, 1, &type, nullptr, &length));
        EXPECT_CODE(E_INVALIDARG, enumerate(0, nullptr, 0, nullptr, nullptr, &length));
        EXPECT_CODE(E_INVALIDARG, enumerate(0, nullptr, 0, &type, nullptr, nullptr));
    }
}

TEST(ProviderLists, EveryNamedProviderOpensUnderItsTypeOnly) {
    char name[256];
    DWORD type = 0;
    DWORD count = 0;
    for (DWORD length = sizeof name; CryptEnumProvidersA(count, nullptr, 0, &type, name, &length);
         length = sizeof name, ++count) {
        EXPECT_EQ(acquireCode(nullptr, name, type, CRYPT_VERIFYCONTEXT), 0u);
        EXPECT_EQ(acquireCode(nullptr, name, 0, CRYPT_VERIFYCONTEXT), 0u);
        EXPECT_EQ(acquireCode(nullptr, name, type + 1, CRYPT_VERIFYCONTEXT), NTE_PROV_TYPE_NO_MATCH);
    }
    EXPECT_GE(count, 4u);
}

TEST(ProviderLists, EveryListedHashCanBeMadeAndNoOther) {
    for (DWORD type : {PROV_RSA_FULL, PROV_EC_ECDSA_FULL, PROV_RSA_AES, PROV_GOST_2001_DH, PROV_GOST_2012}) {
        const std::set<ALG_ID> listed = algorithmsOf(type);
        Provider provider;
        CryptAcquireContextA(provider.place(), nullptr, nullptr, type, CRYPT_VERIFYCONTEXT);
        for (ALG_ID id = 0; id < 0x10000; ++id) {
            const bool isHash = listed.contains(id) && id >> 13 == 4;
            Hash hash;
            const DWORD code = codeOf([&] { return CryptCreateHash(provider, id, 0, 0, hash.place()); });
            ASSERT_EQ(code, isHash ? 0u : provider == 0 ? NTE_BAD_UID : NTE_BAD_ALGID) << type << ' ' << id;
        }
    }
}

TEST(ProviderLists, GostAlgorithmsStandOnlyWhereTheEngineIs) {
    EXPECT_TRUE(algorithmsOf(PROV_GOST_2001_DH).contains(CALG_SHA1));
    EXPECT_EQ(algorithmsOf(PROV_GOST_2001_DH).contains(CALG_GR3410EL), hasGost());
    EXPECT_EQ(algorithmsOf(PROV_GOST_2012).contains(CALG_GR3410_2012_512), hasGost());
    EXPECT_EQ(acquireCode(nullptr, nullptr, PROV_GOST_2012, CRYPT_VERIFYCONTEXT),
              hasGost() ? 0u : NTE_PROV_TYPE_NOT_DEF);
    for (DWORD type : {PROV_RSA_FULL, PROV_RSA_AES}) {
        EXPECT_TRUE(algorithmsOf(type).contains(CALG_RSA_KEYX));
        EXPECT_TRUE(algorithmsOf(type).contains(CALG_DSS_SIGN));
    }
    EXPECT_TRUE(algorithmsOf(PROV_EC_ECDSA_FULL).contains(CALG_ECDSA));
}

TEST(ProviderLists, EachContextKeepsItsOwnPlaceAndAShortBufferTakesNoStep) {
    Provider one, other;
    CryptAcquireContextA(one.place(), nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT);
    CryptAcquireContextA(other.place(), nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT);
    const auto next = [](HCRYPTPROV provider, DWORD flags, DWORD capacity = sizeof(PROV_ENUMALGS_EX)) {
        PROV_ENUMALGS_EX record = {};
        CryptGetProvParam(provider, PP_ENUMALGS_EX, reinterpret_cast<BYTE*>(&record), &capacity, flags);
        EXPECT_EQ(capacity, sizeof record);
        return record.aiAlgid;
    };
    const ALG_ID first = next(one, CRYPT_FIRST);
    EXPECT_EQ(next(one, 0, 87), 0u);
    const ALG_ID second = next(one, 0);
    EXPECT_NE(second, 0u);
    EXPECT_NE(second, first);
    EXPECT_EQ(next(other, 0), first);
    EXPECT_EQ(next(one, CRYPT_FIRST), first);

    DWORD length = 0;
    EXPECT_CODE(0u, CryptGetProvParam(one, PP_ENUMALGS_EX, nullptr, &length, 0));
    EXPECT_CODE(NTE_BAD_TYPE, CryptGetProvParam(one, 1, nullptr, &length, 0));
    EXPECT_CODE(NTE_BAD_FLAGS, CryptGetProvParam(one, PP_ENUMALGS_EX, nullptr, &length, 2));
    EXPECT_CODE(E_INVALIDARG, CryptGetProvParam(one, PP_ENUMALGS_EX, nullptr, nullptr, 0));
}

TEST(ProviderAcquisition, RefusalsHaveTheirCodes) {
    EXPECT_EQ(acquireCode(nullptr, nullptr, 1, 8), NTE_BAD_FLAGS);
    EXPECT_EQ(acquireCode(nullptr, nullptr, 0, CRYPT_VERIFYCONTEXT), NTE_BAD_PROV_TYPE);
    EXPECT_EQ(acquireCode(nullptr, nullptr, 999, CRYPT_VERIFYCONTEXT), NTE_PROV_TYPE_NOT_DEF);
    EXPECT_EQ(acquireCode(nullptr, "nobody's", 1, CRYPT_VERIFYCONTEXT), NTE_KEYSET_NOT_DEF);
    EXPECT_EQ(acquireCode(nullptr, nullptr, 1, 0), NTE_BAD_KEYSET);
    EXPECT_EQ(acquireCode("", nullptr, 1, 0), NTE_BAD_KEYSET);
    EXPECT_EQ(acquireCode("/nowhere/key.pem", nullptr, 0, 0), NTE_BAD_KEYSET);
    EXPECT_EQ(acquireCode("unknown:object", nullptr, 0, 0), NTE_BAD_KEYSET);
    EXPECT_CODE(E_INVALIDARG, CryptAcquireContextA(nullptr, nullptr, nullptr, 1, CRYPT_VERIFYCONTEXT));
}

TEST(DefaultProvider, AnswersForEveryPairThatOneTypeLists) {
    const std::initializer_list<ALG_ID> ids = {0,
                                               CALG_MD5,
                                               CALG_SHA1,
                                               CALG_SHA_256,
                                               CALG_SHA3_512,
                                               CALG_GR3411,
                                               CALG_GR3411_2012_256,
                                               CALG_RSA_KEYX,
                                               CALG_DSS_SIGN,
                                               CALG_ECDSA,
                                               CALG_GR3410EL,
                                               CALG_GR3410_2012_256,
                                               0x1234};
    std::vector<std::set<ALG_ID>> types;
    for (DWORD type : {PROV_RSA_FULL, PROV_EC_ECDSA_FULL, PROV_GOST_2001_DH, PROV_GOST_2012})
        types.push_back(algorithmsOf(type));
    for (ALG_ID one : ids) {
        for (ALG_ID other : ids) {
            const bool served = std::any_of(types.begin(), types.end(), [&](const auto& listed) {
                return listed.contains(one) && (other == 0 || listed.contains(other));
            });
            HCRYPTPROV provider = 0;
            const DWORD code =
                codeOf([&] { return (provider = MVCAPI_I_CryptGetDefaultCryptProv(one, other)) != 0; });
            EXPECT_EQ(code, served ? 0u : NTE_BAD_ALGID) << one << ' ' << other;
            EXPECT_EQ(CryptReleaseContext(provider, 0) != 0, served);
        }
    }
}

TEST(DefaultProvider, AReleaseTooManyIsRefusedAndTheNextAnswerIsGood) {
    const HCRYPTPROV provider = MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0);
    EXPECT_TRUE(CryptReleaseContext(provider, 0));
    EXPECT_CODE(NTE_BAD_UID, CryptReleaseContext(provider, 0));
    const Provider again(MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0));
    Hash hash;
    EXPECT_TRUE(makeHash(again, CALG_SHA1, hash));
}

TEST(ProviderHandles, LiveFromAcquisitionToTheLastRelease) {
    HCRYPTPROV provider = 0;
    ASSERT_TRUE(CryptAcquireContextA(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT));
    EXPECT_CODE(0u, CryptContextAddRef(provider, nullptr, 0));
    EXPECT_CODE(NTE_BAD_FLAGS, CryptReleaseContext(provider, 1));
    EXPECT_CODE(0u, CryptReleaseContext(provider, 0));
    Hash hash;
    EXPECT_TRUE(makeHash(provider, CALG_SHA1, hash));
    EXPECT_CODE(0u, CryptReleaseContext(provider, 0));
    EXPECT_CODE(NTE_BAD_UID, CryptReleaseContext(provider, 0));
    EXPECT_CODE(NTE_BAD_UID, CryptContextAddRef(provider, nullptr, 0));
    // The place that has come free is used again, under another number.
    Provider next;
    CryptAcquireContextA(next.place(), nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT);
    EXPECT_NE(next, provider);
    EXPECT_CODE(NTE_BAD_UID, CryptReleaseContext(provider, 0));
}

TEST(ProviderHandles, WhatIsNoHandleOfTheKindIsRefusedByEveryFunction) {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0));
    Hash hash;
    ASSERT_TRUE(makeHash(provider, CALG_SHA1, hash));
    PublicKey key;
    ASSERT_TRUE(import(provider, keyOfKind("RSA"), key));
    Hash stale;
    makeHash(provider, CALG_SHA1, stale);
    const HCRYPTHASH staleHash = stale;
    *stale.place() = 0;
    CryptDestroyHash(staleHash);

    BYTE buffer[512];
    DWORD length = sizeof buffer;
    HCRYPTHASH made = 0;
    std::vector<unsigned long long> wrong = {0,          1,
                                             ~0ull,      staleHash,
                                             0xFFFFFFFF, 0x1000FFFFFull,
                                             hash ^ 1,   key ^ 2,
                                             5ull << 32, reinterpret_cast<std::uintptr_t>(buffer)};
    const auto check = [&](DWORD expected, std::vector<unsigned long long> others, auto call) {
        others.insert(others.end(), wrong.begin(), wrong.end());
        for (unsigned long long handle : others)
            EXPECT_CODE(expected, call(handle)) << handle;
    };
    check(NTE_BAD_UID, {hash, key}, [](auto h) { return CryptReleaseContext(h, 0); });
    check(NTE_BAD_UID, {hash, key}, [](auto h) { return CryptContextAddRef(h, nullptr, 0); });
    check(NTE_BAD_UID, {hash, key}, [&](auto h) { return CryptCreateHash(h, CALG_SHA1, 0, 0, &made); });
    check(NTE_BAD_UID, {hash, key}, [&](auto h) { return CryptGetProvParam(h, 22, buffer, &length, 1); });
    check(NTE_BAD_UID, {hash, key},
          [&](auto h) { return CryptImportPublicKeyInfo(h, encoding, nullptr, &made); });
    check(NTE_BAD_HASH, {provider, key}, [&](auto h) { return CryptHashData(h, buffer, 1, 0); });
    check(NTE_BAD_HASH, {provider, key}, [&](auto h) { return CryptGetHashParam(h, 2, buffer, &length, 0); });
    check(NTE_BAD_HASH, {provider, key}, [](auto h) { return CryptDestroyHash(h); });
    check(NTE_BAD_HASH, {provider, key},
          [&](auto h) { return CryptSignHashA(h, 1, nullptr, 0, buffer, &length); });
    check(NTE_BAD_HASH, {provider, key},
          [&](auto h) { return CryptVerifySignatureA(h, buffer, 256, key, nullptr, 0); });
    check(NTE_BAD_KEY, {provider, hash},
          [&](auto h) { return CryptVerifySignatureA(hash, buffer, 256, h, nullptr, 0); });
    check(NTE_BAD_KEY, {provider, hash}, [](auto h) { return CryptDestroyKey(h); });
}

TEST(AlgorithmIdentifiers, StandForTheirHashOrKey) {
    const std::map<std::string, ALG_ID> rows = {
        {"1.2.840.113549.2.5", CALG_MD5},
        {"1.3.14.3.2.26", CALG_SHA1},
        {"2.16.840.1.101.3.4.2.1", CALG_SHA_256},
        {"2.16.840.1.101.3.4.2.10", CALG_SHA3_512},
        {"1.2.840.113549.1.1.1", CALG_RSA_KEYX},
        {"1.2.840.10040.4.1", CALG_DSS_SIGN},
        {"1.2.840.10045.2.1", CALG_ECDSA},
        {"1.2.643.7.1.1.1.2", CALG_GR3410_2012_512},
        {"1.2.840.113549.1.1.10", 0},  // RSASSA-PSS: the hash stands in the parameters
        {"1.3.101.112", 0},            // Ed25519
        {"1.3.101.113", 0},            // Ed448
        {"1.2.840.10045.4.3", 0},      // ECDSA with a hash in the parameters
        {"1.2.840.113549.1.1.2", 0},   // MD2
        {"1.2.840.113549.1.1.111", 0},
        {"", 0},
        {"not an identifier", 0},
    };
    for (const auto& [text, id] : rows) {
        EXPECT_EQ(CertOIDToAlgId(text.c_str()), id) << text;
        EXPECT_EQ(CryptFindOIDInfo(CRYPT_OID_INFO_OID_KEY, text.c_str(), CRYPT_SIGN_ALG_OID_GROUP_ID),
                  nullptr)
            << text;
    }
    EXPECT_CODE(NTE_BAD_ALGID, CertOIDToAlgId(nullptr) != 0);
    EXPECT_CODE(CRYPT_E_NOT_FOUND, CryptFindOIDInfo(1, nullptr, 4) != nullptr);
    EXPECT_EQ(CryptFindOIDInfo(2, "1.2.840.113549.1.1.11", 4), nullptr);
    EXPECT_EQ(CryptFindOIDInfo(1, "1.2.840.113549.1.1.11", 1), nullptr);
}

// OpenSSL's own table of signatures says the same hashes.
TEST(AlgorithmIdentifiers, SignaturesAgreeWithOpenssl) {
    const std::map<int, ALG_ID> hashes = {{NID_md5, CALG_MD5},
                                          {NID_sha1, CALG_SHA1},
                                          {NID_sha224, CALG_SHA_224},
                                          {NID_sha256, CALG_SHA_256},
                                          {NID_sha384, CALG_SHA_384},
                                          {NID_sha512, CALG_SHA_512},
                                          {NID_sha3_224, CALG_SHA3_224},
                                          {NID_sha3_256, CALG_SHA3_256},
                                          {NID_sha3_384, CALG_SHA3_384},
                                          {NID_sha3_512, CALG_SHA3_512},
                                          {NID_id_GostR3411_94, CALG_GR3411},
                                          {NID_id_GostR3411_2012_256, CALG_GR3411_2012_256},
                                          {NID_id_GostR3411_2012_512, CALG_GR3411_2012_512}};
    const std::set<int> keys = {NID_rsaEncryption,
                                NID_rsa,
                                NID_dsa,
                                NID_X9_62_id_ecPublicKey,
                                NID_id_GostR3410_2001,
                                NID_id_GostR3410_2012_256,
                                NID_id_GostR3410_2012_512};
    int found = 0;
    for (int nid = 1; nid < 1300; ++nid) {
        int hash = NID_undef;
        int key = NID_undef;
        const ASN1_OBJECT* object = OBJ_find_sigid_algs(nid, &hash, &key) ? OBJ_nid2obj(nid) : nullptr;
        if (object == nullptr || !hashes.contains(hash) || !keys.contains(key)) continue;
        if (nid == NID_md5WithRSA) continue;  // an identifier of before PKCS #1 that is not served
        const std::string text = dotted(object);
        PCCRYPT_OID_INFO info = CryptFindOIDInfo(1, text.c_str(), 4);
        EXPECT_EQ(info != nullptr ? info->Algid : 0, hashes.at(hash)) << text << ' ' << OBJ_nid2sn(nid);
        EXPECT_EQ(CertOIDToAlgId(text.c_str()), hashes.at(hash)) << text;
        ++found;
    }
    EXPECT_GE(found, 22);
}
