// The part of the parser below an assignment: types, and the arcs of identifiers. Both report and throw as
// TokenReader does.
#ifndef MIRVANE_ASN1GEN_TYPE_PARSER_H
#define MIRVANE_ASN1GEN_TYPE_PARSER_H

#include "asn1gen/syntax.h"
#include "asn1gen/token_reader.h"

namespace asn1gen {

syntax::Type parseType(TokenReader& reader);

// { name | number | name(number) ... }
syntax::Arcs parseArcs(TokenReader& reader);

}  // namespace asn1gen

#endif
