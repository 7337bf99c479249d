// Hash objects behind their handles.
#ifndef MIRVANE_PLATFORM_OPENSSL_HASH_OBJECT_H
#define MIRVANE_PLATFORM_OPENSSL_HASH_OBJECT_H

#include <array>
#include <mutex>

#include "answer.h"
#include "handle_table.h"
#include "key.h"
#include "platform/hash.h"
#include "pointers.h"

namespace platform {

class HashObject {
  public:
    // `privateKey` may be null. Throws std::bad_alloc.
    HashObject(const HashAlgorithm& algorithm, SharedKey privateKey);

    const HashAlgorithm& algorithm() const { return algorithm_; }
    Key* privateKey() const { return privateKey_.get(); }

    // In octets.
    DWORD size() const { return size_; }
    // Adds octets; a code, NTE_BAD_HASH_STATE once the value is settled.
    DWORD add(Octets data);
    // Settles the value and tells it; a code. The octets live as long as the object.
    DWORD settle(Octets& value);
    // The value by the two-call rule; a code. Settled only where there is room for it.
    DWORD deliverValue(BYTE* data, DWORD* length);

  private:
    const HashAlgorithm& algorithm_;
    const DWORD size_;
    const SharedKey privateKey_;
    std::mutex lock_;
    DigestContextPointer digest_;  // null once the value is settled
    std::array<BYTE, EVP_MAX_MD_SIZE> value_;
};

extern HandleTable<HashObject> hashObjects;

}  // namespace platform

#endif
