#include <fmt/format.h>

#include <memory>
#include <string>

#include "commands.h"
#include "common/input.h"
#include "identifier_names.h"

namespace {

void printUnknown(std::string_view identifier) {
    const std::string_view parent = tools::knownParent(identifier);
    if (parent.empty()) {
        fmt::print("{}: unknown\n", identifier);
    } else {
        fmt::print("{}: unknown, under {} ({})\n", identifier, tools::nameOf(parent), parent);
    }
}

// A name begins with a letter.
std::string identifierOf(const std::string& text) {
    if (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        if (tools::isDotted(text)) return text;
        throw CLI::ValidationError(fmt::format("{} is no object identifier", text));
    }
    if (auto found = tools::findIdentifier(text)) return *found;
    throw tools::InputError(text, "no such name" + tools::nearestIdentifiers(text));
}

void look(const std::string& text) {
    const std::string identifier = identifierOf(text);
    const auto& names = tools::namesOf(identifier);
    for (std::string_view name : names)
        fmt::print("{} ({})\n", name, identifier);
    if (names.empty()) printUnknown(identifier);
}

}  // namespace

void addOidCommand(CLI::App& app) {
    auto text = std::make_shared<std::string>();
    CLI::App* command =
        app.add_subcommand("oid", "Tell the names and the dotted form of an object identifier");
    command->add_option("NAME|DOTTED", *text, "A name, with underscores or hyphens, or a dotted form")
        ->required();
    command->callback([text] { look(*text); });
}
