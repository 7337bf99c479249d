// Puts the generated files together.
#ifndef MIRVANE_ASN1GEN_EMITTER_H
#define MIRVANE_ASN1GEN_EMITTER_H

#include <string>
#include <vector>

#include "asn1gen/model.h"

namespace asn1gen {

struct GeneratedFile {
    std::string name;  // without folder
    std::string text;
};

// A header and a source for each schema file, and one source with the lists of everything. The model is one
// about which nothing was reported.
std::vector<GeneratedFile> emitFiles(const Model& model);

}  // namespace asn1gen

#endif
