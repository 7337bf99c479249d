// Messages under many threads: one object encoded by all, and everything used for the first time by all.
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "at_once.h"
#include "ocsp/messages.h"
#include "ocsp/response_message.h"

namespace Mirvane::PKI::OCSP {
namespace {

using test::atOnce;
using test::signerOfKind;
using test::threadCount;

constexpr char kSha256[] = "2.16.840.1.101.3.4.2.1";

// Every thread's result of `work` is the same as that of the others, which is told.
CBlob sameFromAll(std::function<CBlob()> const& work) {
    std::array<CBlob, threadCount> results;
    atOnce([&](int index) { results[static_cast<std::size_t>(index)] = work(); });
    for (CBlob const& result : results)
        EXPECT_TRUE(result == results[0]);
    return results[0];
}

// ctest runs each test in a program of its own: tables, engines and caches are still to be made here.
TEST(ThreadsAtFirstUse, BuildEncodeAndDecodeAlike) {
    const CBlob certificate = test::MadeCertificate().encoded();
    const CBlob encoded = sameFromAll([&] {
        const CCertID identifier(test::algorithm(kSha256), certificate, certificate);
        CRequestMessage message;
        message.put_requestList(
            test::requestList({CReqCert(identifier), CReqCert(CReqCert::certificate, certificate),
                               CReqCert(CCertIdWithSignature(certificate))}));
        const ASN1::CExtensions extensions = test::nonceExtension();
        message.put_requestExtensions(&extensions);
        CRequestMessage read;
        read.decode(message.encode());
        EXPECT_TRUE(*read.get_requestList().front().get_reqCert().get_certID() == identifier);
        return read.encode();
    });
    EXPECT_GT(encoded.cbData(), certificate.cbData());
}

TEST(ThreadsAtFirstUse, VerifyAlike) {
    const CBlob encoded = test::signedResponse().encode();
    const CBlob certificate = test::rsaSigner().encoded;
    atOnce([&](int) {
        CBasicResponse message;
        message.decode(encoded);
        EXPECT_TRUE(message.verify(certificate));
    });
}

TEST(ThreadsOnOneObject, EncodeItAlikeAndAgain) {
    const CBlobList certificates = {test::rsaSigner().encoded, test::MadeCertificate().encoded()};
    const ASN1::CExtensions extensions = test::nonceExtension();
    CBasicResponse response = test::signedResponse();
    response.put_certs(&certificates);
    response.put_responseExtensions(&extensions);
    CBasicResponse const& shared = response;
    EXPECT_TRUE(sameFromAll([&] { return shared.encode(); }) == shared.encode());

    CRequestMessage request = test::requestAbout(CReqCert(CReqCert::certificate, test::rsaSigner().encoded));
    test::sign(request, test::rsaSigner(), &certificates);
    CRequestMessage const& question = request;
    EXPECT_TRUE(sameFromAll([&] { return question.encode(); }) == question.encode());
}

TEST(ThreadsOnOneObject, VerifyAndCopyItWhileOthersEncode) {
    CBasicResponse received;
    received.decode(test::signedResponse().encode());
    CBasicResponse const& shared = received;
    sameFromAll([&] {
        EXPECT_TRUE(shared.verify(test::rsaSigner().encoded));
        return CBasicResponse(shared).encode();
    });
}

TEST(ThreadsOnOneObject, ShareAnAlgorithmThatWasNeverLookedUp) {
    const CBlob certificate = test::MadeCertificate().encoded();
    const ASN1::CAlgorithmIdentifierEx shared = test::algorithm(kSha256);
    sameFromAll([&] { return CCertID(shared, certificate, certificate).encode(); });
}

TEST(ThreadsOnOneObject, SignWithOneContext) {
    for (char const* kind : {"RSA", "P-256", "GOST2001", "GOST2012-256"}) {
        test::Signer const* const signer = signerOfKind(kind);
        if (!signer) continue;
        const test::Provider provider(signer->open());
        const CBasicResponse original = test::responseOf(*signer);
        atOnce([&](int) {
            for (int round = 0; round < 4; ++round) {
                CBasicResponse message(original);
                message.sign(provider, AT_SIGNATURE, signer->algorithm);
                CBasicResponse read;
                read.decode(message.encode());
                EXPECT_TRUE(read.verify(signer->encoded));
            }
        });
    }
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
