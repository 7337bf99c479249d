#include <gtest/gtest.h>

#include "ocsp_authority.h"

namespace {

using test::commonAuthority;
using test::contains;
using test::OcspAuthority;
using test::Outcome;

TEST(Requests, NameAllCertificatesInAllThreeWays) {
    commonAuthority().run("{ echo 0 is the octet of a SEQUENCE; cat good.pem revoked.pem; } >both.pem");
    for (const char* form : {"certid", "full", "signature"}) {
        const Outcome outcome = commonAuthority().run(
            std::string("$T request --issuer ca.pem --cert both.pem -o q.der --by ") + form +
            " && $T respond --issuer ca.pem --signer ca.pem --key ca.key --index index.txt --copy-nonce "
            "q.der | $T "
            "verify --issuer ca.pem --request q.der -");
        EXPECT_EQ(outcome.status, 0) << form << outcome.output << outcome.errors;
        EXPECT_TRUE(contains(outcome.output, "status 1001: good\nstatus F002: revoked"))
            << form << outcome.output;
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
        {"--issuer stranger.pem --cert good.pem", 1,
         "good.pem: the certificate of CN=good names another issuer than stranger.pem: CN=ca"},
        {"--issuer ca.pem --cert good.pem --sign-key ca.key --sign-cert good.pem", 1,
         "ca.key: is not the key of the certificate good.pem"},
        {"--issuer ca.pem --cert good.pem --sign-key index.txt --sign-cert good.pem", 1,
         "index.txt: no private key can be read"},
        {"--issuer ca.pem --cert good.pem --sign-key none --sign-cert good.pem", 1, "none: No such file"},
        {"--issuer . --serial 1", 1, ".: Is a directory"},
        {"--issuer cut.pem --serial 1", 1, "cut.pem: holds a PEM block that is broken or cut short"},
        {"--issuer longer.der --serial 1", 1, "longer.der: has 1 octets behind its certificate"},
        {"--issuer index.txt --serial 1", 1, "index.txt: is no certificate"},
        {"--issuer ca.pem --serial 1G", 2, "--serial: 1G: is no serial number"},
        {"--issuer ca.pem --serial 1 --nonce 1", 2, "--nonce: 1: is no nonce"},
        {"--issuer ca.pem --serial 1 --requestor-name C=Russia", 2,
         "C=Russia: is no distinguished name: \"Russia\" is no value for C"},
        {"--issuer ca.pem --serial 1 --requestor-name /O=", 2, "\"\" is no value for O"},
        {"--issuer ca.pem --serial 1 --requestor-name O=x,Nonsense=y", 2,
         "\"Nonsense\" is no type of attribute"},
    };
    commonAuthority().run(
        "head -3 ca.pem >cut.pem; openssl x509 -in ca.pem -outform DER -out longer.der; printf x "
        ">>longer.der");
    for (const auto& row : rows) {
        const Outcome outcome = commonAuthority().run(std::string("$T request ") + row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.arguments;
        EXPECT_TRUE(contains(outcome.errors, row.line)) << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
}

TEST(Identifiers, OfAnIssuerOfTheSameNameAreNotAnswered) {
    const OcspAuthority authority;
    ASSERT_EQ(authority
                  .run(std::string("openssl req -nodes -x509 -newkey ") + test::kUsualKind.newKey +
                       " -subj /CN=ca -keyout twin.key -out twin.pem")
                  .status,
              0);
    for (const char* form : {"certid", "full", "signature"}) {
        const Outcome outcome = authority.run(
            std::string("$T request --issuer ca.pem --cert good.pem --by ") + form +
            " | $T respond --issuer twin.pem --signer twin.pem --key twin.key --good | $T show -");
        EXPECT_TRUE(contains(outcome.output, "unauthorized (6)")) << form << outcome.output << outcome.errors;
    }
}

TEST(Keys, OpenWithAPassphraseThatIsGivenOrAskedFor) {
    const OcspAuthority authority;
    ASSERT_EQ(
        authority
            .run("openssl pkcs8 -topk8 -v2 aes-256-cbc -in ca.key -passout pass:secret -out closed.key && "
                 "echo secret >phrase")
            .status,
        0);
    const struct {
        const char* command;
        const char* says;  // all that is said
    } rows[] = {
        {"$T %--passin pass:secret", ""},
        {"PHRASE=secret $T %--passin env:PHRASE", ""},
        {"$T %--passin file:phrase", ""},
        {"$T %--passin pass:wrong",
         "mirvane-ocsp: closed.key: no private key can be read from it with this passphrase\n"},
        {"$T %--passin env:PHRASE", "mirvane-ocsp: env:PHRASE: there is no such variable\n"},
        {"setsid -w $T %", "mirvane-ocsp: closed.key: is encrypted: give its passphrase with --passin\n"},
        {"{ sleep 0.2; echo secret; } | script -qec \"$T %\" /dev/null | grep -v ^Passphrase >&2", ""},
    };
    for (const auto& row : rows) {
        std::string command = row.command;
        command.replace(command.find('%'), 1,
                        "request --issuer ca.pem --serial 1 --sign-cert ca.pem --sign-key closed.key -o q ");
        const Outcome outcome = authority.run("rm -f q; " + command);
        EXPECT_EQ(outcome.errors, row.says) << command;
        EXPECT_EQ(authority.run("test -s q").status == 0, row.says[0] == 0) << command;
    }
}

TEST(Keys, OfGostAreToldToNeedTheEngineWhereThereIsNone) {
    if (test::run("openssl engine gost").status != 0) GTEST_SKIP() << "no GOST engine";
    const OcspAuthority authority({"GOST", "gost2012_256 -pkeyopt paramset:A -engine gost", "", true});
    const Outcome outcome = authority.run(
        "$T request --issuer ca.pem --serial 1 | $T respond --issuer ca.pem --signer ca.pem --key ca.key "
        "--good -o r; export OPENSSL_ENGINES=/nowhere; $T verify --issuer ca.pem r | grep signature >&2; $T "
        "request --issuer ca.pem --serial 1 --hash gost94; $T request --issuer ca.pem --serial 1 --sign-key "
        "ca.key --sign-cert ca.pem");
    const std::string key =
        "the platform does not work with its key, GOST R 34.10-2012 with 256 bits "
        "(1.2.643.7.1.1.1.1): the gost engine of OpenSSL is not there\n";
    EXPECT_EQ(outcome.errors,
              "signature: FAILED: " + key +
                  "mirvane-ocsp: gost94: the platform does not have this hash: the gost engine "
                  "of OpenSSL is not there\nmirvane-ocsp: ca.pem: " +
                  key);
}

}  // namespace
