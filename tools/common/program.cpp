#include "common/program.h"

#include <fmt/format.h>

#include <cstdio>
#include <exception>

#include "base/exception.h"
#include "common/printable.h"

namespace tools {

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
        complain(app, fmt::format("{} (see {} --help)", mistake.what(), app.get_name()));
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
