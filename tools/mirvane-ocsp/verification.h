// What there is to check in an answer, told apart: signature, responder, authority, identifiers, extensions,
// times, nonce and status.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_VERIFICATION_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_VERIFICATION_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "certificate.h"
#include "message.h"

namespace tools {

struct Policy {
    std::optional<Certificate> signer;  // named by the user, or else
    std::optional<Certificate> issuer;  // the one that the signer has its authority from
    std::vector<Certificate> chain;
    std::unique_ptr<Mirvane::PKI::OCSP::CRequestMessage> request;  // may be null
    Mirvane::CDateTime at;
    std::optional<long long> maxAge;  // of thisUpdate, in seconds
    long long skew;                   // in seconds
    bool allowMissingNonce;
    bool requireGood;
};

// Prints one line a check, "ok" or what failed. Whether all hold.
bool verifyResponse(Octets const& octets, std::string const& source, Policy const& policy);

}  // namespace tools

#endif
