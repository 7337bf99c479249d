#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands.h"
#include "elements.h"
#include "json_writer.h"
#include "message.h"
#include "text_writer.h"
#include "type_names.h"
#include "value_builder.h"

namespace {

using nlohmann::ordered_json;

struct PrintOptions {
    std::string type;
    std::string file = "-";
    bool json = false;
};

// Where the value, encoded again, differs from the message: such a message is not in DER, or holds more than
// its type has room for. Nothing if it doesn't.
std::optional<std::string> difference(const tools::Message& message) {
    tools::Octets encoded;
    try {
        encoded = message.encoded();
    } catch (const tools::InputError& error) {
        return error.what();
    }
    if (std::ranges::equal(message.octets(), encoded)) return std::nullopt;
    const std::size_t position = tools::differingElement(message.octets(), encoded);
    const auto rest = message.octets().subspan(position);
    const bool indefinite = rest.size() > 1 && rest[1] == 0x80;
    return fmt::format("encodes to other octets: the element at byte {} {}", position,
                       indefinite ? "has indefinite length" : "differs");
}

void printText(const std::string& type, const tools::Value& value, const tools::Message& message) {
    fmt::print("{}", tools::toText(type, value));
    if (const auto note = difference(message)) fmt::print("-- {}\n", *note);
    if (message.trailing() > 0)
        fmt::print("-- {} octets behind it are not part of the message\n", message.trailing());
}

void printJson(const std::string& type, const tools::Value& value, const tools::Message& message,
               const std::string& source) {
    ordered_json result;
    result["file"] = source;
    result["type"] = type;
    result["value"] = tools::toJson(value);
    result["recodes"] = !difference(message).has_value();
    result["trailingOctets"] = message.trailing();
    fmt::print("{}\n", result.dump(-1, ' ', false, ordered_json::error_handler_t::replace));
}

void print(const CLI::App& app, const PrintOptions& options) {
    const auto& type = tools::requireType(options.type);
    const std::string source = tools::sourceName(options.file);
    const tools::Octets file = tools::readFile(options.file);
    tools::Message message(type, tools::withoutPem(file, source), source);
    const tools::Value value = tools::buildValue(type, message.value(), message.context());
    if (options.json) {
        printJson(options.type, value, message, source);
    } else {
        printText(options.type, value, message);
    }
    tools::tellFurtherBlocks(app, file, source);
}

}  // namespace

void addPrintCommand(CLI::App& app) {
    auto options = std::make_shared<PrintOptions>();
    CLI::App* command = app.add_subcommand("print", "Print what a message holds");
    command
        ->add_option("TYPE", options->type, "Name of the type, see the command types; ANY for bare elements")
        ->required();
    command->add_option("FILE", options->file, "Message in DER, BER or PEM; - for standard input")
        ->capture_default_str();
    command->add_flag("--json", options->json, "Print one JSON object");
    command->callback([&app, options] { print(app, *options); });
}
