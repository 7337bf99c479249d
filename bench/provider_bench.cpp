// Hashing and checking signatures through the platform, beside bare EVP calls on the same octets.
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <algorithm>
#include <memory>
#include <string>

#include "benchmarks.h"
#include "counting.h"
#include "messages.h"
#include "platform/algorithms.h"
#include "platform/certificates.h"
#include "platform/hash.h"
#include "platform/keys.h"
#include "platform/provider.h"
#include "provider/hashing.h"

namespace {

using bench::Octets;

constexpr DWORD kEncoding = X509_ASN_ENCODING | PKCS_7_ASN_ENCODING;
const Octets kMessage(300, 0x5A);

// A signature over kMessage with SHA-256, and the certificate of its key in octets and parsed.
struct SignedMessage {
    Octets certificate;
    std::unique_ptr<X509, decltype(&X509_free)> parsed;
    Octets signature;  // as ASN.1 has it
    ALG_ID keyAlgorithm;
};

SignedMessage sign(EVP_PKEY* key, ALG_ID keyAlgorithm) {
    SignedMessage made{{}, {X509_new(), X509_free}, {}, keyAlgorithm};
    X509_gmtime_adj(X509_getm_notBefore(made.parsed.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(made.parsed.get()), 86400);
    X509_set_pubkey(made.parsed.get(), key);
    X509_sign(made.parsed.get(), key, EVP_sha256());
    made.certificate.resize(static_cast<std::size_t>(i2d_X509(made.parsed.get(), nullptr)));
    unsigned char* end = made.certificate.data();
    i2d_X509(made.parsed.get(), &end);

    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestSignInit(context.get(), nullptr, EVP_sha256(), nullptr, key);
    std::size_t length = 0;
    EVP_DigestSign(context.get(), nullptr, &length, kMessage.data(), kMessage.size());
    made.signature.resize(length);
    EVP_DigestSign(context.get(), made.signature.data(), &length, kMessage.data(), kMessage.size());
    made.signature.resize(length);
    EVP_PKEY_free(key);
    return made;
}

void hashOurs(benchmark::State& state) {
    const Mirvane::CBlob data(kMessage.data(), kMessage.size());
    bench::Counter counter(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(Mirvane::MakeHash(0, CALG_SHA_256, data, nullptr));
}

void hashEvp(benchmark::State& state) {
    const std::unique_ptr<EVP_MD, decltype(&EVP_MD_free)> digest(EVP_MD_fetch(nullptr, "SHA256", nullptr),
                                                                 EVP_MD_free);
    bench::Counter counter(state);
    for (auto _ : state) {
        unsigned char hash[EVP_MAX_MD_SIZE];
        unsigned length = 0;
        EVP_Digest(kMessage.data(), kMessage.size(), hash, &length, digest.get(), nullptr);
        benchmark::DoNotOptimize(hash);
    }
}

// Choice of a provider, key import, hash and check: what verifying a signature with a parsed certificate asks
// for.
void verifyOurs(benchmark::State& state, const SignedMessage& message) {
    Octets turned = message.signature;
    std::reverse(turned.begin(), turned.end());
    PCCERT_CONTEXT certificate = CertCreateCertificateContext(kEncoding, message.certificate.data(),
                                                              static_cast<DWORD>(message.certificate.size()));
    bench::Counter counter(state);
    for (auto _ : state) {
        const HCRYPTPROV provider = Mirvane::MVGetDefaultCSPThrow(message.keyAlgorithm, CALG_SHA_256);
        HCRYPTKEY key = 0;
        HCRYPTHASH hash = 0;
        BOOL good = CryptImportPublicKeyInfo(provider, kEncoding,
                                             &certificate->pCertInfo->SubjectPublicKeyInfo, &key);
        good = good && CryptCreateHash(provider, CALG_SHA_256, 0, 0, &hash);
        good = good && CryptHashData(hash, kMessage.data(), static_cast<DWORD>(kMessage.size()), 0);
        good = good &&
               CryptVerifySignatureA(hash, turned.data(), static_cast<DWORD>(turned.size()), key, nullptr, 0);
        if (!good) state.SkipWithError("does not verify");
        CryptDestroyHash(hash);
        CryptDestroyKey(key);
        CryptReleaseContext(provider, 0);
    }
    CertFreeCertificateContext(certificate);
}

void verifyEvp(benchmark::State& state, const SignedMessage& message) {
    bench::Counter counter(state);
    for (auto _ : state) {
        EVP_PKEY* key = X509_get_pubkey(message.parsed.get());
        EVP_MD_CTX* context = EVP_MD_CTX_new();
        EVP_DigestVerifyInit(context, nullptr, EVP_sha256(), nullptr, key);
        if (EVP_DigestVerify(context, message.signature.data(), message.signature.size(), kMessage.data(),
                             kMessage.size()) != 1) {
            state.SkipWithError("does not verify");
        }
        EVP_MD_CTX_free(context);
        EVP_PKEY_free(key);
    }
}

}  // namespace

void bench::addProviderBenchmarks() {
    benchmark::RegisterBenchmark("hash of 300 octets/ours", hashOurs);
    benchmark::RegisterBenchmark("hash of 300 octets/openssl", hashEvp);
    static const SignedMessage messages[] = {sign(EVP_RSA_gen(2048), CALG_RSA_SIGN),
                                             sign(EVP_EC_gen("P-256"), CALG_ECDSA)};
    for (const SignedMessage& message : messages) {
        const std::string name =
            message.keyAlgorithm == CALG_ECDSA ? "check of P-256/" : "check of RSA-2048/";
        benchmark::RegisterBenchmark((name + "ours").c_str(),
                                     [&message](benchmark::State& state) { verifyOurs(state, message); });
        benchmark::RegisterBenchmark((name + "openssl").c_str(),
                                     [&message](benchmark::State& state) { verifyEvp(state, message); });
    }
}
