// The public keys that came in last. To read a key takes time, so does its first signature, and the same few
// keys come again and again.
//
// Bounded by its number of places and by the octets that each may take; a key that comes to a taken place
// drives the other one out. Nothing but keys that were read well gets in. For all threads.
#ifndef MIRVANE_PLATFORM_OPENSSL_PUBLIC_KEY_CACHE_H
#define MIRVANE_PLATFORM_OPENSSL_PUBLIC_KEY_CACHE_H

#include <array>
#include <mutex>
#include <string>
#include <string_view>

#include "key.h"

namespace platform {

class PublicKeyCache {
  public:
    static PublicKeyCache& instance();

    // Null for octets that are not there.
    SharedKey find(std::string_view octets);
    void put(std::string_view octets, SharedKey key);

  private:
    static constexpr std::size_t places = 128;
    static constexpr std::size_t mostOctets = 4096;

    struct Place {
        std::mutex lock;
        std::string octets;
        SharedKey key;
    };

    Place& placeOf(std::string_view octets) {
        return places_[std::hash<std::string_view>{}(octets) % places];
    }

    std::array<Place, places> places_;
};

}  // namespace platform

#endif
