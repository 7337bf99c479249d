// The commands of mirvane-asn1, each in a file of its own. A type that the library does not know is wrong
// usage; a message that does not decode ends with status 1.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_COMMANDS_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_COMMANDS_H

#include <CLI/CLI.hpp>

void addTypesCommand(CLI::App& app);
void addPrintCommand(CLI::App& app);
void addRecodeCommand(CLI::App& app);
void addOidCommand(CLI::App& app);

#endif
