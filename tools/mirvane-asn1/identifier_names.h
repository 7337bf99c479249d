// Object identifiers by name and by dotted form.
//
// Names come from the library's registry and, behind it, from a short list of identifiers that real messages
// use and the library needs no constant for. An identifier may have several names.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_IDENTIFIER_NAMES_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_IDENTIFIER_NAMES_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "asn1rt/object_identifier.h"

namespace tools {

std::string dotted(const ASN1OBJID& identifier);

// The names of an identifier in dotted form; none if it is unknown.
const std::vector<std::string_view>& namesOf(std::string_view dotted);

// The first of them, or the empty text.
std::string_view nameOf(std::string_view dotted);

// The dotted form that belongs to a name; hyphens may stand for underscores.
std::optional<std::string> findIdentifier(std::string_view name);

// The names near a name that is unknown, see hint().
std::string nearestIdentifiers(std::string_view name);

// The longest known identifier that `dotted` begins with, itself not counted; the empty text if there is
// none.
std::string_view knownParent(std::string_view dotted);

// Whether the text is an object identifier: two arcs or more, none with a leading zero, the first two
// possible.
bool isDotted(std::string_view text);

}  // namespace tools

#endif
