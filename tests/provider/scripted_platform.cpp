#include "scripted_platform.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "platform/last_error.h"

namespace test {

ScriptedPlatform platform;

HCRYPTPROV ScriptedPlatform::addContext(ScriptedProvider provider) {
    const HCRYPTPROV handle = 100 + contexts.size();
    contexts[handle] = std::move(provider);
    references[handle] = 1;
    return handle;
}

int ScriptedPlatform::totalReferences() const {
    int total = 0;
    for (const auto& [handle, count] : references)
        total += count;
    return total;
}

}  // namespace test

using namespace test;

namespace {

BOOL fail(DWORD code) {
    SetLastError(code);
    return 0;
}

// Whether the function is to fail, and then with which code left.
bool isToFail(const char* function) {
    ++platform.calls[function];
    const auto found = platform.failures.find(function);
    if (found == platform.failures.end()) return false;
    SetLastError(found->second);
    return true;
}

BOOL enumerate(std::vector<ScriptedProvider>& list, DWORD index, DWORD* type, char* name, DWORD* length) {
    platform.capacities.push_back(*length);
    if (index >= list.size()) return fail(platform.providersEnd ? ERROR_NO_MORE_ITEMS : NTE_FAIL);
    ScriptedProvider& entry = list[index];
    const auto wanted = static_cast<DWORD>(entry.name.size() + 1);
    DWORD error = *length < wanted ? ERROR_MORE_DATA : ERROR_SUCCESS;
    if (!entry.enumerationErrors.empty()) {
        error = entry.enumerationErrors.front();
        entry.enumerationErrors.erase(entry.enumerationErrors.begin());
    }
    if (error != ERROR_SUCCESS) {
        *length = platform.reportedLength != 0 ? platform.reportedLength : wanted;
        return fail(error);
    }
    std::memcpy(name, entry.name.c_str(), wanted);
    *type = entry.type;
    return 1;
}

const ScriptedProvider* findProvider(const char* name, DWORD type) {
    for (const ScriptedProvider& entry : name != nullptr ? platform.providers : platform.types) {
        if (entry.type == type && (name == nullptr || entry.name == name)) return &entry;
    }
    return nullptr;
}

std::size_t position = 0;

struct ScriptedCertificate {
    explicit ScriptedCertificate(const std::string& octets) : name(octets.size() < 20 ? octets : "long") {
        info.Issuer = {static_cast<DWORD>(issuer.size()), octetsOf(issuer)};
        info.SubjectPublicKeyInfo.PublicKey = {static_cast<DWORD>(key.size()), octetsOf(key), 3};
        info.SignatureAlgorithm.pszObjId = identifier.data();
    }
    static BYTE* octetsOf(std::string& text) { return reinterpret_cast<BYTE*>(text.data()); }

    CERT_CONTEXT context = {0x10001, nullptr, 0, &info};  // first, so that it tells where the rest is
    CERT_INFO info = {};
    std::string name;
    std::string issuer = "issuer in " + name;
    std::string key = "key of " + name;
    std::string identifier = "1.2.3";
};

// The two-call rule, noted as "length of WHAT" and "WHAT".
BOOL twoCalls(const std::string& what, const std::vector<BYTE>& result, BYTE* buffer, DWORD* length) {
    platform.trace.push_back(buffer == nullptr ? "length of " + what : what);
    if (isToFail(platform.trace.back().c_str())) return 0;
    if (buffer != nullptr && *length >= result.size()) std::copy(result.begin(), result.end(), buffer);
    *length = static_cast<DWORD>(result.size());
    return 1;
}

}  // namespace

HCRYPTPROV MVCAPI_I_CryptGetDefaultCryptProv(ALG_ID, ALG_ID) {
    ++platform.calls["Default"];
    return platform.defaultAnswer;
}

BOOL CryptAcquireContextA(HCRYPTPROV* provider, const char* container, const char* name, DWORD type,
                          DWORD flags) {
    ++platform.calls["Acquire"];
    const ScriptedProvider* const entry = findProvider(name, type);
    if (container != nullptr || flags != 0xF0000000 || entry == nullptr) return fail(NTE_FAIL);
    if (entry->acquisitionError != 0) return fail(entry->acquisitionError);
    *provider = platform.addContext(*entry);
    return 1;
}

