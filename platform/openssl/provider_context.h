// Provider contexts behind their handles.
#ifndef MIRVANE_PLATFORM_OPENSSL_PROVIDER_CONTEXT_H
#define MIRVANE_PLATFORM_OPENSSL_PROVIDER_CONTEXT_H

#include <atomic>

#include "handle_table.h"
#include "key.h"
#include "registry.h"

namespace platform {

struct ProviderContext {
    ProviderContext(const ProviderType& providerType, SharedKey key)
        : type(&providerType), privateKey(std::move(key)) {}

    const ProviderType* const type;
    const SharedKey privateKey;            // null without one
    std::atomic<std::size_t> position{0};  // of the walk through the algorithms
};

extern HandleTable<ProviderContext> providerContexts;

}  // namespace platform

#endif
