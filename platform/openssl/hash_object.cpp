#include "hash_object.h"

#include "provider_context.h"

namespace platform {

constinit HandleTable<HashObject> hashObjects{2};

HashObject::HashObject(const HashAlgorithm& algorithm, SharedKey privateKey)
    : algorithm_(algorithm),
      size_(static_cast<DWORD>(EVP_MD_get_size(algorithm.digest))),
      privateKey_(std::move(privateKey)),
      digest_(EVP_MD_CTX_new()) {
    if (digest_ == nullptr || EVP_MD_CTX_copy_ex(digest_.get(), algorithm.fresh.get()) != 1)
        throw std::bad_alloc();
}

DWORD HashObject::add(Octets data) {
    const std::lock_guard lock(lock_);
    if (digest_ == nullptr) return NTE_BAD_HASH_STATE;
    return EVP_DigestUpdate(digest_.get(), data.data(), data.size()) == 1 ? success : NTE_FAIL;
}

DWORD HashObject::settle(Octets& value) {
    const std::lock_guard lock(lock_);
    if (digest_ != nullptr) {
        if (EVP_DigestFinal_ex(digest_.get(), value_.data(), nullptr) != 1) return NTE_FAIL;
        digest_.reset();
    }
    value = {value_.data(), size_};
    return success;
}

DWORD HashObject::deliverValue(BYTE* data, DWORD* length) {
    if (data == nullptr || *length < size_) {
        *length = size_;
        return data == nullptr ? success : ERROR_MORE_DATA;
    }
    Octets value;
    const DWORD code = settle(value);
    return code == success ? deliver(value, data, length) : code;
}

namespace {

DWORD createHash(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTKEY key, DWORD flags, HCRYPTHASH* hash) {
    const auto context = providerContexts.pin(provider);
    if (!context) return NTE_BAD_UID;
    if (hash == nullptr) return E_INVALIDARG;
    if (key != 0) return NTE_BAD_KEY;
    if (flags != 0) return NTE_BAD_FLAGS;
    const HashAlgorithm* const known = Registry::instance().hash(algorithm);
    if (known == nullptr || !context->type->serves(algorithm)) return NTE_BAD_ALGID;
    const ErrorScope scope;
    *hash = hashObjects.add(std::make_unique<HashObject>(*known, context->privateKey));
    return success;
}

DWORD hashSize(const HashObject& hash, BYTE* data, DWORD* length) {
    const DWORD size = hash.size();
    return deliver({reinterpret_cast<const BYTE*>(&size), sizeof size}, data, length);
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL CryptCreateHash(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTKEY key, DWORD flags, HCRYPTHASH* hash) {
    return answer([&] { return createHash(provider, algorithm, key, flags, hash); });
}

BOOL CryptHashData(HCRYPTHASH hash, const BYTE* data, DWORD length, DWORD flags) {
    return answer([&]() -> DWORD {
        const auto object = hashObjects.pin(hash);
        if (!object) return NTE_BAD_HASH;
        if (data == nullptr && length != 0) return E_INVALIDARG;
        if (flags != 0) return NTE_BAD_FLAGS;
        return object->add({data, length});
    });
}

BOOL CryptGetHashParam(HCRYPTHASH hash, DWORD parameter, BYTE* data, DWORD* length, DWORD flags) {
    return answer([&]() -> DWORD {
        const auto object = hashObjects.pin(hash);
        if (!object) return NTE_BAD_HASH;
        if (length == nullptr) return E_INVALIDARG;
        if (flags != 0) return NTE_BAD_FLAGS;
        if (parameter == HP_HASHVAL) return object->deliverValue(data, length);
        return parameter == HP_HASHSIZE ? hashSize(*object, data, length) : NTE_BAD_TYPE;
    });
}

BOOL CryptDestroyHash(HCRYPTHASH hash) {
    return answer([&]() -> DWORD { return hashObjects.release(hash) ? success : NTE_BAD_HASH; });
}
