#include "verification.h"

#include <fmt/format.h>
#include <openssl/x509v3.h>

#include <cstring>
#include <string_view>
#include <unordered_map>

#include "algorithms.h"
#include "authority.h"
#include "common/printable.h"
#include "describe.h"
#include "extension_text.h"
#include "matching.h"
#include "nonce.h"
#include "reason.h"
#include "time_text.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::CDateTime;
using namespace Mirvane::ASN1;
using namespace Mirvane::PKI::OCSP;

using Problem = std::optional<std::string>;

class Report {
  public:
    bool holds() const { return holds_; }

    void add(std::string_view check, Problem const& problem, std::string const& remark = {}) {
        if (problem) {
            fmt::print("{}: FAILED: {}\n", check, printable(*problem));
            holds_ = false;
        } else if (remark.empty()) {
            fmt::print("{}: ok\n", check);
        } else {
            fmt::print("{}: ok ({})\n", check, printable(remark));
        }
    }

  private:
    bool holds_ = true;
};

// 0 good, 1 unknown, 2 revoked.
int badness(CCertStatus const& status) {
    return status.isGood() ? 0 : status.isUnknown() ? 1 : 2;
}

class Verification {
  public:
    Verification(CBasicResponse const& response, CBlob const& octets, Policy const& policy)
        : response_(response), policy_(policy), inside_(readable(certificatesInside(octets))) {}

    bool run(Problem const& trailing) {
        chooseIssuer();
        chooseSigner();
        checkAuthority();
        checkEntries();
        report_.add("extensions", extensionProblem(), {});
        report_.add("produced", producedProblem(), timeText(response_.get_producedAt()));
        checkFreshness();
        checkNonce();
        report_.add("octets behind", trailing, {});
        reportStatus();
        return report_.holds();
    }

  private:
    std::vector<Certificate> others() const {
        std::vector<Certificate> result = policy_.chain;
        result.insert(result.end(), inside_.begin(), inside_.end());
        return result;
    }

    bool coversAllEntries(EntryIssuer& issuer) const {
        for (CSingleResponse const& entry : response_.get_responses()) {
            if (!issuer.covers(entry.get_reqCert())) return false;
        }
        return true;
    }

    // The issuer of the certificates that are asked about: the one named or, if the entries do not fit that,
    // an authority of the chain given that stands below it.
    void chooseIssuer() {
        if (!policy_.issuer) return;
        issuer_.emplace(*policy_.issuer);
        if (coversAllEntries(*issuer_)) return;
        for (Certificate const& candidate : policy_.chain) {
            EntryIssuer issuer(candidate);
            if (X509_check_ca(candidate.get()) != 1 || !coversAllEntries(issuer)) continue;
            if (chainProblem(candidate, *policy_.issuer, policy_.chain, policy_.at)) continue;
            issuer_.emplace(candidate);
            return;
        }
    }

    void chooseSigner() {
        if (policy_.signer) {
            signer_ = policy_.signer;
            report_.add("signature", signatureProblem(response_, *signer_), signatureRemark());
        } else {
            std::vector<Certificate> candidates = {issuer_->certificate()};
            for (Certificate const& other : others())
                candidates.push_back(other);
            signer_ = findSigner(response_, candidates);
            report_.add("signature", signer_ ? Problem() : problemWithout(candidates), signatureRemark());
        }
        const bool isNamed = signer_ && names(response_.get_responderID(), *signer_);
        report_.add("responder",
                    isNamed   ? Problem()
                    : signer_ ? Problem("the responder identifier does not name the signer, " +
                                        nameText(signer_->subject()))
                              : Problem("there is no signer that the responder identifier could name"),
                    signer_ ? nameText(signer_->subject()) : "");
    }

    // Why none of the candidates is the signer: of the one that the responder identifier names, if there is
    // one.
    std::string problemWithout(std::vector<Certificate> const& candidates) const {
        for (Certificate const& candidate : candidates) {
            if (!names(response_.get_responderID(), candidate)) continue;
            if (auto problem = signatureProblem(response_, candidate)) return *problem;
        }
        return "it is not one by the key of a certificate at hand";
    }

