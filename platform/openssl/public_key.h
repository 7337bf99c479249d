// Public keys behind their handles.
#ifndef MIRVANE_PLATFORM_OPENSSL_PUBLIC_KEY_H
#define MIRVANE_PLATFORM_OPENSSL_PUBLIC_KEY_H

#include "handle_table.h"
#include "key.h"

namespace platform {

extern HandleTable<SharedKey> publicKeys;

}  // namespace platform

#endif
