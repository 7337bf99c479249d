// Runs a program as a user would, and gathers what it says.
#ifndef MIRVANE_TESTS_SUPPORT_PROGRAM_H
#define MIRVANE_TESTS_SUPPORT_PROGRAM_H

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "support/octets.h"

namespace test {

// A folder that goes with its scope.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "mirvane-XXXXXX").string();
        mPath = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(const std::string& name) const { return mPath / name; }

    std::string write(const std::string& name, const Octets& octets) const {
        std::ofstream(path(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(octets.data()), static_cast<std::streamsize>(octets.size()));
        return path(name);
    }
    std::string write(const std::string& name, const std::string& content) const {
        return write(name, Octets(content.begin(), content.end()));
    }

  private:
    std::filesystem::path mPath;
};

struct Outcome {
    int status;  // the exit status, or -1 if a signal ended the program
    std::string output;
    std::string errors;
};

// Runs a shell command line.
inline Outcome run(const std::string& command) {
    const TemporaryFolder folder;
    const std::string line = "{ " + command + "; } >" + folder.path("out") + " 2>" + folder.path("err");
    const int status = std::system(line.c_str());
    const auto content = [&](const char* name) {
        std::ifstream stream(folder.path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    };
    // A shell reports a signal as 128 and more.
    const bool ended = WIFEXITED(status) && WEXITSTATUS(status) < 128;
    return {ended ? WEXITSTATUS(status) : -1, content("out"), content("err")};
}

}  // namespace test

#endif
