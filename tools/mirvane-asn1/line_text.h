// Values that fit on one line.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_LINE_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_LINE_TEXT_H

#include <optional>
#include <string>

#include "value.h"

namespace tools {

// Octets of a line of hexadecimal digits.
constexpr std::size_t kOctetsOfLine = 32;

// The whole value as one line; nothing if it needs several.
std::optional<std::string> lineText(const Value& value);

// What of a value that needs several lines stands in front of them; may be empty.
std::string headText(const Value& value);

// What an open value shows, which must have a value: of an unknown type the one element, or the list of all.
const Value& openContent(const OpenValue& value);

}  // namespace tools

#endif
