#include "algorithms.h"

#include <fmt/format.h>
#include <openssl/evp.h>

#include <algorithm>
#include <iterator>

#include "platform/hash.h"
#include "provider/handle_owners.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::ASN1::CAlgorithmIdentifier;
using Mirvane::ASN1::CAlgorithmIdentifierEx;

constexpr unsigned char kNull[] = {0x05, 0x00};

struct Hash {
    const char* name;
    const char* identifier;
};

constexpr Hash kHashes[] = {
    {"sha1", "1.3.14.3.2.26"},
    {"sha224", "2.16.840.1.101.3.4.2.4"},
    {"sha256", "2.16.840.1.101.3.4.2.1"},
    {"sha384", "2.16.840.1.101.3.4.2.2"},
    {"sha512", "2.16.840.1.101.3.4.2.3"},
    {"sha3-256", "2.16.840.1.101.3.4.2.8"},
    {"sha3-384", "2.16.840.1.101.3.4.2.9"},
    {"sha3-512", "2.16.840.1.101.3.4.2.10"},
    {"gost94", "1.2.643.2.2.9"},
    {"gost12-256", "1.2.643.7.1.1.2.2"},
    {"gost12-512", "1.2.643.7.1.1.2.3"},
};

constexpr char kRsa[] = "1.2.840.113549.1.1.1";
constexpr char kDsa[] = "1.2.840.10040.4.1";
constexpr char kEc[] = "1.2.840.10045.2.1";
constexpr char kGost2001[] = "1.2.643.2.2.19";
constexpr char kGost256[] = "1.2.643.7.1.1.1.1";
constexpr char kGost512[] = "1.2.643.7.1.1.1.2";

struct Key {
    const char* name;
    const char* identifier;
};

// The last three are only named.
constexpr Key kKeys[] = {
    {"RSA", kRsa},
    {"DSA", kDsa},
    {"ECDSA", kEc},
    {"GOST R 34.10-2001", kGost2001},
    {"GOST R 34.10-2012 with 256 bits", kGost256},
    {"GOST R 34.10-2012 with 512 bits", kGost512},
    {"RSA-PSS", "1.2.840.113549.1.1.10"},
    {"Ed25519", "1.3.101.112"},
    {"Ed448", "1.3.101.113"},
};

constexpr char kEngineNeeded[] = ": the gost engine of OpenSSL is not there";

struct SignatureAlgorithm {
    const char* name;
    const char* identifier;
    const char* key;
    const char* hash;  // as in kHashes; null where it is only named here, not made
};

constexpr SignatureAlgorithm kSignatures[] = {
    {"md5WithRSAEncryption", "1.2.840.113549.1.1.4", kRsa, nullptr},
    {"sha1WithRSAEncryption", "1.2.840.113549.1.1.5", kRsa, "sha1"},
    {"sha1WithRSASignature", "1.3.14.3.2.29", kRsa, nullptr},
    {"sha224WithRSAEncryption", "1.2.840.113549.1.1.14", kRsa, "sha224"},
    {"sha256WithRSAEncryption", "1.2.840.113549.1.1.11", kRsa, "sha256"},
    {"sha384WithRSAEncryption", "1.2.840.113549.1.1.12", kRsa, "sha384"},
    {"sha512WithRSAEncryption", "1.2.840.113549.1.1.13", kRsa, "sha512"},
    {"rsassa-pkcs1-v1_5-with-sha3-256", "2.16.840.1.101.3.4.3.14", kRsa, "sha3-256"},
    {"rsassa-pkcs1-v1_5-with-sha3-384", "2.16.840.1.101.3.4.3.15", kRsa, "sha3-384"},
    {"rsassa-pkcs1-v1_5-with-sha3-512", "2.16.840.1.101.3.4.3.16", kRsa, "sha3-512"},
    {"ecdsa-with-SHA1", "1.2.840.10045.4.1", kEc, "sha1"},
    {"ecdsa-with-SHA224", "1.2.840.10045.4.3.1", kEc, "sha224"},
    {"ecdsa-with-SHA256", "1.2.840.10045.4.3.2", kEc, "sha256"},
    {"ecdsa-with-SHA384", "1.2.840.10045.4.3.3", kEc, "sha384"},
    {"ecdsa-with-SHA512", "1.2.840.10045.4.3.4", kEc, "sha512"},
    {"ecdsa-with-SHA3-256", "2.16.840.1.101.3.4.3.10", kEc, "sha3-256"},
    {"ecdsa-with-SHA3-384", "2.16.840.1.101.3.4.3.11", kEc, "sha3-384"},
    {"ecdsa-with-SHA3-512", "2.16.840.1.101.3.4.3.12", kEc, "sha3-512"},
    {"dsa-with-sha1", "1.2.840.10040.4.3", kDsa, "sha1"},
    {"dsa-with-sha224", "2.16.840.1.101.3.4.3.1", kDsa, "sha224"},
    {"dsa-with-sha256", "2.16.840.1.101.3.4.3.2", kDsa, "sha256"},
    {"gostR3411-94-with-gostR3410-2001", "1.2.643.2.2.3", kGost2001, "gost94"},
    {"gost3410-12-256-with-gost3411-12-256", "1.2.643.7.1.1.3.2", kGost256, "gost12-256"},
    {"gost3410-12-512-with-gost3411-12-512", "1.2.643.7.1.1.3.3", kGost512, "gost12-512"},
};

