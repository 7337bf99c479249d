// Which version a message has. Not part of the interface.
#ifndef MIRVANE_OCSP_MESSAGE_VERSION_H
#define MIRVANE_OCSP_MESSAGE_VERSION_H

#include <algorithm>
#include <cstdint>

namespace Mirvane::PKI::OCSP {

// v2, which is 1, as soon as one entry names its certificate in another way than by a CertID; else v1, 0.
template <typename List>
std::uint32_t determineVersion(List const& entries) {
    return std::any_of(entries.begin(), entries.end(),
                       [](auto const& entry) { return entry.get_reqCert().get_certID() == nullptr; });
}

}  // namespace Mirvane::PKI::OCSP

#endif
