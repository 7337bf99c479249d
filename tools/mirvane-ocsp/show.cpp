#include "show.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "asn1rt/ber_decode.h"
#include "base/exception.h"
#include "common/input.h"
#include "common/program.h"
#include "ocsp/response_message.h"

namespace {

using Mirvane::CBlob;
using Mirvane::PKI::OCSP::CResponseMessage;
using Mirvane::PKI::OCSP::ResponseStatus;
using nlohmann::ordered_json;

constexpr unsigned char kSequence = 0x30;

struct ShowOptions {
    bool json = false;
    std::vector<std::string> files;
};

std::string_view statusName(ResponseStatus status) {
    switch (status) {
        case Mirvane::PKI::OCSP::successful:
            return "successful";
        case Mirvane::PKI::OCSP::malformedRequest:
            return "malformedRequest";
        case Mirvane::PKI::OCSP::internalError:
            return "internalError";
        case Mirvane::PKI::OCSP::tryLater:
            return "tryLater";
        case Mirvane::PKI::OCSP::sigRequired:
            return "sigRequired";
        case Mirvane::PKI::OCSP::unauthorized:
            return "unauthorized";
    }
    return "unassigned";
}

std::string_view responseTypeName(std::string_view identifier) {
    return identifier == "1.3.6.1.5.5.7.48.1.1" ? "id-pkix-ocsp-basic" : "unknown type";
}

// The length that the outermost element claims, with its header; nothing for the indefinite form and for
// octets that are no element at all. The status of reading it goes to `status`.
std::optional<std::size_t> outerLength(tools::Octets const& octets, int& status) {
    ASN1CTXT ctxt;
    status = rtInitContext(&ctxt, nullptr);
    int length = ASN1_INDEFLEN;
    if (status == RTS_OK) {
        status = xd_setp(&ctxt, octets.data(), static_cast<int>(octets.size()), nullptr, &length);
    }
    rtFreeContext(&ctxt);
    if (length == ASN1_INDEFLEN) return std::nullopt;
    return static_cast<std::size_t>(length);
}

// Why octets that do not decode do not: in the words of somebody who looks at the file.
std::string problemOf(tools::Octets const& octets) {
    if (octets.front() != kSequence) {
        return fmt::format("is no OCSP response: it begins with octet {:02X}, not with a SEQUENCE",
                           octets.front());
    }
    int status = RTS_OK;
    const auto length = outerLength(octets, status);
    if (length && *length > octets.size()) {
        return fmt::format("is cut short: the message says {} octets, {} are there", *length, octets.size());
    }
    if (status == RTS_BAD_LENGTH || status == RTS_END_OF_BUFFER) {
        return fmt::format("is no OCSP response: its first element does not fit into {} octets",
                           octets.size());
    }
    return "is no OCSP response";
}

CResponseMessage decodeResponse(tools::Octets const& octets, std::string const& source) {
    CResponseMessage message;
    try {
        message.decode(CBlob(octets.data(), octets.size()));
    } catch (ATL::CAtlException const&) {
        throw tools::InputError(source, problemOf(octets));
    }
    return message;
}

std::size_t trailingOctets(tools::Octets const& octets) {
    int status = RTS_OK;
    const auto length = outerLength(octets, status);
    return length && *length < octets.size() ? octets.size() - *length : 0;
}

ordered_json toJson(CResponseMessage const& message, std::string const& source, std::size_t trailing) {
    ordered_json result;
    result["file"] = source;
    result["kind"] = "OCSPResponse";
    result["status"] = {{"value", static_cast<unsigned>(message.get_responseStatus())},
                        {"name", statusName(message.get_responseStatus())}};
    if (message.get_response()) {
        result["responseType"] = {{"oid", message.get_responseType()},
                                  {"name", responseTypeName(message.get_responseType())}};
        result["responseSize"] = message.get_response()->cbData();
    } else {
        result["responseType"] = nullptr;
        result["responseSize"] = nullptr;
    }
    result["trailingOctets"] = trailing;
    return result;
}

void printText(CResponseMessage const& message, std::size_t trailing) {
    const ResponseStatus status = message.get_responseStatus();
    fmt::print("OCSP response\n");
    fmt::print("  status:        {} ({})\n", statusName(status), static_cast<unsigned>(status));
    if (message.get_response()) {
        fmt::print("  response type: {} ({})\n", responseTypeName(message.get_responseType()),
                   message.get_responseType());
        fmt::print("  response:      {} octets\n", message.get_response()->cbData());
    } else {
        fmt::print("  response:      none\n");
    }
    if (trailing > 0) fmt::print("  behind it:     {} octets that are not part of the message\n", trailing);
}

void showFile(ShowOptions const& options, std::string const& path) {
    const std::string source = tools::sourceName(path);
    const tools::Octets octets = tools::readInput(path);
    const CResponseMessage message = decodeResponse(octets, source);
    const std::size_t trailing = trailingOctets(octets);
    if (options.json) {
        fmt::print(
            "{}\n",
            toJson(message, source, trailing).dump(-1, ' ', false, ordered_json::error_handler_t::replace));
        return;
    }
    if (options.files.size() > 1) fmt::print("{}:\n", source);
    printText(message, trailing);
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
    CLI::App* command = app.add_subcommand("show", "Print what OCSP responses hold");
    command->add_flag("--json", options->json, "Print JSON: one object per file, one a line");
    command->add_option("FILE", options->files, "Message in DER or PEM; - for standard input")->required();
    command->callback([&app, options] { show(app, *options); });
}
