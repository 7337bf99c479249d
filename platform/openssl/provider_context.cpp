#include "provider_context.h"

#include <cstring>
#include <string_view>

#include "answer.h"
#include "key_store.h"

namespace platform {

constinit HandleTable<ProviderContext> providerContexts{1};

namespace {

using Types = std::span<const ProviderType>;

// One context of each type, made once and never given up, in the order of the types.
const std::vector<HCRYPTPROV>& sharedContexts() {
    static const auto& contexts = *new auto([] {
        std::vector<HCRYPTPROV> made;
        for (const ProviderType& type : Registry::instance().types()) {
            made.push_back(
                providerContexts.add(std::make_unique<ProviderContext>(type, nullptr), Lifetime::immortal));
        }
        return made;
    }());
    return contexts;
}

// The provider type that name and number tell; stays null if both leave it open.
DWORD chooseType(const char* name, DWORD number, const ProviderType*& chosen) {
    const Types types = Registry::instance().types();
    for (const ProviderType& type : types) {
        const bool isMeant =
            name != nullptr ? std::string_view(name) == type.providerName : number == type.type;
        if (isMeant) chosen = &type;
    }
    if (chosen == nullptr && name != nullptr) return NTE_KEYSET_NOT_DEF;
    if (chosen == nullptr && number != 0) return NTE_PROV_TYPE_NOT_DEF;
    if (chosen != nullptr && number != 0 && number != chosen->type) return NTE_PROV_TYPE_NO_MATCH;
    return success;
}

const ProviderType* firstTypeFor(ALG_ID kind) {
    for (const ProviderType& type : Registry::instance().types()) {
        if (type.serves(kind)) return &type;
    }
    return nullptr;
}

DWORD acquireWithKey(HCRYPTPROV* provider, const char* container, const ProviderType* type) {
    if (container == nullptr || *container == 0) return NTE_BAD_KEYSET;
    KeyPointer key = openPrivateKey(container);
    if (key == nullptr) return NTE_BAD_KEYSET;
    const ALG_ID kind = kindOf(key.get());
    if (type == nullptr) type = firstTypeFor(kind);
    if (type == nullptr || !type->serves(kind)) return NTE_BAD_KEYSET;
    auto shared = std::make_shared<Key>(std::move(key), kind, EVP_PKEY_sign_init);
    *provider = providerContexts.add(std::make_unique<ProviderContext>(*type, std::move(shared)));
    return success;
}

DWORD acquire(HCRYPTPROV* provider, const char* container, const char* name, DWORD number, DWORD flags) {
    if (provider == nullptr) return E_INVALIDARG;
    if (flags != 0 && flags != CRYPT_VERIFYCONTEXT) return NTE_BAD_FLAGS;
    const ProviderType* type = nullptr;
    if (const DWORD code = chooseType(name, number, type); code != success) return code;
    if (flags == 0) return acquireWithKey(provider, container, type);
    if (type == nullptr) return NTE_BAD_PROV_TYPE;
    *provider = providerContexts.add(std::make_unique<ProviderContext>(*type, nullptr));
    return success;
}

DWORD enumerate(DWORD index, const DWORD* reserved, DWORD flags, DWORD* type, char* name, DWORD* length,
                const char* ProviderType::*text) {
    if (reserved != nullptr || type == nullptr || length == nullptr) return E_INVALIDARG;
    if (flags != 0) return NTE_BAD_FLAGS;
    const Types types = Registry::instance().types();
    if (index >= types.size()) return ERROR_NO_MORE_ITEMS;
    const auto* const octets = reinterpret_cast<const BYTE*>(types[index].*text);
    *type = types[index].type;
    return deliver({octets, std::strlen(types[index].*text) + 1}, reinterpret_cast<BYTE*>(name), length);
}

DWORD nextAlgorithm(ProviderContext& context, BYTE* data, DWORD* length, DWORD flags) {
    const std::span records = context.type->records;
    if (flags == CRYPT_FIRST) context.position = 0;
    const std::size_t position = context.position;
    if (position >= records.size()) return ERROR_NO_MORE_ITEMS;
    const Octets record(reinterpret_cast<const BYTE*>(&records[position]), sizeof(PROV_ENUMALGS_EX));
    const DWORD code = deliver(record, data, length);
    if (code == success && data != nullptr) context.position = position + 1;
    return code;
}

}  // namespace
}  // namespace platform

using namespace platform;

HCRYPTPROV MVCAPI_I_CryptGetDefaultCryptProv(ALG_ID algId, ALG_ID algId2) {
    HCRYPTPROV provider = 0;
    answer([&]() -> DWORD {
        const Types types = Registry::instance().types();
        for (std::size_t i = 0; i < types.size() && algId != 0; ++i) {
            if (!types[i].serves(algId) || (algId2 != 0 && !types[i].serves(algId2))) continue;
            const HCRYPTPROV shared = sharedContexts()[i];
            if (!providerContexts.addReference(shared)) return NTE_FAIL;
            provider = shared;
            return success;
        }
        return NTE_BAD_ALGID;
    });
    return provider;
}

BOOL CryptAcquireContextA(HCRYPTPROV* provider, const char* container, const char* providerName,
                          DWORD providerType, DWORD flags) {
    return answer([&] { return acquire(provider, container, providerName, providerType, flags); });
}

BOOL CryptContextAddRef(HCRYPTPROV provider, DWORD* reserved, DWORD flags) {
    return answer([&]() -> DWORD {
        if (reserved != nullptr) return E_INVALIDARG;
        if (flags != 0) return NTE_BAD_FLAGS;
        return providerContexts.addReference(provider) ? success : NTE_BAD_UID;
    });
}

BOOL CryptReleaseContext(HCRYPTPROV provider, DWORD flags) {
    return answer([&]() -> DWORD {
        if (flags != 0) return NTE_BAD_FLAGS;
        return providerContexts.release(provider) ? success : NTE_BAD_UID;
    });
}

BOOL CryptEnumProviderTypesA(DWORD index, DWORD* reserved, DWORD flags, DWORD* type, char* name,
                             DWORD* length) {
    return answer(
        [&] { return enumerate(index, reserved, flags, type, name, length, &ProviderType::typeName); });
}

BOOL CryptEnumProvidersA(DWORD index, DWORD* reserved, DWORD flags, DWORD* type, char* name, DWORD* length) {
    return answer(
        [&] { return enumerate(index, reserved, flags, type, name, length, &ProviderType::providerName); });
}

BOOL CryptGetProvParam(HCRYPTPROV provider, DWORD parameter, BYTE* data, DWORD* length, DWORD flags) {
    return answer([&]() -> DWORD {
        const auto context = providerContexts.pin(provider);
        if (!context) return NTE_BAD_UID;
        if (length == nullptr) return E_INVALIDARG;
        if (parameter != PP_ENUMALGS_EX) return NTE_BAD_TYPE;
        if (flags > CRYPT_FIRST) return NTE_BAD_FLAGS;
        return nextAlgorithm(*context, data, length, flags);
    });
}
