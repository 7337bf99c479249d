// What both command line programs share: exit statuses, usage errors, --help and --version.
#ifndef MIRVANE_TOOLS_COMMON_PROGRAM_H
#define MIRVANE_TOOLS_COMMON_PROGRAM_H

#include <CLI/CLI.hpp>

#include <initializer_list>
#include <string>

namespace tools {

enum ExitStatus : int { kSuccess = 0, kFailure = 1, kUsage = 2 };

struct Program {
    std::string name;
    std::string purpose;
    std::initializer_list<void (*)(CLI::App&)> commands;  // each adds one
};

// Parses the command line and runs the command that it names: a command's callback returns nothing and throws
// CLI::RuntimeError to end with another status than 0. Help and version end with 0, wrong usage with kUsage
// and one line, and any exception with kFailure and one line on standard error.
int run(Program const& program, int argc, char** argv);

// One line on standard error, after the program's name.
void complain(CLI::App const& app, std::string const& text);

}  // namespace tools

#endif
