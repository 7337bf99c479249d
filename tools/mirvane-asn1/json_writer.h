// Trees as JSON, with keys that stay the same from message to message.
//
//   NULL                    null
//   BOOLEAN                 true, false
//   INTEGER, ENUMERATED     a number, or {"value", "name"} where the type names numbers; name may be null
//   INTEGER without bounds  the text "0x80" or "-0x80", instead of the number
//   OBJECT IDENTIFIER       {"oid", "name"}, name may be null
//   strings                 the text, or {"escaped"} if some of it is no character
//   times                   {"time", "text"}: ISO 8601 in UTC, null for a form that DER does not have; and as
//                           it came
//   Name                    {"text", "rdnSequence"}: C=DE,CN=Example, null if that would not tell all; and
//                           its parts
//   OCTET STRING            {"hex"}
//   BIT STRING              {"bits", "hex"}, with "names" of the bits set where the type names bits
//   SEQUENCE, SET           an object of the fields that are present, defaults included
//   SEQUENCE OF, SET OF     an array
//   CHOICE                  an object of the one alternative
//   open types              {"type", "value"} for a known type, else {"hex", "elements"}: the elements as
//                           {"tag", "value"}, or null if the octets are none; "trailing" is a count of octets
//                           that stand behind the value, where there are some
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_JSON_WRITER_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_JSON_WRITER_H

#include <nlohmann/json.hpp>

#include "value.h"

namespace tools {

nlohmann::ordered_json toJson(const Value& value);

}  // namespace tools

#endif
