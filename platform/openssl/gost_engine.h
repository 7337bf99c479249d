// The engine of OpenSSL that adds GOST R 34.10 and 34.11. It need not be installed.
#ifndef MIRVANE_PLATFORM_OPENSSL_GOST_ENGINE_H
#define MIRVANE_PLATFORM_OPENSSL_GOST_ENGINE_H

namespace platform {

// Makes OpenSSL use the engine's keys and digests, and nothing else of it. False if it is not
// installed.
bool registerGostEngine();

}  // namespace platform

#endif
