#include "request.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

#include "algorithms.h"
#include "certificate.h"
#include "common/program.h"
#include "distinguished_name.h"
#include "message.h"
#include "nonce.h"
#include "option_values.h"
#include "passphrase.h"
#include "signing.h"

namespace {

using Mirvane::CBlob;
using Mirvane::ASN1::CAlgorithmIdentifierEx;
using namespace Mirvane::PKI::OCSP;
using tools::Certificate;
using tools::InputError;

constexpr unsigned long kMostNonce = 0xFFFF;

struct RequestOptions {
    std::string issuer;
    std::vector<std::string> certificates;
    std::vector<std::string> serials;
    std::string hash = "sha1";
    std::string form = "certid";
    std::string nonce;
    unsigned long nonceLength = 32;
    bool noNonce = false;
    std::string requestorName;
    std::string key;
    std::string signer;
    std::string digest;
    std::string passphrase;
    std::vector<std::string> chain;
    std::string output = "-";
};

CReqCert subjectOf(RequestOptions const& options, Certificate const& certificate, Certificate const& issuer,
                   CAlgorithmIdentifierEx const& hash) {
    if (!issuer.namesItselfIssuerOf(certificate)) {
        throw InputError(certificate.source(),
                         fmt::format("the certificate of {} names another issuer than {}: {}",
                                     tools::nameText(certificate.subject()), issuer.source(),
                                     tools::nameText(certificate.issuer())));
    }
    if (options.form != "certid") tools::demandEncodable(certificate);
    if (options.form == "full") return CReqCert(CReqCert::certificate, certificate.octets());
    return tools::explained(certificate.source(), "no identifier can be made of it", [&] {
        if (options.form == "signature") return CReqCert(CCertIdWithSignature(certificate.octets()));
        return CReqCert(CCertID(hash, certificate.octets(), issuer.octets()));
    });
}

CSingleRequestList entriesOf(RequestOptions const& options) {
    const Certificate issuer = tools::readCertificate(options.issuer);
    const CAlgorithmIdentifierEx hash = tools::hashByName(options.hash);
    const CBlob name = tools::hashOf(hash, issuer.subject()).value();
    const CBlob key = tools::hashOf(hash, issuer.keyBits()).value();
    CSingleRequestList entries;
    for (Certificate const& certificate : tools::readCertificates(options.certificates))
        entries.emplace_back(subjectOf(options, certificate, issuer, hash));
    for (std::string const& serial : options.serials)
        entries.emplace_back(CReqCert(CCertID(hash, name, key, tools::parseSerial(serial))));
    return entries;
}

CBlob parseNonce(std::string const& text) {
    const bool isHex = text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    if (!isHex || text.size() % 2 != 0 || text.size() / 2 > kMostNonce) {
        throw InputError(text, "is no nonce in hexadecimal digits");
    }
    CBlob nonce;
    nonce.readFromHexString(text.c_str());
    return nonce;
}

// A signed request has to say who asks (RFC 6960, 4.1.2): the signer, if no other name is given.
void sign(RequestOptions const& options, CRequestMessage& message) {
    const tools::SigningKey key{options.key, tools::readCertificate(options.signer), options.digest,
                                options.passphrase};
    if (!message.get_requestorName()) {
        const CBlob name = key.certificate.subject();
        message.put_requestorName(&name);
    }
    std::vector<Certificate> certificates = tools::readCertificates(options.chain);
    certificates.insert(certificates.begin(), key.certificate);
    tools::sign(message, key, certificates);
}

void request(RequestOptions const& options) {
    if (options.certificates.empty() && options.serials.empty()) {
        throw CLI::RequiredError("--cert or --serial");
    }
    if (options.form != "certid" && !options.serials.empty()) {
        throw CLI::ValidationError("--serial", "a serial number alone can only be asked about by certid");
    }
    CRequestMessage message;
    message.put_requestList(entriesOf(options));
    if (!options.requestorName.empty()) {
        const CBlob name = tools::parseDistinguishedName(options.requestorName);
        message.put_requestorName(&name);
    }
    if (!options.noNonce) {
        const CBlob nonce =
            options.nonce.empty() ? tools::randomNonce(options.nonceLength) : parseNonce(options.nonce);
        Mirvane::ASN1::CExtensions extensions;
        extensions.insert(tools::nonceExtension(nonce));
        message.put_requestExtensions(&extensions);
    }
    if (!options.key.empty()) sign(options, message);
    const CBlob encoded =
        tools::explained("the request", "cannot be encoded", [&] { return message.encode(); });
    tools::writeOutput(options.output, encoded);
}

void addNonceOptions(CLI::App* command, RequestOptions& options) {
    CLI::Option* const given =
        command->add_option("--nonce", options.nonce, "A nonce, this one if digits are given")
            ->expected(0, 1)
            ->type_name("[HEX]")
            ->check(tools::readBy(parseNonce));
    CLI::Option* const length =
        command->add_option("--nonce-length", options.nonceLength, "A random nonce of so many octets (32)")
            ->check(CLI::Range(1ul, kMostNonce).description(""))
            ->type_name("LENGTH")
            ->excludes(given);
    command->add_flag("--no-nonce", options.noNonce, "No nonce")->excludes(given)->excludes(length);
}

void addSigningOptions(CLI::App* command, RequestOptions& options) {
    CLI::Option* const key =
        command->add_option("--sign-key", options.key, "Sign with this key (file or URI)")->type_name("KEY");
    CLI::Option* const signer =
        command
            ->add_option("--sign-cert", options.signer, "Certificate of that key; it goes into the request")
            ->type_name("FILE");
    key->needs(signer);
    signer->needs(key);
    command->add_option("--chain", options.chain, "More certificates to go into a signed request")
        ->allow_extra_args(false)
        ->type_name("FILE")
        ->needs(key);
    tools::addPassphraseOption(command, options.passphrase)->needs(key);
    command->add_option("--digest", options.digest, tools::kDigestPurpose)
        ->check(CLI::IsMember(tools::hashNames()))
        ->needs(key);
}

}  // namespace

void addRequestCommand(CLI::App& app) {
    auto options = std::make_shared<RequestOptions>();
    CLI::App* command = app.add_subcommand("request", "Make an OCSP request");
    command->add_option("--issuer", options->issuer, "Certificate of the issuer")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("--cert", options->certificates,
                     "Ask about this certificate, or all in the file; may be repeated")
        ->allow_extra_args(false)
        ->type_name("FILE");
    command->add_option("--serial", options->serials, "Ask about this serial number; may be repeated")
        ->allow_extra_args(false)
        ->type_name("HEX")
        ->check(tools::readBy(tools::parseSerial));
    command->add_option("--hash", options->hash, "Hash in the identifiers (sha1)")
        ->check(CLI::IsMember(tools::hashNames()));
    command->add_option("--by", options->form, "How to name a certificate (certid)")
        ->check(CLI::IsMember({"certid", "full", "signature"}));
    addNonceOptions(command, *options);
    command
        ->add_option("--requestor-name", options->requestorName,
                     "Who asks: /C=RU/O=Example or C=RU,O=Example")
        ->type_name("NAME")
        ->check(tools::readBy(tools::parseDistinguishedName));
    addSigningOptions(command, *options);
    command
        ->add_option("-o,--out", options->output, "File for the request in DER; standard output if missing")
        ->type_name("FILE");
    command->callback([options] { request(*options); });
}
