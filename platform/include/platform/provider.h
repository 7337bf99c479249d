// Provider contexts: which algorithms there are, and the private key to work with.
//
// A handle is a number; 0 is none. It carries references: the function that gave it out took the first. Every
// handle that comes in is checked, so that one of another kind, one released before or any other number is
// refused and never followed. All functions may be called from all threads, with one handle too.
#ifndef MIRVANE_PLATFORM_PROVIDER_H
#define MIRVANE_PLATFORM_PROVIDER_H

#include "platform/algorithms.h"
#include "platform/error_codes.h"
#include "platform/export.h"
#include "platform/types.h"

using HCRYPTPROV = unsigned long long;

// Provider types. Each has one provider, which serves exactly the algorithms that it lists.
enum : DWORD {
    PROV_RSA_FULL = 1,        // RSA and DSA, with MD5, SHA-1, SHA-2 and SHA-3
    PROV_EC_ECDSA_FULL = 16,  // ECDSA, with SHA-1, SHA-2 and SHA-3
    PROV_RSA_AES = 24,        // as PROV_RSA_FULL
    PROV_GOST_2001_DH = 75,   // SHA-1; with the GOST engine GOST R 34.10-2001 and 34.11-94 too
    PROV_GOST_2012 = 201,     // only with the GOST engine: all of GOST R 34.10 and 34.11
};

enum : DWORD {
    CRYPT_VERIFYCONTEXT = 0xF0000000,  // a context without a private key
    PP_ENUMALGS_EX = 22,
    CRYPT_FIRST = 1,
};

// One algorithm of a provider. Lengths of keys and hashes in bits; both texts end with a zero octet, which
// their lengths count.
struct _PROV_ENUMALGS_EX {
    ALG_ID aiAlgid;
    DWORD dwDefaultLen;
    DWORD dwMinLen;
    DWORD dwMaxLen;
    DWORD dwProtocols;  // always 0
    DWORD dwNameLen;
    char szName[20];
    DWORD dwLongNameLen;
    char szLongName[40];
};
using PROV_ENUMALGS_EX = _PROV_ENUMALGS_EX;
static_assert(sizeof(PROV_ENUMALGS_EX) == 88);

// Asks for the passphrase of `container`: up to `capacity` octets go to `passphrase`, their number is the
// result, and a negative one gives up. `argument` is the pointer given with the callback. It may be called on
// any thread that opens a container, and must not throw.
using MVCAPI_PASSPHRASE_CALLBACK = int (*)(void* argument, const char* container, char* passphrase,
                                           int capacity);

extern "C" {

// A context of the provider that is to be used for both algorithms, or for one if `algId2` is 0, in whichever
// order they come. The caller ends its reference with CryptReleaseContext. The contexts are made once for the
// process and shared; asking takes no lock. 0 with NTE_BAD_ALGID if no provider lists both, or `algId` is 0.
MIRVANE_PLATFORM_API HCRYPTPROV MVCAPI_I_CryptGetDefaultCryptProv(ALG_ID algId, ALG_ID algId2);

// Makes a context, with a reference for the caller.
//
// With the flag CRYPT_VERIFYCONTEXT it has no private key, and `container` is not looked at. With flags 0 the
// container is the place of a private key: the path of a PEM, DER or PKCS #12 file, or a URI that an
// installed store of OpenSSL reads (file:, pkcs11:). Of several keys the first is taken.
//
// `providerName` null takes the one provider of the type. `providerType` 0 takes the type of the named
// provider, or else the first that serves the key.
//
// Failures: NTE_BAD_FLAGS; NTE_BAD_PROV_TYPE, NTE_PROV_TYPE_NOT_DEF, NTE_KEYSET_NOT_DEF and
// NTE_PROV_TYPE_NO_MATCH for type and name; NTE_BAD_KEYSET for a container that is null, missing, unreadable
// (a wrong passphrase too), without a private key, or with a key that the provider does not serve.
MIRVANE_PLATFORM_API BOOL CryptAcquireContextA(HCRYPTPROV* provider, const char* container,
                                               const char* providerName, DWORD providerType, DWORD flags);

// Sets what asks for passphrases, for the whole process; null asks nobody, and containers that need a
// passphrase are then not readable.
MIRVANE_PLATFORM_API void MVCAPI_I_SetPassphraseCallback(MVCAPI_PASSPHRASE_CALLBACK callback, void* argument);

// Takes one reference more. `reserved` must be null and `flags` 0 (E_INVALIDARG, NTE_BAD_FLAGS). NTE_BAD_UID.
MIRVANE_PLATFORM_API BOOL CryptContextAddRef(HCRYPTPROV provider, DWORD* reserved, DWORD flags);

// Drops one reference; with the last the context goes. Hashes and keys made from it live on. `flags` must be
// 0 (NTE_BAD_FLAGS). NTE_BAD_UID, also for a release too many of a context that the process shares.
MIRVANE_PLATFORM_API BOOL CryptReleaseContext(HCRYPTPROV provider, DWORD flags);

// Tells the provider type at `index`, counted from 0 and in the same order always, and the name of the type.
// `length` is the capacity of `name` in octets, and afterwards the octets of the name with its zero octet;
// with a null `name` only type and length are told. ERROR_NO_MORE_ITEMS behind the last, ERROR_MORE_DATA with
// the length wanted. `reserved` must be null and `flags` 0 (E_INVALIDARG, NTE_BAD_FLAGS).
MIRVANE_PLATFORM_API BOOL CryptEnumProviderTypesA(DWORD index, DWORD* reserved, DWORD flags, DWORD* type,
                                                  char* name, DWORD* length);

// The same for providers, their types and names.
MIRVANE_PLATFORM_API BOOL CryptEnumProvidersA(DWORD index, DWORD* reserved, DWORD flags, DWORD* type,
                                              char* name, DWORD* length);

// Gives the next algorithm of the context, a PROV_ENUMALGS_EX, or the first with the flag CRYPT_FIRST.
// `parameter` must be PP_ENUMALGS_EX (NTE_BAD_TYPE). Each context has its own place in the list. With null
// `data` only the length is told. ERROR_NO_MORE_ITEMS behind the last, ERROR_MORE_DATA with the length
// wanted, both without a step; NTE_BAD_UID, NTE_BAD_FLAGS.
MIRVANE_PLATFORM_API BOOL CryptGetProvParam(HCRYPTPROV provider, DWORD parameter, BYTE* data, DWORD* length,
                                            DWORD flags);

}  // extern "C"

#endif
