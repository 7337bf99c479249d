// Owners of OpenSSL's objects.
#ifndef MIRVANE_PLATFORM_OPENSSL_POINTERS_H
#define MIRVANE_PLATFORM_OPENSSL_POINTERS_H

#include <openssl/asn1.h>
#include <openssl/evp.h>
#include <openssl/store.h>
#include <openssl/ui.h>
#include <openssl/x509.h>

#include <memory>

namespace platform {

template <auto release>
struct Release {
    template <typename Object>
    void operator()(Object* object) const {
        release(object);
    }
};

using KeyPointer = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using KeyContextPointer = std::unique_ptr<EVP_PKEY_CTX, Release<EVP_PKEY_CTX_free>>;
using DigestContextPointer = std::unique_ptr<EVP_MD_CTX, Release<EVP_MD_CTX_free>>;
using StorePointer = std::unique_ptr<OSSL_STORE_CTX, Release<OSSL_STORE_close>>;
using StoreInfoPointer = std::unique_ptr<OSSL_STORE_INFO, Release<OSSL_STORE_INFO_free>>;
using UiMethodPointer = std::unique_ptr<UI_METHOD, Release<UI_destroy_method>>;
using ObjectPointer = std::unique_ptr<ASN1_OBJECT, Release<ASN1_OBJECT_free>>;
using TimePointer = std::unique_ptr<ASN1_TIME, Release<ASN1_TIME_free>>;
using NamePointer = std::unique_ptr<X509_NAME, Release<X509_NAME_free>>;

}  // namespace platform

#endif
