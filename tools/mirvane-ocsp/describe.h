// Whole messages as JSON with stable keys, from which the text form is printed too.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_DESCRIBE_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_DESCRIBE_H

#include <nlohmann/json.hpp>
#include <string_view>

#include "certificate.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"
#include "ocsp/response_message.h"

namespace tools {

std::string_view statusName(Mirvane::PKI::OCSP::ResponseStatus status);
std::string_view responseTypeName(std::string_view identifier);
// good, revoked or unknown.
std::string_view statusName(Mirvane::PKI::OCSP::CCertStatus const& status);

// What the message holds, without the envelope and the file. `certificates` are those inside, octet for
// octet.
nlohmann::ordered_json describe(Mirvane::PKI::OCSP::CRequestMessage const& request,
                                Mirvane::CBlobList const& certificates);
nlohmann::ordered_json describe(Mirvane::PKI::OCSP::CBasicResponse const& response,
                                Mirvane::CBlobList const& certificates);

// Prints the members of an object, a line each, those of inner objects and lists further to the right, and
// what a terminal would take for more than text escaped.
void printMembers(nlohmann::ordered_json const& object, int indent);

}  // namespace tools

#endif
