// Private keys, from wherever OpenSSL's stores read them.
#ifndef MIRVANE_PLATFORM_OPENSSL_KEY_STORE_H
#define MIRVANE_PLATFORM_OPENSSL_KEY_STORE_H

#include "pointers.h"

namespace platform {

// The first private key of a file (PEM, DER, PKCS #12) or of a URI; null if there is none that can be read.
// The passphrase callback is asked where one is needed. Throws std::bad_alloc.
KeyPointer openPrivateKey(const char* container);

}  // namespace platform

#endif
