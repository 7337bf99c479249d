#include "signing.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/exception.h"
#include "message.h"
#include "passphrase.h"
#include "provider/handle_owners.h"

namespace tools {
namespace {

using Mirvane::CBlobList;
using Mirvane::ASN1::CAlgorithmIdentifierEx;
using namespace Mirvane::PKI::OCSP;

std::string containerProblem(std::string const& container, PassphraseSource const& passphrase) {
    if (passphrase.isGiven()) return "no private key can be read from it with this passphrase";
    if (passphrase.isAsked()) return "is encrypted: give its passphrase with --passin";
    const bool isMissing = container.find(':') == std::string::npos && ::access(container.c_str(), R_OK) != 0;
    return isMissing ? std::strerror(errno) : "no private key can be read from it";
}

void acquire(ATL::CCryptProv& provider, SigningKey const& key) {
    const PassphraseSource passphrase(key.passphrase);
    if (!CryptAcquireContextA(provider.Place(), key.container.c_str(), nullptr, 0, 0)) {
        throw InputError(key.container, containerProblem(key.container, passphrase));
    }
}

// `work` gets the provider and the algorithm. Whether the key is that of the certificate is found out by the
// signature that it made.
template <typename Message, typename Work>
void signWith(Message& message, SigningKey const& key, Work work) {
    if (auto problem = unservedProblem(key.certificate)) {
        throw InputError(key.certificate.source(), *problem);
    }
    const CAlgorithmIdentifierEx algorithm = signatureAlgorithmFor(key.certificate, key.hashName);
    ATL::CCryptProv provider;
    acquire(provider, key);
    explained(key.container,
              "does not sign with the algorithm for the certificate of " + key.certificate.source(),
              [&] { work(provider.GetHandle(), algorithm); });
    const bool fits = explained(key.certificate.source(), "its key cannot be used",
                                [&] { return message.verify(key.certificate.octets()); });
    if (!fits)
        throw InputError(key.container, "is not the key of the certificate " + key.certificate.source());
}

}  // namespace

void sign(CRequestMessage& message, SigningKey const& key, std::vector<Certificate> const& certificates) {
    const CBlobList list = blobs(certificates);
    signWith(message, key, [&](HCRYPTPROV provider, CAlgorithmIdentifierEx const& algorithm) {
        message.sign(provider, AT_SIGNATURE, algorithm, &list);
    });
}

void sign(CBasicResponse& message, SigningKey const& key) {
    signWith(message, key, [&](HCRYPTPROV provider, CAlgorithmIdentifierEx const& algorithm) {
        message.sign(provider, AT_SIGNATURE, algorithm);
    });
}

CBlobList blobs(std::vector<Certificate> const& certificates) {
    CBlobList result;
    for (Certificate const& certificate : certificates) {
        demandEncodable(certificate);
        result.push_back(certificate.octets());
    }
    return result;
}

}  // namespace tools
