// The messages that are measured. OpenSSL makes them when the program starts, so that both sides read the
// same octets; none has an extension beyond those told here.
#ifndef MIRVANE_BENCH_MESSAGES_H
#define MIRVANE_BENCH_MESSAGES_H

#include <ctime>

#include "openssl_objects.h"

namespace bench {

constexpr std::size_t kNonceOctets = 16;
// Of every answer.
constexpr std::time_t kThisUpdate = 1767225600;
constexpr std::time_t kNextUpdate = 1767830400;

// One who signs answers: a P-256 key, and a leaf certificate of it with the usual extensions. What does not
// exist yet is made.
class Signer {
  public:
    Signer();

    EVP_PKEY* key() const { return mKey.get(); }
    X509* certificate() const { return mCertificate.get(); }
    const Octets& encoded() const { return mEncoded; }

  private:
    Key mKey;
    Certificate mCertificate;
    Octets mEncoded;
};

// The one who signed all answers that do not say otherwise.
const Signer& signer();

// The authority that issued all certificates.
X509* authorityCertificate();
const Octets& authorityOctets();

// An answer about the signer's own certificate and the serial numbers behind it, signed, by key hash.
Octets responseOf(int entries, const Signer& by = signer());

// The one about a single certificate: about 280 octets.
const Octets& smallResponse();
// The same with a nonce and the signer's certificate.
const Octets& typicalResponse();
// Made once for each number.
const Octets& largeResponse(int entries);

// The BasicOCSPResponse inside, and the part of it that is signed.
Octets basicOctets(const Octets& response);
Octets signedPart(const OCSP_BASICRESP* basic);

// A question about the signer's certificate, with a nonce.
const Octets& typicalRequest();

// A signed list of so many serial numbers, each with a reason.
Octets revocationList(int entries);

}  // namespace bench

#endif
