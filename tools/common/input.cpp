#include "common/input.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/pem.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace tools {
namespace {

constexpr std::string_view kPemMark = "-----BEGIN ";

struct FileCloser {
    void operator()(std::FILE* file) const {
        if (file != stdin) static_cast<void>(std::fclose(file));
    }
};
struct BioFree {
    void operator()(BIO* bio) const { BIO_free(bio); }
};
struct OpensslFree {
    void operator()(void* pointer) const { OPENSSL_free(pointer); }
};

Octets readAll(std::FILE* file, std::string const& source, std::size_t limit) {
    Octets result;
    unsigned char chunk[65536];
    while (std::size_t count = std::fread(chunk, 1, sizeof chunk, file)) {
        result.insert(result.end(), chunk, chunk + count);
        if (result.size() > limit) {
            throw InputError(source,
                             "has more than " + std::to_string(limit) + " octets, which is the limit");
        }
    }
    if (std::ferror(file)) throw InputError(source, std::strerror(errno));
    return result;
}

}  // namespace

std::string sourceName(std::string const& path) {
    return path == "-" ? "standard input" : path;
}

bool isPem(Octets const& octets) {
    const auto mark = std::search(octets.begin(), octets.end(), kPemMark.begin(), kPemMark.end());
    return mark != octets.end() && std::find(octets.begin(), mark, 0) == mark;
}

std::size_t pemBlocks(Octets const& octets) {
    if (!isPem(octets)) return 0;
    const std::string_view text(reinterpret_cast<char const*>(octets.data()), octets.size());
    std::size_t count = 0;
    for (auto mark = text.find(kPemMark); mark != text.npos; mark = text.find(kPemMark, mark + 1))
        ++count;
    return count;
}

Octets withoutPem(Octets octets, std::string const& source) {
    if (!isPem(octets)) return octets;
    if (octets.size() > INT_MAX) throw InputError(source, "is too large for PEM");

    const std::unique_ptr<BIO, BioFree> bio(BIO_new_mem_buf(octets.data(), static_cast<int>(octets.size())));
    char* name = nullptr;
    char* header = nullptr;
    unsigned char* data = nullptr;
    long length = 0;
    if (!bio || !PEM_read_bio(bio.get(), &name, &header, &data, &length)) {
        ERR_clear_error();
        throw InputError(source, "the PEM block is broken or cut short");
    }
    const std::unique_ptr<void, OpensslFree> owners[] = {std::unique_ptr<void, OpensslFree>(name),
                                                         std::unique_ptr<void, OpensslFree>(header),
                                                         std::unique_ptr<void, OpensslFree>(data)};
    return Octets(data, data + length);
}

Octets readFile(std::string const& path, std::size_t limit) {
    const std::string source = sourceName(path);
    const std::unique_ptr<std::FILE, FileCloser> file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    if (!file) throw InputError(source, std::strerror(errno));
    Octets octets = readAll(file.get(), source, limit);
    if (octets.empty()) throw EmptyInput(source);
    return octets;
}

Octets readInput(std::string const& path, std::size_t limit) {
    return withoutPem(readFile(path, limit), sourceName(path));
}

}  // namespace tools
