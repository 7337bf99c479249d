// Text from strangers on the user's terminal.
#ifndef MIRVANE_TOOLS_COMMON_PRINTABLE_H
#define MIRVANE_TOOLS_COMMON_PRINTABLE_H

#include <string>
#include <string_view>

namespace tools {

// UTF-8 text fit for one line: what ends the line, steers a terminal or turns the direction of writing is
// escaped (\x0A, \u{202E}).
std::string printable(std::string_view text);

}  // namespace tools

#endif
