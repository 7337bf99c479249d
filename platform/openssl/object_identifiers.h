// The table of object identifiers, for the parts of the platform that look into encodings.
#ifndef MIRVANE_PLATFORM_OPENSSL_OBJECT_IDENTIFIERS_H
#define MIRVANE_PLATFORM_OPENSSL_OBJECT_IDENTIFIERS_H

#include <string_view>

#include "platform/algorithms.h"

namespace platform {

enum class Kind { hash, key, signature };

// The number for an object identifier of one kind, 0 if it is none of that kind.
ALG_ID algorithmOf(Kind kind, std::string_view objectIdentifier);

constexpr std::string_view rsassaPss = "1.2.840.113549.1.1.10";

}  // namespace platform

#endif
