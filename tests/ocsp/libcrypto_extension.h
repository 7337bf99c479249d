// The two parts of an extension that libcrypto holds.
#ifndef MIRVANE_TESTS_OCSP_LIBCRYPTO_EXTENSION_H
#define MIRVANE_TESTS_OCSP_LIBCRYPTO_EXTENSION_H

#include <openssl/x509.h>

#include <string>

#include "base/blob.h"

namespace test {

inline Mirvane::CBlob valueOf(X509_EXTENSION* extension) {
    ASN1_OCTET_STRING const* const value = X509_EXTENSION_get_data(extension);
    return Mirvane::CBlob(ASN1_STRING_get0_data(value),
                          static_cast<unsigned long>(ASN1_STRING_length(value)));
}

inline std::string oidOf(X509_EXTENSION* extension) {
    char dotted[512];
    OBJ_obj2txt(dotted, sizeof(dotted), X509_EXTENSION_get_object(extension), 1);
    return dotted;
}

}  // namespace test

#endif
