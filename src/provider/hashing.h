// The choice of a provider, and a hash in one call.
#ifndef MIRVANE_PROVIDER_HASHING_H
#define MIRVANE_PROVIDER_HASHING_H

#include "base/blob.h"

namespace Mirvane {

// A provider context for both algorithms, or for the first if `algId2` is 0. The caller owns one reference,
// to be ended with CryptReleaseContext. The platform's own choice comes before any search, and costs next to
// nothing.
//
// A search that finds nothing gives the context of the last provider type listed all the same; hashing or
// importing a key in it then tells that the algorithm is bad. 0 if `algId` is 0, if the platform lists no
// provider at all, or if no reference could be taken. Throws the last-error code if a provider listed cannot
// be acquired or does not list its algorithms.
unsigned long long MVGetDefaultCSPThrow(unsigned int algId, unsigned int algId2);

// The hash of the data. With a provider of 0 one is chosen by MVGetDefaultCSPThrow; a caller's own has the
// same number of references afterwards, whatever happens. With a place for the hash handle the caller gets
// the live hash object and owns it (CryptDestroyHash); it outlives the provider, and is not set when this
// throws.
//
// Throws the last-error code: hard if there is no provider, soft if hashing fails; 0x80070057 for data above
// 0x7FFFFFFF octets.
CBlob MakeHash(unsigned long long provider, unsigned int algId, CBlob const& data, unsigned long long* hash);

}  // namespace Mirvane

#endif
