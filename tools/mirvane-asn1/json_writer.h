// Trees as JSON, with keys that stay the same from message to message: docs/mirvane-asn1.md has them.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_JSON_WRITER_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_JSON_WRITER_H

#include <nlohmann/json.hpp>

#include "value.h"

namespace tools {

nlohmann::ordered_json toJson(const Value& value);

}  // namespace tools

#endif
