// Questions and answers between mirvane-ocsp or the library and the openssl command, both ways, for each kind
// of key.
#include <gtest/gtest.h>

#include "asn1/extensions.h"
#include "ocsp/request_message.h"
#include "support/vectors.h"
#include "tools/ocsp_authority.h"

namespace {

using Mirvane::CBlob;
using Mirvane::PKI::OCSP::CRequestMessage;
using test::contains;
using test::KeyKind;
using test::OcspAuthority;
using test::Outcome;

constexpr KeyKind kKinds[] = {
    {"RSA", "rsa:2048", "sha256WithRSAEncryption"},
    {"P256", "ec -pkeyopt ec_paramgen_curve:P-256", "ecdsa-with-SHA256"},
    {"P384", "ec -pkeyopt ec_paramgen_curve:P-384", "ecdsa-with-SHA384"},
    {"P521", "ec -pkeyopt ec_paramgen_curve:P-521", "ecdsa-with-SHA512"},
    {"GOST256", "gost2012_256 -pkeyopt paramset:A -engine gost", "gost3410-12-256-with-gost3411-12-256",
     true},
    {"GOST512", "gost2012_512 -pkeyopt paramset:A -engine gost", "gost3410-12-512-with-gost3411-12-512",
     true},
    {"GOST2001", "gost2001 -pkeyopt paramset:A -engine gost", "gostR3411-94-with-gostR3410-2001", true},
};

class Exchange : public testing::TestWithParam<KeyKind> {
  protected:
    void SetUp() override {
        if (GetParam().isGost && test::run("openssl engine gost").status != 0)
            GTEST_SKIP() << "no GOST engine";
        authority_.emplace(GetParam());
    }

    // Runs the command, which has to say the part.
    void expect(const std::string& command, const std::string& part, int status = 0) const {
        const Outcome outcome = authority_->run(command);
        EXPECT_EQ(outcome.status, status) << command << "\n" << outcome.output << outcome.errors;
        EXPECT_TRUE(contains(outcome.output + outcome.errors, part)) << command << "\n"
                                                                     << part << "\n"
                                                                     << outcome.output << outcome.errors;
    }

    CBlob blob(const std::string& name) const {
        const test::Octets octets = test::readFile(authority_->folder().path(name));
        return CBlob(octets.data(), octets.size());
    }