BOOL CryptContextAddRef(HCRYPTPROV provider, DWORD*, DWORD) {
    if (platform.refusesReferences || !platform.references.contains(provider)) return fail(NTE_BAD_UID);
    ++platform.references[provider];
    return 1;
}

BOOL CryptReleaseContext(HCRYPTPROV provider, DWORD flags) {
    ++platform.calls["Release"];
    if (flags != 0 || platform.references[provider] == 0) return fail(NTE_BAD_UID);
    --platform.references[provider];
    return 1;
}

BOOL CryptEnumProviderTypesA(DWORD index, DWORD*, DWORD, DWORD* type, char* name, DWORD* length) {
    ++platform.calls["EnumTypes"];
    return enumerate(platform.types, index, type, name, length);
}

BOOL CryptEnumProvidersA(DWORD index, DWORD*, DWORD, DWORD* type, char* name, DWORD* length) {
    ++platform.calls["EnumProviders"];
    return enumerate(platform.providers, index, type, name, length);
}

BOOL CryptGetProvParam(HCRYPTPROV provider, DWORD parameter, BYTE* data, DWORD* length, DWORD flags) {
    ++platform.calls["GetProvParam"];
    platform.walkFlags.push_back(flags);
    if (parameter != 22 || *length != 88 || platform.references[provider] == 0) return fail(NTE_FAIL);
    const ScriptedProvider& entry = platform.contexts[provider];
    if (flags == CRYPT_FIRST) position = 0;
    if (position >= entry.algorithms.size()) return fail(entry.listEnd);
    reinterpret_cast<PROV_ENUMALGS_EX*>(data)->aiAlgid = entry.algorithms[position++];
    return 1;
}

BOOL CryptCreateHash(HCRYPTPROV, ALG_ID, HCRYPTKEY, DWORD, HCRYPTHASH* hash) {
    if (isToFail("CreateHash")) return 0;
    *hash = 7;
    ++platform.liveHashes;
    return 1;
}

BOOL CryptHashData(HCRYPTHASH, const BYTE* data, DWORD length, DWORD) {
    platform.trace.push_back("hash " + std::string(reinterpret_cast<const char*>(data), length));
    return !isToFail("HashData");
}

BOOL CryptGetHashParam(HCRYPTHASH, DWORD parameter, BYTE* data, DWORD* length, DWORD) {
    if (isToFail(parameter == HP_HASHSIZE ? "HashSize" : "HashValue")) return 0;
    if (parameter == HP_HASHSIZE) {
        const DWORD size = 4;
        std::memcpy(data, &size, sizeof size);
        return 1;
    }
    *length = std::min<DWORD>(*length, 3);
    std::memcpy(data, "abc", *length);
    return 1;
}

BOOL CryptDestroyHash(HCRYPTHASH hash) {
    if (hash == 7) --platform.liveHashes;
    return 1;
}

// A certificate is its octets; a short text stands for itself in the trace and in the fields.
PCCERT_CONTEXT CertCreateCertificateContext(DWORD encodingType, const BYTE* encoded, DWORD length) {
    auto certificate = std::make_unique<ScriptedCertificate>(std::string(encoded, encoded + length));
    platform.trace.push_back("open " + certificate->name);
    if (encodingType != 0x10001) return fail(NTE_FAIL), nullptr;
    return isToFail(platform.trace.back().c_str()) ? nullptr : &certificate.release()->context;
}

BOOL CertFreeCertificateContext(PCCERT_CONTEXT context) {
    const std::unique_ptr<const ScriptedCertificate> certificate(
        reinterpret_cast<const ScriptedCertificate*>(context));
    platform.trace.push_back("close " + certificate->name);
    return 1;
}

BOOL CryptEncodeObject(DWORD encodingType, const char* structureType, const void*, BYTE* encoded,
                       DWORD* length) {
    if (encodingType != 0x10001 || structureType != X509_MULTI_BYTE_INTEGER) return fail(NTE_FAIL);
    return twoCalls("serial number", {2, 1, 5}, encoded, length);
}

BOOL CryptHashToBeSigned(HCRYPTPROV provider, DWORD encodingType, const BYTE*, DWORD, BYTE* hash,
                         DWORD* length) {
    if (provider != 0 || encodingType != 0x10001) return fail(NTE_FAIL);
    return twoCalls("signed part", {0xAB}, hash, length);
}