    std::string signatureRemark() const {
        return std::string(algorithmName(response_.get_signatureAlgorithm()->get_algorithm()));
    }

    void checkAuthority() {
        if (policy_.signer) {
            report_.add("authority", {}, "the signer is named by the user");
        } else if (!signer_) {
            report_.add("authority", "there is no signer");
        } else if (signer_->isSamePartyAs(issuer_->certificate())) {
            report_.add("authority", {}, "the signer is the issuer");
        } else if (auto problem = chainProblem(*signer_, *policy_.issuer, others(), policy_.at)) {
            report_.add("authority", "the signer does not chain to the issuer: " + *problem);
        } else {
            report_.add("authority", delegationProblem(*signer_), "delegated by the issuer");
        }
    }

    Problem entryProblem() {
        if (response_.get_responses().empty()) return "there are none";
        if (issuer_) {
            for (CSingleResponse const& entry : response_.get_responses()) {
                if (!issuer_->covers(entry.get_reqCert())) {
                    return "the issuer is not that of the certificate " + entryName(entry.get_reqCert());
                }
            }
        }
        if (!policy_.request) return {};
        for (CSingleRequest const& asked : policy_.request->get_requestList()) {
            if (!worst_.contains(identity(asked.get_reqCert()))) {
                return "there is none for the certificate " + entryName(asked.get_reqCert()) +
                       " that was asked for";
            }
        }
        return {};
    }

    void checkEntries() {
        for (CSingleResponse const& entry : response_.get_responses()) {
            auto [place, isNew] = worst_.try_emplace(identity(entry.get_reqCert()), &entry);
            if (badness(place->second->get_certStatus()) < badness(entry.get_certStatus())) {
                place->second = &entry;
            }
        }
        report_.add("entries", entryProblem(),
                    fmt::format("{}{}", response_.get_responses().size(),
                                issuer_ ? "" : ", not held against an issuer"));
    }

    static Problem criticalProblem(CExtensions const* extensions) {
        if (!extensions) return {};
        for (CExtension const& extension : *extensions) {
            if (extension.get_critical() && !isKnownExtension(extension.get_extnID())) {
                return fmt::format("{} is critical and unknown", extension.get_extnID());
            }
        }
        return {};
    }

    Problem extensionProblem() const {
        if (auto problem = criticalProblem(response_.get_responseExtensions())) return problem;
        for (CSingleResponse const& entry : response_.get_responses()) {
            if (auto problem = criticalProblem(entry.get_singleExtensions())) return problem;
        }
        return {};
    }

    Problem producedProblem() const {
        CDateTime const& produced = response_.get_producedAt();
        if (produced > shifted(policy_.at, policy_.skew)) {
            return fmt::format("at {}, which is yet to come", timeText(produced));
        }
        X509* const authority = issuer_ ? issuer_->certificate().get() : signer_->get();
        const auto from = toDateTime(X509_get0_notBefore(authority));
        const auto until = toDateTime(X509_get0_notAfter(authority));
        if (!from || !until || produced < *from || produced > *until) {
            return fmt::format("at {}, when the certificate of {} is not valid", timeText(produced),
                               issuer_ ? "the issuer" : "the signer");
        }
        return {};
    }

    Problem freshnessProblem(CSingleResponse const& entry) const {
        CDateTime const& thisUpdate = entry.get_thisUpdate();
        CDateTime const* const nextUpdate = entry.get_nextUpdate();
        if (thisUpdate > shifted(policy_.at, policy_.skew)) {
            return "thisUpdate " + timeText(thisUpdate) + " is yet to come";
        }
        if (nextUpdate && *nextUpdate < thisUpdate) {
            return "nextUpdate " + timeText(*nextUpdate) + " is before thisUpdate";
        }
        if (nextUpdate && *nextUpdate < shifted(policy_.at, -policy_.skew)) {
            return "nextUpdate " + timeText(*nextUpdate) + " is over";
        }
        if (policy_.maxAge && thisUpdate < shifted(policy_.at, -*policy_.maxAge)) {
            return fmt::format("thisUpdate {} is older than {} seconds", timeText(thisUpdate),
                               *policy_.maxAge);
        }
        return {};
    }

