// Signing and verifying answers. The floor is the bare EVP call on the part that is signed, with the key at
// hand.
#include <openssl/pem.h>

#include <array>
#include <cstdio>
#include <filesystem>

#include "messages.h"
#include "ocsp/basic_response.h"
#include "ocsp/response_message.h"
#include "platform/keys.h"
#include "platform/provider.h"

namespace bench {
namespace {

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;
using Mirvane::CDateTime;

// An answer that has been decoded by both sides, with its signer's certificate.
struct Answer {
    explicit Answer(const Octets& octets) {
        const auto whole = decoded<Response>(d2i_OCSP_RESPONSE, octets);
        theirs.reset(OCSP_response_get1_basic(whole.get()));
        ours.decode(blobOf(basicOctets(octets)));
        certificate = blobOf(signer().encoded());
        const ASN1_OCTET_STRING* value = OCSP_resp_get0_signature(theirs.get());
        signature.assign(value->data, value->data + value->length);
        part = signedPart(theirs.get());
    }

    CBasicResponse ours;
    Basic theirs;
    CBlob certificate;
    Octets signature;
    Octets part;
};

// The signature alone, as CBasicResponse::verify judges it: no chain is built.
void verifyOpenssl(OCSP_BASICRESP* response, X509* certificate) {
    const Stack certificates(sk_X509_new_null());
    sk_X509_push(certificates.get(), certificate);
    require(OCSP_basic_verify(response, certificates.get(), nullptr, OCSP_NOVERIFY) == 1);
}

void verifyBare(const Answer& answer) {
    const Digestion digestion(EVP_MD_CTX_new());
    EVP_DigestVerifyInit(digestion.get(), nullptr, EVP_sha256(), nullptr, signer().key());
    require(EVP_DigestVerify(digestion.get(), answer.signature.data(), answer.signature.size(),
                             answer.part.data(), answer.part.size()) == 1);
}

void addVerify(Works& works, const char* name, const Octets& octets) {
    const auto answer = std::make_shared<Answer>(octets);
    works.push_back({name, [answer] { require(answer->ours.verify(answer->certificate)); },
                     [answer] { verifyOpenssl(answer->theirs.get(), signer().certificate()); },
                     [answer] { verifyBare(*answer); }});
}

// Many signers in turn: far more than any cache of keys holds, so that each is met as if for the first time.
class Strangers {
  public:
    Strangers() {
        for (Stranger& stranger : mAll) {
            const Signer made;
            stranger.octets = responseOf(1, made);
            stranger.certificateOctets = made.encoded();
            stranger.response = blobOf(stranger.octets);
            stranger.certificate = blobOf(made.encoded());
        }
    }

    void meetOurs() {
        const Stranger& stranger = next();
        CResponseMessage message;
        message.decode(stranger.response);
        CBasicResponse response;
        response.decode(*message.get_response());
        require(response.verify(stranger.certificate));
    }

    void meetOpenssl() {
        const Stranger& stranger = next();
        const auto message = decoded<Response>(d2i_OCSP_RESPONSE, stranger.octets);
        const Basic response(OCSP_response_get1_basic(message.get()));
        const auto certificate = decoded<Certificate>(d2i_X509, stranger.certificateOctets);
        verifyOpenssl(response.get(), certificate.get());
    }

  private:
    struct Stranger {
        Octets octets;
        Octets certificateOctets;
        CBlob response;
        CBlob certificate;
    };

    const Stranger& next() {
        mNext = (mNext + 1) % mAll.size();
        return mAll[mNext];
    }

    std::array<Stranger, 1024> mAll;
    std::size_t mNext = 0;
};

// Made when they are first met, since that takes a while.
Strangers& strangers() {
    static Strangers all;
    return all;
}

// A provider context with the signer's private key, which it reads from a file.
class PrivateKey {
  public:
    PrivateKey() {
        const auto path = std::filesystem::temp_directory_path() / "mirvane-bench-key.pem";
        std::FILE* file = std::fopen(path.c_str(), "w");
        require(file && PEM_write_PrivateKey(file, signer().key(), nullptr, nullptr, 0, nullptr, nullptr));
        std::fclose(file);
        const bool acquired = CryptAcquireContextA(&mProvider, path.c_str(), nullptr, 0, 0);
        std::filesystem::remove(path);
        require(acquired);
    }
    ~PrivateKey() { CryptReleaseContext(mProvider, 0); }
    PrivateKey(const PrivateKey&) = delete;
    PrivateKey& operator=(const PrivateKey&) = delete;

