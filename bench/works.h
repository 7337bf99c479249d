// What is measured: a piece of work with our way of doing it, OpenSSL's on the same octets and, where there
// is one, the bare cryptography in it.
#ifndef MIRVANE_BENCH_WORKS_H
#define MIRVANE_BENCH_WORKS_H

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

struct Peer {
    std::string name;
    std::function<void()> work;
};

struct Work {
    std::string name;
    // Each does the work once, from the start to the release of all memory. They throw if it does not come
    // out as it should.
    std::function<void()> ours;
    std::function<void()> openssl;
    std::function<void()> floor;   // empty where there is no cryptography
    std::size_t inputOctets = 0;   // what is read, 0 if nothing is
    std::vector<Peer> peers = {};  // other libraries that do it
};

using Works = std::vector<Work>;

void addDecodeWorks(Works& works);
void addEncodeWorks(Works& works);
void addCertificateWorks(Works& works);
void addSignatureWorks(Works& works);
void addPlatformWorks(Works& works);

inline void require(bool holds) {
    if (!holds) throw std::runtime_error("the work did not come out as it should");
}

}  // namespace bench

#endif
