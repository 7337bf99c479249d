// Blobs from and to hexadecimal text.
#ifndef MIRVANE_TESTS_SUPPORT_BLOBS_H
#define MIRVANE_TESTS_SUPPORT_BLOBS_H

#include <string>
#include <string_view>

#include "base/blob.h"
#include "support/octets.h"

namespace test {

inline Mirvane::CBlob blob(std::string_view hex) {
    const Octets bytes = octets(hex);
    return Mirvane::CBlob(bytes.data(), bytes.size());
}

inline std::string text(const Mirvane::CBlob& value) {
    return text(value.pbData(), value.cbData());
}

}  // namespace test

#endif
