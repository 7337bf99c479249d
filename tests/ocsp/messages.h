// What the tests of requests, responses and signatures share: signers that OpenSSL made, and messages of a
// few lines.
#ifndef MIRVANE_TESTS_OCSP_MESSAGES_H
#define MIRVANE_TESTS_OCSP_MESSAGES_H

#include <openssl/ocsp.h>
#include <openssl/x509v3.h>

#include <map>
#include <memory>
#include <string>

#include "ocsp/basic_response.h"
#include "ocsp/made_certificates.h"
#include "ocsp/real_certificates.h"
#include "ocsp/request_message.h"
#include "ocsp/response_message.h"
#include "platform/provider_support.h"
#include "support/blobs.h"
#include "support/failures.h"

namespace test {

using Mirvane::CBlob;
using Mirvane::CDateTime;
using Mirvane::ASN1::CAlgorithmIdentifierEx;
using Mirvane::ASN1::CExtension;
using Mirvane::ASN1::CExtensions;
using Mirvane::ASN1::CExtValue;
namespace ocsp = Mirvane::PKI::OCSP;

using Certificate = std::shared_ptr<X509>;
using Request = std::unique_ptr<OCSP_REQUEST, decltype(&OCSP_REQUEST_free)>;
using Response = std::unique_ptr<OCSP_BASICRESP, decltype(&OCSP_BASICRESP_free)>;
using Store = std::unique_ptr<X509_STORE, decltype(&X509_STORE_free)>;
using Stack = std::unique_ptr<STACK_OF(X509), void (*)(STACK_OF(X509)*)>;

struct Algorithms {
    const char* kind;       // of keyOfKind
    const char* signature;  // the identifier of the signature algorithm
    const char* digest;     // OpenSSL's name
};

inline constexpr Algorithms signatureAlgorithms[] = {
    {"RSA", "1.2.840.113549.1.1.11", "SHA256"},
    {"DSA", "2.16.840.1.101.3.4.3.2", "SHA256"},
    {"P-256", "1.2.840.10045.4.3.2", "SHA256"},
    {"P-521", "1.2.840.10045.4.3.4", "SHA512"},
    {"GOST2001", "1.2.643.2.2.3", "md_gost94"},
    {"GOST2012-256", "1.2.643.7.1.1.3.2", "md_gost12_256"},
    {"GOST2012-512", "1.2.643.7.1.1.3.3", "md_gost12_512"},
};

inline void PrintTo(Algorithms const& algorithms, std::ostream* stream) {
    *stream << algorithms.kind;
}

// A certificate of the key, issued by itself.
inline Certificate makeCertificate(OpensslKey const& key, EVP_MD const* digest, const char* name,
                                   long serial) {
    const Certificate certificate(X509_new(), &X509_free);
    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), serial);
    X509_NAME* const subject = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_ASC, reinterpret_cast<unsigned char const*>(name), -1,
                               -1, 0);
    X509_set_issuer_name(certificate.get(), subject);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600L * 24 * 365);
    X509_set_pubkey(certificate.get(), key.get());
    X509_sign(certificate.get(), key.get(), digest);
    return certificate;
}

// A responder or client with its own key and certificate; it also serves as its own issuer.
struct Signer {
    explicit Signer(Algorithms const& algorithms) : Signer(algorithms, keyOfKind(algorithms.kind)) {}
    Signer(Algorithms const& algorithms, OpensslKey const& itsKey)
        : key(itsKey),
          digest(EVP_get_digestbyname(algorithms.digest)),
          certificate(makeCertificate(key, digest, algorithms.kind, 4711)),
          encoded(writtenBy(i2d_X509, certificate.get())) {
        algorithm.put_algorithm(algorithms.signature);
        if (std::string(algorithms.kind) == "RSA") algorithm.put_parameters(blob("05 00"));
        container = writeKey(folder, key);
    }

    // A context of the platform with the private key; the caller releases it.
    HCRYPTPROV open() const {
        HCRYPTPROV provider = 0;
        CryptAcquireContextA(&provider, container.c_str(), nullptr, 0, 0);
        return provider;
    }

    TemporaryFolder folder;
    OpensslKey key;
    EVP_MD const* digest;
    Certificate certificate;
    CBlob encoded;
    CAlgorithmIdentifierEx algorithm;
    std::string container;
};

// One signer of a kind for the whole program; null for GOST without the engine.
inline Signer const* signerOfKind(std::string const& kind) {
    static std::map<std::string, std::unique_ptr<Signer>> signers;
    auto& signer = signers[kind];
    for (Algorithms const& algorithms : signatureAlgorithms) {
        if (signer || kind != algorithms.kind || !keyOfKind(kind)) continue;
        signer = std::make_unique<Signer>(algorithms);
    }
    return signer.get();
}

