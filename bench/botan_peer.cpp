#include <botan/ocsp.h>
#include <botan/x509cert.h>

#include "messages.h"
#include "peers.h"

namespace bench {
namespace {

// It shows no entries, and only tells what they say of a certificate, whose reading is not measured.
void readBotan(const Octets& octets) {
    static const Botan::X509_Certificate issuer(authorityOctets());
    static const Botan::X509_Certificate subject(signer().encoded());
    const Botan::OCSP::Response response(octets.data(), octets.size());
    const auto time = std::chrono::system_clock::from_time_t((kThisUpdate + kNextUpdate) / 2);
    require(response.status_for(issuer, subject, time) == Botan::Certificate_Status_Code::OCSP_RESPONSE_GOOD);
}

}  // namespace

void addBotan(Works& works) {
    addPeer(works, {"botan", readBotan});
}

}  // namespace bench
