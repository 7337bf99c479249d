// Extensions that libcrypto holds.
#ifndef MIRVANE_TESTS_OCSP_LIBCRYPTO_EXTENSION_H
#define MIRVANE_TESTS_OCSP_LIBCRYPTO_EXTENSION_H

#include "asn1/extensions.h"
#include "support/openssl.h"

namespace test {

inline Mirvane::ASN1::CExtension extensionOf(X509_EXTENSION* extension) {
    const std::string identifier = dotted(X509_EXTENSION_get_object(extension));
    return {Mirvane::ASN1::CExtValue(identifier.c_str(), blobOf(X509_EXTENSION_get_data(extension))),
            X509_EXTENSION_get_critical(extension) != 0};
}

// All of a part of a message, told by libcrypto's functions for such a part.
template <typename Part>
Mirvane::ASN1::CExtensions extensionsOf(Part* part, int (*count)(Part*), X509_EXTENSION* (*get)(Part*, int)) {
    Mirvane::ASN1::CExtensions extensions;
    for (int i = 0; i < count(part); ++i)
        extensions.push_back(extensionOf(get(part, i)));
    return extensions;
}

}  // namespace test

#endif
