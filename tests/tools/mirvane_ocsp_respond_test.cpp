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
    authority.folder().write("broken.txt", std::string(test::kIndex) + "R\tnonsense\n");
    const Outcome broken = authority.run(kRespond + "--index broken.txt index.txt");
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.errors, "mirvane-ocsp: broken.txt, line 3: the line: has 2 fields, not 6\n");
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
