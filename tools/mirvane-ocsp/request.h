// The command `request`: asks about certificates.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_REQUEST_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_REQUEST_H

#include <CLI/CLI.hpp>

void addRequestCommand(CLI::App& app);

#endif
