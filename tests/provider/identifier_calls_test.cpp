// What certificate identifiers ask of the platform, in which order, and what they leave behind.
#include <gtest/gtest.h>

#include <algorithm>

#include "ocsp/certificate_identifier.h"
#include "ocsp/made_certificates.h"
#include "platform/last_error.h"
#include "scripted_platform.h"
#include "support/failures.h"

namespace Mirvane::PKI::OCSP {
namespace {

using test::platform;
using test::thrownCode;

using Trace = std::vector<std::string>;

constexpr ALG_ID kSha1 = 0x8004;

CBlob named(std::string const& text) {
    return test::blobFrom(test::Octets(text.begin(), text.end()));
}

class IdentifierCalls : public testing::Test {
  protected:
    IdentifierCalls() {
        platform = {};
        platform.types = {{1, "one", {kSha1}}};
        sha1.put_algorithm("1.3.14.3.2.26");
    }

    void expectNothingLeft() const {
        const auto count = [](char const* action) {
            return std::count_if(platform.trace.begin(), platform.trace.end(),
                                 [&](std::string const& entry) { return entry.starts_with(action); });
        };
        EXPECT_EQ(count("open ") - failedOpen, count("close "));
        EXPECT_EQ(platform.liveHashes, 0);
        EXPECT_EQ(platform.totalReferences(), 0);
    }

    ASN1::CAlgorithmIdentifierEx sha1;
    int failedOpen = 0;
};

TEST_F(IdentifierCalls, ReadTheIssuerFirstAndEndTheCertificateInQuestionFirst) {
    const CCertID identifier(sha1, named("leaf"), named("ca"));
    EXPECT_EQ(platform.trace, (Trace{"open ca", "open leaf", "hash key of ca", "hash issuer in leaf",
                                     "length of serial number", "serial number", "close leaf", "close ca"}));
    // Each of the two hashes has a provider of its own.
    EXPECT_EQ(platform.calls["Acquire"], 2);
    EXPECT_EQ(identifier.get_serialNumber().encode(), named("\2\1\5"));
    expectNothingLeft();
}

TEST_F(IdentifierCalls, AreEndedWhereverCertIDFails) {
    for (char const* step : {"open ca", "open leaf", "CreateHash", "HashData", "HashSize", "HashValue",
                             "length of serial number", "serial number"}) {
        platform.trace.clear();
        platform.failures = {{step, 5}};
        EXPECT_EQ(thrownCode([&] { CCertID(sha1, named("leaf"), named("ca")); }), 0x80070005u) << step;
        failedOpen = std::string(step).starts_with("open ");
        expectNothingLeft();
    }
}

TEST_F(IdentifierCalls, OfTheWholeCertificateAreEndedWhereverTheyFail) {
    const CBlob certificate = test::MadeCertificate().encoded();
    const CCertIdWithSignature identifier(certificate);
    EXPECT_EQ(platform.trace, (Trace{"open long", "length of serial number", "serial number",
                                     "length of signed part", "signed part", "close long"}));
    EXPECT_EQ(identifier.get_tbsCertificateHash(), named("\xAB"));
    for (std::string const& step : Trace(platform.trace.begin(), platform.trace.end() - 1)) {
        platform.trace.clear();
        platform.failures = {{step, 5}};
        EXPECT_EQ(thrownCode([&] { CCertIdWithSignature{certificate}; }), 0x80070005u) << step;
        failedOpen = step.starts_with("open ");
        expectNothingLeft();
    }
}

// Where there is no context nothing can go on, whatever the slot says.
TEST_F(IdentifierCalls, ARefusedCertificateWithoutACodeIsAnInvalidArgument) {
    for (char const* step : {"open ca", "open leaf"}) {
        platform.failures = {{step, 0}};
        EXPECT_EQ(thrownCode([&] { CCertID(sha1, named("leaf"), named("ca")); }), 0x80070057u) << step;
    }
    EXPECT_EQ(thrownCode([&] { CCertIdWithSignature{named("leaf")}; }), 0x80070057u);
}

TEST_F(IdentifierCalls, AFailureOfTheSerialNumberIsThrownEvenWithoutACode) {
    platform.failures = {{"serial number", 0}};
    EXPECT_THROW(CCertID(sha1, named("leaf"), named("ca")), ATL::CAtlException);
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
