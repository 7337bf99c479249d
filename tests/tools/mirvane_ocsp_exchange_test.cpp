// Questions and answers between mirvane-ocsp and the openssl command, both ways.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "ocsp_authority.h"

namespace {

using test::commonAuthority;
using test::contains;
using test::KeyKind;
using test::OcspAuthority;
using test::Outcome;

constexpr KeyKind kKinds[] = {
    {"RSA", "rsa:2048", "sha256WithRSAEncryption"},
    {"P256", "ec -pkeyopt ec_paramgen_curve:P-256", "ecdsa-with-SHA256"},
    {"P384", "ec -pkeyopt ec_paramgen_curve:P-384", "ecdsa-with-SHA384"},
    {"GOST256", "gost2012_256 -pkeyopt paramset:A -engine gost", "gost3410-12-256-with-gost3411-12-256"},
};

class Exchange : public testing::TestWithParam<KeyKind> {
  protected:
    void SetUp() override {
        isGost_ = std::string(GetParam().name).starts_with("GOST");
        if (isGost_ && test::run("openssl engine gost").status != 0) GTEST_SKIP() << "no GOST engine";
        if (isGost_) ::setenv("OPENSSL_CONF", writeConfiguration().c_str(), 1);
        authority_ = std::make_unique<OcspAuthority>(GetParam());
    }
    void TearDown() override {
        if (isGost_) ::unsetenv("OPENSSL_CONF");
    }

    void expect(const std::string& command, const std::string& part) const {
        const Outcome outcome = authority_->run(command);
        EXPECT_EQ(outcome.status, 0) << command << "\n" << outcome.output << outcome.errors;
        EXPECT_TRUE(contains(outcome.output + outcome.errors, part)) << outcome.output << outcome.errors;
    }

  private:
    // `openssl ocsp` takes no -engine for what it verifies.
    std::string writeConfiguration() const {
        return settings_.write(
            "openssl.cnf",
            std::string("openssl_conf = init\n[init]\nengines = engines\n[engines]\ngost = gost\n"
                        "[gost]\ndefault_algorithms = ALL\n[req]\ndistinguished_name = name\n"
                        "x509_extensions = ca\n[name]\n[ca]\nbasicConstraints = "
                        "critical,CA:true\n"));
    }

