#include "matching.h"

#include <fmt/format.h>

#include "algorithms.h"
#include "base/exception.h"
#include "ocsp/responder_id.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::ASN1::CAlgorithmIdentifier;
using Mirvane::ASN1::CBigInteger;
using namespace Mirvane::PKI::OCSP;

std::string identity(CAlgorithmIdentifier const& algorithm) {
    const std::string parameters = hexText(algorithm.get_parameters());
    return fmt::format("{} {}", algorithm.get_algorithm(), parameters == "0500" ? "" : parameters);
}

}  // namespace

std::string identity(CReqCert const& subject) {
    if (CCertID const* const identifier = subject.get_certID()) {
        return fmt::format("certID {} {} {} {}", identity(identifier->get_hashAlgorithm()),
                           hexText(identifier->get_issuerNameHash()),
                           hexText(identifier->get_issuerKeyHash()),
                           serialText(identifier->get_serialNumber()));
    }
    if (CCertIdWithSignature const* const identifier = subject.get_certIdWithSignature()) {
        return fmt::format(
            "signature {} {} {} {} {}", hexText(identifier->get_issuer()),
            serialText(identifier->get_serialNumber()), hexText(identifier->get_tbsCertificateHash()),
            identity(identifier->get_signatureAlgorithm()), hexText(identifier->get_signatureValue()));
    }
    return fmt::format("full {} {}", static_cast<unsigned>(*subject.get_fullCertType()),
                       hexText(*subject.get_fullCert()));
}

std::optional<CBigInteger> serialOf(CReqCert const& subject) {
    if (subject.get_certID()) return subject.get_certID()->get_serialNumber();
    if (subject.get_certIdWithSignature()) return subject.get_certIdWithSignature()->get_serialNumber();
    if (*subject.get_fullCertType() != CReqCert::certificate) return std::nullopt;
    const auto certificate = Certificate::fromOctets(*subject.get_fullCert(), "");
    if (!certificate) return std::nullopt;
    return certificate->serialNumber();
}

std::string entryName(CReqCert const& subject) {
    const auto serial = serialOf(subject);
    return serial ? serialText(*serial) : "without a serial number";
}

bool isSameName(CBlob const& one, CBlob const& other) {
    return CResponderID(CResponderID::byName, one) == CResponderID(CResponderID::byName, other);
}

bool EntryIssuer::covers(CReqCert const& subject) {
    if (CCertID const* const identifier = subject.get_certID()) {
        Hashes const& own = hashes(identifier->get_hashAlgorithm());
        return own.name && own.key && *own.name == identifier->get_issuerNameHash() &&
               *own.key == identifier->get_issuerKeyHash();
    }
    if (CCertIdWithSignature const* const identifier = subject.get_certIdWithSignature()) {
        return isSameName(certificate_.subject(), identifier->get_issuer()) &&
               certificate_.signedHash(identifier->get_tbsCertificateHash(),
                                       identifier->get_signatureAlgorithm().get_algorithm(),
                                       identifier->get_signatureValue());
    }
    const auto certificate = Certificate::fromOctets(*subject.get_fullCert(), "");
    return certificate && certificate_.issued(*certificate);
}

EntryIssuer::Hashes const& EntryIssuer::hashes(CAlgorithmIdentifier const& algorithm) {
    const auto [place, isNew] = hashes_.try_emplace(algorithm.get_algorithm());
    if (isNew) {
        place->second = {hashOf(algorithm, certificate_.subject()),
                         hashOf(algorithm, certificate_.keyBits())};
    }
    return place->second;
}

}  // namespace tools
