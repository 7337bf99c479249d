// Numbers of algorithms, and the object identifiers that they stand for.
//
// An ALG_ID holds the class of an algorithm in bits 15 to 13 and its type in bits 12 to 9. The numbers that
// CryptoAPI publishes are kept; the others are this platform's own. A signature algorithm has no number of
// its own: its object identifier stands for its hash, the key tells the rest.
#ifndef MIRVANE_PLATFORM_ALGORITHMS_H
#define MIRVANE_PLATFORM_ALGORITHMS_H

#include "platform/export.h"
#include "platform/types.h"

using ALG_ID = unsigned int;

// Hashes.
enum : ALG_ID {
    CALG_MD5 = 0x8003,  // for checking signatures only, never for making them
    CALG_SHA1 = 0x8004,
    CALG_SHA_256 = 0x800C,
    CALG_SHA_384 = 0x800D,
    CALG_SHA_512 = 0x800E,
    CALG_SHA_224 = 0x8101,
    CALG_SHA3_224 = 0x8111,
    CALG_SHA3_256 = 0x8112,
    CALG_SHA3_384 = 0x8113,
    CALG_SHA3_512 = 0x8114,
    CALG_GR3411 = 0x8121,  // GOST R 34.11-94
    CALG_GR3411_2012_256 = 0x8122,
    CALG_GR3411_2012_512 = 0x8123,
};

// Keys.
enum : ALG_ID {
    CALG_RSA_SIGN = 0x2400,
    CALG_RSA_KEYX = 0xA400,  // the number of an RSA key in a certificate
    CALG_DSS_SIGN = 0x2200,
    CALG_ECDSA = 0x2203,
    CALG_GR3410EL = 0x3021,  // GOST R 34.10-2001
    CALG_GR3410_2012_256 = 0x3022,
    CALG_GR3410_2012_512 = 0x3023,
};

enum : DWORD {
    CRYPT_OID_INFO_OID_KEY = 1,
    CRYPT_SIGN_ALG_OID_GROUP_ID = 4,
};

// What is known of one object identifier.
struct _CRYPT_OID_INFO {
    DWORD cbSize;  // sizeof(_CRYPT_OID_INFO)
    const char* pszOID;
    const wchar_t* pwszName;
    DWORD dwGroupId;
    ALG_ID Algid;  // the hash of a signature algorithm
};
using CRYPT_OID_INFO = _CRYPT_OID_INFO;
using PCCRYPT_OID_INFO = const CRYPT_OID_INFO*;

extern "C" {

// The number for an object identifier in dotted text: a hash stands for itself, a key algorithm for its key,
// a signature algorithm for its hash. Answers alike whether or not a provider serves the algorithm. 0 with
// NTE_BAD_ALGID for null and for any other text. Among those are the algorithms whose hash alone does not
// tell how to check a signature: RSASSA-PSS, Ed25519, Ed448, ECDSA with a hash named in its parameters.
MIRVANE_PLATFORM_API ALG_ID CertOIDToAlgId(const char* objectIdentifier);

// The record of a signature algorithm, which lives as long as the process. `keyType` must be
// CRYPT_OID_INFO_OID_KEY, `key` is the dotted text, `group` must be CRYPT_SIGN_ALG_OID_GROUP_ID. Null with
// CRYPT_E_NOT_FOUND for anything else, and for what is no signature algorithm.
MIRVANE_PLATFORM_API PCCRYPT_OID_INFO CryptFindOIDInfo(DWORD keyType, const void* key, DWORD group);

}  // extern "C"

#endif
