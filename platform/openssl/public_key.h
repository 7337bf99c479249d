// Public keys behind their handles.
#ifndef MIRVANE_PLATFORM_OPENSSL_PUBLIC_KEY_H
#define MIRVANE_PLATFORM_OPENSSL_PUBLIC_KEY_H

#include "handle_table.h"
#include "platform/algorithms.h"
#include "pointers.h"

namespace platform {

struct PublicKey {
    ALG_ID kind;
    KeyPointer key;
};

extern HandleTable<PublicKey> publicKeys;

}  // namespace platform

#endif
