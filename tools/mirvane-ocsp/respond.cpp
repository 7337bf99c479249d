#include "respond.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "algorithms.h"
#include "authority.h"
#include "common/program.h"
#include "describe.h"
#include "extension_text.h"
#include "matching.h"
#include "message.h"
#include "nonce.h"
#include "option_values.h"
#include "passphrase.h"
#include "signing.h"
#include "status_source.h"
#include "time_text.h"

namespace {

using Mirvane::CBlob;
using Mirvane::CDateTime;
using namespace Mirvane::PKI::OCSP;
using tools::Certificate;
using tools::InputError;
using tools::StatusSource;

struct RespondOptions {
    std::string issuer;
    std::string signer;
    std::string key;
    std::string digest;
    std::string passphrase;
    std::string index;
    std::string list;
    bool isGood = false;
    std::string revoked;
    bool isUnknown = false;
    std::string responder = "name";
    std::string thisUpdate;
    std::string nextUpdate;
    std::string validFor;
    int digits = 0;
    bool copyNonce = false;
    bool requireSigned = false;
    bool noCertificates = false;
    std::vector<std::string> certificates;
    std::string output = "-";
    std::size_t limit = tools::kUsualLimit;
    std::string file = "-";
};

// The end of answering with a status alone.
struct Refusal {
    ResponseStatus status;
    std::string reason;
};

std::optional<Refusal> unknownExtension(Mirvane::ASN1::CExtensions const* extensions) {
    if (!extensions) return std::nullopt;
    for (Mirvane::ASN1::CExtension const& extension : *extensions) {
        if (extension.get_critical() && !tools::isKnownExtension(extension.get_extnID())) {
            return Refusal{malformedRequest,
                           fmt::format("the extension {} is critical and unknown", extension.get_extnID())};
        }
    }
    return std::nullopt;
}

std::optional<Refusal> refusalOfForm(CRequestMessage const& request) {
    if (request.get_version() > 1) return Refusal{malformedRequest, "the version is unknown"};
    if (request.get_requestList().empty()) return Refusal{malformedRequest, "there are no entries"};
    if (auto refusal = unknownExtension(request.get_requestExtensions())) return refusal;
    for (CSingleRequest const& entry : request.get_requestList()) {
        if (auto refusal = unknownExtension(entry.get_singleRequestExtensions())) return refusal;
    }
    return std::nullopt;
}

bool isSignedByOneInside(CRequestMessage const& request, tools::Octets const& octets) {
    std::size_t trials = 0;
    for (Certificate const& certificate : tools::readable(tools::certificatesInside(octets))) {
        if (++trials > tools::kMostTrials) break;
        try {
            if (request.verify(certificate.octets())) return true;
        } catch (ATL::CAtlException const&) {
        }
    }
    return false;
}

std::optional<Refusal> refusalOfSignature(CRequestMessage const& request, tools::Octets const& octets) {
    if (!request.get_signature()) return Refusal{sigRequired, "the request is not signed"};
    if (isSignedByOneInside(request, octets)) return std::nullopt;
    return Refusal{unauthorized, "the signature is not one by a certificate in the request"};
}

std::optional<Refusal> refusalOfEntries(CRequestMessage const& request, Certificate const& issuer) {
    tools::EntryIssuer own(issuer);
    for (CSingleRequest const& entry : request.get_requestList()) {
        if (!own.covers(entry.get_reqCert())) {
            return Refusal{unauthorized, fmt::format("the certificate {} is of another issuer",
                                                     tools::entryName(entry.get_reqCert()))};
        }
    }
    return std::nullopt;
}

StatusSource sourceOf(RespondOptions const& options, Certificate const& issuer, CDateTime const& now) {
    if (!options.index.empty()) return tools::readDatabase(options.index);
    if (!options.list.empty()) return tools::readRevocationList(options.list, issuer, now);
    StatusSource source;
    if (options.isGood) source.unlisted = tools::goodStatus();
    if (!options.revoked.empty()) source.unlisted = tools::parseRevoked(options.revoked);
    return source;
}

struct Validity {
    CDateTime thisUpdate;
    std::optional<CDateTime> nextUpdate;
};

void demandOrder(RespondOptions const& options, Validity const& validity) {
    if (!validity.nextUpdate || *validity.nextUpdate >= validity.thisUpdate) return;
    const std::string problem =
        fmt::format("the nextUpdate {} is before the thisUpdate {}", tools::timeText(*validity.nextUpdate),
                    tools::timeText(validity.thisUpdate));
    if (!options.nextUpdate.empty()) throw CLI::ValidationError("--next-update", problem);
    if (!options.thisUpdate.empty()) throw CLI::ValidationError("--this-update", problem);
    throw InputError(tools::sourceName(options.list), problem);
}

Validity validityOf(RespondOptions const& options, StatusSource const& source, CDateTime const& now) {
    Validity result{
        options.thisUpdate.empty() ? source.thisUpdate.value_or(now) : tools::parseTime(options.thisUpdate),
        source.nextUpdate};
    if (!options.nextUpdate.empty()) result.nextUpdate = tools::parseTime(options.nextUpdate);
    if (!options.validFor.empty()) {
        result.nextUpdate = tools::shifted(result.thisUpdate, tools::parseSpan(options.validFor));
    }
    demandOrder(options, result);
    return result;
}

CSingleResponseList entriesOf(CRequestMessage const& request, StatusSource const& source,
                              Validity const& validity) {
    CSingleResponseList entries;
    for (CSingleRequest const& asked : request.get_requestList()) {
        entries.emplace_back(asked.get_reqCert(), source.statusOf(asked.get_reqCert()), validity.thisUpdate);
        if (validity.nextUpdate) entries.back().put_nextUpdate(&*validity.nextUpdate);
    }
    return entries;
}

// A signer that is not the issuer has to show its certificate.
std::vector<Certificate> certificatesOf(RespondOptions const& options, Certificate const& signer,
                                        Certificate const& issuer) {
    if (options.noCertificates) return {};
    std::vector<Certificate> result = tools::readCertificates(options.certificates);
    if (!signer.isSamePartyAs(issuer)) result.insert(result.begin(), signer);
    return result;
}

CResponderID responderOf(RespondOptions const& options, Certificate const& signer) {
    const auto type = options.responder == "key" ? CResponderID::byKey : CResponderID::byName;
    if (type == CResponderID::byName && !tools::isEncodableName(signer.subject())) {
        throw InputError(signer.source(),
                         "the responder cannot be named by its name, " + tools::nameText(signer.subject()) +
                             ": the library does not take a value in it; --responder-id key does without");
    }
    return tools::explained(signer.source(), "cannot be a responder",
                            [&] { return CResponderID::fromCert(type, signer.octets()); });
}

// All that an answer needs besides the request, read before the first look at that.
class Responder {
  public:
    explicit Responder(RespondOptions const& options)
        : options_(options),
          // Rounding to the second could date an answer into the future.
          now_(options.digits == 0 ? tools::currentSecond() : CDateTime::Now()),
          issuer_(tools::readCertificate(options.issuer)),
          key_{options.key, tools::readCertificate(options.signer), options.digest, options.passphrase},
          source_(sourceOf(options, issuer_, now_)),
          validity_(validityOf(options, source_, now_)),
          certificates_(tools::blobs(certificatesOf(options, key_.certificate, issuer_))),
          responder_(responderOf(options, key_.certificate)) {}

