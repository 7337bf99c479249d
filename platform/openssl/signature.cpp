// Signatures over settled hashes, turned round on their way in and out.
#include <vector>

#include "answer.h"
#include "hash_object.h"
#include "platform/keys.h"
#include "public_key.h"

namespace platform {
namespace {

DWORD makeSignature(HashObject& hash, Key& key, BYTE* signature, DWORD* length) {
    const FailureScope scope;
    KeyContextPointer operation = key.takeOperation(hash.algorithm());
    if (operation == nullptr) return scope.code(NTE_BAD_ALGID);
    Octets value;
    if (const DWORD code = hash.settle(value); code != success) return code;
    std::size_t written = *length;
    if (EVP_PKEY_sign(operation.get(), signature, &written, value.data(), value.size()) != 1) {
        return scope.code(NTE_FAIL);
    }
    key.giveBack(hash.algorithm(), std::move(operation));
    std::reverse(signature, signature + written);
    *length = static_cast<DWORD>(written);
    return success;
}

DWORD sign(HashObject& hash, DWORD keySpecification, BYTE* signature, DWORD* length) {
    if (keySpecification != AT_KEYEXCHANGE && keySpecification != AT_SIGNATURE) return NTE_NO_KEY;
    Key* const key = hash.privateKey();
    if (key == nullptr) return NTE_NO_KEY;
    if (hash.algorithm().id == CALG_MD5 || !fits(key->kind(), hash.algorithm().id)) return NTE_BAD_ALGID;
    const auto most = static_cast<DWORD>(key->signatureSize());
    if (signature == nullptr || *length < most) {
        *length = most;
        return signature == nullptr ? success : ERROR_MORE_DATA;
    }
    return makeSignature(hash, *key, signature, length);
}

// A signature in DER varies in length, the others do not.
bool hasFitLength(Octets signature, const Key& key) {
    const std::size_t most = key.signatureSize();
    const bool isDer = key.kind() == CALG_ECDSA || key.kind() == CALG_DSS_SIGN;
    return isDer ? !signature.empty() && signature.size() <= most : signature.size() == most;
}

DWORD verify(HashObject& hash, Octets signature, Key& key) {
    const FailureScope scope;
    KeyContextPointer operation = key.takeOperation(hash.algorithm());
    if (operation == nullptr) return scope.code(NTE_BAD_ALGID);
    Octets value;
    if (const DWORD code = hash.settle(value); code != success) return code;
    if (signature.data() == nullptr || !hasFitLength(signature, key)) return NTE_BAD_SIGNATURE;
    const std::vector<BYTE> turned(signature.rbegin(), signature.rend());
    const int outcome =
        EVP_PKEY_verify(operation.get(), turned.data(), turned.size(), value.data(), value.size());
    // OpenSSL also tells of a lack of memory as of a wrong signature, here and there.
    if (outcome != 1) return scope.code(NTE_BAD_SIGNATURE);
    key.giveBack(hash.algorithm(), std::move(operation));
    return success;
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
        return verify(*object, {signature, length}, **publicKey);
    });
}
