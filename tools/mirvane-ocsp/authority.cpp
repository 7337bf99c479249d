#include "authority.h"

#include <openssl/err.h>
#include <openssl/x509_vfy.h>
#include <openssl/x509v3.h>

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <memory>

#include "algorithms.h"
#include "base/exception.h"

namespace tools {
namespace {

using Mirvane::CDateTime;
using namespace Mirvane::PKI::OCSP;

struct StoreFree {
    void operator()(X509_STORE* store) const { X509_STORE_free(store); }
};
struct StoreContextFree {
    void operator()(X509_STORE_CTX* context) const { X509_STORE_CTX_free(context); }
};
struct StackFree {
    void operator()(STACK_OF(X509) * stack) const { sk_X509_free(stack); }
};

std::optional<Certificate> firstThatVerifies(CBasicResponse const& response,
                                             std::vector<Certificate> const& candidates) {
    std::size_t trials = 0;
    for (Certificate const& candidate : candidates) {
        if (++trials > kMostTrials) break;
        if (!signatureProblem(response, candidate)) return candidate;
    }
    return std::nullopt;
}

// getTime() is not signed.
std::time_t unixTime(CDateTime const& time) {
    return time < CDateTime(0, 0u) ? 0 : static_cast<std::time_t>(time.getTime());
}

}  // namespace

bool names(CResponderID const& responder, Certificate const& certificate) {
    try {
        return responder == CResponderID::fromCert(responder.get_type(), certificate.octets());
    } catch (ATL::CAtlException const&) {
        return false;
    }
}

std::optional<std::string> signatureProblem(CBasicResponse const& response, Certificate const& signer) {
    const std::string algorithm = response.get_signatureAlgorithm()->get_algorithm();
    try {
        if (!response.verify(signer.octets()))
            return "it is not one by the key of " + nameText(signer.subject());
    } catch (ATL::CAtlException const& failure) {
        if (auto problem = unservedProblem(signer)) return problem;
        return fmt::format("{} ({}) cannot be checked with the key of {} (0x{:08X})",
                           algorithmName(algorithm), algorithm, nameText(signer.subject()),
                           static_cast<std::uint32_t>(failure.m_hr));
    }
    if (!fitsKey(algorithm, signer)) return "the signature algorithm does not fit the signer's key";
    return std::nullopt;
}

std::optional<Certificate> findSigner(CBasicResponse const& response,
                                      std::vector<Certificate> const& candidates) {
    std::vector<Certificate> named;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(named),
                 [&](Certificate const& candidate) { return names(response.get_responderID(), candidate); });
    return firstThatVerifies(response, named.empty() ? candidates : named);
}

std::optional<std::string> chainProblem(Certificate const& certificate, Certificate const& anchor,
                                        std::vector<Certificate> const& others, CDateTime const& at) {
    const std::unique_ptr<X509_STORE, StoreFree> store(X509_STORE_new());
    const std::unique_ptr<X509_STORE_CTX, StoreContextFree> context(X509_STORE_CTX_new());
    const std::unique_ptr<STACK_OF(X509), StackFree> untrusted(sk_X509_new_null());
    if (!store || !context || !untrusted || X509_STORE_add_cert(store.get(), anchor.get()) != 1) {
        throw std::bad_alloc();
    }
    for (Certificate const& other : others)
        sk_X509_push(untrusted.get(), other.get());
    if (X509_STORE_CTX_init(context.get(), store.get(), certificate.get(), untrusted.get()) != 1) {
        throw std::bad_alloc();
    }
    X509_STORE_CTX_set_flags(context.get(), X509_V_FLAG_PARTIAL_CHAIN);
    X509_STORE_CTX_set_time(context.get(), 0, unixTime(at));
    const bool isGood = X509_verify_cert(context.get()) == 1;
    const int error = X509_STORE_CTX_get_error(context.get());
    ERR_clear_error();
    if (isGood) return std::nullopt;
    return X509_verify_cert_error_string(error);
}

std::optional<std::string> delegationProblem(Certificate const& certificate) {
    const bool hasPurposes = (X509_get_extension_flags(certificate.get()) & EXFLAG_XKUSAGE) != 0;
    if (!hasPurposes || (X509_get_extended_key_usage(certificate.get()) & XKU_OCSP_SIGN) == 0) {
        return "its certificate does not have the OCSP signing purpose";
    }
    constexpr std::uint32_t kSigning = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
    if ((X509_get_key_usage(certificate.get()) & kSigning) == 0) {
        return "the key usage of its certificate does not allow signatures";
    }
    return std::nullopt;
}

}  // namespace tools
