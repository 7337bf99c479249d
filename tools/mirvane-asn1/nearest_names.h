// Hints for names that somebody mistyped.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_NEAREST_NAMES_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_NEAREST_NAMES_H

#include <string>
#include <string_view>
#include <vector>

namespace tools {

// "; nearest: A, B, C" with the names that hold `wanted` or are a few letters away from it, of either case;
// the empty text if no name is near.
std::string hint(std::string_view wanted, const std::vector<std::string_view>& names);

}  // namespace tools

#endif
