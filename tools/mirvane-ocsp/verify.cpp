#include "verify.h"

#include <memory>
#include <string>
#include <vector>

#include "common/program.h"
#include "option_values.h"
#include "time_text.h"
#include "verification.h"

namespace {

struct VerifyOptions {
    std::string signer;
    std::string issuer;
    std::vector<std::string> chain;
    std::string request;
    std::string at = "now";
    std::string maxAge;
    std::string skew = "5m";
    bool allowMissingNonce = false;
    bool requireGood = false;
    std::size_t limit = tools::kUsualLimit;
    std::string file;
};

tools::Policy policyOf(VerifyOptions const& options) {
    tools::Policy policy{{},
                         {},
                         tools::readCertificates(options.chain),
                         {},
                         tools::parseTime(options.at),
                         {},
                         tools::parseSpan(options.skew),
                         options.allowMissingNonce,
                         options.requireGood};
    if (!options.signer.empty()) policy.signer = tools::readCertificate(options.signer);
    if (!options.issuer.empty()) policy.issuer = tools::readCertificate(options.issuer);
    if (!options.maxAge.empty()) policy.maxAge = tools::parseSpan(options.maxAge);
    if (!options.request.empty()) {
        policy.request = tools::decodeRequest(tools::readInput(options.request, options.limit),
                                              tools::sourceName(options.request));
    }
    return policy;
}

void verify(VerifyOptions const& options) {
    const tools::Policy policy = policyOf(options);
    const tools::Octets octets = tools::readInput(options.file, options.limit);
    if (!tools::verifyResponse(octets, tools::sourceName(options.file), policy)) {
        throw CLI::RuntimeError(tools::kFailure);
    }
}

}  // namespace

void addVerifyCommand(CLI::App& app) {
    auto options = std::make_shared<VerifyOptions>();
    CLI::App* command = app.add_subcommand("verify", "Check an OCSP response; status 0 only if all holds");
    CLI::Option_group* const who = command->add_option_group("Who may sign", "One of the two");
    who->add_option("--signer", options->signer, "Certificate that has to be the signer's")
        ->type_name("FILE");
    who->add_option("--issuer", options->issuer,
                    "Certificate of the issuer: it signs, or a delegate in the response or the chain does")
        ->type_name("FILE");
    who->require_option(1);
    command
        ->add_option("--chain", options->chain,
                     "More certificates, for the signer and between it and the issuer")
        ->allow_extra_args(false)
        ->type_name("FILE");
    command->add_option("--request", options->request, "The request, to hold entries and nonce against")
        ->type_name("FILE");
    command->add_option("--at", options->at, std::string("The time to check for (now): ") + tools::kTimeForms)
        ->type_name("TIME")
        ->check(tools::readBy(tools::parseTime));
    command->add_option("--max-age", options->maxAge, "Greatest age of thisUpdate: seconds, 30m, 12h, 1d")
        ->type_name("SPAN")
        ->check(tools::readBy(tools::parseSpan));
    command->add_option("--skew", options->skew, "How far clocks may differ (5m)")
        ->type_name("SPAN")
        ->check(tools::readBy(tools::parseSpan));
    command->add_flag("--allow-missing-nonce", options->allowMissingNonce,
                      "Let an answer pass that does not give the nonce back");
    command->add_flag("--require-good", options->requireGood, "Fail if a status is not good");
    tools::addSizeOption(command, options->limit);
    command->add_option("RESPONSE", options->file, "Response in DER or PEM; - for standard input")
        ->required()
        ->type_name("");
    command->callback([options] { verify(*options); });
}
