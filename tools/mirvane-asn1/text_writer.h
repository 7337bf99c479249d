// Trees as text for people: one field a line, indented by two, "- " in front of the elements of a list.
//
// Octets and bits of up to 128 octets are shown whole, longer ones by their first 64 and the count of the
// others. Fields that have their default value are left out. An AlgorithmIdentifier and a relative
// distinguished name take one line where they can.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_TEXT_WRITER_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_TEXT_WRITER_H

#include <string>
#include <string_view>

#include "value.h"

namespace tools {

// The lines of a value with this name in front.
std::string toText(std::string_view name, const Value& value);

}  // namespace tools

#endif
