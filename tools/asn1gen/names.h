// All rules by which a name of the schema becomes a name of C++.
#ifndef MIRVANE_ASN1GEN_NAMES_H
#define MIRVANE_ASN1GEN_NAMES_H

#include <string>
#include <string_view>

namespace asn1gen {

// Hyphens become underscores; a reserved word of C++ gets an underscore behind it.
std::string cppName(std::string_view notation);

// A member of a record. The names that every record has itself get an underscore as reserved words do.
std::string memberName(std::string_view notation);

// The type of a component, of an element of a list, and of the value of an information object, where it has
// no name.
std::string componentTypeName(std::string_view owner, std::string_view field);
std::string elementTypeName(std::string_view list);
std::string objectTypeName(std::string_view object, std::string_view objectClass);

// A list without a name, over an element with one: shared by all that hold such a list.
std::string sharedListName(std::string_view element, bool setOf);

}  // namespace asn1gen

#endif
