// A key, and the operation that it was last used for. To set one up takes a tenth of the time of an elliptic
// curve signature, since OpenSSL looks for everything by name, and the same key mostly meets the same hash
// again. For all threads.
#ifndef MIRVANE_PLATFORM_OPENSSL_KEY_H
#define MIRVANE_PLATFORM_OPENSSL_KEY_H

#include <memory>
#include <mutex>

#include "pointers.h"
#include "registry.h"

namespace platform {

class Key {
  public:
    // EVP_PKEY_sign_init or EVP_PKEY_verify_init: what all operations of the key do.
    using Start = int (*)(EVP_PKEY_CTX*);

    Key(KeyPointer key, ALG_ID kind, Start start);

    ALG_ID kind() const { return kind_; }
    // In octets, at the most.
    std::size_t signatureSize() const { return static_cast<std::size_t>(EVP_PKEY_get_size(key_.get())); }

    // An operation over values of this hash, ready to go and the caller's alone. Null if the hash is not one
    // for the key, or if OpenSSL fails.
    KeyContextPointer takeOperation(const HashAlgorithm& hash);
    // Keeps an operation that was taken for this hash, and did its work well, for the next one to take it.
    void giveBack(const HashAlgorithm& hash, KeyContextPointer operation);

  private:
    KeyContextPointer makeOperation(const HashAlgorithm& hash) const;

    const KeyPointer key_;
    const ALG_ID kind_;
    const Start start_;
    const bool maySpare_;
    std::mutex lock_;
    KeyContextPointer spare_;
    const HashAlgorithm* spareHash_ = nullptr;
};

using SharedKey = std::shared_ptr<Key>;

}  // namespace platform

#endif
