// All stages one behind the other: from schema files to generated ones.
#ifndef MIRVANE_ASN1GEN_COMPILER_H
#define MIRVANE_ASN1GEN_COMPILER_H

#include <deque>
#include <vector>

#include "asn1gen/emitter.h"
#include "asn1gen/source.h"

namespace asn1gen {

// Empty if anything was reported.
std::vector<GeneratedFile> compile(const std::deque<SourceFile>& sources, Diagnostics& diagnostics);

}  // namespace asn1gen

#endif
