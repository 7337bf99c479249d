#include "key.h"

#include <openssl/provider.h>

#include <string_view>

namespace platform {
namespace {

// Whether libcrypto itself does the work. Elsewhere, say in a token or an engine, an operation may hold what
// others wait for.
bool isWorkOfLibcrypto(const EVP_PKEY* key) {
    const OSSL_PROVIDER* const provider = EVP_PKEY_get0_provider(key);
    return provider != nullptr && OSSL_PROVIDER_get0_name(provider) == std::string_view("default");
}

}  // namespace

Key::Key(KeyPointer key, ALG_ID kind, Start start)
    : key_(std::move(key)), kind_(kind), start_(start), maySpare_(isWorkOfLibcrypto(key_.get())) {}

KeyContextPointer Key::takeOperation(const HashAlgorithm& hash) {
    // This comes before the hash's value reaches the key, since the GOST engine ends the process over a value
    // of a length that it does not expect.
    if (!fits(kind_, hash.id)) return nullptr;
    {
        const std::lock_guard lock(lock_);
        if (spareHash_ == &hash && spare_ != nullptr) return std::move(spare_);
    }
    return makeOperation(hash);
}

void Key::giveBack(const HashAlgorithm& hash, KeyContextPointer operation) {
    if (!maySpare_) return;
    const std::lock_guard lock(lock_);
    spare_.swap(operation);
    spareHash_ = &hash;
}

// Padding stays at its default, PKCS #1 for RSA.
KeyContextPointer Key::makeOperation(const HashAlgorithm& hash) const {
    KeyContextPointer operation(EVP_PKEY_CTX_new(key_.get(), nullptr));
    const bool isReady = operation != nullptr && start_(operation.get()) == 1 &&
                         EVP_PKEY_CTX_set_signature_md(operation.get(), hash.digest) > 0;
    return isReady ? std::move(operation) : nullptr;
}

}  // namespace platform
