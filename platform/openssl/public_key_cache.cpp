#include "public_key_cache.h"

namespace platform {

PublicKeyCache& PublicKeyCache::instance() {
    // Never destroyed: OpenSSL may end before we do.
    static PublicKeyCache& cache = *new PublicKeyCache;
    return cache;
}

KeyPointer PublicKeyCache::find(std::string_view octets) {
    Place& place = placeOf(octets);
    const std::lock_guard lock(place.lock);
    return place.octets == octets ? share(place.key.get()) : nullptr;
}

void PublicKeyCache::put(std::string_view octets, EVP_PKEY* key) {
    if (octets.size() > mostOctets) return;
    std::string copy(octets);
    KeyPointer shared = share(key);
    Place& place = placeOf(octets);
    const std::lock_guard lock(place.lock);
    place.octets.swap(copy);
    place.key.swap(shared);
}

}  // namespace platform
