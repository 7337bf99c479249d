// The command `verify`: says whether an answer can be relied on, and if not, why.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_VERIFY_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_VERIFY_H

#include <CLI/CLI.hpp>

void addVerifyCommand(CLI::App& app);

#endif
