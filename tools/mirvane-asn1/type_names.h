// Types by the names that a user writes.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_TYPE_NAMES_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_TYPE_NAMES_H

#include <string>
#include <string_view>

#include "asn1data/descriptor.h"

namespace tools {

// The type of this name, null if there is none.
const asn1data::TypeDescriptor* findType(std::string_view name);

// The same for a name from the command line, where hyphens may stand for underscores, and ANY for a message
// of whatever type. Throws CLI::ValidationError, with the nearest names as a hint, if there is none.
const asn1data::TypeDescriptor& requireType(const std::string& name);

}  // namespace tools

#endif
