// Names as people read them.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_NAME_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_NAME_TEXT_H

#include <optional>
#include <string>

#include "asn1data/x509_certificate.h"

namespace tools {

// The name in the form of CName, C=DE,CN=Example, as UTF-8. Nothing where that would not tell what the name
// holds: a value that is no string of characters, and one that could be taken for two ("a,O=b").
std::optional<std::string> nameText(const asn1data::ASN1T_Name& name);

}  // namespace tools

#endif
