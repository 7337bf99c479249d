#include "public_key_cache.h"

namespace platform {

PublicKeyCache& PublicKeyCache::instance() {
    // Never destroyed: OpenSSL may end before we do.
    static PublicKeyCache& cache = *new PublicKeyCache;
    return cache;
}

SharedKey PublicKeyCache::find(std::string_view octets) {
    Place& place = placeOf(octets);
    const std::lock_guard lock(place.lock);
    return place.octets == octets ? place.key : nullptr;
}

void PublicKeyCache::put(std::string_view octets, SharedKey key) {
    if (octets.size() > mostOctets) return;
    std::string copy(octets);
    Place& place = placeOf(octets);
    const std::lock_guard lock(place.lock);
    place.octets.swap(copy);
    place.key.swap(key);
}

}  // namespace platform
