// What stands in values that the library itself carries as they came: it needs no look into them, a reader
// does.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_KNOWN_CONTENTS_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_KNOWN_CONTENTS_H

#include <string_view>

#include "asn1data/descriptor.h"

namespace tools {

// The type of an open value by its place: the field of a record, or the open type itself. Null if the place
// does not tell.
const asn1data::TypeDescriptor* contentByPlace(std::string_view record, std::string_view field,
                                               std::string_view openType);

// The type of a value beside an identifier that no table ties to it. Null if it is unknown.
const asn1data::TypeDescriptor* contentByIdentifier(const ASN1OBJID& identifier);

}  // namespace tools

#endif
