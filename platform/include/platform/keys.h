// Signatures, and the public keys that they are checked with. Handles follow the rules of
// platform/provider.h.
//
// A signature crosses this interface in the reverse byte order of the octets of its ASN.1 bit string, as a
// whole: the number of RSA, the DER of ECDSA and DSA, the two numbers of GOST R 34.10.
#ifndef MIRVANE_PLATFORM_KEYS_H
#define MIRVANE_PLATFORM_KEYS_H

#include "platform/certificates.h"
#include "platform/hash.h"

// Key specifications. A context has one private key, which both name.
enum : DWORD {
    AT_KEYEXCHANGE = 1,
    AT_SIGNATURE = 2,
};

extern "C" {

// Signs the value of a hash with the private key of the context that the hash was made in, and settles the
// value. `length` is the capacity of `signature` in octets and afterwards the length of the signature. With a
// null `signature` the most octets that one can have are told, nothing is settled and the key is not used.
// `description` must be null and `flags` 0 (E_INVALIDARG, NTE_BAD_FLAGS).
//
// NTE_BAD_HASH; NTE_NO_KEY without a private key, and for a specification that is none; NTE_BAD_ALGID for a
// hash that does not fit the key, and for MD5; ERROR_MORE_DATA with the most octets; NTE_FAIL.
MIRVANE_PLATFORM_API BOOL CryptSignHashA(HCRYPTHASH hash, DWORD keySpecification, const char* description,
                                         DWORD flags, BYTE* signature, DWORD* length);

// Makes a key from the public key information of a certificate; its count of unused bits is not looked at.
// NTE_BAD_UID; NTE_BAD_ALGID for an algorithm that the context does not list; NTE_BAD_KEY for octets that
// make no key, among them an ECDSA key whose curve has no name.
MIRVANE_PLATFORM_API BOOL CryptImportPublicKeyInfo(HCRYPTPROV provider, DWORD encodingType,
                                                   const _CERT_PUBLIC_KEY_INFO* publicKey, HCRYPTKEY* key);

// Checks a signature of the value of a hash, and settles the value. Succeeds only if the signature is right.
// NTE_BAD_HASH, NTE_BAD_KEY; NTE_BAD_ALGID if the hash does not fit the key, told before anything of the
// signature is looked at; NTE_BAD_SIGNATURE for everything wrong with the signature itself, of whatever
// length. `description` must be null and `flags` 0 (E_INVALIDARG, NTE_BAD_FLAGS).
MIRVANE_PLATFORM_API BOOL CryptVerifySignatureA(HCRYPTHASH hash, const BYTE* signature, DWORD length,
                                                HCRYPTKEY key, const char* description, DWORD flags);

// Ends the key. NTE_BAD_KEY.
MIRVANE_PLATFORM_API BOOL CryptDestroyKey(HCRYPTKEY key);

}  // extern "C"

#endif
