// What this platform serves: the hashes and kinds of keys that the installed OpenSSL really has, and the
// provider types with their lists. Made once for the process, read-only and never given up from then on.
#ifndef MIRVANE_PLATFORM_OPENSSL_REGISTRY_H
#define MIRVANE_PLATFORM_OPENSSL_REGISTRY_H

#include <openssl/evp.h>

#include <span>
#include <vector>

#include "platform/provider.h"
#include "pointers.h"

namespace platform {

struct HashAlgorithm {
    ALG_ID id;
    const EVP_MD* digest;
    // Ready to take data, and never given any: a copy costs less than a start, which takes a lock of the
    // whole process once an engine is loaded.
    DigestContextPointer fresh;
};

struct ProviderType {
    DWORD type;
    const char* typeName;
    const char* providerName;
    std::vector<ALG_ID> ids;
    std::vector<PROV_ENUMALGS_EX> records;  // in the order of `ids`

    bool serves(ALG_ID id) const;
};

class Registry {
  public:
    static const Registry& instance();

    // Null for what is no hash, or is not installed.
    const HashAlgorithm* hash(ALG_ID id) const;
    // In the order in which they are listed.
    std::span<const ProviderType> types() const { return types_; }

  private:
    Registry();
    void addHashes(bool withGost);
    void addType(DWORD type, const char* typeName, const char* providerName, std::span<const ALG_ID> ids);

    std::vector<HashAlgorithm> hashes_;
    std::vector<ProviderType> types_;
};

// Whether signatures are made over such a hash with such a key.
bool fits(ALG_ID key, ALG_ID hash);

// The number for the kind of a key, or 0.
ALG_ID kindOf(const EVP_PKEY* key);

}  // namespace platform

#endif