    std::optional<Refusal> refusalOf(CRequestMessage const& request, tools::Octets const& octets) const {
        if (tools::trailingOctets(octets.data(), octets.size()) > 0) {
            return Refusal{malformedRequest, "octets stand behind the request"};
        }
        if (auto refusal = refusalOfForm(request)) return refusal;
        if (options_.requireSigned) {
            if (auto refusal = refusalOfSignature(request, octets)) return refusal;
        }
        return refusalOfEntries(request, issuer_);
    }

    // What the user should know of a signature that nobody required; nothing if there is nothing.
    std::optional<std::string> remarkOn(CRequestMessage const& request, tools::Octets const& octets) const {
        if (options_.requireSigned || !request.get_signature()) return std::nullopt;
        const auto refusal = refusalOfSignature(request, octets);
        return refusal ? std::optional(refusal->reason) : std::nullopt;
    }

    CResponseMessage answer(CRequestMessage const& request) const {
        CBasicResponse response(now_, responder_);
        response.put_clockPrecisionDigits(options_.digits);
        response.put_responses(entriesOf(request, source_, validity_));
        if (!certificates_.empty()) response.put_certs(&certificates_);
        Mirvane::ASN1::CExtension const* const nonce = tools::findNonce(request.get_requestExtensions());
        if (options_.copyNonce && nonce) {
            Mirvane::ASN1::CExtensions extensions;
            extensions.insert(*nonce);
            response.put_responseExtensions(&extensions);
        }
        tools::sign(response, key_);
        CResponseMessage message;
        message.put_responseStatus(successful);
        const CBlob encoded =
            tools::explained("the response", "cannot be encoded", [&] { return response.encode(); });
        message.put_response(tools::kBasicResponseType, &encoded);
        return message;
    }