std::string usualHash(Certificate const& signer) {
    const std::string key = signer.keyAlgorithm();
    if (key == kGost2001) return "gost94";
    if (key == kGost256) return "gost12-256";
    if (key == kGost512) return "gost12-512";
    if (key != kEc) return "sha256";
    EVP_PKEY const* const publicKey = X509_get0_pubkey(signer.get());
    const int bits = publicKey != nullptr ? EVP_PKEY_get_bits(publicKey) : 0;
    return bits <= 256 ? "sha256" : bits <= 384 ? "sha384" : "sha512";
}

}  // namespace

std::vector<std::string> hashNames() {
    std::vector<std::string> names;
    for (Hash const& hash : kHashes)
        names.emplace_back(hash.name);
    return names;
}

CAlgorithmIdentifierEx hashByName(std::string const& name) {
    const auto* const found = std::find_if(std::begin(kHashes), std::end(kHashes),
                                           [&](Hash const& hash) { return name == hash.name; });
    if (found == std::end(kHashes)) throw InputError(name, "is no hash that is known here");
    CAlgorithmIdentifierEx result;
    result.put_algorithm(found->identifier);
    result.put_parameters(CBlob(kNull, sizeof kNull));
    if (!hashOf(result, CBlob())) {
        const bool isGost = name.starts_with("gost");
        throw InputError(name,
                         std::string("the platform does not have this hash") + (isGost ? kEngineNeeded : ""));
    }
    return result;
}

std::string_view algorithmName(std::string_view identifier) {
    for (Hash const& hash : kHashes) {
        if (identifier == hash.identifier) return hash.name;
    }
    for (SignatureAlgorithm const& algorithm : kSignatures) {
        if (identifier == algorithm.identifier) return algorithm.name;
    }
    for (Key const& key : kKeys) {
        if (identifier == key.identifier) return key.name;
    }
    return "unknown";
}

std::optional<CBlob> hashOf(CAlgorithmIdentifier const& hash, CBlob const& octets) {
    const ALG_ID number = CertOIDToAlgId(hash.get_algorithm());
    const ATL::CCryptProv provider(MVCAPI_I_CryptGetDefaultCryptProv(number, 0));
    ATL2::CCryptHashEx object;
    DWORD length = 0;
    if (!provider || !CryptCreateHash(provider.GetHandle(), number, 0, 0, object.Place()) ||
        !CryptHashData(object.GetHandle(), octets.pbData(), static_cast<DWORD>(octets.cbData()), 0) ||
        !CryptGetHashParam(object.GetHandle(), HP_HASHVAL, nullptr, &length, 0)) {
        return std::nullopt;
    }
    CBlob value(static_cast<unsigned long>(length));
    if (!CryptGetHashParam(object.GetHandle(), HP_HASHVAL, value.pbData(), &length, 0)) return std::nullopt;
    return value;
}

CAlgorithmIdentifierEx signatureAlgorithmFor(Certificate const& signer, std::string const& hashName) {
    const std::string key = signer.keyAlgorithm();
    const std::string hash = hashName.empty() ? usualHash(signer) : hashName;
    for (SignatureAlgorithm const& algorithm : kSignatures) {
        if (key != algorithm.key || algorithm.hash == nullptr || hash != algorithm.hash) continue;
        CAlgorithmIdentifierEx result;
        result.put_algorithm(algorithm.identifier);
        if (key == kRsa) result.put_parameters(CBlob(kNull, sizeof kNull));
        return result;
    }
    throw InputError(signer.source(), fmt::format("no signature algorithm is known for its {} key with {}",
                                                  algorithmName(key), hash));
}

std::optional<std::string> unservedProblem(Certificate const& certificate) {
    const std::string key = certificate.keyAlgorithm();
    const ALG_ID number = CertOIDToAlgId(key.c_str());
    if (number != 0 && MVCAPI_I_CryptGetDefaultCryptProv(number, 0) != 0) return std::nullopt;
    const std::string_view name = algorithmName(key);
    return fmt::format("the platform does not work with its key, {} ({}){}", name, key,
                       name.starts_with("GOST") ? kEngineNeeded : "");
}

bool fitsKey(std::string_view signatureAlgorithm, Certificate const& signer) {
    return std::any_of(
        std::begin(kSignatures), std::end(kSignatures), [&](SignatureAlgorithm const& algorithm) {
            return signatureAlgorithm == algorithm.identifier && signer.keyAlgorithm() == algorithm.key;
        });
}

}  // namespace tools
