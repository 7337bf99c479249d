// Real messages that tests read at run time: the folder that the environment variable MIRVANE_VECTORS names,
// or that stands beside the source tree. Where it is missing there are no files, and the tests on them skip.
#ifndef MIRVANE_TESTS_SUPPORT_VECTORS_H
#define MIRVANE_TESTS_SUPPORT_VECTORS_H

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/octets.h"

namespace test {

inline std::filesystem::path vectorsFolder() {
    const char* named = std::getenv("MIRVANE_VECTORS");
    return named ? named : MIRVANE_VECTORS_DEFAULT;
}

// The files of one kind, sorted by name; the first `most` of them.
inline std::vector<std::filesystem::path> vectorFiles(const std::string& kind, std::size_t most = SIZE_MAX) {
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(vectorsFolder() / kind, missing)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    if (files.size() > most) files.resize(most);
    return files;
}

inline Octets readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return Octets(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace test

#endif
