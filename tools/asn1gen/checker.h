// What only the whole model shows: tags that cannot be told apart, and records or headers that would need
// each other.
#ifndef MIRVANE_ASN1GEN_CHECKER_H
#define MIRVANE_ASN1GEN_CHECKER_H

#include "asn1gen/model.h"
#include "asn1gen/source.h"

namespace asn1gen {

// Reports
// - alternatives of a CHOICE and components of a SET of one tag, and a required component of a SEQUENCE
// behind one that
//   may be absent and has its tag (X.680, 25.6, 27.3, 29.3);
// - components behind an optional open type, which would take every one of them.
void checkTags(const Model& model, Diagnostics& diagnostics);

// Puts the types of each file in an order in which every record stands behind those that it holds inline,
// aliases behind their base. Reports records that hold themselves.
void orderTypes(Model& model, Diagnostics& diagnostics);

// Reports headers that would have to include each other.
void checkIncludes(const Model& model, Diagnostics& diagnostics);

// The types that the C++ of this one needs whole: those held inline, the base of an alias.
std::vector<const Type*> neededTypes(const Type& type);

}  // namespace asn1gen

#endif
