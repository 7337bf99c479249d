#include "public_key.h"

#include <string>

#include "answer.h"
#include "certificate_fields.h"
#include "key_reader.h"
#include "object_identifiers.h"
#include "platform/keys.h"
#include "provider_context.h"
#include "public_key_cache.h"

namespace platform {

constinit HandleTable<SharedKey> publicKeys{3};

namespace {

std::string_view textOf(const BYTE* octets, std::size_t count) {
    return {reinterpret_cast<const char*>(octets), count};
}

// What tells one key from another: all of its octets, each part behind its length.
std::string cacheName(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind) {
    const CRYPT_OBJID_BLOB& parameters = info.Algorithm.Parameters;
    const DWORD head[] = {kind, parameters.cbData};
    std::string name;
    name.reserve(sizeof head + parameters.cbData + info.PublicKey.cbData);
    name.append(textOf(reinterpret_cast<const BYTE*>(head), sizeof head));
    name.append(textOf(parameters.pbData, parameters.cbData));
    name.append(textOf(info.PublicKey.pbData, info.PublicKey.cbData));
    return name;
}

// RFC 5480, 2.1.1 has curves only by name. One that spells out its numbers could be any curve.
bool hasUnnamedCurve(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind) {
    const CRYPT_OBJID_BLOB& parameters = info.Algorithm.Parameters;
    return kind == CALG_ECDSA && (parameters.cbData == 0 || parameters.pbData[0] != tagObjectIdentifier);
}

SharedKey keyOf(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind, DWORD& code) {
    const std::string name = cacheName(info, kind);
    if (SharedKey known = PublicKeyCache::instance().find(name)) return known;
    const FailureScope scope;
    KeyPointer key = hasUnnamedCurve(info, kind) ? nullptr : readKey(info, kind);
    if (key == nullptr) {
        code = scope.code(NTE_BAD_KEY);
        return nullptr;
    }
    auto made = std::make_shared<Key>(std::move(key), kind, EVP_PKEY_verify_init);
    PublicKeyCache::instance().put(name, made);
    return made;
}

bool isReadable(const CERT_PUBLIC_KEY_INFO& info) {
    const CRYPT_OBJID_BLOB& parameters = info.Algorithm.Parameters;
    return info.Algorithm.pszObjId != nullptr && (parameters.pbData != nullptr || parameters.cbData == 0) &&
           (info.PublicKey.pbData != nullptr || info.PublicKey.cbData == 0);
}

DWORD import(HCRYPTPROV provider, DWORD encodingType, const CERT_PUBLIC_KEY_INFO* info, HCRYPTKEY* handle) {
    const auto context = providerContexts.pin(provider);
    if (!context) return NTE_BAD_UID;
    if (encodingType != acceptedEncodingType || info == nullptr || handle == nullptr || !isReadable(*info)) {
        return E_INVALIDARG;
    }
    const ALG_ID kind = algorithmOf(Kind::key, info->Algorithm.pszObjId);
    if (kind == 0 || !context->type->serves(kind)) return NTE_BAD_ALGID;
    DWORD code = success;
    SharedKey key = keyOf(*info, kind, code);
    if (key == nullptr) return code;
    *handle = publicKeys.add(std::make_unique<SharedKey>(std::move(key)));
    return success;
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL CryptImportPublicKeyInfo(HCRYPTPROV provider, DWORD encodingType, const _CERT_PUBLIC_KEY_INFO* publicKey,
                              HCRYPTKEY* key) {
    return answer([&] { return import(provider, encodingType, publicKey, key); });
}

BOOL CryptDestroyKey(HCRYPTKEY key) {
    return answer([&]() -> DWORD { return publicKeys.release(key) ? success : NTE_BAD_KEY; });
}
