// Objects of libcrypto: owned, read, written and named.
#ifndef MIRVANE_TESTS_SUPPORT_OPENSSL_H
#define MIRVANE_TESTS_SUPPORT_OPENSSL_H

#include <openssl/x509v3.h>

#include <memory>
#include <string>

#include "support/blobs.h"

namespace test {

// With the function that frees it.
template <typename Object, typename Result>
std::unique_ptr<Object, Result (*)(Object*)> owned(Object* object, Result (*release)(Object*)) {
    return {object, release};
}

// What a d2i function reads from the bytes; null if that is nothing.
template <typename Object>
auto parsed(Object* (*read)(Object**, unsigned char const**, long), void (*release)(Object*),
            unsigned char const* data, std::size_t size) {
    return owned(read(nullptr, &data, static_cast<long>(size)), release);
}

template <typename Object>
auto parsed(Object* (*read)(Object**, unsigned char const**, long), void (*release)(Object*),
            Mirvane::CBlob const& bytes) {
    return parsed(read, release, bytes.pbData(), bytes.cbData());
}

// The bytes of whatever an i2d function writes.
template <typename Object>
Mirvane::CBlob writtenBy(int (*write)(Object const*, unsigned char**), Object const* object) {
    unsigned char* octets = nullptr;
    const int count = write(object, &octets);
    const Mirvane::CBlob result(octets, count > 0 ? static_cast<unsigned long>(count) : 0);
    OPENSSL_free(octets);
    return result;
}

inline Octets octetsOf(Mirvane::CBlob const& value) {
    return Octets(value.pbData(), value.pbData() + value.cbData());
}

inline Mirvane::CBlob blobOf(ASN1_STRING const* text) {
    return Mirvane::CBlob(ASN1_STRING_get0_data(text), static_cast<unsigned long>(ASN1_STRING_length(text)));
}

inline std::string dotted(ASN1_OBJECT const* object) {
    char text[1024];
    OBJ_obj2txt(text, sizeof(text), object, 1);
    return text;
}

}  // namespace test

#endif
