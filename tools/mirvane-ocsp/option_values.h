// Values of options, checked before anything is done: a wrong one is wrong usage.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_OPTION_VALUES_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_OPTION_VALUES_H

#include <CLI/CLI.hpp>

#include <string>

#include "common/input.h"

namespace tools {

// Refuses what `read`, which takes the text later on, throws InputError for.
template <typename Read>
CLI::Validator readBy(Read read) {
    const auto problem = [read](std::string& text) -> std::string {
        try {
            read(text);
        } catch (InputError const& error) {
            return error.what();
        }
        return {};
    };
    return CLI::Validator(problem, "");
}

}  // namespace tools

#endif
