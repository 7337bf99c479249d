// Makes the tree of a record, by its descriptor.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_VALUE_BUILDER_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_VALUE_BUILDER_H

#include "asn1data/descriptor.h"
#include "asn1rt/context.h"
#include "value.h"

namespace tools {

// The tree of a decoded record. Values that the library leaves raw are decoded where their type is known,
// with memory of `owner`, and are shown as elements otherwise.
Value buildValue(const asn1data::TypeDescriptor& type, const void* record, ASN1CTXT* owner);

}  // namespace tools

#endif
