// Hash objects. Their handles follow the rules of platform/provider.h, with one reference each.
//
// A hash takes data until its value is read, signed or checked against a signature. From then on it takes no
// more, gives the same value as often as it is asked, and signs and verifies as often.
#ifndef MIRVANE_PLATFORM_HASH_H
#define MIRVANE_PLATFORM_HASH_H

#include "platform/provider.h"

using HCRYPTHASH = unsigned long long;
using HCRYPTKEY = unsigned long long;

enum : DWORD {
    HP_HASHVAL = 2,   // the value
    HP_HASHSIZE = 4,  // its size in octets, a DWORD
};

extern "C" {

// Makes a hash object, which lives on when the context is released. `key` must be 0 (NTE_BAD_KEY) and `flags`
// 0 (NTE_BAD_FLAGS). NTE_BAD_UID; NTE_BAD_ALGID for what is no hash that the context lists.
MIRVANE_PLATFORM_API BOOL CryptCreateHash(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTKEY key, DWORD flags,
                                          HCRYPTHASH* hash);

// Adds `length` octets; null with 0 adds none. `flags` must be 0 (NTE_BAD_FLAGS). NTE_BAD_HASH;
// NTE_BAD_HASH_STATE once the value is settled.
MIRVANE_PLATFORM_API BOOL CryptHashData(HCRYPTHASH hash, const BYTE* data, DWORD length, DWORD flags);

// Gives HP_HASHVAL, which settles the value, or HP_HASHSIZE. `length` is the capacity of `data` in octets and
// afterwards the octets stored; with null `data` only the length is told, and nothing is settled.
// ERROR_MORE_DATA with the length wanted; NTE_BAD_HASH, NTE_BAD_TYPE, NTE_BAD_FLAGS for flags other than 0.
MIRVANE_PLATFORM_API BOOL CryptGetHashParam(HCRYPTHASH hash, DWORD parameter, BYTE* data, DWORD* length,
                                            DWORD flags);

// Ends the hash object. NTE_BAD_HASH.
MIRVANE_PLATFORM_API BOOL CryptDestroyHash(HCRYPTHASH hash);

}  // extern "C"

#endif