  private:
    RespondOptions const& options_;
    CDateTime now_;
    Certificate issuer_;
    tools::SigningKey key_;
    StatusSource source_;
    Validity validity_;
    Mirvane::CBlobList certificates_;
    CResponderID responder_;
};

// Nothing is signed for a request that is refused, and the user is told why.
CResponseMessage refuse(CLI::App const& app, std::string const& file, Refusal const& refusal) {
    tools::complain(app, fmt::format("{}: answered {}: {}", tools::sourceName(file),
                                     tools::statusName(refusal.status), refusal.reason));
    CResponseMessage message;
    message.put_responseStatus(refusal.status);
    return message;
}

CResponseMessage answer(CLI::App const& app, RespondOptions const& options) {
    const Responder responder(options);
    const std::string source = tools::sourceName(options.file);
    tools::Octets octets;
    std::unique_ptr<CRequestMessage> request;
    try {
        octets = tools::readFile(options.file, options.limit);
    } catch (tools::EmptyInput const& error) {
        return refuse(app, options.file, {malformedRequest, "the file " + error.problem()});
    }
    try {
        octets = tools::withoutPem(std::move(octets), source);
        request = tools::decodeRequest(octets, source);
    } catch (InputError const& error) {
        return refuse(app, options.file, {malformedRequest, "the file " + error.problem()});
    }
    if (const auto refusal = responder.refusalOf(*request, octets)) {
        return refuse(app, options.file, *refusal);
    }
    if (const auto remark = responder.remarkOn(*request, octets)) {
        tools::complain(app, fmt::format("{}: {}; answered all the same", source, *remark));
    }
    return responder.answer(*request);
}

void respond(CLI::App const& app, RespondOptions const& options) {
    tools::writeOutput(options.output, answer(app, options).encode());
}

void addSourceOptions(CLI::App* command, RespondOptions& options) {
    CLI::Option_group* const source = command->add_option_group("Status", "One of these");
    source->add_option("--index", options.index, "From the certificate database of openssl ca, index.txt")
        ->type_name("FILE");
    source->add_option("--crl", options.list, "From a revocation list of the issuer")->type_name("FILE");
    source->add_flag("--good", options.isGood, "Good for all");
    source->add_option("--revoked", options.revoked, "Revoked for all")
        ->type_name("TIME[,REASON]")
        ->check(tools::readBy(tools::parseRevoked));
    source->add_flag("--unknown", options.isUnknown, "Unknown for all");
    source->require_option(1);
}

void addTimeOptions(CLI::App* command, RespondOptions& options) {
    command
        ->add_option(
            "--this-update", options.thisUpdate,
            std::string("When the status was known (now, or when the list was made): ") + tools::kTimeForms)
        ->type_name("TIME")
        ->check(tools::readBy(tools::parseTime));
    CLI::Option* const until =
        command->add_option("--next-update", options.nextUpdate, "When there will be more to know")
            ->type_name("TIME")
            ->check(tools::readBy(tools::parseTime));
    command->add_option("--valid-for", options.validFor, "The same as a span behind thisUpdate: 30m, 12h, 1d")
        ->type_name("SPAN")
        ->check(tools::readBy(tools::parseSpan))
        ->excludes(until);
    command->add_option("--digits", options.digits, "Digits of a second in times (0, as RFC 6960 wants it)")
        ->check(CLI::Range(0, 6));
}

}  // namespace

void addRespondCommand(CLI::App& app) {
    auto options = std::make_shared<RespondOptions>();
    CLI::App* command = app.add_subcommand("respond", "Answer an OCSP request");
    command->add_option("--issuer", options->issuer, "Certificate of the issuer that is answered for")
        ->required()
        ->type_name("FILE");
    command->add_option("--signer", options->signer, "Certificate of the responder")
        ->required()
        ->type_name("FILE");
    command->add_option("--key", options->key, "Its key (file or URI)")->required()->type_name("KEY");
    tools::addPassphraseOption(command, options->passphrase);
    command->add_option("--digest", options->digest, tools::kDigestPurpose)
        ->check(CLI::IsMember(tools::hashNames()));
    addSourceOptions(command, *options);
    command->add_option("--responder-id", options->responder, "How the responder is named (name)")
        ->check(CLI::IsMember({"name", "key"}));
    addTimeOptions(command, *options);
    command->add_flag("--copy-nonce", options->copyNonce, "Give the nonce of the request back");
    command->add_flag("--require-signed", options->requireSigned,
                      "Answer only requests that are signed by a certificate in them");
    CLI::Option* const certificates =
        command->add_option("--cert", options->certificates, "More certificates to go into the response")
            ->allow_extra_args(false)
            ->type_name("FILE");
    command->add_flag("--no-certs", options->noCertificates, "No certificates, not even the signer's")
        ->excludes(certificates);
    command
        ->add_option("-o,--out", options->output, "File for the response in DER; standard output if missing")
        ->type_name("FILE");
    tools::addSizeOption(command, options->limit);
    command->add_option("REQUEST", options->file, "Request in DER or PEM; - or nothing for standard input")
        ->type_name("");
    command->callback([&app, options] { respond(app, *options); });
}
