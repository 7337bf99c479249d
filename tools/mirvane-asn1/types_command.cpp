#include <fmt/format.h>

#include "asn1data/descriptor.h"
#include "commands.h"

void addTypesCommand(CLI::App& app) {
    CLI::App* command = app.add_subcommand("types", "List the names of all types, one a line");
    command->callback([] {
        for (std::uint32_t i = 0; i < asn1data::kAllTypesCount; ++i)
            fmt::print("{}\n", asn1data::kAllTypes[i].name);
    });
}