    void checkFreshness() {
        std::size_t withoutEnd = 0;
        for (CSingleResponse const& entry : response_.get_responses()) {
            if (auto problem = freshnessProblem(entry)) {
                report_.add("freshness", entryName(entry.get_reqCert()) + ": " + *problem);
                return;
            }
            withoutEnd += entry.get_nextUpdate() ? 0 : 1;
        }
        report_.add("freshness", {},
                    withoutEnd ? fmt::format("no nextUpdate in {} of {}", withoutEnd,
                                             response_.get_responses().size())
                               : "");
    }

    void checkNonce() {
        if (!policy_.request) return report_.add("nonce", {}, "no request to hold it against");
        CExtension const* const sent = findNonce(policy_.request->get_requestExtensions());
        CExtension const* const came = findNonce(response_.get_responseExtensions());
        if (!sent) return report_.add("nonce", {}, "the request has none");
        if (!came) {
            const Problem problem = "the request has one, the answer has none";
            return report_.add("nonce", policy_.allowMissingNonce ? Problem() : problem,
                               "the answer has none");
        }
        const bool isSame = nonceOf(sent->get_extnValue()) == nonceOf(came->get_extnValue());
        report_.add("nonce", isSame ? Problem() : Problem("the answer has another than the request"));
    }

    void reportStatus() {
        if (!policy_.request) {
            for (CSingleResponse const& entry : response_.get_responses())
                reportStatus(entry);
            return;
        }
        for (CSingleRequest const& asked : policy_.request->get_requestList()) {
            const auto found = worst_.find(identity(asked.get_reqCert()));
            if (found != worst_.end()) reportStatus(*found->second);
        }
    }

    void reportStatus(CSingleResponse const& entry) {
        CCertStatus const& status = entry.get_certStatus();
        std::string text(statusName(status));
        if (status.isRevoked()) {
            text += " since " + timeText(*status.get_revocationTime());
            if (status.get_revocationReason()) text += ", " + reasonName(*status.get_revocationReason());
        }
        const std::string check = "status " + entryName(entry.get_reqCert());
        if (policy_.requireGood && !status.isGood()) {
            report_.add(check, text);
        } else {
            fmt::print("{}: {}\n", check, text);
        }
    }

    CBasicResponse const& response_;
    Policy const& policy_;
    std::vector<Certificate> inside_;
    std::optional<EntryIssuer> issuer_;
    std::optional<Certificate> signer_;
    // For each identifier the entry that says the worst.
    std::unordered_map<std::string, CSingleResponse const*> worst_;
    Report report_;
};

// Both levels: the message in its file, and the response in the message.
Problem trailingProblem(Octets const& octets, CBlob const& response) {
    const std::size_t behindMessage = trailingOctets(octets.data(), octets.size());
    if (behindMessage > 0) return fmt::format("{} octets stand behind the message", behindMessage);
    const std::size_t behindResponse = trailingOctets(response.pbData(), response.cbData());
    if (behindResponse > 0) return fmt::format("{} octets stand behind the response inside", behindResponse);
    return {};
}

Problem envelopeProblem(CResponseMessage const& message) {
    const ResponseStatus status = message.get_responseStatus();
    if (status != successful) {
        return fmt::format("the responder says {} ({})", statusName(status), static_cast<unsigned>(status));
    }
    if (!message.get_response()) return "there is no response in it";
    if (std::strcmp(message.get_responseType(), kBasicResponseType) != 0) {
        return fmt::format("the response is of the type {}", message.get_responseType());
    }
    if (message.get_response()->cbData() == 0) return "the response in it is empty";
    return {};
}

}  // namespace

bool verifyResponse(Octets const& octets, std::string const& source, Policy const& policy) {
    const CResponseMessage message = decodeResponse(octets, source);
    const Problem problem = envelopeProblem(message);
    const auto response = problem ? nullptr : decodeBasicResponse(message, source);
    Report report;
    report.add("message", problem, "successful");
    if (problem) return false;
    return Verification(*response, *message.get_response(), policy)
        .run(trailingProblem(octets, *message.get_response()));
}

}  // namespace tools
