#include "public_key.h"

#include <limits>
#include <string>

#include "answer.h"
#include "object_identifiers.h"
#include "platform/keys.h"
#include "provider_context.h"
#include "public_key_cache.h"

namespace platform {

constinit HandleTable<PublicKey> publicKeys{3};

namespace {

constexpr BYTE tagBitString = 0x03;
constexpr BYTE tagObjectIdentifier = 0x06;
constexpr BYTE tagSequence = 0x30;

std::string_view textOf(const BYTE* octets, std::size_t count) {
    return {reinterpret_cast<const char*>(octets), count};
}

// An element in DER.
std::string element(BYTE tag, std::string_view content) {
    std::string length;
    for (std::size_t rest = content.size(); rest != 0; rest >>= 8) {
        length.insert(length.begin(), static_cast<char>(rest & 0xFF));
    }
    if (content.size() < 0x80) {
        length.assign(1, static_cast<char>(content.size()));
    } else {
        length.insert(length.begin(), static_cast<char>(0x80 | length.size()));
    }
    return std::string(1, static_cast<char>(tag)).append(length).append(content);
}

// The object identifier in DER, empty if the text is none.
std::string encodedIdentifier(const char* text) {
    const ObjectPointer object(OBJ_txt2obj(text, 1));
    const BYTE* const content = object != nullptr ? OBJ_get0_data(object.get()) : nullptr;
    return content != nullptr ? element(tagObjectIdentifier, textOf(content, OBJ_length(object.get())))
                              : std::string();
}

// The SubjectPublicKeyInfo of RFC 5280, 4.1.2.7.
std::string encoded(const CERT_PUBLIC_KEY_INFO& info) {
    const CRYPT_OBJID_BLOB& parameters = info.Algorithm.Parameters;
    std::string algorithm = encodedIdentifier(info.Algorithm.pszObjId);
    algorithm.append(textOf(parameters.pbData, parameters.cbData));
    // The count of unused bits is always 0, whatever came.
    std::string bits(1, '\0');
    bits.append(textOf(info.PublicKey.pbData, info.PublicKey.cbData));
    return element(tagSequence, element(tagSequence, algorithm).append(element(tagBitString, bits)));
}

KeyPointer readKey(const CERT_PUBLIC_KEY_INFO& info) {
    const std::string octets = encoded(info);
    if (octets.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return nullptr;
    const auto* position = reinterpret_cast<const BYTE*>(octets.data());
    const BYTE* const end = position + octets.size();
    KeyPointer key(d2i_PUBKEY(nullptr, &position, static_cast<long>(octets.size())));
    return position == end ? std::move(key) : nullptr;
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

KeyPointer keyOf(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind, DWORD& code) {
    const std::string name = cacheName(info, kind);
    if (KeyPointer known = PublicKeyCache::instance().find(name)) return known;
    const FailureScope scope;
    KeyPointer key = hasUnnamedCurve(info, kind) ? nullptr : readKey(info);
    if (key == nullptr) {
        code = scope.code(NTE_BAD_KEY);
    } else {
        PublicKeyCache::instance().put(name, key.get());
    }
    return key;
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
    KeyPointer key = keyOf(*info, kind, code);
    if (key == nullptr) return code;
    *handle = publicKeys.add(std::make_unique<PublicKey>(PublicKey{kind, std::move(key)}));
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
