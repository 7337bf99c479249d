// The codes that the provider's functions leave in the last-error slot, beside those of
// platform/last_error.h. A function names the codes that are its own; these two may come from any:
// E_INVALIDARG (a null pointer, or an encoding type other than X509_ASN_ENCODING with PKCS_7_ASN_ENCODING)
// and E_OUTOFMEMORY. A function that succeeds leaves the slot as it was; one that fails leaves a value other
// than 0.
#ifndef MIRVANE_PLATFORM_ERROR_CODES_H
#define MIRVANE_PLATFORM_ERROR_CODES_H

#include "platform/types.h"

inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_MORE_DATA = 234;      // the buffer is too short; the length wanted is stored
inline constexpr DWORD ERROR_NO_MORE_ITEMS = 259;  // the end of a list

inline constexpr DWORD E_OUTOFMEMORY = 0x8007000E;
inline constexpr DWORD E_INVALIDARG = 0x80070057;

inline constexpr DWORD NTE_BAD_UID = 0x80090001;   // no provider handle: 0, released, or of another kind
inline constexpr DWORD NTE_BAD_HASH = 0x80090002;  // no hash handle
inline constexpr DWORD NTE_BAD_KEY = 0x80090003;   // no key handle, or octets that make no key
inline constexpr DWORD NTE_BAD_SIGNATURE = 0x80090006;
inline constexpr DWORD NTE_BAD_ALGID =
    0x80090008;  // unknown, not served by the context, or not fit for the key
inline constexpr DWORD NTE_BAD_FLAGS = 0x80090009;
inline constexpr DWORD NTE_BAD_TYPE = 0x8009000A;        // an unknown parameter
inline constexpr DWORD NTE_BAD_HASH_STATE = 0x8009000C;  // data for a hash whose value is settled
inline constexpr DWORD NTE_NO_KEY = 0x8009000D;  // the context has no private key of that specification
inline constexpr DWORD NTE_BAD_PROV_TYPE = 0x80090014;  // the provider type 0, and no key that tells the type
inline constexpr DWORD NTE_BAD_KEYSET =
    0x80090016;  // no private key can be read there, or not one for that type
inline constexpr DWORD NTE_PROV_TYPE_NOT_DEF = 0x80090017;   // an unknown provider type
inline constexpr DWORD NTE_KEYSET_NOT_DEF = 0x80090019;      // an unknown provider name
inline constexpr DWORD NTE_PROV_TYPE_NO_MATCH = 0x8009001B;  // the name is that of a provider of another type
inline constexpr DWORD NTE_FAIL = 0x80090020;                // the cryptographic operation itself failed

inline constexpr DWORD CRYPT_E_NOT_FOUND = 0x80092004;
inline constexpr DWORD CRYPT_E_ASN1_EOD = 0x80093102;      // no octets at all
inline constexpr DWORD CRYPT_E_ASN1_CORRUPT = 0x80093103;  // octets that cannot be read
inline constexpr DWORD CRYPT_E_ASN1_NOEOD = 0x80093202;    // octets behind the end

#endif
