// Resolves names: from the trees of all files to the model.
#ifndef MIRVANE_ASN1GEN_MODEL_BUILDER_H
#define MIRVANE_ASN1GEN_MODEL_BUILDER_H

#include <vector>

#include "asn1gen/model.h"
#include "asn1gen/source.h"
#include "asn1gen/syntax.h"

namespace asn1gen {

// The model is whole only if nothing was reported.
Model buildModel(const std::vector<syntax::File>& files, Diagnostics& diagnostics);

}  // namespace asn1gen

#endif
