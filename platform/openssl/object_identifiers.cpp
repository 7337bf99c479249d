#include "object_identifiers.h"

#include <algorithm>
#include <iterator>

#include "answer.h"

namespace platform {
namespace {

struct Entry {
    CRYPT_OID_INFO info;
    Kind kind;
    std::string_view objectIdentifier = info.pszOID;
};

constexpr Entry hash(const char* oid, const wchar_t* name, ALG_ID id) {
    return {{sizeof(CRYPT_OID_INFO), oid, name, 0, id}, Kind::hash};
}

constexpr Entry key(const char* oid, const wchar_t* name, ALG_ID id) {
    return {{sizeof(CRYPT_OID_INFO), oid, name, 0, id}, Kind::key};
}

constexpr Entry signature(const char* oid, const wchar_t* name, ALG_ID id) {
    return {{sizeof(CRYPT_OID_INFO), oid, name, CRYPT_SIGN_ALG_OID_GROUP_ID, id}, Kind::signature};
}

constexpr Entry entries[] = {
    hash("1.2.840.113549.2.5", L"md5", CALG_MD5),
    hash("1.3.14.3.2.26", L"sha1", CALG_SHA1),
    hash("2.16.840.1.101.3.4.2.4", L"sha224", CALG_SHA_224),
    hash("2.16.840.1.101.3.4.2.1", L"sha256", CALG_SHA_256),
    hash("2.16.840.1.101.3.4.2.2", L"sha384", CALG_SHA_384),
    hash("2.16.840.1.101.3.4.2.3", L"sha512", CALG_SHA_512),
    hash("2.16.840.1.101.3.4.2.7", L"sha3-224", CALG_SHA3_224),
    hash("2.16.840.1.101.3.4.2.8", L"sha3-256", CALG_SHA3_256),
    hash("2.16.840.1.101.3.4.2.9", L"sha3-384", CALG_SHA3_384),
    hash("2.16.840.1.101.3.4.2.10", L"sha3-512", CALG_SHA3_512),
    hash("1.2.643.2.2.9", L"gostR3411-94", CALG_GR3411),
    hash("1.2.643.7.1.1.2.2", L"gost3411-12-256", CALG_GR3411_2012_256),
    hash("1.2.643.7.1.1.2.3", L"gost3411-12-512", CALG_GR3411_2012_512),

    key("1.2.840.113549.1.1.1", L"rsaEncryption", CALG_RSA_KEYX),
    key("1.2.840.10040.4.1", L"dsa", CALG_DSS_SIGN),
    key("1.2.840.10045.2.1", L"ecPublicKey", CALG_ECDSA),
    key("1.2.643.2.2.19", L"gostR3410-2001", CALG_GR3410EL),
    key("1.2.643.7.1.1.1.1", L"gost3410-12-256", CALG_GR3410_2012_256),
    key("1.2.643.7.1.1.1.2", L"gost3410-12-512", CALG_GR3410_2012_512),

    signature("1.2.840.113549.1.1.4", L"md5WithRSAEncryption", CALG_MD5),
    signature("1.2.840.113549.1.1.5", L"sha1WithRSAEncryption", CALG_SHA1),
    signature("1.3.14.3.2.29", L"sha1WithRSASignature", CALG_SHA1),
    signature("1.2.840.113549.1.1.14", L"sha224WithRSAEncryption", CALG_SHA_224),
    signature("1.2.840.113549.1.1.11", L"sha256WithRSAEncryption", CALG_SHA_256),
    signature("1.2.840.113549.1.1.12", L"sha384WithRSAEncryption", CALG_SHA_384),
    signature("1.2.840.113549.1.1.13", L"sha512WithRSAEncryption", CALG_SHA_512),
    signature("2.16.840.1.101.3.4.3.13", L"rsassa-pkcs1-v1_5-with-sha3-224", CALG_SHA3_224),
    signature("2.16.840.1.101.3.4.3.14", L"rsassa-pkcs1-v1_5-with-sha3-256", CALG_SHA3_256),
    signature("2.16.840.1.101.3.4.3.15", L"rsassa-pkcs1-v1_5-with-sha3-384", CALG_SHA3_384),
    signature("2.16.840.1.101.3.4.3.16", L"rsassa-pkcs1-v1_5-with-sha3-512", CALG_SHA3_512),

    signature("1.2.840.10045.4.1", L"ecdsa-with-SHA1", CALG_SHA1),
    signature("1.2.840.10045.4.3.1", L"ecdsa-with-SHA224", CALG_SHA_224),
    signature("1.2.840.10045.4.3.2", L"ecdsa-with-SHA256", CALG_SHA_256),
    signature("1.2.840.10045.4.3.3", L"ecdsa-with-SHA384", CALG_SHA_384),
    signature("1.2.840.10045.4.3.4", L"ecdsa-with-SHA512", CALG_SHA_512),
    signature("2.16.840.1.101.3.4.3.9", L"ecdsa-with-sha3-224", CALG_SHA3_224),
    signature("2.16.840.1.101.3.4.3.10", L"ecdsa-with-sha3-256", CALG_SHA3_256),
    signature("2.16.840.1.101.3.4.3.11", L"ecdsa-with-sha3-384", CALG_SHA3_384),
    signature("2.16.840.1.101.3.4.3.12", L"ecdsa-with-sha3-512", CALG_SHA3_512),

    signature("1.2.840.10040.4.3", L"dsa-with-sha1", CALG_SHA1),
    signature("2.16.840.1.101.3.4.3.1", L"dsa-with-sha224", CALG_SHA_224),
    signature("2.16.840.1.101.3.4.3.2", L"dsa-with-sha256", CALG_SHA_256),
    signature("2.16.840.1.101.3.4.3.3", L"dsa-with-sha384", CALG_SHA_384),
    signature("2.16.840.1.101.3.4.3.4", L"dsa-with-sha512", CALG_SHA_512),
    signature("2.16.840.1.101.3.4.3.5", L"dsa-with-sha3-224", CALG_SHA3_224),
    signature("2.16.840.1.101.3.4.3.6", L"dsa-with-sha3-256", CALG_SHA3_256),
    signature("2.16.840.1.101.3.4.3.7", L"dsa-with-sha3-384", CALG_SHA3_384),
    signature("2.16.840.1.101.3.4.3.8", L"dsa-with-sha3-512", CALG_SHA3_512),

    signature("1.2.643.2.2.3", L"gostR3411-94-with-gostR3410-2001", CALG_GR3411),
    signature("1.2.643.7.1.1.3.2", L"gost3410-12-256-with-gost3411-12-256", CALG_GR3411_2012_256),
    signature("1.2.643.7.1.1.3.3", L"gost3410-12-512-with-gost3411-12-512", CALG_GR3411_2012_512),
};

const Entry* find(std::string_view objectIdentifier) {
    const auto* found = std::find_if(std::begin(entries), std::end(entries), [&](const Entry& entry) {
        return objectIdentifier == entry.objectIdentifier;
    });
    return found == std::end(entries) ? nullptr : found;
}

}  // namespace

ALG_ID algorithmOf(Kind kind, std::string_view objectIdentifier) {
    const Entry* const entry = find(objectIdentifier);
    return entry != nullptr && entry->kind == kind ? entry->info.Algid : 0;
}

}  // namespace platform

using namespace platform;

ALG_ID CertOIDToAlgId(const char* objectIdentifier) {
    const Entry* const entry = objectIdentifier != nullptr ? find(objectIdentifier) : nullptr;
    if (entry != nullptr) return entry->info.Algid;
    SetLastError(NTE_BAD_ALGID);
    return 0;
}

PCCRYPT_OID_INFO CryptFindOIDInfo(DWORD keyType, const void* key, DWORD group) {
    if (keyType == CRYPT_OID_INFO_OID_KEY && key != nullptr && group == CRYPT_SIGN_ALG_OID_GROUP_ID) {
        const Entry* const entry = find(static_cast<const char*>(key));
        if (entry != nullptr && entry->kind == Kind::signature) return &entry->info;
    }
    SetLastError(CRYPT_E_NOT_FOUND);
    return nullptr;
}
