#include "common/program.h"

#include <fmt/format.h>

#include <cstdio>
#include <exception>
#include <vector>

#include "base/exception.h"
#include "common/printable.h"

namespace tools {
namespace {

// A word that nobody expected comes first: what CLI11 misses then is often that word, mistyped.
std::string mistakeText(CLI::App const& app, CLI::ParseError const& mistake) {
    const std::vector<std::string> unexpected = app.remaining(true);
    if (unexpected.empty()) return mistake.what();
    const bool hasCommand = !app.get_subcommands().empty();
    return (hasCommand ? "unexpected argument " : "there is no command ") + unexpected.front();
}

// The program, with the command that was given: its help has the options.
std::string helpedName(CLI::App const& app) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return commands.empty() ? app.get_name() : app.get_name() + " " + commands.front()->get_name();
}

}  // namespace

void complain(CLI::App const& app, std::string const& text) {
    fmt::print(stderr, "{}: {}\n", app.get_name(), printable(text));
}

int run(Program const& program, int argc, char** argv) {
    CLI::App app(program.purpose, program.name);
    for (const auto addCommand : program.commands)
        addCommand(app);
    const std::string version = app.get_name() + " " MIRVANE_VERSION;
    app.set_version_flag("--version", version);
    for (CLI::App* command : app.get_subcommands({}))
        command->set_version_flag("--version", version);
    app.require_subcommand(1);
    try {
        app.parse(argc, argv);
        if (std::fflush(stdout) != 0) throw std::runtime_error("cannot write to standard output");
    } catch (CLI::RuntimeError const& end) {
        return end.get_exit_code();
    } catch (CLI::Success const& answer) {
        return app.exit(answer);
    } catch (CLI::ParseError const& mistake) {
        complain(app, fmt::format("{} (see {} --help)", mistakeText(app, mistake), helpedName(app)));
        return kUsage;
    } catch (ATL::CAtlException const& failure) {
        complain(app, fmt::format("the library failed (0x{:08X})", static_cast<unsigned>(failure.m_hr)));
        return kFailure;
    } catch (std::exception const& failure) {
        complain(app, failure.what());
        return kFailure;
    }
    return kSuccess;
}

}  // namespace tools
