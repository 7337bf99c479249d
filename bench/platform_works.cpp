// The platform alone: a hash, and the check of a signature of either kind with its key seen before.
#include <openssl/ec.h>
#include <openssl/rsa.h>

#include <algorithm>

#include "messages.h"
#include "platform/algorithms.h"
#include "platform/certificates.h"
#include "platform/hash.h"
#include "platform/keys.h"
#include "platform/provider.h"
#include "provider/hashing.h"

namespace bench {
namespace {

constexpr DWORD kEncoding = X509_ASN_ENCODING | PKCS_7_ASN_ENCODING;

const Octets& message() {
    static const Octets octets(300, 0x5A);
    return octets;
}

// A signature over the message, and the certificate of its key.
struct SignedMessage {
    Key key;
    ALG_ID keyAlgorithm;
    Octets certificate;
    Octets signature;  // as ASN.1 has it
    Octets turned;     // as the platform has it
    PCCERT_CONTEXT context;

    SignedMessage(EVP_PKEY* owned, ALG_ID algorithm) : key(owned), keyAlgorithm(algorithm) {
        const Certificate made(X509_new());
        X509_gmtime_adj(X509_getm_notBefore(made.get()), 0);
        X509_gmtime_adj(X509_getm_notAfter(made.get()), 86400);
        X509_set_pubkey(made.get(), key.get());
        X509_sign(made.get(), key.get(), EVP_sha256());
        certificate = encoded(i2d_X509, made.get());
        context = CertCreateCertificateContext(kEncoding, certificate.data(),
                                               static_cast<DWORD>(certificate.size()));
        sign();
    }
    ~SignedMessage() { CertFreeCertificateContext(context); }
    SignedMessage(const SignedMessage&) = delete;
    SignedMessage& operator=(const SignedMessage&) = delete;

  private:
    void sign() {
        const Digestion digestion(EVP_MD_CTX_new());
        EVP_DigestSignInit(digestion.get(), nullptr, EVP_sha256(), nullptr, key.get());
        std::size_t length = 0;
        EVP_DigestSign(digestion.get(), nullptr, &length, message().data(), message().size());
        signature.resize(length);
        EVP_DigestSign(digestion.get(), signature.data(), &length, message().data(), message().size());
        signature.resize(length);
        turned.assign(signature.rbegin(), signature.rend());
    }
};

// Choice of a provider, key import, hash and check: what verifying a signature with a parsed certificate asks
// for.
void checkOurs(const SignedMessage& given) {
    const HCRYPTPROV provider = Mirvane::MVGetDefaultCSPThrow(given.keyAlgorithm, CALG_SHA_256);
    HCRYPTKEY key = 0;
    HCRYPTHASH hash = 0;
    const auto length = [](const Octets& octets) { return static_cast<DWORD>(octets.size()); };
    CryptImportPublicKeyInfo(provider, kEncoding, &given.context->pCertInfo->SubjectPublicKeyInfo, &key);
    CryptCreateHash(provider, CALG_SHA_256, 0, 0, &hash);
    CryptHashData(hash, message().data(), length(message()), 0);
    require(CryptVerifySignatureA(hash, given.turned.data(), length(given.turned), key, nullptr, 0));
    CryptDestroyHash(hash);
    CryptDestroyKey(key);
    CryptReleaseContext(provider, 0);
}

void checkBare(const SignedMessage& given) {
    const Digestion digestion(EVP_MD_CTX_new());
    EVP_DigestVerifyInit(digestion.get(), nullptr, EVP_sha256(), nullptr, given.key.get());
    require(EVP_DigestVerify(digestion.get(), given.signature.data(), given.signature.size(),
                             message().data(), message().size()) == 1);
}

void addCheck(Works& works, const char* name, EVP_PKEY* key, ALG_ID algorithm) {
    const auto given = std::make_shared<SignedMessage>(key, algorithm);
    const auto bare = [given] { checkBare(*given); };
    works.push_back({name, [given] { checkOurs(*given); }, bare, bare});
}

void hashBare(const EVP_MD* digest) {
    unsigned char hash[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    EVP_Digest(message().data(), message().size(), hash, &length, digest, nullptr);
    require(length == 32);
}

}  // namespace

void addPlatformWorks(Works& works) {
    const std::shared_ptr<EVP_MD> digest(EVP_MD_fetch(nullptr, "SHA256", nullptr), EVP_MD_free);
    const auto bare = [digest] { hashBare(digest.get()); };
    works.push_back({"hash of 300 octets, SHA-256",
                     [data = blobOf(message())] {
                         require(Mirvane::MakeHash(0, CALG_SHA_256, data, nullptr).cbData() == 32);
                     },
                     bare, bare});
    addCheck(works, "check of a signature, RSA-2048", EVP_RSA_gen(2048), CALG_RSA_SIGN);
    addCheck(works, "check of a signature, P-256", EVP_EC_gen("P-256"), CALG_ECDSA);
}

}  // namespace bench
