// The names of the runtime's statuses.
#ifndef MIRVANE_TOOLS_COMMON_STATUS_NAME_H
#define MIRVANE_TOOLS_COMMON_STATUS_NAME_H

#include <string_view>

namespace tools {

// As in asn1rt/status.h; "unknown" for a number that is no status.
std::string_view statusName(int status);

}  // namespace tools

#endif
