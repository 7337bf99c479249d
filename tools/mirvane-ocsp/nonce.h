// The nonce of RFC 9654 and its value in the extension: one OCTET STRING inside the value. Old messages have
// the bare octets there instead; both are read.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_NONCE_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_NONCE_H

#include "asn1/extensions.h"
#include "base/blob.h"

namespace tools {

inline constexpr char kNonceIdentifier[] = "1.3.6.1.5.5.7.48.1.2";

// The extension for these octets of nonce.
Mirvane::ASN1::CExtension nonceExtension(Mirvane::CBlob const& nonce);

// The octets of nonce in an extension's value.
Mirvane::CBlob nonceOf(Mirvane::CBlob const& value);

// The nonce extension of the list, which may be null; null if there is none.
Mirvane::ASN1::CExtension const* findNonce(Mirvane::ASN1::CExtensions const* extensions);

// Random octets. Throws std::runtime_error if there is no source of them.
Mirvane::CBlob randomNonce(unsigned long length);

}  // namespace tools

#endif
