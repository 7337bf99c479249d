#include "registry.h"

#include <openssl/objects.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "answer.h"
#include "gost_engine.h"
#include "pointers.h"

namespace platform {
namespace {

struct Description {
    ALG_ID id;
    const char* name;      // below 20 characters
    const char* longName;  // below 40 characters
    DWORD defaultBits;
    DWORD minimumBits;
    DWORD maximumBits;
    const char* digest = nullptr;  // OpenSSL's name for a hash that it can fetch
    int engineDigest = NID_undef;  // or the number of one that the GOST engine has
};

constexpr Description descriptions[] = {
    {CALG_MD5, "MD5", "Message Digest 5", 128, 128, 128, "MD5"},
    {CALG_SHA1, "SHA-1", "Secure Hash Algorithm 1", 160, 160, 160, "SHA1"},
    {CALG_SHA_224, "SHA-224", "Secure Hash Algorithm 2, 224 bits", 224, 224, 224, "SHA2-224"},
    {CALG_SHA_256, "SHA-256", "Secure Hash Algorithm 2, 256 bits", 256, 256, 256, "SHA2-256"},
    {CALG_SHA_384, "SHA-384", "Secure Hash Algorithm 2, 384 bits", 384, 384, 384, "SHA2-384"},
    {CALG_SHA_512, "SHA-512", "Secure Hash Algorithm 2, 512 bits", 512, 512, 512, "SHA2-512"},
    {CALG_SHA3_224, "SHA3-224", "Secure Hash Algorithm 3, 224 bits", 224, 224, 224, "SHA3-224"},
    {CALG_SHA3_256, "SHA3-256", "Secure Hash Algorithm 3, 256 bits", 256, 256, 256, "SHA3-256"},
    {CALG_SHA3_384, "SHA3-384", "Secure Hash Algorithm 3, 384 bits", 384, 384, 384, "SHA3-384"},
    {CALG_SHA3_512, "SHA3-512", "Secure Hash Algorithm 3, 512 bits", 512, 512, 512, "SHA3-512"},
    {CALG_GR3411, "GOST R 34.11-94", "GOST R 34.11-94", 256, 256, 256, nullptr, NID_id_GostR3411_94},
    {CALG_GR3411_2012_256, "GR 34.11-2012 256", "GOST R 34.11-2012, 256 bits", 256, 256, 256, nullptr,
     NID_id_GostR3411_2012_256},
    {CALG_GR3411_2012_512, "GR 34.11-2012 512", "GOST R 34.11-2012, 512 bits", 512, 512, 512, nullptr,
     NID_id_GostR3411_2012_512},
    {CALG_RSA_SIGN, "RSA_SIGN", "RSA signature (PKCS #1 v1.5)", 2048, 512, 16384},
    {CALG_RSA_KEYX, "RSA_KEYX", "RSA key", 2048, 512, 16384},
    {CALG_DSS_SIGN, "DSA_SIGN", "Digital Signature Algorithm", 2048, 512, 10000},
    {CALG_ECDSA, "ECDSA", "Elliptic Curve DSA", 256, 112, 571},
    {CALG_GR3410EL, "GR 34.10-2001", "GOST R 34.10-2001", 256, 256, 256},
    {CALG_GR3410_2012_256, "GR 34.10-2012 256", "GOST R 34.10-2012, 256 bits", 256, 256, 256},
    {CALG_GR3410_2012_512, "GR 34.10-2012 512", "GOST R 34.10-2012, 512 bits", 512, 512, 512},
};

constexpr ALG_ID rsaAndDsa[] = {
    CALG_RSA_SIGN, CALG_RSA_KEYX, CALG_DSS_SIGN, CALG_MD5,      CALG_SHA1,     CALG_SHA_224,  CALG_SHA_256,
    CALG_SHA_384,  CALG_SHA_512,  CALG_SHA3_224, CALG_SHA3_256, CALG_SHA3_384, CALG_SHA3_512,
};
constexpr ALG_ID ecdsa[] = {
    CALG_ECDSA,   CALG_SHA1,     CALG_SHA_224,  CALG_SHA_256,  CALG_SHA_384,
    CALG_SHA_512, CALG_SHA3_224, CALG_SHA3_256, CALG_SHA3_384, CALG_SHA3_512,
};
constexpr ALG_ID sha1Only[] = {CALG_SHA1};
constexpr ALG_ID gost2001[] = {CALG_GR3410EL, CALG_GR3411, CALG_SHA1};
constexpr ALG_ID gost2012[] = {CALG_GR3410EL, CALG_GR3410_2012_256, CALG_GR3410_2012_512,
                               CALG_GR3411,   CALG_GR3411_2012_256, CALG_GR3411_2012_512};

// What is not installed is left out for good. A lack of memory passes, and so throws std::bad_alloc: the next
// call looks again.
bool findGost() {
    const FailureScope scope;
    const bool isThere = registerGostEngine();
    if (!isThere) scope.throwIfMemoryFailed();
    return isThere;
}

bool isHash(const Description& algorithm) {
    return algorithm.digest != nullptr || algorithm.engineDigest != NID_undef;
}

// Each such digest is taken once and kept for good.
const EVP_MD* digestOf(const Description& algorithm, bool withGost) {
    if (algorithm.digest != nullptr) return EVP_MD_fetch(nullptr, algorithm.digest, nullptr);
    // The digests of an engine cannot be fetched, only found by name.
    return withGost ? EVP_get_digestbyname(OBJ_nid2sn(algorithm.engineDigest)) : nullptr;
}

template <std::size_t size>
DWORD fill(char (&field)[size], std::string_view text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(field, text.data(), length);
    return static_cast<DWORD>(length + 1);
}

PROV_ENUMALGS_EX recordOf(const Description& algorithm) {
    PROV_ENUMALGS_EX record = {};
    record.aiAlgid = algorithm.id;
    record.dwDefaultLen = algorithm.defaultBits;
    record.dwMinLen = algorithm.minimumBits;
    record.dwMaxLen = algorithm.maximumBits;
    record.dwNameLen = fill(record.szName, algorithm.name);
    record.dwLongNameLen = fill(record.szLongName, algorithm.longName);
    return record;
}

}  // namespace

bool ProviderType::serves(ALG_ID id) const {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

const Registry& Registry::instance() {
    // Never destroyed: the program's exit may still call in.
    static const Registry& registry = *new Registry;
    return registry;
}

Registry::Registry() {
    const bool withGost = findGost();
    addHashes(withGost);
    addType(PROV_RSA_FULL, "RSA Full (Signature and Key Exchange)", "Mirvane RSA and DSA Provider",
            rsaAndDsa);
    addType(PROV_EC_ECDSA_FULL, "EC ECDSA Full", "Mirvane ECDSA Provider", ecdsa);
    addType(PROV_RSA_AES, "RSA Full and AES", "Mirvane Enhanced RSA and DSA Provider", rsaAndDsa);
    const std::span<const ALG_ID> type75 = withGost ? std::span<const ALG_ID>(gost2001) : sha1Only;
    addType(PROV_GOST_2001_DH, "GOST R 34.10-2001", "Mirvane GOST 2001 Provider", type75);
    if (withGost) addType(PROV_GOST_2012, "GOST R 34.10-2012", "Mirvane GOST 2012 Provider", gost2012);
}

void Registry::addHashes(bool withGost) {
    for (const Description& algorithm : descriptions) {
        if (!isHash(algorithm)) continue;
        const FailureScope scope;
        DigestContextPointer fresh(EVP_MD_CTX_new());
        if (fresh == nullptr) throw std::bad_alloc();
        const EVP_MD* const digest = digestOf(algorithm, withGost);
        if (digest != nullptr && EVP_DigestInit_ex(fresh.get(), digest, nullptr) == 1) {
            hashes_.push_back({algorithm.id, digest, std::move(fresh)});
        } else {
            scope.throwIfMemoryFailed();
        }
    }
}

void Registry::addType(DWORD type, const char* typeName, const char* providerName,
                       std::span<const ALG_ID> ids) {
    ProviderType& added = types_.emplace_back(ProviderType{type, typeName, providerName, {}, {}});
    for (const ALG_ID id : ids) {
        const auto& algorithm =
            *std::find_if(std::begin(descriptions), std::end(descriptions),
                          [&](const Description& description) { return description.id == id; });
        if (isHash(algorithm) && hash(id) == nullptr) continue;
        added.ids.push_back(id);
        added.records.push_back(recordOf(algorithm));
    }
}

const HashAlgorithm* Registry::hash(ALG_ID id) const {
    const auto found = std::find_if(hashes_.begin(), hashes_.end(),
                                    [&](const HashAlgorithm& algorithm) { return algorithm.id == id; });
    return found == hashes_.end() ? nullptr : &*found;
}

bool fits(ALG_ID key, ALG_ID hash) {
    const auto isIn = [&](std::span<const ALG_ID> ids) {
        return std::find(ids.begin(), ids.end(), hash) != ids.end();
    };
    switch (key) {
        case CALG_RSA_SIGN:
        case CALG_RSA_KEYX:
            return isIn(rsaAndDsa);
        case CALG_DSS_SIGN:
            return isIn(rsaAndDsa) && hash != CALG_MD5;
        case CALG_ECDSA:
            return isIn(ecdsa);
        case CALG_GR3410EL:
            return hash == CALG_GR3411;
        case CALG_GR3410_2012_256:
            return hash == CALG_GR3411_2012_256;
        case CALG_GR3410_2012_512:
            return hash == CALG_GR3411_2012_512;
        default:
            return false;
    }
}

ALG_ID kindOf(const EVP_PKEY* key) {
    // Keys of OpenSSL's providers have a name, those of engines only a number.
    if (EVP_PKEY_is_a(key, "RSA")) return CALG_RSA_KEYX;
    if (EVP_PKEY_is_a(key, "EC")) return CALG_ECDSA;
    if (EVP_PKEY_is_a(key, "DSA")) return CALG_DSS_SIGN;
    switch (EVP_PKEY_get_id(key)) {
        case NID_id_GostR3410_2001:
            return CALG_GR3410EL;
        case NID_id_GostR3410_2012_256:
            return CALG_GR3410_2012_256;
        case NID_id_GostR3410_2012_512:
            return CALG_GR3410_2012_512;
        default:
            return 0;
    }
}

}  // namespace platform
