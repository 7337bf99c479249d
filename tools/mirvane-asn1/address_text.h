// Addresses of the Internet Protocol as people write them.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_ADDRESS_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_ADDRESS_TEXT_H

#include <optional>
#include <string>

#include "value.h"

namespace tools {

// 127.0.0.1 or ::1 for 4 or 16 octets, and for twice as many, as name constraints have them, the address and
// its mask: 10.0.0.0/255.0.0.0 (RFC 5280, 4.2.1.6 and 4.2.1.10). Nothing for any other number of octets.
std::optional<std::string> addressText(OctetSpan octets);

}  // namespace tools

#endif
