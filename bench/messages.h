// The messages that are measured, made by OpenSSL when the program starts, so that both sides read the same
// octets.
#ifndef MIRVANE_BENCH_MESSAGES_H
#define MIRVANE_BENCH_MESSAGES_H

#include <vector>

namespace bench {

using Octets = std::vector<unsigned char>;

// A leaf certificate with the usual extensions, by an ECDSA authority.
const Octets& typicalCertificate();

// A signed answer about one certificate, by key hash and without certificates: about 280 octets.
const Octets& smallResponse();

// The same with a nonce and the signer's certificate.
const Octets& typicalResponse();

// An answer about so many certificates.
Octets responseOf(int entries);

}  // namespace bench

#endif
