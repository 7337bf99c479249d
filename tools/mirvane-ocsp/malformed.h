// Octets that the library refuses: what is wrong with them, and where, for somebody who looks at the file.
// The message classes tell no more than that it is something. `failure` is the code that they threw, `kind`
// what the octets are said not to be.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_MALFORMED_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_MALFORMED_H

#include <string>

#include "base/blob.h"
#include "base/exception.h"
#include "common/input.h"

namespace tools {

std::string requestProblem(Octets const& octets, std::string const& kind, ATL::HRESULT failure);
std::string responseProblem(Octets const& octets, std::string const& kind, ATL::HRESULT failure);
// The same for the response inside a message; places count from its own start.
std::string basicResponseProblem(Mirvane::CBlob const& response, ATL::HRESULT failure);

}  // namespace tools

#endif
