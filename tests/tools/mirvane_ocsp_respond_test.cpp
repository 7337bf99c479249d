#include <gtest/gtest.h>

#include "ocsp_authority.h"

namespace {

using test::commonAuthority;
using test::contains;
using test::OcspAuthority;
using test::Outcome;

const std::string kRespond = "$T respond --issuer ca.pem --signer ca.pem --key ca.key ";

TEST(Respond, WhatCannotBeAnsweredGetsAStatusAndNoSignature) {
    const struct {
        const char* input;
        const char* options;
        const char* status;
        const char* reason;
    } rows[] = {
        {"printf garbage", "", "malformedRequest (1)", "is no OCSP request"},
        {"true", "", "malformedRequest (1)", "is empty"},
        {"printf '\\060\\004\\060\\002\\060\\000'", "", "malformedRequest (1)", "there are no entries"},
        {"{ $T request --issuer ca.pem --serial 1; printf x; }", "", "malformedRequest (1)",
         "octets stand behind"},
        {"$T request --issuer stranger.pem --serial 1", "", "unauthorized (6)", "of another issuer"},
        {"$T request --issuer ca.pem --serial 1", "--require-signed", "sigRequired (5)", "not signed"},
    };
    for (const auto& row : rows) {
        const Outcome outcome =
            commonAuthority().run(row.input + (" | " + kRespond) + "--good " + row.options + " | $T show -");
        EXPECT_TRUE(contains(outcome.output, row.status)) << row.input << outcome.output << outcome.errors;
        EXPECT_TRUE(contains(outcome.output, "response:      none")) << outcome.output;
        EXPECT_TRUE(contains(outcome.errors, row.reason)) << outcome.errors;
    }
}

TEST(Respond, ReadsEveryFormOfTheDatabase) {
    const OcspAuthority authority;
    authority.folder().write(
        "forms.txt",
        std::string("# a remark\n\n"
                    "E\t200101000000Z\t\t01\tunknown\t/CN=x\n"
                    "R\t351231235959Z\t20260102030405Z\t02\tunknown\t/CN=x\n"
                    "R\t20991231235959Z\t990102030405Z,CAkeyTime,20260101000000Z\t0003\tunknown\t/CN=x\n"
                    "R\t351231235959Z\t260101000000Z,holdInstruction,1.2.3\t04\tunknown\t/CN=x\n"
                    "R\t351231235959Z\t260101000000Z,keyTime,20250101000000Z\t05\tunknown\t/CN=x\n"
                    "R\t351231235959Z\t260101000000Z,removeFromCRL\tFFFFFFFFFF06\tunknown\t/CN=x\n"));
    const Outcome outcome = authority.run(
        "$T request --issuer ca.pem --serial 1 --serial 2 --serial 3 --serial 4 --serial 5 --serial "
        "ff:ffffffff06 --serial "
        "7 | " +
        kRespond + "--index forms.txt | $T verify --issuer ca.pem -");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(contains(outcome.output,
                         "status 01: good\n"
                         "status 02: revoked since 2026-01-02T03:04:05Z\n"
                         "status 03: revoked since 1999-01-02T03:04:05Z, cACompromise\n"
                         "status 04: revoked since 2026-01-01T00:00:00Z, certificateHold\n"
                         "status 05: revoked since 2026-01-01T00:00:00Z, keyCompromise\n"
                         "status FFFFFFFFFF06: good\n"
                         "status 07: unknown\n"))
        << outcome.output;
    const Outcome empty = authority.run("$T request --issuer ca.pem --serial 1 | " + kRespond +
                                        "--index /dev/null | $T verify --issuer ca.pem -");
    EXPECT_TRUE(contains(empty.output, "status 01: unknown\n")) << empty.output << empty.errors;
}

TEST(Respond, MistakesAreToldInOneLine) {
    const OcspAuthority authority;
    // A country as UTF8String, which the library does not take.
    const Outcome made = authority.run(
        R"(new='openssl req -x509 -nodes -days 9 -newkey'
           $new ed25519 -subj /CN=ed -keyout ed.key -out ed.pem &&
           $new ec -pkeyopt ec_paramgen_curve:P-256 -subj /C=RU -keyout odd.key -outform DER |
           LC_ALL=C sed 's/\x13\x02RU/\x0c\x02RU/g' >odd.der &&
           printf '\nR\tnonsense\n' >broken.txt && printf 'R\t\tnow\t01\t\tx\n' >now.txt &&
           printf 'R\t\t261301000000Z\t01\t\tx\n' >month.txt &&
           $T request --issuer ca.pem --serial 1 -o q.der)");
    ASSERT_EQ(made.status, 0) << made.errors;
    const std::string kSigner = "--signer ca.pem --key ca.key ";
    const struct {
        std::string options;
        int status;
        const char* line;
    } rows[] = {
        {kSigner + "--index broken.txt", 1, "broken.txt, line 2: the line: has 2 fields, not 6"},
        {kSigner + "--index now.txt", 1,
         "now.txt, line 1: now: is no time; 260101000000Z and 20260101000000Z are"},
        {kSigner + "--index month.txt", 1, "month.txt, line 1: 261301000000Z: is no time"},
        {kSigner + "--good --digest gost94", 1,
         "ca.pem: no signature algorithm is known for its ECDSA key with gost94"},
        {"--signer ed.pem --key ed.key --good", 1,
         "ed.pem: the platform does not work with its key, Ed25519 (1.3.101.112)"},
        {"--signer odd.der --key odd.key --good", 1,
         "odd.der: the certificate of C=RU cannot go into a message"},
        {"--signer odd.der --key odd.key --good --no-certs", 1,
         "odd.der: the responder cannot be named by its name, C=RU: the library does not take a value in it"},
        {kSigner + "--good --this-update 20260102000000Z --next-update 20260101000000Z", 2,
         "--next-update: the nextUpdate 2026-01-01T00:00:00Z is before the thisUpdate 2026-01-02T00:00:00Z "
         "(see mirvane-ocsp respond --help)"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = authority.run("$T respond --issuer ca.pem " + row.options + " q.der");
        EXPECT_EQ(outcome.status, row.status) << row.options;
        EXPECT_TRUE(contains(outcome.errors, row.line)) << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    }
}

TEST(Respond, TakesStatusAndTimesFromARevocationList) {
    const OcspAuthority authority;
    authority.folder().write("ca.cnf",
                             std::string("[ca]\ndefault_ca=x\n[x]\ndatabase=index.txt\ndefault_md=sha256\n"
                                         "default_crl_days=7\n"));
    const std::string issue =
        "openssl ca -config ca.cnf -gencrl -cert ca.pem -keyfile ca.key -out list.pem 2>/dev/null && ";
    const std::string ask = "$T request --issuer ca.pem --cert good.pem --cert revoked.pem | ";
    const Outcome outcome =
        authority.run(issue + ask + kRespond + "--crl list.pem | $T verify --issuer ca.pem -");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(contains(outcome.output,
                         "status 1001: good\nstatus F002: revoked since 2026-01-01T00:00:00Z, keyCompromise"))
        << outcome.output;
    EXPECT_TRUE(contains(outcome.output, "freshness: ok\n")) << "the nextUpdate of the list";
    const Outcome foreign =
        authority.run("$T respond --issuer stranger.pem --signer ca.pem --key ca.key --crl list.pem q");
    EXPECT_TRUE(contains(foreign.errors, "list.pem: is a revocation list of another issuer"))
        << foreign.errors;
    const Outcome old = authority.run(
        "openssl ca -config ca.cnf -gencrl -crl_lastupdate 20250101000000Z -crl_nextupdate 20250102000000Z "
        "-cert ca.pem "
        "-keyfile ca.key -out old.pem 2>/dev/null && " +
        kRespond + "--crl old.pem q");
    EXPECT_EQ(old.status, 1);
    EXPECT_TRUE(contains(old.errors, "old.pem: is out of date since 2025-01-02T00:00:00Z")) << old.errors;
}

TEST(Respond, GivenTimesArrive) {
    const Outcome outcome = commonAuthority().run(
        "$T request --issuer ca.pem --serial 1 | " + kRespond +
        "--revoked 20260101000000Z,privilegeWithdrawn --this-update 2026-02-01T00:00:00+01:00 --next-update "
        "20990101000000.25Z --digits 3 | $T show -");
    for (const char* part :
         {"thisUpdate: 2026-01-31T23:00:00Z", "nextUpdate: 2099-01-01T00:00:00.250Z",
          "revocationTime: 2026-01-01T00:00:00Z", "revocationReason: privilegeWithdrawn"}) {
        EXPECT_TRUE(contains(outcome.output, part)) << part << outcome.output << outcome.errors;
    }
}

TEST(Respond, ASignatureThatNobodyRequiresIsRemarkedOn) {
    const std::string ask =
        "$T request --issuer ca.pem --serial 1 --nonce 41414141 --sign-key good.key --sign-cert good.pem -o "
        "q.der "
        "&& LC_ALL=C sed -i s/AAAA/AAAB/ q.der && ";
    const Outcome outcome =
        commonAuthority().run(ask + kRespond + "--good q.der | $T show - | head -2; " + kRespond +
                              "--good --require-signed q.der | $T show - | head -2");
    EXPECT_TRUE(contains(outcome.errors, "answered all the same\n")) << outcome.errors;
    EXPECT_TRUE(contains(outcome.errors, "answered unauthorized: the signature is not one"))
        << outcome.errors;
}

}  // namespace
