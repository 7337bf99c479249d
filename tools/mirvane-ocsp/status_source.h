// Where a responder has the status of certificates from.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_STATUS_SOURCE_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_STATUS_SOURCE_H

#include <optional>
#include <string>
#include <unordered_map>

#include "base/date_time.h"
#include "certificate.h"
#include "ocsp/certificate_status.h"
#include "ocsp/request_certificate.h"

namespace tools {

struct StatusSource {
    // By the text of the serial number.
    std::unordered_map<std::string, Mirvane::PKI::OCSP::CCertStatus> listed;
    // Of all the others.
    Mirvane::PKI::OCSP::CCertStatus unlisted;
    // The times of the source, where it has some.
    std::optional<Mirvane::CDateTime> thisUpdate;
    std::optional<Mirvane::CDateTime> nextUpdate;

    Mirvane::PKI::OCSP::CCertStatus const& statusOf(Mirvane::PKI::OCSP::CReqCert const& subject) const;
};

// Good.
Mirvane::PKI::OCSP::CCertStatus goodStatus();
// Revoked, from TIME or TIME,REASON. Throws InputError.
Mirvane::PKI::OCSP::CCertStatus parseRevoked(std::string const& text);

// The certificate database of `openssl ca`, index.txt: valid and expired certificates are good, and those
// that it does not list are unknown. Throws InputError that names the line.
StatusSource readDatabase(std::string const& path);

// A revocation list in DER or PEM: what it does not list is good. Throws InputError, also if the issuer did
// not sign it, if it was due for renewal before `now`, and if it is not the whole of what the issuer revoked.
StatusSource readRevocationList(std::string const& path, Certificate const& issuer,
                                Mirvane::CDateTime const& now);

}  // namespace tools

#endif
