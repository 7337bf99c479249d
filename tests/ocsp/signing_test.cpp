#include <algorithm>
#include <functional>

#include "messages.h"
#include "ocsp/message_signature.h"
#include "ocsp_test.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using ASN1::CAlgorithmIdentifierEx;
using ASN1::CExtensions;
using test::operator+;

constexpr char kSha1WithRsa[] = "1.2.840.113549.1.1.5";
constexpr char kSha256[] = "2.16.840.1.101.3.4.2.1";
constexpr char kPss[] = "1.2.840.113549.1.1.10";

class EachKindOfKey : public testing::TestWithParam<test::Algorithms> {
  protected:
    void SetUp() override {
        signer = signerOfKind(GetParam().kind);
        if (!signer) GTEST_SKIP() << "no GOST engine here";
    }
    Signer const* signer = nullptr;
};

TEST_P(EachKindOfKey, OpensslAcceptsOurRequest) {
    CBlobList certificates = {signer->encoded};
    CRequestMessage message = signedRequest(*signer);
    test::sign(message, *signer, &certificates);
    EXPECT_TRUE(message.verify(signer->encoded));
    const test::Request read = opensslRequest(message.encode());
    ASSERT_TRUE(read);
    EXPECT_EQ(OCSP_request_verify(read.get(), nullptr, storeOf(signer->certificate).get(), OCSP_TRUSTOTHER),
              1);
}

TEST_P(EachKindOfKey, OpensslAcceptsOurResponse) {
    for (bool withCertificate : {false, true}) {
        const CBlobList certificates = {signer->encoded};
        CBasicResponse message = responseOf(*signer);
        message.put_clockPrecisionDigits(0);
        if (withCertificate) message.put_certs(&certificates);
        test::sign(message, *signer);
        EXPECT_TRUE(message.verify(signer->encoded));
        const test::Response read = opensslResponse(message.encode());
        ASSERT_TRUE(read);
        EXPECT_EQ(OCSP_basic_verify(read.get(), stackOf(signer->certificate).get(),
                                    storeOf(signer->certificate).get(), 0),
                  1);
    }
}

TEST_P(EachKindOfKey, DamageIsAWrongSignature) {
    const CBlob encoded = signedResponse(*signer).encode();
    const std::vector<Octets> parts = elementsInside(encoded);
    const auto verified = [&](Octets const& part, Octets const& bits) {
        CBasicResponse message;
        message.decode(blobFrom(element(0x30, part + parts[1] + bits)));
        return message.verify(signer->encoded);
    };
    EXPECT_TRUE(verified(parts[0], parts[2]));
    Octets part = parts[0];
    *std::search(part.begin(), part.end(), std::begin("20260101"), std::begin("20260101") + 8) = '3';
    EXPECT_FALSE(verified(part, parts[2]));
    for (std::size_t fromEnd : {1, 7, 40}) {
        Octets bits = parts[2];
        bits[bits.size() - fromEnd] ^= 1;
        EXPECT_FALSE(verified(parts[0], bits));
    }
    for (const char* bits : {"03 01 00", "03 02 00 00", "03 03 00 30 80", "03 05 00 FF FF FF FF"})
        EXPECT_FALSE(verified(parts[0], octets(bits))) << bits;
}

INSTANTIATE_TEST_SUITE_P(Signing, EachKindOfKey, testing::ValuesIn(test::signatureAlgorithms),
                         [](auto const& row) {
                             std::string name = row.param.kind;
                             std::erase(name, '-');
                             return name;
                         });

