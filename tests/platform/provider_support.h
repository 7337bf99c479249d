// What the tests of the provider share: handles that end with their scope, fresh keys made by OpenSSL, and
// their public halves in the shape that the platform takes.
#ifndef MIRVANE_TESTS_PLATFORM_PROVIDER_SUPPORT_H
#define MIRVANE_TESTS_PLATFORM_PROVIDER_SUPPORT_H

#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/objects.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/keys.h"
#include "platform/last_error.h"
#include "support/openssl.h"
#include "support/program.h"

namespace test {

constexpr DWORD encoding = X509_ASN_ENCODING | PKCS_7_ASN_ENCODING;

// The code that a call leaves, 0 if it succeeds. The mark shows that a success leaves the slot alone.
template <typename Call>
DWORD codeOf(Call call) {
    constexpr DWORD mark = 0x12345;
    SetLastError(mark);
    const bool succeeded = call();
    if (succeeded) return GetLastError() == mark ? 0 : 1;
    return GetLastError() == mark ? 0xDEAD : GetLastError();
}

// That a call of the platform leaves the code.
#define EXPECT_CODE(code, ...) EXPECT_EQ(codeOf([&] { return __VA_ARGS__; }), code)

template <BOOL (*end)(unsigned long long)>
class Handle {
  public:
    explicit Handle(unsigned long long handle = 0) : handle_(handle) {}
    ~Handle() {
        if (handle_ != 0) end(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    operator unsigned long long() const { return handle_; }
    unsigned long long* place() { return &handle_; }

  private:
    unsigned long long handle_;
};

inline BOOL releaseContext(HCRYPTPROV provider) {
    return CryptReleaseContext(provider, 0);
}

using Provider = Handle<releaseContext>;
using Hash = Handle<CryptDestroyHash>;
using PublicKey = Handle<CryptDestroyKey>;

using OpensslKey = std::shared_ptr<EVP_PKEY>;

inline bool hasGost() {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_GR3410_2012_256, 0));
    return provider != 0;
}

inline OpensslKey own(EVP_PKEY* key) {
    return OpensslKey(key, EVP_PKEY_free);
}

inline OpensslKey makeGostKey(int nid) {
    const auto context = owned(EVP_PKEY_CTX_new_id(nid, nullptr), EVP_PKEY_CTX_free);
    EVP_PKEY* key = nullptr;
    if (context == nullptr || EVP_PKEY_keygen_init(context.get()) != 1) return nullptr;
    EVP_PKEY_CTX_ctrl_str(context.get(), "paramset", "A");
    EVP_PKEY_keygen(context.get(), &key);
    return own(key);
}

inline OpensslKey makeDsaKey() {
    const auto parameters = owned(EVP_PKEY_CTX_new_from_name(nullptr, "DSA", nullptr), EVP_PKEY_CTX_free);
    EVP_PKEY* described = nullptr;
    EVP_PKEY_paramgen_init(parameters.get());
    EVP_PKEY_CTX_set_dsa_paramgen_bits(parameters.get(), 1024);
    EVP_PKEY_paramgen(parameters.get(), &described);
    const OpensslKey owner = own(described);
    const auto context = owned(EVP_PKEY_CTX_new_from_pkey(nullptr, described, nullptr), EVP_PKEY_CTX_free);
    EVP_PKEY* key = nullptr;
    EVP_PKEY_keygen_init(context.get());
    EVP_PKEY_keygen(context.get(), &key);
    return own(key);
}

// One key of a kind for the whole program: "RSA", "DSA", a curve such as "P-256" or "brainpoolP256r1",
// "Ed25519", "GOST2001", "GOST2012-256", "GOST2012-512". Null for GOST without the engine.
inline OpensslKey keyOfKind(const std::string& kind) {
    // Never destroyed: OpenSSL and its engine end before a static object would.
    static auto& keys = *new std::vector<std::pair<std::string, OpensslKey>>;
    for (const auto& [name, key] : keys)
        if (name == kind) return key;
    OpensslKey key;
    if (kind == "RSA") {
        key = own(EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", std::size_t{2048}));
    } else if (kind == "DSA") {
        key = makeDsaKey();
    } else if (kind == "Ed25519") {
        key = own(EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"));
    } else if (kind.starts_with("P-") || kind.starts_with("brainpool")) {
        key = own(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", kind.c_str()));
    } else if (hasGost()) {
        key = makeGostKey(kind == "GOST2001"       ? NID_id_GostR3410_2001
                          : kind == "GOST2012-256" ? NID_id_GostR3410_2012_256
                                                   : NID_id_GostR3410_2012_512);
    }
    keys.emplace_back(kind, key);
    return key;
}

// Writes the private key and tells the path.
inline std::string writeKey(const TemporaryFolder& folder, const OpensslKey& key,
                            const char* name = "key.pem") {
    const auto file = owned(BIO_new_file(folder.path(name).c_str(), "w"), BIO_free);
    PEM_write_bio_PrivateKey(file.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr);
    return folder.path(name);
}

// The public half as a certificate context would show it.
class PublicKeyInfo {
  public:
    explicit PublicKeyInfo(const OpensslKey& key) {
        const auto whole =
            parsed(d2i_X509_PUBKEY, X509_PUBKEY_free, writtenBy<EVP_PKEY>(i2d_PUBKEY, key.get()));
        ASN1_OBJECT* object = nullptr;
        const unsigned char* keyOctets = nullptr;
        int keyLength = 0;
        X509_ALGOR* algorithm = nullptr;
        X509_PUBKEY_get0_param(&object, &keyOctets, &keyLength, &algorithm, whole.get());
        identifier = dotted(object);
        bits.assign(keyOctets, keyOctets + keyLength);
        const Octets encoded = octetsOf(writtenBy<X509_ALGOR>(i2d_X509_ALGOR, algorithm));
        const unsigned char* inside = encoded.data();
        const unsigned char* const end = inside + encoded.size();
        long size = 0;
        int tag = 0;
        int tagClass = 0;
        ASN1_get_object(&inside, &size, &tag, &tagClass, end - inside);
        ASN1_get_object(&inside, &size, &tag, &tagClass, end - inside);
        parameters.assign(inside + size, end);
    }

    CERT_PUBLIC_KEY_INFO info() {
        return {{identifier.data(), {static_cast<DWORD>(parameters.size()), parameters.data()}},
                {static_cast<DWORD>(bits.size()), bits.data(), 0}};
    }

    std::string identifier;
    Octets parameters;
    Octets bits;
};

inline bool import(HCRYPTPROV provider, const OpensslKey& key, PublicKey& imported) {
    PublicKeyInfo info(key);
    const CERT_PUBLIC_KEY_INFO view = info.info();
    return CryptImportPublicKeyInfo(provider, encoding, &view, imported.place()) != 0;
}

inline Octets message() {
    Octets octets;
    for (int i = 0; i < 300; ++i)
        octets.push_back(static_cast<unsigned char>(i * 7));
    return octets;
}

// A hash of the message, with a key if the container names one.
inline bool makeHash(HCRYPTPROV provider, ALG_ID algorithm, Hash& hash) {
    const Octets data = message();
    return CryptCreateHash(provider, algorithm, 0, 0, hash.place()) &&
           CryptHashData(hash, data.data(), static_cast<DWORD>(data.size()), 0);
}

// OpenSSL's signature of octets, in the order of ASN.1.
inline Octets opensslSignature(const OpensslKey& key, const EVP_MD* digest, const Octets& data = message()) {
    const auto context = owned(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestSignInit(context.get(), nullptr, digest, nullptr, key.get());
    Octets signature(1024);
    std::size_t length = signature.size();
    EXPECT_EQ(EVP_DigestSign(context.get(), signature.data(), &length, data.data(), data.size()), 1);
    signature.resize(length);
    return signature;
}

inline Octets reversed(const Octets& octets) {
    return {octets.rbegin(), octets.rend()};
}

}  // namespace test

#endif