    bool isGost_ = false;
    test::TemporaryFolder settings_;
    std::unique_ptr<OcspAuthority> authority_;
};

TEST_P(Exchange, OpensslAnswersAndWeVerify) {
    for (const char* signer : {"ca", "ocsp"}) {
        const std::string respond =
            std::string("openssl ocsp -index index.txt -CA ca.pem -ndays 1 -rsigner ") + signer +
            ".pem -rkey " + signer + ".key -reqin q.der -respout r.der";
        expect("$T request --issuer ca.pem --cert good.pem --cert revoked.pem --serial 77 -o q.der && " +
                   respond,
               "");
        expect("$T verify --issuer ca.pem --request q.der r.der", "status 1001: good\nstatus F002: revoked");
        expect(respond + " -resp_key_id && $T verify --issuer ca.pem --request q.der r.der",
               "status 77: unknown");
    }
}

TEST_P(Exchange, WeAnswerAndOpensslVerifies) {
    const std::string check = " && openssl ocsp -respin r.der -reqin q.der -CAfile ca.pem -issuer ca.pem";
    expect("openssl ocsp -issuer ca.pem -cert good.pem -cert revoked.pem -reqout q.der", "");
    const std::string respond =
        "$T respond --issuer ca.pem --index index.txt --valid-for 1d --copy-nonce -o r.der q.der --signer ";
    for (const char* options : {"ca.pem --key ca.key", "ca.pem --key ca.key --responder-id key",
                                "ocsp.pem --key ocsp.key --responder-id key"}) {
        expect(respond + options + check, "Response verify OK");
        expect("$T show r.der", GetParam().signature);
    }
    expect(respond + "ocsp.pem --key ocsp.key --no-certs" + check + " -VAfile ocsp.pem",
           "Response verify OK");
    expect(
        "openssl ocsp -respin r.der -VAfile ocsp.pem -issuer ca.pem -cert good.pem -cert revoked.pem "
        "-no_nonce",
        "good.pem: good");
}

TEST_P(Exchange, SignedRequestsAreAcceptedByTheOtherSide) {
    expect(
        "$T request --issuer ca.pem --cert good.pem --sign-key good.key --sign-cert good.pem -o q.der && "
        "openssl ocsp -reqin q.der -index index.txt -CA ca.pem -rsigner ca.pem -rkey ca.key -respout r.der "
        "&& "
        "$T verify --issuer ca.pem --request q.der r.der",
        "nonce: ok");
    expect(
        "openssl ocsp -issuer ca.pem -cert good.pem -signer good.pem -signkey good.key -reqout q.der && $T "
        "respond "
        "--require-signed --issuer ca.pem --signer ca.pem --key ca.key --good q.der | $T verify --issuer "
        "ca.pem -",
        "status 1001: good");
}

INSTANTIATE_TEST_SUITE_P(Keys, Exchange, testing::ValuesIn(kKinds),
                         [](auto const& info) { return std::string(info.param.name); });

TEST(Requests, WithoutANonceAreTheOctetsThatOpensslWrites) {
    for (const char* hash : {"sha1", "sha256", "sha512"}) {
        const Outcome outcome = commonAuthority().run(
            std::string(
                "$T request --issuer ca.pem --cert good.pem --cert revoked.pem --no-nonce -o a.der --hash ") +
            hash + " && openssl ocsp -" + hash +
            " -no_nonce -issuer ca.pem -cert good.pem -cert revoked.pem -reqout b.der && cmp a.der b.der");
        EXPECT_EQ(outcome.status, 0) << hash << outcome.output << outcome.errors;
    }
}

TEST(Requests, NameCertificatesInAllThreeWays) {
    for (const char* form : {"certid", "full", "signature"}) {
        const Outcome outcome = commonAuthority().run(
            std::string("$T request --issuer ca.pem --cert revoked.pem -o q.der --by ") + form +
            " && $T respond --issuer ca.pem --signer ca.pem --key ca.key --index index.txt --copy-nonce "
            "q.der | $T "
            "verify --issuer ca.pem --request q.der -");
        EXPECT_EQ(outcome.status, 0) << form << outcome.output << outcome.errors;
        EXPECT_TRUE(contains(outcome.output, "status F002: revoked")) << form << outcome.output;
    }
}

TEST(Requests, MistakesAreToldInOneLine) {
    const struct {
        const char* arguments;
        int status;
        const char* line;
    } rows[] = {
        {"--issuer ca.pem", 2, "--cert or --serial is required"},
        {"--issuer ca.pem --serial 1 --by full", 2, "can only be asked about by certid"},
        {"--issuer ca.pem --cert good.pem --sign-key good.key", 2, "--sign-cert"},
        {"--issuer ca.pem --serial 1 --nonce 01 --no-nonce", 2, "--no-nonce"},
        {"--issuer stranger.pem --cert good.pem", 1, "good.pem: names another issuer than stranger.pem"},
        {"--issuer ca.pem --cert good.pem --sign-key ca.key --sign-cert good.pem", 1,
         "ca.key: is not the key of the certificate good.pem"},
        {"--issuer ca.pem --cert good.pem --sign-key index.txt --sign-cert good.pem", 1,
         "index.txt: no private key can be read"},
        {"--issuer index.txt --serial 1", 1, "index.txt: is no certificate"},
        {"--issuer ca.pem --serial 1G", 1, "1G: is no serial number"},
        {"--issuer ca.pem --serial 1 --requestor-name C=Russia", 1, "is no distinguished name"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = commonAuthority().run(std::string("$T request ") + row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.arguments;
        EXPECT_TRUE(contains(outcome.errors, row.line)) << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
}

}  // namespace