TEST(Signing, AnotherKeyOfTheSameKindIsRejected) {
    const auto key = own(EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", std::size_t{2048}));
    const CBlob other = writtenBy<X509>(i2d_X509, makeCertificate(key, EVP_sha256(), "RSA", 4711).get());
    EXPECT_FALSE(signedRequest().verify(other));
    EXPECT_FALSE(signedResponse().verify(other));
}

TEST(Signing, OnlyTheLastSignatureIsLeft) {
    CRequestMessage message = signedRequest();
    const Signer& second = *signerOfKind("P-256");
    test::sign(message, second);
    EXPECT_TRUE(message.verify(second.encoded));
    EXPECT_EQ(*message.get_signatureAlgorithm(), second.algorithm);
}

// The content of a message round a part that OpenSSL signed as it stands.
template <typename Message>
Octets signedAround(Octets const& part) {
    const Octets bits =
        element(0x03, octets("00") + opensslSignature(rsaSigner().key, rsaSigner().digest, part));
    const Octets signature = octetsOf(rsaSigner().algorithm.encode()) + bits;
    if constexpr (std::is_same_v<Message, CBasicResponse>) return part + signature;
    return part + element(0xA0, element(0x30, signature));
}

// The part that is signed with a length in more octets than it needs, and with the default version written
// out.
std::vector<Octets> otherFormsOfPart(CBlob const& encoded) {
    Octets content;
    for (Octets const& field : elementsInside(blobFrom(elementsInside(encoded)[0])))
        content = content + field;
    const Octets size = {static_cast<unsigned char>(content.size() >> 8),
                         static_cast<unsigned char>(content.size())};
    return {octets("30 84 00 00") + size + content, element(0x30, octets("A0 03 02 01 00") + content)};
}

void change(CRequestMessage& message) {
    const CExtensions nonce = nonceExtension();
    message.put_requestExtensions(&nonce);
}

void change(CBasicResponse& message) {
    const CExtensions nonce = nonceExtension();
    message.put_responseExtensions(&nonce);
}

template <typename Message>
void expectStates(Message const& built, CBlob const& received) {
    using Step = std::function<void(Message&)>;
    const Step changed = [](Message& message) { change(message); };
    const Step copied = [](Message& message) { message = Message(message); };
    const Step signedAgain = [](Message& message) { test::sign(message, rsaSigner()); };
    const Step decoded = [&](Message& message) {
        message = Message();
        message.decode(received);
    };
    const struct {
        const char* name;
        std::vector<Step> steps;
        bool isVerified;
    } rows[] = {
        {"built here and signed", {}, true},
        {"copied", {copied}, true},
        {"changed", {changed}, false},
        {"changed, signed again", {changed, signedAgain}, true},
        {"received", {decoded}, true},
        {"received, changed", {decoded, changed}, true},
        {"received, copied", {decoded, copied}, false},
        {"received, signed again", {decoded, signedAgain}, false},
        {"received, signed again, copied", {decoded, signedAgain, copied}, true},
    };
    for (auto const& row : rows) {
        Message message(built);
        for (Step const& step : row.steps)
            step(message);
        EXPECT_EQ(message.verify(rsaSigner().encoded), row.isVerified) << row.name;
    }
}

template <typename Message>
void expectStatesOfAllForms(Message const& built) {
    for (Octets const& part : otherFormsOfPart(built.encode())) {
        SCOPED_TRACE(text(part));
        const Octets content = signedAround<Message>(part);
        for (Octets const& received : {element(0x30, content), octets("30 80") + content + octets("00 00")}) {
            EXPECT_EQ(text(extractTbsBlob(blobFrom(received))), text(part));
            expectStates(built, blobFrom(received));
        }
    }
}

TEST(Signing, WhatIsHashedFollowsFromHowTheMessageCameToBe) {
    expectStatesOfAllForms(signedRequest());
    expectStatesOfAllForms(signedResponse());
}

TEST(Signing, APrecisionSetLaterChangesWhatWasSigned) {
    CBasicResponse response(CDateTime("20260101120000.5Z"), CResponderID(CResponderID::byKey, blob("01")));
    test::sign(response, rsaSigner());
    EXPECT_TRUE(response.verify(rsaSigner().encoded));
    response.put_clockPrecisionDigits(0);
    EXPECT_FALSE(response.verify(rsaSigner().encoded));
}

TEST(Signing, OctetsToSignEndWithTheirElement) {
    const std::pair<const char*, const char*> rows[] = {
        {"30 04 30 02 30 00", "30 02 30 00"},
        {"30 04 30 02 30 00 FF", "30 02 30 00"},
        {"30 80 30 02 30 00 00 00", "30 02 30 00"},
        {"30 80 30 80 30 00 00 00 00 00", "30 80 30 00 00 00"},
        {"30 80 30 80 30 80 00 00 00 00 A0 00 00 00", "30 80 30 80 00 00 00 00"},
        {"30 08 30 80 30 80 00 00 00 00", "30 80 30 80 00 00 00 00"},
    };
    for (auto [message, part] : rows)
        EXPECT_EQ(text(extractTbsBlob(blob(message))), part) << message;
}

TEST(Signing, OctetsToSignAreFoundInASequenceOnly) {
    for (const char* octets :
         {"05 00", "30 00", "30 02 05 00", "30 02 30 01", "30 80 30 80 00", "30 03 02 01 00"})
        EXPECT_EQ(extractTbsBlob(blob(octets)).cbData(), 0u) << octets;
}

TEST(Signing, AMessageDecodesFromItsOwnParts) {
    CRequestMessage message;
    message.decode(signedRequest().encode());
    EXPECT_EQ(thrownCode([&] { message.decode(*message.get_signature()); }), kAsn1);
    const Octets whole = octetsOf(signedRequest().encode());
    const Octets inside =
        element(0x30, octetsOf(rsaSigner().algorithm.encode()) + element(0x03, octets("00") + whole));
    message.decode(blobFrom(element(0x30, octets("30 02 30 00") + element(0xA0, inside))));
    message.decode(*message.get_signature());
    EXPECT_TRUE(message.verify(rsaSigner().encoded));
}

TEST(Signing, CertificatesStayUnlessAListIsGiven) {
    const CBlobList certificates = {rsaSigner().encoded};
    const CBlobList none;
    CRequestMessage message = requestAbout(certID());
    test::sign(message, rsaSigner(), &certificates);
    test::sign(message, rsaSigner());
    EXPECT_TRUE(*message.get_signatureCerts() == certificates);
    // The message's own parts serve as arguments.
    message.sign(Provider(rsaSigner().open()), AT_KEYEXCHANGE, *message.get_signatureAlgorithm(),
                 message.get_signatureCerts());
    EXPECT_TRUE(*message.get_signatureCerts() == certificates);
    EXPECT_TRUE(message.verify(rsaSigner().encoded));
    test::sign(message, rsaSigner(), &none);
    EXPECT_TRUE(message.get_signatureCerts()->empty());
    CRequestMessage read;
    read.decode(message.encode());
    EXPECT_EQ(read.get_signatureCerts(), nullptr);
    EXPECT_NE(read.get_signature(), nullptr);
}

TEST(Signing, ABadCertificateIsFoundOutAfterSigning) {
    const CBlobList certificates = {blob("30 00")};
    CRequestMessage message = requestAbout(certID());
    test::sign(message, rsaSigner(), &certificates);
    EXPECT_EQ(thrownCode([&] { message.encode(); }), kAsn1);
    EXPECT_EQ(thrownCode([&] { message.verify(rsaSigner().encoded); }), kAsn1);
    EXPECT_EQ(thrownCode([&] { test::sign(message, rsaSigner()); }), kAsn1);
}

TEST(Signing, TheTwoMessagesTakeDifferentIdentifiers) {
    const struct {
        const char* identifier;
        unsigned request;
        unsigned response;
    } rows[] = {
        {"1.2.840.113549.1.1.11", 0, 0},
        {kSha256, kUnknownAlgorithm, 0},
        {kPss, kUnknownAlgorithm, kBadAlgorithm},
        {"1.3.101.112", kUnknownAlgorithm, kBadAlgorithm},
        {"1.2.3", kUnknownAlgorithm, kBadAlgorithm},
        {"", kUnknownAlgorithm, kBadAlgorithm},
        {"1.2.840.113549.1.1.1", kUnknownAlgorithm, kBadAlgorithm},
    };
    const Provider provider(rsaSigner().open());
    for (auto const& row : rows) {
        const CAlgorithmIdentifierEx identifier = algorithm(row.identifier);
        CRequestMessage request = requestAbout(certID());
        CBasicResponse response = responseOf(rsaSigner());
        EXPECT_EQ(thrownCode([&] { request.sign(provider, AT_SIGNATURE, identifier, nullptr); }), row.request)
            << row.identifier;
        EXPECT_EQ(thrownCode([&] { response.sign(provider, AT_SIGNATURE, identifier); }), row.response)
            << row.identifier;
        EXPECT_EQ(request.get_signature() != nullptr, row.request == 0);
        EXPECT_EQ(response.get_signature() != nullptr, row.response == 0);
        if (row.response == 0) {
            EXPECT_TRUE(response.verify(rsaSigner().encoded)) << row.identifier;
        }
    }
}

TEST(Signing, AKeyThatCannotSignLeavesTheMessageAsItWas) {
    HCRYPTPROV stale = rsaSigner().open();
    CryptReleaseContext(stale, 0);
    const Provider keyless(MVCAPI_I_CryptGetDefaultCryptProv(CALG_RSA_KEYX, CALG_SHA_256));
    const Provider rsa(rsaSigner().open());
    const struct {
        HCRYPTPROV provider;
        unsigned keySpecification;
        unsigned code;
    } rows[] = {{0, AT_SIGNATURE, 0x80090001},
                {stale, AT_SIGNATURE, 0x80090001},
                {12345, AT_SIGNATURE, 0x80090001},
                {keyless, AT_SIGNATURE, 0x8009000D},
                {rsa, 3, 0x8009000D}};
    CRequestMessage request = signedRequest();
    CBasicResponse response = signedResponse();
    const CBlob requestBefore = request.encode();
    const CBlob responseBefore = response.encode();
    const CBlobList certificates = {rsaSigner().encoded};
    const CAlgorithmIdentifierEx sha1 = algorithm(kSha1WithRsa);
    for (auto const& row : rows) {
        EXPECT_EQ(thrownCode([&] { request.sign(row.provider, row.keySpecification, sha1, &certificates); }),
                  row.code);
        EXPECT_EQ(thrownCode([&] { response.sign(row.provider, row.keySpecification, sha1); }), row.code);
    }
    EXPECT_TRUE(request.encode() == requestBefore);
    EXPECT_TRUE(response.encode() == responseBefore);
}

TEST(Verifying, WhatIsNotSignedThrows) {
    EXPECT_EQ(thrownCode([] { requestAbout(certID()).verify(CBlob()); }), kInvalidArgument);
    EXPECT_EQ(thrownCode([] { responseOf(rsaSigner()).verify(CBlob()); }), kGeneral);
}

// A response of RSA that says to be signed by another algorithm.
CBasicResponse relabelled(const char* identifier) {
    const std::vector<Octets> parts = elementsInside(signedResponse().encode());
    const Octets label = octetsOf(algorithm(identifier).encode());
    CBasicResponse message;
    message.decode(blobFrom(element(0x30, parts[0] + label + parts[2])));
    return message;
}

TEST(Verifying, OnlyARejectedSignatureIsFalse) {
    MadeCertificate badKey;
    badKey.keyBits = "00 30 03 02 01 23";
    const auto ed25519 = makeCertificate(keyOfKind("Ed25519"), nullptr, "Ed25519", 1);
    const CBlob rsa = rsaSigner().encoded;
    const struct {
        const char* name;
        CBasicResponse message;
        CBlob certificate;
        unsigned code;  // 0 for false
    } rows[] = {
        {"no certificate", signedResponse(), blob("30 00"), 0x80093103},
        {"no bytes", signedResponse(), CBlob(), 0x80093102},
        {"bytes behind the certificate", signedResponse(), CBlob(rsa) += blob("00"), 0x80093202},
        {"a key that is none", signedResponse(), badKey.encoded(), 0x80090003},
        {"a key of unknown kind", signedResponse(), writtenBy(i2d_X509, ed25519.get()), kBadAlgorithm},
        {"an unknown algorithm", relabelled("1.2.3"), rsa, kBadAlgorithm},
        {"PSS", relabelled(kPss), rsa, kBadAlgorithm},
        {"another hash", relabelled(kSha1WithRsa), rsa, 0},
        {"a hash of GOST", relabelled("1.2.643.7.1.1.3.2"), rsa, kBadAlgorithm},
        {"a key of another kind", signedResponse(), signerOfKind("P-256")->encoded, 0},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(thrownCode([&] { EXPECT_FALSE(row.message.verify(row.certificate)) << row.name; }),
                  row.code)
            << row.name;
    }
}

TEST(Verifying, RealSignedMessagesVerifyByTheirOwnCertificates) {
    int verified = 0;
    for (auto const& path : vectorFiles("ocsp-requests")) {
        CRequestMessage message;
        message.decode(blobFrom(readFile(path)));
        if (!message.get_signatureCerts()) continue;
        for (CBlob const& certificate : *message.get_signatureCerts()) {
            bool accepted = false;
            thrownCode([&] { accepted = message.verify(certificate); });
            if (accepted) ++verified;
        }
    }
    const auto responses = vectorFiles("ocsp-responses");
    if (responses.empty()) GTEST_SKIP() << "no real messages here";
    for (auto const& path : responses) {
        const CBlob inside = basicResponseInside(blobFrom(readFile(path)));
        if (inside.cbData() == 0) continue;
        CBasicResponse message;
        message.decode(inside);
        if (!message.get_certs()) continue;
        bool accepted = false;
        for (CBlob const& certificate : *message.get_certs())
            thrownCode([&] { accepted = accepted || message.verify(certificate); });
        const bool isBroken = path.filename().string().starts_with("ossl-ISOP");
        EXPECT_FALSE(isBroken && accepted) << path;
        verified += accepted;
    }
    EXPECT_GE(verified, 90);
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
