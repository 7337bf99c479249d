// Engines are deprecated in OpenSSL 3, but this one has no successor in the distributions served.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "gost_engine.h"

#include <openssl/opensslv.h>
#if OPENSSL_VERSION_MAJOR < 4
#include <openssl/engine.h>
#endif

namespace platform {

bool registerGostEngine() {
#if OPENSSL_VERSION_MAJOR < 4 && !defined(OPENSSL_NO_ENGINE)
    ENGINE* const engine = ENGINE_by_id("gost");
    if (engine == nullptr) return false;
    // Random numbers and ciphers stay as the program around us has them. The engine stays loaded for good.
    const bool registered = ENGINE_init(engine) == 1 && ENGINE_register_pkey_asn1_meths(engine) == 1 &&
                            ENGINE_register_pkey_meths(engine) == 1 && ENGINE_register_digests(engine) == 1;
    ENGINE_free(engine);
    return registered;
#else
    return false;
#endif
}

}  // namespace platform
