// Makes the tree of a schema file: the part of X.680 that the schemas use, and information objects in one
// fixed form, `name CLASS ::= { ID identifier TYPE Type }`.
#ifndef MIRVANE_ASN1GEN_PARSER_H
#define MIRVANE_ASN1GEN_PARSER_H

#include "asn1gen/source.h"
#include "asn1gen/syntax.h"

namespace asn1gen {

// Reports what it cannot read and goes on with the next assignment; the tree holds the rest.
syntax::File parse(const SourceFile& file, Diagnostics& diagnostics);

}  // namespace asn1gen

#endif
