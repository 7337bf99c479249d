#include "watched_platform.h"

#include <dlfcn.h>

#include "platform/last_error.h"

namespace test {

WatchedPlatform watched;

namespace {

bool failsNow(const char* name) {
    if (watched.made++ != watched.failAt) return false;
    watched.failed = name;
    SetLastError(watched.code);
    return true;
}

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Counts what a call that succeeded brought to life or ended.
template <typename Result>
Result counted(Result result, int& count, int change) {
    if (result) count += change;
    return result;
}

}  // namespace
}  // namespace test

using test::counted;
using test::failsNow;
using test::watched;

// What the real function of the same name gives for the same arguments.
#define REAL(function, ...) test::real<decltype(function)>(#function)(__VA_ARGS__)

extern "C" {

PCCRYPT_OID_INFO CryptFindOIDInfo(DWORD keyType, const void* key, DWORD group) {
    return failsNow(__func__) ? nullptr : REAL(CryptFindOIDInfo, keyType, key, group);
}

ALG_ID CertOIDToAlgId(const char* objectIdentifier) {
    return failsNow(__func__) ? 0 : REAL(CertOIDToAlgId, objectIdentifier);
}

HCRYPTPROV MVCAPI_I_CryptGetDefaultCryptProv(ALG_ID algId, ALG_ID algId2) {
    if (failsNow(__func__)) return 0;
    return counted(REAL(MVCAPI_I_CryptGetDefaultCryptProv, algId, algId2), watched.references, 1);
}

BOOL CryptAcquireContextA(HCRYPTPROV* provider, const char* container, const char* name, DWORD type,
                          DWORD flags) {
    if (failsNow(__func__)) return 0;
    return counted(REAL(CryptAcquireContextA, provider, container, name, type, flags), watched.references, 1);
}

BOOL CryptContextAddRef(HCRYPTPROV provider, DWORD* reserved, DWORD flags) {
    if (failsNow(__func__)) return 0;
    return counted(REAL(CryptContextAddRef, provider, reserved, flags), watched.references, 1);
}

// The reference ends all the same, so that a second try is one too many.
BOOL CryptReleaseContext(HCRYPTPROV provider, DWORD flags) {
    const BOOL released = counted(REAL(CryptReleaseContext, provider, flags), watched.references, -1);
    return failsNow(__func__) ? 0 : released;
}

BOOL CryptCreateHash(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTKEY key, DWORD flags, HCRYPTHASH* hash) {
    if (failsNow(__func__)) return 0;
    return counted(REAL(CryptCreateHash, provider, algorithm, key, flags, hash), watched.hashes, 1);
}

BOOL CryptHashData(HCRYPTHASH hash, const BYTE* data, DWORD length, DWORD flags) {
    return failsNow(__func__) ? 0 : REAL(CryptHashData, hash, data, length, flags);
}

BOOL CryptGetHashParam(HCRYPTHASH hash, DWORD parameter, BYTE* data, DWORD* length, DWORD flags) {
    return failsNow(__func__) ? 0 : REAL(CryptGetHashParam, hash, parameter, data, length, flags);
}

BOOL CryptDestroyHash(HCRYPTHASH hash) {
    return counted(REAL(CryptDestroyHash, hash), watched.hashes, -1);
}

BOOL CryptSignHashA(HCRYPTHASH hash, DWORD keySpecification, const char* description, DWORD flags,
                    BYTE* signature, DWORD* length) {
    if (failsNow(__func__)) return 0;
    return REAL(CryptSignHashA, hash, keySpecification, description, flags, signature, length);
}

PCCERT_CONTEXT CertCreateCertificateContext(DWORD encodingType, const BYTE* encoded, DWORD length) {
    if (failsNow(__func__)) return nullptr;
    return counted(REAL(CertCreateCertificateContext, encodingType, encoded, length), watched.certificates,
                   1);
}

BOOL CertFreeCertificateContext(PCCERT_CONTEXT certificate) {
    return counted(REAL(CertFreeCertificateContext, certificate), watched.certificates, -1);
}

BOOL CryptImportPublicKeyInfo(HCRYPTPROV provider, DWORD encodingType, const _CERT_PUBLIC_KEY_INFO* publicKey,
                              HCRYPTKEY* key) {
    if (failsNow(__func__)) return 0;
    return counted(REAL(CryptImportPublicKeyInfo, provider, encodingType, publicKey, key), watched.keys, 1);
}

BOOL CryptVerifySignatureA(HCRYPTHASH hash, const BYTE* signature, DWORD length, HCRYPTKEY key,
                           const char* description, DWORD flags) {
    if (failsNow(__func__)) return 0;
    return REAL(CryptVerifySignatureA, hash, signature, length, key, description, flags);
}

BOOL CryptDestroyKey(HCRYPTKEY key) {
    return counted(REAL(CryptDestroyKey, key), watched.keys, -1);
}

}  // extern "C"
