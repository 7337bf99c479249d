// Revocation reasons by their names in RFC 5280, 5.3.1.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_REASON_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_REASON_H

#include <optional>
#include <string>

#include "asn1/revocation_reason.h"

namespace tools {

// The name; for a number that has none the number.
std::string reasonName(Mirvane::ASN1::CrlReason reason);

// The reason of this name, in whatever case; nothing for another text.
std::optional<Mirvane::ASN1::CrlReason> parseReason(std::string const& text);

}  // namespace tools

#endif
