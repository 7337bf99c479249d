// What the command line tools read: PEM, and the database of an authority.
#include <sys/mman.h>
#include <unistd.h>

#include "common/input.h"
#include "fuzz/target.h"
#include "mirvane-ocsp/status_source.h"

namespace {

// A file without a name, for readers that want a path.
class MemoryFile {
  public:
    explicit MemoryFile(std::span<const std::uint8_t> content) : descriptor_(memfd_create("fuzz", 0)) {
        fuzz::require(
            ::write(descriptor_, content.data(), content.size()) == static_cast<ssize_t>(content.size()),
            "the file is written");
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

}  // namespace

MIRVANE_FUZZ_TARGET(pem_input, fuzz::kNoElements) {
    const tools::Octets octets(input.bytes().begin(), input.bytes().end());
    try {
        const tools::Octets inside = tools::withoutPem(octets, "input");
        fuzz::require(inside == octets || inside.size() < octets.size(), "PEM is longer than what it holds");
    } catch (const tools::InputError&) {
    }
}

MIRVANE_FUZZ_TARGET(certificate_database, fuzz::kNoElements) {
    const MemoryFile file(input.bytes());
    try {
        const tools::StatusSource source = tools::readDatabase(file.path());
        for (const auto& [serial, status] : source.listed)
            fuzz::require(!serial.empty() && !status.isUnknown(), "a listed certificate is good or revoked");
    } catch (const tools::InputError&) {
    }
}