inline Signer const& rsaSigner() {
    return *signerOfKind("RSA");
}

inline ocsp::CCertID certID(Signer const& subject = rsaSigner()) {
    CAlgorithmIdentifierEx sha1;
    sha1.put_algorithm("1.3.14.3.2.26");
    sha1.put_parameters(blob("05 00"));
    return ocsp::CCertID(sha1, subject.encoded, subject.encoded);
}

inline CExtensions nonceExtension(const char* octets = "04 04 01 02 03 04") {
    CExtensions extensions;
    extensions.insert(CExtension(CExtValue("1.3.6.1.5.5.7.48.1.2", blob(octets)), false));
    return extensions;
}

inline ocsp::CSingleRequestList requestList(std::initializer_list<ocsp::CReqCert> certificates) {
    ocsp::CSingleRequestList list;
    for (ocsp::CReqCert const& certificate : certificates)
        list.push_back(certificate);
    return list;
}

inline ocsp::CRequestMessage requestAbout(ocsp::CReqCert const& certificate) {
    ocsp::CRequestMessage message;
    message.put_requestList(requestList({certificate}));
    return message;
}

inline ocsp::CBasicResponse responseOf(Signer const& signer) {
    ocsp::CBasicResponse response(CDateTime("20260101120000Z"),
                                  ocsp::CResponderID::fromCert(ocsp::CResponderID::byKey, signer.encoded));
    ocsp::CCertStatus good;
    good.put_good();
    ocsp::CSingleResponseList entries;
    entries.push_back({certID(signer), good, CDateTime("20260101120000Z")});
    response.put_responses(entries);
    return response;
}

inline void sign(ocsp::CRequestMessage& message, Signer const& signer,
                 Mirvane::CBlobList const* certificates = nullptr) {
    message.sign(Provider(signer.open()), AT_SIGNATURE, signer.algorithm, certificates);
}

inline void sign(ocsp::CBasicResponse& message, Signer const& signer) {
    message.sign(Provider(signer.open()), AT_SIGNATURE, signer.algorithm);
}

inline ocsp::CRequestMessage signedRequest(Signer const& signer = rsaSigner()) {
    ocsp::CRequestMessage message = requestAbout(certID(signer));
    const CBlob name = writtenBy(i2d_X509_NAME, X509_get_subject_name(signer.certificate.get()));
    message.put_requestorName(&name);
    sign(message, signer);
    return message;
}

inline ocsp::CBasicResponse signedResponse(Signer const& signer = rsaSigner()) {
    ocsp::CBasicResponse message = responseOf(signer);
    sign(message, signer);
    return message;
}

inline CAlgorithmIdentifierEx algorithm(const char* identifier) {
    CAlgorithmIdentifierEx result;
    result.put_algorithm(identifier);
    return result;
}

// The messages as OpenSSL reads them; null if it does not.
inline Request opensslRequest(CBlob const& encoded) {
    return parsed(d2i_OCSP_REQUEST, OCSP_REQUEST_free, encoded);
}

inline Response opensslResponse(CBlob const& encoded) {
    return parsed(d2i_OCSP_BASICRESP, OCSP_BASICRESP_free, encoded);
}

// The basic response inside a received message, nothing if there is none.
inline CBlob basicResponseInside(CBlob const& received) {
    ocsp::CResponseMessage message;
    if (thrownCode([&] { message.decode(received); }) != 0) return CBlob();
    const bool isBasic =
        message.get_response() && message.get_responseType() == std::string("1.3.6.1.5.5.7.48.1.1");
    return isBasic ? *message.get_response() : CBlob();
}

// What OpenSSL is to take as trusted, or as certificates to look for a signer in.
inline Store storeOf(Certificate const& certificate) {
    Store store = owned(X509_STORE_new(), X509_STORE_free);
    X509_STORE_add_cert(store.get(), certificate.get());
    return store;
}

inline Stack stackOf(Certificate const& certificate) {
    Stack stack(sk_X509_new_null(), [](STACK_OF(X509) * s) { sk_X509_free(s); });
    sk_X509_push(stack.get(), certificate.get());
    return stack;
}

// The elements inside one element, header included, found by OpenSSL.
inline std::vector<Octets> elementsInside(CBlob const& encoded) {
    std::vector<Octets> elements;
    unsigned char const* position = encoded.pbData();
    unsigned char const* end = position + encoded.cbData();
    long length = 0;
    int tag = 0;
    int tagClass = 0;
    ASN1_get_object(&position, &length, &tag, &tagClass, end - position);
    end = position + length;
    while (position < end) {
        unsigned char const* const start = position;
        if (ASN1_get_object(&position, &length, &tag, &tagClass, end - position) & 0x80) break;
        position += length;
        elements.emplace_back(start, position);
    }
    return elements;
}

}  // namespace test

#endif
