#include "show.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/program.h"
#include "describe.h"
#include "message.h"

namespace {

using namespace Mirvane::PKI::OCSP;
using nlohmann::ordered_json;

// Both are shown, so that what is none of the two is said to be neither.
constexpr char kEither[] = "OCSP request or response";

struct ShowOptions {
    bool json = false;
    std::size_t limit = tools::kUsualLimit;
    std::vector<std::string> files;
};

struct ShownResponse {
    CResponseMessage envelope;
    std::optional<ordered_json> basic;  // if there is one
};

ordered_json toJson(ShownResponse const& shown) {
    CResponseMessage const& message = shown.envelope;
    ordered_json result;
    result["status"] = {{"value", static_cast<unsigned>(message.get_responseStatus())},
                        {"name", tools::statusName(message.get_responseStatus())}};
    if (message.get_response()) {
        result["responseType"] = {{"oid", message.get_responseType()},
                                  {"name", tools::responseTypeName(message.get_responseType())}};
        result["responseSize"] = message.get_response()->cbData();
    } else {
        result["responseType"] = nullptr;
        result["responseSize"] = nullptr;
    }
    if (shown.basic) result["basicResponse"] = *shown.basic;
    return result;
}

void printText(ShownResponse const& shown) {
    CResponseMessage const& message = shown.envelope;
    const ResponseStatus status = message.get_responseStatus();
    fmt::print("OCSP response\n");
    fmt::print("  status:        {} ({})\n", tools::statusName(status), static_cast<unsigned>(status));
    if (message.get_response()) {
        fmt::print("  response type: {} ({})\n", tools::responseTypeName(message.get_responseType()),
                   message.get_responseType());
        fmt::print("  response:      {} octets\n", message.get_response()->cbData());
    } else {
        fmt::print("  response:      none\n");
    }
    if (shown.basic) tools::printMembers(*shown.basic, 2);
}

ShownResponse readResponse(tools::Octets const& octets, std::string const& source) {
    ShownResponse result{tools::decodeResponse(octets, source, kEither), std::nullopt};
    if (const auto basic = tools::decodeBasicResponse(result.envelope, source)) {
        result.basic = tools::describe(*basic, tools::certificatesInside(*result.envelope.get_response()));
    }
    return result;
}

void printJson(std::string const& source, const char* kind, ordered_json const& content,
               std::size_t trailing) {
    ordered_json result = {{"file", source}, {"kind", kind}};
    result.update(content);
    result["trailingOctets"] = trailing;
    fmt::print("{}\n", result.dump(-1, ' ', false, ordered_json::error_handler_t::replace));
}

void showFile(ShowOptions const& options, std::string const& path) {
    const std::string source = tools::sourceName(path);
    const tools::Octets octets = tools::readInput(path, options.limit);
    const std::size_t trailing = tools::trailingOctets(octets.data(), octets.size());
    ordered_json request;
    ShownResponse response;
    const bool isRequest = tools::looksLikeRequest(octets);
    if (isRequest) {
        request = tools::describe(*tools::decodeRequest(octets, source, kEither),
                                  tools::certificatesInside(octets));
    } else {
        response = readResponse(octets, source);
    }
    if (options.json) {
        printJson(source, isRequest ? "OCSPRequest" : "OCSPResponse", isRequest ? request : toJson(response),
                  trailing);
        return;
    }
    if (options.files.size() > 1) fmt::print("{}:\n", source);
    if (isRequest) {
        fmt::print("OCSP request\n");
        tools::printMembers(request, 2);
    } else {
        printText(response);
    }
    if (trailing > 0) fmt::print("  behind it:     {} octets that are not part of the message\n", trailing);
}

// A file that cannot be shown does not keep the others from being shown.
void show(CLI::App const& app, ShowOptions const& options) {
    bool failed = false;
    for (std::string const& path : options.files) {
        try {
            showFile(options, path);
        } catch (tools::InputError const& error) {
            tools::complain(app, error.what());
            failed = true;
        }
    }
    if (failed) throw CLI::RuntimeError(tools::kFailure);
}

}  // namespace

void addShowCommand(CLI::App& app) {
    auto options = std::make_shared<ShowOptions>();
    CLI::App* command = app.add_subcommand("show", "Print what OCSP requests and responses hold");
    command->add_flag("--json", options->json, "Print JSON: one object per file, one a line");
    tools::addSizeOption(command, options->limit);
    command->add_option("FILE", options->files, "Message in DER or PEM; - for standard input")->required();
    command->callback([&app, options] { show(app, *options); });
}
