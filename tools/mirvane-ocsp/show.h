// The command `show`: prints what messages hold.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_SHOW_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_SHOW_H

#include <CLI/CLI.hpp>

void addShowCommand(CLI::App& app);

#endif
