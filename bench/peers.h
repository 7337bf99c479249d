// Other libraries beside OpenSSL, which decode and read an answer about one certificate. Each is there if the
// build found it (-DMIRVANE_BENCH_PEERS=ON).
#ifndef MIRVANE_BENCH_PEERS_H
#define MIRVANE_BENCH_PEERS_H

#include "openssl_objects.h"

namespace bench {

struct PeerReader {
    const char* name;
    void (*read)(const Octets& response);
};

// Adds it to the works that it does too.
void addPeer(Works& works, const PeerReader& peer);

void addGnutls(Works& works);
void addBotan(Works& works);

}  // namespace bench

#endif