    std::optional<OcspAuthority> authority_;
};

TEST_P(Exchange, RequestsOfOpensslDecodeVerifyAndComeBackToTheirBytes) {
    expect("for name in ca good; do openssl x509 -in $name.pem -outform DER -out $name.der; done", "");
    const struct {
        const char* arguments;
        std::size_t entries;
        bool hasNonce;
        bool isSigned;
    } rows[] = {
        {"-cert good.pem -no_nonce", 1, false, false},
        {"-cert good.pem -cert revoked.pem -serial 77 -nonce", 3, true, false},
        {"-sha256 -cert good.pem -signer good.pem -signkey good.key", 1, true, true},
        {"-serial 1 -serial 2 -signer good.pem -signkey good.key -sign_other ca.pem", 2, true, true},
    };
    for (const auto& row : rows) {
        expect(std::string("openssl ocsp -issuer ca.pem -reqout q.der ") + row.arguments, "");
        const CBlob received = blob("q.der");
        CRequestMessage message;
        ASSERT_NO_THROW(message.decode(received)) << row.arguments;
        EXPECT_TRUE(message.encode() == received) << row.arguments;
        EXPECT_EQ(message.get_requestList().size(), row.entries) << row.arguments;
        EXPECT_EQ(message.get_requestExtensions() != nullptr, row.hasNonce) << row.arguments;
        ASSERT_EQ(message.get_signature() != nullptr, row.isSigned) << row.arguments;
        if (!row.isSigned) continue;
        EXPECT_TRUE(message.verify(blob("good.der"))) << row.arguments;
        EXPECT_FALSE(message.verify(blob("ca.der"))) << row.arguments;
    }
}

TEST_P(Exchange, OpensslAnswersAndWeVerify) {
    expect("$T request --issuer ca.pem --cert good.pem --cert revoked.pem --serial 77 -o q.der", "");
    const std::string respond =
        "openssl ocsp -index index.txt -CA ca.pem -ndays 1 -reqin q.der -respout r.der -rsigner ";
    const std::string verify = " && $T verify --issuer ca.pem --request q.der r.der ";
    const std::string statuses =
        "status 1001: good\nstatus F002: revoked since 2026-01-01T00:00:00Z, keyCompromise\nstatus 77: "
        "unknown";
    for (const char* responder :
         {"ca.pem -rkey ca.key", "ca.pem -rkey ca.key -resp_key_id", "ocsp.pem -rkey ocsp.key",
          "ocsp.pem -rkey ocsp.key -resp_key_id -rother ca.pem", "ocsp.pem -rkey ocsp.key -resp_no_certs"}) {
        expect(respond + responder + verify + "--chain ocsp.pem", statuses);
    }
    expect(respond + "ca.pem -rkey ca.key -badsig" + verify,
           "signature: FAILED: it is not one by the key of CN=ca", 1);
    expect(respond + "good.pem -rkey good.key" + verify, "authority: FAILED", 1);
    expect(respond + "ca.pem -rkey ca.key" + verify + "&& $T show r.der", "algorithm: ");
}

TEST_P(Exchange, WeAnswerAndOpensslVerifies) {
    expect("openssl ocsp -issuer ca.pem -cert good.pem -cert revoked.pem -reqout q.der", "");
    const std::string respond = "$T respond --issuer ca.pem --valid-for 1d --copy-nonce -o r.der q.der ";
    const std::string status =
        " && openssl ocsp -respin r.der -no_nonce -issuer ca.pem -cert good.pem -cert revoked.pem ";
    const struct {
        const char* respond;
        const char* check;  // arguments of `openssl ocsp`
        const char* says;
    } rows[] = {
        {"--index index.txt --signer ca.pem --key ca.key", "-CAfile ca.pem", "good.pem: good"},
        {"--index index.txt --signer ca.pem --key ca.key --responder-id key", "-CAfile ca.pem",
         "Reason: keyCompromise"},
        {"--index index.txt --signer ocsp.pem --key ocsp.key", "-CAfile ca.pem", "revoked.pem: revoked"},
        {"--good --signer ocsp.pem --key ocsp.key --responder-id key --cert ca.pem", "-CAfile ca.pem",
         "revoked.pem: good"},
        {"--unknown --signer ocsp.pem --key ocsp.key --no-certs", "-VAfile ocsp.pem", "good.pem: unknown"},
        {"--revoked 20260101000000Z --signer ca.pem --key ca.key --no-certs", "-VAfile ca.pem",
         "Revocation Time: Jan  1 00:00:00 2026 GMT\nrevoked.pem"},
        {"--revoked 20260101000000Z,superseded --signer ca.pem --key ca.key", "-VAfile ca.pem",
         "Reason: superseded"},
    };
    for (const auto& row : rows) {
        expect(
            respond + row.respond + " && openssl ocsp -respin r.der -reqin q.der -issuer ca.pem " + row.check,
            "Response verify OK");
        expect("true" + status + row.check, row.says);
    }
    expect("$T show r.der", GetParam().signature);
}

TEST_P(Exchange, WhatWeSignIsAcceptedUpToHundredsOfEntries) {
    for (const char* entries : {"--cert good.pem", "--cert good.pem $(seq -f '--serial %05g' 1 499)"}) {
        expect(std::string("$T request --issuer ca.pem --sign-key good.key --sign-cert good.pem --chain "
                           "ca.pem -o q.der ") +
                   entries +
                   " && openssl ocsp -reqin q.der -index index.txt -CA ca.pem -rsigner ca.pem -rkey ca.key "
                   "-respout "
                   "r.der && $T verify --issuer ca.pem --request q.der r.der",
               "nonce: ok");
        expect(
            "$T respond --require-signed --issuer ca.pem --signer ca.pem --key ca.key --good --copy-nonce -o "
            "r.der "
            "q.der && openssl ocsp -respin r.der -reqin q.der -VAfile ca.pem",
            "Response verify OK");
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, Exchange, testing::ValuesIn(kKinds),
                         [](auto const& info) { return std::string(info.param.name); });

TEST(Requests, WithoutANonceAreTheOctetsThatOpensslWrites) {
    const bool hasGost = test::run("openssl engine gost").status == 0;
    const OcspAuthority authority({"EC", test::kUsualKind.newKey, "", hasGost});
    const struct {
        const char* hash;
        const char* digest;
    } rows[] = {{"sha1", "sha1"},
                {"sha256", "sha256"},
                {"sha512", "sha512"},
                {"sha3-256", "sha3-256"},
                {"gost94", "md_gost94"},
                {"gost12-256", "md_gost12_256"},
                {"gost12-512", "md_gost12_512"}};
    for (const auto& row : rows) {
        if (!hasGost && std::string(row.hash).starts_with("gost")) continue;
        const Outcome outcome = authority.run(
            std::string(
                "$T request --issuer ca.pem --cert good.pem --cert revoked.pem --no-nonce -o a.der --hash ") +
            row.hash + " && openssl ocsp -no_nonce -issuer ca.pem -" + row.digest + " -cert good.pem -" +
            row.digest + " -cert revoked.pem -reqout b.der && cmp a.der b.der");
        EXPECT_EQ(outcome.status, 0) << row.hash << outcome.output << outcome.errors;
    }
}

}  // namespace
