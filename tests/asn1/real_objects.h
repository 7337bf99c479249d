// Parts of real certificates and revocation lists as libcrypto finds them, to hold the value classes against.
#ifndef MIRVANE_TESTS_ASN1_REAL_OBJECTS_H
#define MIRVANE_TESTS_ASN1_REAL_OBJECTS_H

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/openssl.h"
#include "support/vectors.h"

namespace test {

struct RealExtension {
    std::string file;
    std::string oid;
    bool critical;
    Mirvane::CBlob value;
};

struct RealExtensionList {
    std::string file;
    std::vector<RealExtension> extensions;
    Mirvane::CBlob encoded;  // as a SEQUENCE OF Extension
};

inline RealExtensionList listOf(std::string const& file, X509_EXTENSIONS const* extensions) {
    RealExtensionList list{file, {}, writtenBy(i2d_X509_EXTENSIONS, extensions)};
    for (int i = 0; i < sk_X509_EXTENSION_num(extensions); ++i) {
        X509_EXTENSION* const extension = sk_X509_EXTENSION_value(extensions, i);
        list.extensions.push_back({file, dotted(X509_EXTENSION_get_object(extension)),
                                   X509_EXTENSION_get_critical(extension) != 0,
                                   blobOf(X509_EXTENSION_get_data(extension))});
    }
    return list;
}

// Of every certificate that has extensions.
inline std::vector<RealExtensionList> certificateExtensions() {
    std::vector<RealExtensionList> lists;
    for (auto const& path : vectorFiles("certs")) {
        const Octets message = readFile(path);
        const auto certificate = parsed(d2i_X509, X509_free, message.data(), message.size());
        if (!certificate) continue;
        auto const* const extensions = X509_get0_extensions(certificate.get());
        if (sk_X509_EXTENSION_num(extensions) > 0) {
            lists.push_back(listOf(path.filename().string(), extensions));
        }
    }
    return lists;
}

// Of every entry of every revocation list, without repetition.
inline std::vector<RealExtensionList> entryExtensions() {
    std::vector<RealExtensionList> lists;
    std::vector<Mirvane::CBlob> known;
    for (auto const& path : vectorFiles("crls")) {
        const Octets message = readFile(path);
        const auto crl = parsed(d2i_X509_CRL, X509_CRL_free, message.data(), message.size());
        auto* const entries = crl ? X509_CRL_get_REVOKED(crl.get()) : nullptr;
        for (int i = 0; i < sk_X509_REVOKED_num(entries); ++i) {
            auto const* const extensions = X509_REVOKED_get0_extensions(sk_X509_REVOKED_value(entries, i));
            if (sk_X509_EXTENSION_num(extensions) < 1) continue;
            RealExtensionList list = listOf(path.filename().string(), extensions);
            if (std::find(known.begin(), known.end(), list.encoded) != known.end()) continue;
            known.push_back(list.encoded);
            lists.push_back(std::move(list));
        }
    }
    return lists;
}

// Those with one identifier.
inline std::vector<RealExtension> extensionsNamed(std::vector<RealExtensionList> const& lists,
                                                  std::string const& oid) {
    std::vector<RealExtension> found;
    for (auto const& list : lists) {
        for (auto const& extension : list.extensions) {
            if (extension.oid == oid) found.push_back(extension);
        }
    }
    return found;
}

}  // namespace test

#endif
