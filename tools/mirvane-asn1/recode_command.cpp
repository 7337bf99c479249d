#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "commands.h"
#include "common/program.h"
#include "message.h"
#include "type_names.h"

namespace {

struct RecodeOptions {
    std::string type;
    std::string file = "-";
    std::string output = "-";
};

void write(const tools::Octets& octets, const std::string& path) {
    const bool toFile = path != "-";
    std::FILE* file = toFile ? std::fopen(path.c_str(), "wb") : stdout;
    bool written = file && std::fwrite(octets.data(), 1, octets.size(), file) == octets.size();
    if (file && toFile) written = std::fclose(file) == 0 && written;
    if (!written) throw tools::InputError(toFile ? path : "standard output", std::strerror(errno));
}

void recode(const CLI::App& app, const RecodeOptions& options) {
    const auto& type = tools::requireType(options.type);
    const std::string source = tools::sourceName(options.file);
    const tools::Octets file = tools::readFile(options.file);
    const tools::Message message(type, tools::withoutPem(file, source), source);
    write(message.encoded(), options.output);
    tools::tellFurtherBlocks(app, file, source);
    if (message.trailing() > 0) {
        tools::complain(
            app, fmt::format("{}: {} octets behind the message are left out", source, message.trailing()));
    }
}

}  // namespace

void addRecodeCommand(CLI::App& app) {
    auto options = std::make_shared<RecodeOptions>();
    CLI::App* command = app.add_subcommand("recode", "Decode a message and write what it encodes to");
    command->add_option("TYPE", options->type, "Name of the type, see the command types")->required();
    command->add_option("FILE", options->file, "Message in DER, BER or PEM; - for standard input")
        ->capture_default_str();
    command
        ->add_option("-o,--out", options->output, "File for the encoding in DER; standard output if missing")
        ->type_name("FILE");
    command->callback([&app, options] { recode(app, *options); });
}
