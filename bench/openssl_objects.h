// Owners of OpenSSL's objects, and their octets.
#ifndef MIRVANE_BENCH_OPENSSL_OBJECTS_H
#define MIRVANE_BENCH_OPENSSL_OBJECTS_H

#include <openssl/evp.h>
#include <openssl/ocsp.h>
#include <openssl/x509v3.h>

#include <memory>
#include <vector>

#include "base/blob.h"
#include "works.h"

namespace bench {

using Octets = std::vector<unsigned char>;

template <auto Free>
struct Release {
    template <typename T>
    void operator()(T* pointer) const {
        Free(pointer);
    }
};

using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using Digestion = std::unique_ptr<EVP_MD_CTX, Release<EVP_MD_CTX_free>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;
using RevocationList = std::unique_ptr<X509_CRL, Release<X509_CRL_free>>;
using Basic = std::unique_ptr<OCSP_BASICRESP, Release<OCSP_BASICRESP_free>>;
using Response = std::unique_ptr<OCSP_RESPONSE, Release<OCSP_RESPONSE_free>>;
using Request = std::unique_ptr<OCSP_REQUEST, Release<OCSP_REQUEST_free>>;
using Identifier = std::unique_ptr<OCSP_CERTID, Release<OCSP_CERTID_free>>;
using Time = std::unique_ptr<ASN1_TIME, Release<ASN1_TIME_free>>;

inline void freeStack(STACK_OF(X509) * stack) {
    sk_X509_free(stack);
}
using Stack = std::unique_ptr<STACK_OF(X509), Release<freeStack>>;

// What an i2d function writes.
template <typename T>
Octets encoded(int (*encode)(const T*, unsigned char**), const T* value) {
    Octets octets(static_cast<std::size_t>(encode(value, nullptr)));
    unsigned char* end = octets.data();
    require(encode(value, &end) > 0);
    return octets;
}

// What a d2i function reads.
template <typename Owner, typename Decode>
Owner decoded(Decode decode, const Octets& octets) {
    const unsigned char* position = octets.data();
    Owner owner(decode(nullptr, &position, static_cast<long>(octets.size())));
    require(owner != nullptr);
    return owner;
}

inline Mirvane::CBlob blobOf(const Octets& octets) {
    return Mirvane::CBlob(octets.data(), octets.size());
}

}  // namespace bench

#endif
