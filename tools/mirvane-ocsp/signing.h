// Signing messages with a key that the platform opens.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_SIGNING_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_SIGNING_H

#include <string>
#include <vector>

#include "algorithms.h"
#include "certificate.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"

namespace tools {

struct SigningKey {
    std::string container;  // a file, or a URI that the platform opens
    Certificate certificate;
    std::string hashName;    // empty for the usual one
    std::string passphrase;  // where it comes from, see PassphraseSource
};

// Each signs, and throws InputError if the key does not open, does not sign or is not that of the
// certificate.
void sign(Mirvane::PKI::OCSP::CRequestMessage& message, SigningKey const& key,
          std::vector<Certificate> const& certificates);
void sign(Mirvane::PKI::OCSP::CBasicResponse& message, SigningKey const& key);

// The octets of the certificates, each of which has to be encodable.
Mirvane::CBlobList blobs(std::vector<Certificate> const& certificates);

}  // namespace tools

#endif
