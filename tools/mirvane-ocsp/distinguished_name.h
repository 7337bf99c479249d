// Distinguished names as users write them.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_DISTINGUISHED_NAME_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_DISTINGUISHED_NAME_H

#include <string>

#include "base/blob.h"

namespace tools {

// The encoded name for /C=RU/O=Example/CN=x or C=RU,O=Example,CN=x, in the order written; a backslash takes
// the next character as it is. Throws InputError.
Mirvane::CBlob parseDistinguishedName(std::string const& text);

}  // namespace tools

#endif
