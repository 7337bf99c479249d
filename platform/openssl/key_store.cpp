#include "key_store.h"

#include <mutex>

#include "answer.h"
#include "platform/provider.h"
#include "registry.h"

namespace platform {
namespace {

// A store may hold much beside the key; this ends the search in one that never ends.
constexpr int mostObjects = 1000;

struct PassphraseSource {
    MVCAPI_PASSPHRASE_CALLBACK callback;
    void* argument;
};

std::mutex sourceLock;
PassphraseSource source{nullptr, nullptr};

int askForPassphrase(char* passphrase, int capacity, int, void* container) {
    PassphraseSource asked;
    {
        const std::lock_guard lock(sourceLock);
        asked = source;
    }
    if (asked.callback == nullptr) return -1;
    // The slot belongs to our functions, whatever the callback calls meanwhile.
    const DWORD lastError = GetLastError();
    const int length =
        asked.callback(asked.argument, static_cast<const char*>(container), passphrase, capacity);
    SetLastError(lastError);
    return length <= capacity ? length : -1;
}

KeyPointer firstKey(OSSL_STORE_CTX* store) {
    for (int count = 0; count < mostObjects && OSSL_STORE_eof(store) == 0; ++count) {
        // An object that is not understood is no end: the next may be the key.
        const StoreInfoPointer info(OSSL_STORE_load(store));
        if (info == nullptr) continue;
        if (OSSL_STORE_INFO_get_type(info.get()) != OSSL_STORE_INFO_PKEY) continue;
        return KeyPointer(OSSL_STORE_INFO_get1_PKEY(info.get()));
    }
    return nullptr;
}

}  // namespace

KeyPointer openPrivateKey(const char* container) {
    Registry::instance();  // the engine must be there before its keys are read
    const ErrorScope scope;
    // Without a method of ours OpenSSL would ask at the terminal.
    const UiMethodPointer method(UI_UTIL_wrap_read_pem_callback(askForPassphrase, 0));
    if (method == nullptr) throw std::bad_alloc();
    const StorePointer store(
        OSSL_STORE_open(container, method.get(), const_cast<char*>(container), nullptr, nullptr));
    if (store == nullptr || OSSL_STORE_expect(store.get(), OSSL_STORE_INFO_PKEY) == 0) return nullptr;
    return firstKey(store.get());
}

}  // namespace platform

void MVCAPI_I_SetPassphraseCallback(MVCAPI_PASSPHRASE_CALLBACK callback, void* argument) {
    const std::lock_guard lock(platform::sourceLock);
    platform::source = {callback, argument};
}
