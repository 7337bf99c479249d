// Signing and verifying while the platform or memory fails: each call in turn.
#include <functional>
#include <new>
#include <set>

#include "messages.h"
#include "ocsp_test.h"
#include "support/failing_memory.h"
#include "watched_platform.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;

constexpr unsigned kBadSignature = 0x80090006;
constexpr unsigned kProviderFailed = 0x80090020;

// Runs `action` with its first, second, ... call of the platform failing with the code, and tells `look`
// which function that was and what was thrown.
void sweepPlatform(DWORD code, std::function<void()> const& action,
                   std::function<void(std::string const&, unsigned)> const& look) {
    const int before = watched.alive();
    for (int index = 0;; ++index) {
        watched.made = 0;
        watched.failAt = index;
        watched.code = code;
        watched.failed.clear();
        const unsigned thrown = thrownCode(action);
        watched.failAt = -1;
        EXPECT_EQ(watched.alive(), before) << watched.failed;
        if (watched.failed.empty()) {
            EXPECT_EQ(thrown, 0u);
            EXPECT_GE(index, 6);
            return;
        }
        look(watched.failed, thrown);
    }
}

// `sign` changes all that it may, so that one field stored too early shows.
template <typename Message>
void expectAllOrNothing(Message const& message, unsigned whenUnknown,
                        std::function<void(Message&, HCRYPTPROV)> const& sign) {
    const Provider provider(signerOfKind("P-256")->open());
    const CBlob before = message.encode();
    Message subject;
    const auto action = [&] {
        subject = message;
        sign(subject, provider);
    };
    sweepPlatform(kProviderFailed, action, [&](std::string const& failed, unsigned thrown) {
        const bool isUnknown = failed == "CryptFindOIDInfo" || failed == "CertOIDToAlgId";
        const bool isIgnored = failed == "CryptContextAddRef";
        EXPECT_EQ(thrown, isIgnored ? 0 : isUnknown ? whenUnknown : kProviderFailed) << failed;
        // The reference is given back when all is stored.
        const bool isStored = isIgnored || failed == "CryptReleaseContext";
        EXPECT_EQ(subject.encode() != before, isStored) << failed;
    });
    // A failure that gives no reason is taken for none.
    sweepPlatform(0, action, [](std::string const&, unsigned) {});
}

TEST(ProviderFailures, SigningStoresAllOrNothing) {
    const CBlobList certificates = {rsaSigner().encoded};
    expectAllOrNothing<CRequestMessage>(
        signedRequest(), kUnknownAlgorithm, [&](CRequestMessage& message, HCRYPTPROV provider) {
            message.sign(provider, AT_SIGNATURE, algorithm("1.2.840.10045.4.3.2"), &certificates);
        });
    expectAllOrNothing<CBasicResponse>(
        signedResponse(), kBadAlgorithm, [](CBasicResponse& message, HCRYPTPROV provider) {
            message.sign(provider, AT_SIGNATURE, algorithm("1.2.840.10045.4.3.2"));
        });
}

template <typename Message>
void expectNeverTrue(CBlob const& encoded) {
    bool accepted = false;
    const auto action = [&] {
        accepted = false;
        Message message;
        message.decode(encoded);
        accepted = message.verify(rsaSigner().encoded);
    };
    for (DWORD code : {DWORD{kProviderFailed}, DWORD{kBadSignature}, DWORD{0}}) {
        sweepPlatform(code, action, [&](std::string const& failed, unsigned thrown) {
            // Without the platform's own choice a provider is searched for.
            const bool isIgnored =
                failed == "MVCAPI_I_CryptGetDefaultCryptProv" || failed == "CryptReleaseContext";
            EXPECT_EQ(accepted, isIgnored) << failed;
            const bool isRejected = failed == "CryptVerifySignatureA" && code == kBadSignature;
            const unsigned expected = isIgnored || isRejected      ? 0
                                      : failed == "CertOIDToAlgId" ? kBadAlgorithm
                                                                   : code;
            EXPECT_TRUE(code == 0 || thrown == expected) << failed;
        });
    }
}

TEST(ProviderFailures, VerifyingThrowsAndIsNeverTrue) {
    expectNeverTrue<CRequestMessage>(signedRequest().encode());
    expectNeverTrue<CBasicResponse>(signedResponse().encode());
}

TEST(ProviderFailures, AFailureWithoutAReasonIsThrownWhereNothingCanGoOn) {
    const CBasicResponse message = signedResponse();
    std::set<std::string> thrownFrom;
    for (int index = 0; index < 10; ++index) {
        watched = {.failAt = index};
        try {
            message.verify(rsaSigner().encoded);
        } catch (ATL::CAtlException const& failure) {
            if (failure.m_hr == 0) thrownFrom.insert(watched.failed);
        }
    }
    watched = {};
    EXPECT_EQ(thrownFrom, (std::set<std::string>{"CertCreateCertificateContext", "CryptImportPublicKeyInfo",
                                                 "CryptVerifySignatureA"}));
}

TEST(ProviderFailures, AResponderIdThrowsWhatTheProviderLeft) {
    sweepPlatform(
        kProviderFailed, [] { CResponderID::fromCert(CResponderID::byKey, rsaSigner().encoded); },
        [](std::string const& failed, unsigned thrown) {
            EXPECT_EQ(thrown, failed == "CryptReleaseContext" ? 0 : kProviderFailed) << failed;
        });
    watched = {.failAt = 0};
    EXPECT_EQ(thrownCode([] { CResponderID::fromCert(CResponderID::byKey, rsaSigner().encoded); }),
              kInvalidArgument);
    watched = {};
}

// Each allocation fails in turn, of the heap or of a context: no handle stays.
TEST(MemoryFailures, LeaveNoHandleOfThePlatform) {
    const Signer& signer = *signerOfKind("P-256");
    const Provider provider(signer.open());
    const CBlobList certificates = {signer.encoded};
    CRequestMessage request = signedRequest(signer);
    CBasicResponse response = signedResponse(signer);
    const std::function<void()> actions[] = {
        [&] { request.sign(provider, AT_SIGNATURE, signer.algorithm, &certificates); },
        [&] { response.sign(provider, AT_SIGNATURE, signer.algorithm); },
        [&] { EXPECT_TRUE(response.verify(signer.encoded)); },
        [&] { CResponderID::fromCert(CResponderID::byKey, signer.encoded); },
    };
    const int before = watched.alive();
    for (auto const& action : actions) {
        bool happened = true;
        for (int index = 0; happened; ++index) {
            const FailingMemory failing(index);
            try {
                action();
            } catch (std::bad_alloc const&) {
            } catch (ATL::CAtlException const&) {
            }
            happened = failing.happened();
            EXPECT_EQ(watched.alive(), before) << index;
        }
    }
    EXPECT_TRUE(request.verify(signer.encoded));
    EXPECT_TRUE(response.verify(signer.encoded));
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
