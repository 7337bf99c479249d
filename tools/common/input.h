// What the tools read: a file or standard input, DER or PEM.
#ifndef MIRVANE_TOOLS_COMMON_INPUT_H
#define MIRVANE_TOOLS_COMMON_INPUT_H

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace tools {

using Octets = std::vector<unsigned char>;

// What a tool tells its user in one line: which input, and what is wrong with it.
class InputError : public std::runtime_error {
  public:
    InputError(std::string const& source, std::string const& problem)
        : std::runtime_error(source + ": " + problem), problem_(problem) {}

    // Without the source.
    std::string const& problem() const { return problem_; }

  private:
    std::string problem_;
};

class EmptyInput : public InputError {
  public:
    explicit EmptyInput(std::string const& source) : InputError(source, "is empty") {}
};

// The name to show for a source: the path, or "standard input" for "-".
std::string sourceName(std::string const& path);

// The octets of a file, or of standard input for "-", as they are. Throws InputError for a file that cannot
// be read or has more than `limit` octets, EmptyInput for one without any.
Octets readFile(std::string const& path, std::size_t limit = SIZE_MAX);

// The same, but of PEM text (RFC 7468) the content of its first block. Throws InputError for PEM that is
// broken as well.
Octets readInput(std::string const& path, std::size_t limit = SIZE_MAX);

// Whether a PEM block is there, behind nothing but text.
bool isPem(Octets const& octets);

// How many PEM blocks there are, the first behind nothing but text.
std::size_t pemBlocks(Octets const& octets);

// Takes PEM apart where the octets are PEM; anything else comes back as it is.
Octets withoutPem(Octets octets, std::string const& source);

}  // namespace tools

#endif
