// Real certificates as libcrypto reads them, with the bytes that they came from.
#ifndef MIRVANE_TESTS_OCSP_REAL_CERTIFICATES_H
#define MIRVANE_TESTS_OCSP_REAL_CERTIFICATES_H

#include <memory>
#include <string>
#include <vector>

#include "support/openssl.h"
#include "support/vectors.h"

namespace test {

struct RealCertificate {
    std::string file;
    Mirvane::CBlob encoded;  // without what may stand behind it in the file
    std::shared_ptr<X509> parsed;
};

inline std::vector<RealCertificate> realCertificates() {
    std::vector<RealCertificate> certificates;
    for (auto const& path : vectorFiles("certs")) {
        const Octets message = readFile(path);
        unsigned char const* end = message.data();
        auto parsed = owned(d2i_X509(nullptr, &end, static_cast<long>(message.size())), X509_free);
        if (!parsed) continue;
        const auto size = static_cast<unsigned long>(end - message.data());
        certificates.push_back(
            {path.filename().string(), Mirvane::CBlob(message.data(), size), std::move(parsed)});
    }
    return certificates;
}

}  // namespace test

#endif
