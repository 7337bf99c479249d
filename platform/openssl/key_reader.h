// Reads public keys out of their parts, which are those of the SubjectPublicKeyInfo of RFC 5280, 4.1.2.7.
// OpenSSL's decoder reads all there are, and takes longer for it than a signature takes to check. The forms
// that nearly all keys have are therefore read here, as DER only, and what has another form goes to the
// decoder: it alone says what is no key.
#ifndef MIRVANE_PLATFORM_OPENSSL_KEY_READER_H
#define MIRVANE_PLATFORM_OPENSSL_KEY_READER_H

#include "platform/certificates.h"
#include "pointers.h"

namespace platform {

// A key of this kind; null for none. The parts must be readable. What failed stands in OpenSSL's queue of
// errors. Throws std::bad_alloc.
KeyPointer readKey(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind);

// Its two ways. The first takes RSA, and points of the usual curves with both coordinates; null for all else,
// and where something fails.
KeyPointer readPlainKey(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind);
KeyPointer decodeKey(const CERT_PUBLIC_KEY_INFO& info);

}  // namespace platform

#endif
