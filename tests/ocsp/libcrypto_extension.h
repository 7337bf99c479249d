// Extensions that libcrypto holds.
#ifndef MIRVANE_TESTS_OCSP_LIBCRYPTO_EXTENSION_H
#define MIRVANE_TESTS_OCSP_LIBCRYPTO_EXTENSION_H

#include <openssl/x509.h>

#include "asn1/extensions.h"

namespace test {

inline Mirvane::ASN1::CExtension extensionOf(X509_EXTENSION* extension) {
    char dotted[512];
    OBJ_obj2txt(dotted, sizeof(dotted), X509_EXTENSION_get_object(extension), 1);
    ASN1_OCTET_STRING const* const octets = X509_EXTENSION_get_data(extension);
    const Mirvane::CBlob value(ASN1_STRING_get0_data(octets),
                               static_cast<unsigned long>(ASN1_STRING_length(octets)));
    return {Mirvane::ASN1::CExtValue(dotted, value), X509_EXTENSION_get_critical(extension) != 0};
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