    HCRYPTPROV provider() const { return mProvider; }

  private:
    HCRYPTPROV mProvider = 0;
};

// What a responder has at hand when a question comes.
struct Responder {
    Mirvane::ASN1::CAlgorithmIdentifierEx signatureAlgorithm{
        Mirvane::ASN1::CAlgorithmIdentifier("1.2.840.10045.4.3.2")};
    CBlob certificate = blobOf(signer().encoded());
    Answer former{smallResponse()};
    PrivateKey key;
};

void buildOurs(const Responder& responder) {
    const CSingleResponse& former = responder.former.ours.get_responses().front();
    CCertStatus good;
    good.put_good();
    CSingleResponse entry(former.get_reqCert(), good, former.get_thisUpdate());
    entry.put_nextUpdate(former.get_nextUpdate());
    CSingleResponseList entries;
    entries.push_back(std::move(entry));
    CBasicResponse response(CDateTime::Now(),
                            CResponderID::fromCert(CResponderID::byKey, responder.certificate));
    response.put_responses(entries);
    response.put_clockPrecisionDigits(0);
    response.sign(responder.key.provider(), AT_SIGNATURE, responder.signatureAlgorithm);
    const CBlob encoded = response.encode();
    CResponseMessage message;
    message.put_responseStatus(successful);
    message.put_response("1.3.6.1.5.5.7.48.1.1", &encoded);
    require(message.encode().cbData() > encoded.cbData());
}

void buildOpenssl(const Responder& responder) {
    OCSP_SINGLERESP* former = OCSP_resp_get0(responder.former.theirs.get(), 0);
    ASN1_GENERALIZEDTIME* thisUpdate = nullptr;
    ASN1_GENERALIZEDTIME* nextUpdate = nullptr;
    OCSP_single_get0_status(former, nullptr, nullptr, &thisUpdate, &nextUpdate);
    const Basic response(OCSP_BASICRESP_new());
    require(OCSP_basic_add1_status(response.get(), const_cast<OCSP_CERTID*>(OCSP_SINGLERESP_get0_id(former)),
                                   V_OCSP_CERTSTATUS_GOOD, 0, nullptr, thisUpdate, nextUpdate) != nullptr);
    require(OCSP_basic_sign(response.get(), signer().certificate(), signer().key(), EVP_sha256(), nullptr,
                            OCSP_RESPID_KEY | OCSP_NOCERTS));
    const Response message(OCSP_response_create(OCSP_RESPONSE_STATUS_SUCCESSFUL, response.get()));
    unsigned char* written = nullptr;
    const int length = i2d_OCSP_RESPONSE(message.get(), &written);
    OPENSSL_free(written);
    require(length > 200);
}

void signBare(const Octets& part) {
    const Digestion digestion(EVP_MD_CTX_new());
    EVP_DigestSignInit(digestion.get(), nullptr, EVP_sha256(), nullptr, signer().key());
    unsigned char signature[80];
    std::size_t length = sizeof signature;
    require(EVP_DigestSign(digestion.get(), signature, &length, part.data(), part.size()) == 1);
}

}  // namespace

void addSignatureWorks(Works& works) {
    addVerify(works, "verify, signer seen before, 1 entry", smallResponse());
    addVerify(works, "verify, signer seen before, 100 entries", largeResponse(100));
    const auto known = std::make_shared<Answer>(smallResponse());
    works.push_back({"decode and verify, signer seen first", [] { strangers().meetOurs(); },
                     [] { strangers().meetOpenssl(); }, [known] { verifyBare(*known); }});
    const auto responder = std::make_shared<Responder>();
    works.push_back({"build, sign and encode", [responder] { buildOurs(*responder); },
                     [responder] { buildOpenssl(*responder); },
                     [responder] { signBare(responder->former.part); }});
}

}  // namespace bench
