// The emitters, one source file per construct of C++. Each gives text that goes into a header or a source of
// namespace asn1data; emitter.h puts the files together.
#ifndef MIRVANE_ASN1GEN_EMIT_H
#define MIRVANE_ASN1GEN_EMIT_H

#include <set>
#include <string>

#include "asn1gen/model.h"

namespace asn1gen {

// emit_forward.cpp: declarations without definition of types and sets, by name.
std::string forwardTypes(const std::set<const Type*>& types);
std::string forwardSets(const std::set<const ObjectSet*>& sets);

// emit_records.cpp: the structure of a type and its constants. Empty for a simple type.
std::string record(const Type& type);
// The definition of the record's constructor from a control object.
std::string recordConstructor(const Type& type);

// emit_functions.cpp: asn1E_, asn1D_, asn1Copy_, asn1Free_, asn1ETC_, asn1DTC_, and the control class.
std::string functionDeclarations(const Type& type);
std::string functionDefinitions(const Type& type);
std::string controlClassDefinition(const Type& type);

// emit_descriptors.cpp: the constant tables of a type. A local type's are for an unnamed namespace.
std::string descriptorDefinition(const Type& type);

// emit_objects.cpp
std::string objectClass(const Object& object);
std::string objectDefinition(const Object& object);
std::string setClass(const ObjectSet& set);
std::string setDefinition(const ObjectSet& set);

// emit_identifiers.cpp
std::string identifierDeclaration(const Identifier& identifier);
std::string identifierDefinition(const Identifier& identifier);

// emit_index.cpp: the whole source file with the lists of all types and identifiers.
std::string typeIndex(const Model& model);

}  // namespace asn1gen

#endif
