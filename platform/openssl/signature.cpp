// Signatures over settled hashes, turned round on their way in and out.
#include <vector>

#include "answer.h"
#include "hash_object.h"
#include "platform/keys.h"
#include "public_key.h"

namespace platform {
namespace {

// An operation ready to go: `start` is EVP_PKEY_sign_init or EVP_PKEY_verify_init. Null if the hash is not
// one for the key. This comes before the hash's value reaches the key, since the GOST engine ends the process
// over a value of a length that it does not expect. Padding stays at its default, PKCS #1 for RSA.
KeyContextPointer prepare(EVP_PKEY* key, ALG_ID kind, const HashAlgorithm& hash,
                          int (*start)(EVP_PKEY_CTX*)) {
    if (!fits(kind, hash.id)) return nullptr;
    KeyContextPointer operation(EVP_PKEY_CTX_new(key, nullptr));
    const bool isReady = operation != nullptr && start(operation.get()) == 1 &&
                         EVP_PKEY_CTX_set_signature_md(operation.get(), hash.digest) > 0;
    return isReady ? std::move(operation) : nullptr;
}

DWORD makeSignature(HashObject& hash, EVP_PKEY* key, ALG_ID kind, BYTE* signature, DWORD* length) {
    const FailureScope scope;
    const KeyContextPointer operation = prepare(key, kind, hash.algorithm(), EVP_PKEY_sign_init);
    if (operation == nullptr) return scope.code(NTE_BAD_ALGID);
    Octets value;
    if (const DWORD code = hash.settle(value); code != success) return code;
    std::size_t written = *length;
    if (EVP_PKEY_sign(operation.get(), signature, &written, value.data(), value.size()) != 1) {
        return scope.code(NTE_FAIL);
    }
    std::reverse(signature, signature + written);
    *length = static_cast<DWORD>(written);
    return success;
}

DWORD sign(HashObject& hash, DWORD keySpecification, BYTE* signature, DWORD* length) {
    if (keySpecification != AT_KEYEXCHANGE && keySpecification != AT_SIGNATURE) return NTE_NO_KEY;
    EVP_PKEY* const key = hash.privateKey();
    if (key == nullptr) return NTE_NO_KEY;
    const ALG_ID kind = kindOf(key);
    if (hash.algorithm().id == CALG_MD5 || !fits(kind, hash.algorithm().id)) return NTE_BAD_ALGID;
    const auto most = static_cast<DWORD>(EVP_PKEY_get_size(key));
    if (signature == nullptr || *length < most) {
        *length = most;
        return signature == nullptr ? success : ERROR_MORE_DATA;
    }
    return makeSignature(hash, key, kind, signature, length);
}

// A signature in DER varies in length, the others do not.
bool hasFitLength(Octets signature, const PublicKey& key) {
    const auto most = static_cast<std::size_t>(EVP_PKEY_get_size(key.key.get()));
    const bool isDer = key.kind == CALG_ECDSA || key.kind == CALG_DSS_SIGN;
    return isDer ? !signature.empty() && signature.size() <= most : signature.size() == most;
}

DWORD verify(HashObject& hash, Octets signature, const PublicKey& key) {
    const FailureScope scope;
    const KeyContextPointer operation =
        prepare(key.key.get(), key.kind, hash.algorithm(), EVP_PKEY_verify_init);
    if (operation == nullptr) return scope.code(NTE_BAD_ALGID);
    Octets value;
    if (const DWORD code = hash.settle(value); code != success) return code;
    if (signature.data() == nullptr || !hasFitLength(signature, key)) return NTE_BAD_SIGNATURE;
    const std::vector<BYTE> turned(signature.rbegin(), signature.rend());
    const int outcome =
        EVP_PKEY_verify(operation.get(), turned.data(), turned.size(), value.data(), value.size());
    // OpenSSL also tells of a lack of memory as of a wrong signature, here and there.
    return outcome == 1 ? success : scope.code(NTE_BAD_SIGNATURE);
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL CryptSignHashA(HCRYPTHASH hash, DWORD keySpecification, const char* description, DWORD flags,
                    BYTE* signature, DWORD* length) {
    return answer([&]() -> DWORD {
        const auto object = hashObjects.pin(hash);
        if (!object) return NTE_BAD_HASH;
        if (description != nullptr || length == nullptr) return E_INVALIDARG;
        if (flags != 0) return NTE_BAD_FLAGS;
        return sign(*object, keySpecification, signature, length);
    });
}

BOOL CryptVerifySignatureA(HCRYPTHASH hash, const BYTE* signature, DWORD length, HCRYPTKEY key,
                           const char* description, DWORD flags) {
    return answer([&]() -> DWORD {
        const auto object = hashObjects.pin(hash);
        if (!object) return NTE_BAD_HASH;
        const auto publicKey = publicKeys.pin(key);
        if (!publicKey) return NTE_BAD_KEY;
        if (description != nullptr) return E_INVALIDARG;
        if (flags != 0) return NTE_BAD_FLAGS;
        return verify(*object, {signature, length}, *publicKey);
    });
}
