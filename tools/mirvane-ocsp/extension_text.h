// Extensions of OCSP messages by name, with what is inside those that are known.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_EXTENSION_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_EXTENSION_TEXT_H

#include <nlohmann/json.hpp>
#include <string_view>

#include "asn1/extensions.h"

namespace tools {

// Whether the commands know what the extension means, so that it may be critical.
bool isKnownExtension(std::string_view identifier);

// Identifier, name, critical flag and value. A value of a known type that does not decode comes as
// hexadecimal digits, with a problem that says so.
nlohmann::ordered_json describe(Mirvane::ASN1::CExtension const& extension);
// All of a list, which may be null.
nlohmann::ordered_json describe(Mirvane::ASN1::CExtensions const* extensions);

}  // namespace tools

#endif
