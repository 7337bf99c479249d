#include <gtest/gtest.h>

#include "ocsp_authority.h"

namespace {

using test::commonAuthority;
using test::contains;
using test::Outcome;

struct Row {
    const char* name;
    const char* respond;  // options that make the answer
    const char* verify;   // options that check it
    int status;
    const char* line;  // of the output
};

void PrintTo(Row const& row, std::ostream* stream) {
    *stream << row.name;
}

class Verify : public testing::TestWithParam<Row> {};

TEST_P(Verify, TellsWhatHoldsAndWhatDoesNot) {
    Row const& row = GetParam();
    const Outcome outcome = commonAuthority().run(
        "$T request --issuer ca.pem --cert good.pem --cert revoked.pem -o q.der && $T respond --issuer "
        "ca.pem " +
        std::string(row.respond) + " -o r.der q.der && $T verify " + row.verify + " r.der");
    EXPECT_EQ(outcome.status, row.status) << outcome.output << outcome.errors;
    EXPECT_TRUE(contains(outcome.output, row.line)) << outcome.output << outcome.errors;
}

#define BY_CA "--signer ca.pem --key ca.key --index index.txt "
#define BY_DELEGATE "--signer ocsp.pem --key ocsp.key --index index.txt "
#define ASKED "--issuer ca.pem --request q.der "

constexpr Row kRows[] = {
    {"ByTheIssuer", BY_CA "--copy-nonce", ASKED, 0, "authority: ok (the signer is the issuer)"},
    {"ByADelegate", BY_DELEGATE "--copy-nonce", ASKED, 0, "authority: ok (delegated"},
    {"DelegateOfTheChain", BY_DELEGATE "--copy-nonce --no-certs", ASKED "--chain ocsp.pem", 0, "nonce: ok"},
    {"DelegateNotAtHand", BY_DELEGATE "--copy-nonce --no-certs", ASKED, 1, "signature: FAILED"},
    {"WithoutThePurpose", "--signer good.pem --key good.key --good", "--issuer ca.pem", 1,
     "authority: FAILED: its certificate does not have the OCSP signing purpose"},
    {"ByAStranger", "--signer stranger.pem --key stranger.key --good", "--issuer ca.pem", 1,
     "authority: FAILED: the signer does not chain to the issuer"},
    {"SignerNamedByTheUser", "--signer stranger.pem --key stranger.key --good", "--signer stranger.pem", 0,
     "authority: ok (the signer is named by the user)"},
    {"WrongSignerNamed", BY_CA, "--signer stranger.pem", 1, "responder: FAILED"},
    {"RevokedIsNoFailure", BY_CA "--copy-nonce", ASKED, 0,
     "status F002: revoked since 2026-01-01T00:00:00Z, keyCompromise"},
    {"RevokedWhenGoodIsRequired", BY_CA "--copy-nonce", ASKED "--require-good", 1,
     "status F002: FAILED: revoked"},
    {"UnknownWhenGoodIsRequired", "--signer ca.pem --key ca.key --unknown", "--issuer ca.pem --require-good",
     1, "status 1001: FAILED: unknown"},
    {"NonceMissing", BY_CA, ASKED, 1, "nonce: FAILED: the request has one, the answer has none"},
    {"NonceMissingAllowed", BY_CA, ASKED "--allow-missing-nonce", 0, "nonce: ok (the answer has none)"},
    {"NoNextUpdateIsTold", BY_CA, "--issuer ca.pem", 0, "freshness: ok (no nextUpdate in 2 of 2)"},
    {"NextUpdateIsOver", BY_CA "--this-update 20260101000000Z --valid-for 1d", "--issuer ca.pem", 1,
     "nextUpdate 2026-01-02T00:00:00Z is over"},
    {"NextUpdateWithinTheSkew", BY_CA "--valid-for 0", "--issuer ca.pem --skew 1h", 0, "freshness: ok"},
    {"TooOld", BY_CA "--this-update 20260101000000Z", "--issuer ca.pem --max-age 1d", 1,
     "is older than 86400"},
    {"FromTheFuture", BY_CA "--this-update 20990101000000Z", "--issuer ca.pem", 1, "is yet to come"},
};

INSTANTIATE_TEST_SUITE_P(Answers, Verify, testing::ValuesIn(kRows),
                         [](auto const& info) { return std::string(info.param.name); });

TEST(VerifyAnswers, MustBeAboutWhatWasAskedAndTheIssuer) {
    const struct {
        const char* ask;
        const char* line;
    } rows[] = {
        {"--serial 77", "entries: FAILED: there is none for the certificate 77"},
        {"--cert good.pem --cert revoked.pem --hash sha256",
         "entries: FAILED: there is none for the certificate 1001"},
        {"--cert good.pem --nonce 0102", "nonce: FAILED: the answer has another"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = commonAuthority().run(
            "$T request --issuer ca.pem --cert good.pem --cert revoked.pem -o a.der && $T respond --issuer "
            "ca.pem "
            "--signer ca.pem --key ca.key --index index.txt --copy-nonce -o r.der a.der && $T request "
            "--issuer "
            "ca.pem " +
            std::string(row.ask) + " -o b.der; $T verify --issuer ca.pem --request b.der r.der");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(contains(outcome.output, row.line)) << outcome.output << outcome.errors;
    }
    EXPECT_TRUE(contains(commonAuthority().run("$T verify --issuer stranger.pem r.der").output,
                         "entries: FAILED: the issuer is not that of the certificate 1001"));
}

TEST(VerifyAnswers, OneBitAnywhereInTheSignatureIsSeenAndOctetsBehindAreTold) {
    const std::string make =
        "$T request --issuer ca.pem --cert good.pem --no-nonce | $T respond --issuer ca.pem --signer ca.pem "
        "--key "
        "ca.key --good -o r.der && ";
    const auto changed = [&](const char* change) {
        return commonAuthority().run(make + change + " && $T verify --issuer ca.pem r.der");
    };
    EXPECT_EQ(changed("true").status, 0);
    const Outcome longer = changed("printf x >>r.der");
    EXPECT_EQ(longer.status, 1);
    EXPECT_TRUE(contains(longer.output, "octets behind: FAILED: 1 octets stand behind the message"));
    // The month of producedAt.
    const Outcome timeless =
        changed("LC_ALL=C sed -i '0,/\\(20[0-9][0-9]\\)[01][0-9]\\([0-9]*Z\\)/s//\\199\\2/' r.der");
    EXPECT_EQ(timeless.status, 1);
    EXPECT_EQ(timeless.output, "");
    EXPECT_TRUE(contains(timeless.errors,
                         "r.der: the response inside is malformed (0x80004005): its producedAt is no time\n"))
        << timeless.errors;
    const Outcome damaged = changed(
        "size=$(wc -c <r.der) && printf '\\377\\376' | dd of=r.der bs=1 seek=$((size-9)) conv=notrunc "
        "2>/dev/null");
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(contains(damaged.output, "signature: FAILED")) << damaged.output << damaged.errors;
}

TEST(VerifyAnswers, StatusWithoutAResponseIsAFailure) {
    const Outcome outcome =
        commonAuthority().run("printf '\\060\\003\\012\\001\\006' | $T verify --issuer ca.pem -");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "message: FAILED: the responder says unauthorized (6)\n");
    EXPECT_EQ(commonAuthority().run("$T verify --issuer ca.pem --signer ca.pem x").status, 2);
    EXPECT_EQ(commonAuthority().run("$T verify x").status, 2);
    EXPECT_EQ(commonAuthority().run("$T verify --issuer ca.pem --max-size 3 index.txt").errors,
              "mirvane-ocsp: index.txt: has more than 3 octets, which is the limit\n");
}

}  // namespace
