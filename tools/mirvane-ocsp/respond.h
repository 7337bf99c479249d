// The command `respond`: answers a request.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_RESPOND_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_RESPOND_H

#include <CLI/CLI.hpp>

void addRespondCommand(CLI::App& app);

#endif
