// mirvane-asn1gen: writes C++ records, descriptors and functions from ASN.1 schemas.
#include <cstdio>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "asn1gen/compiler.h"

namespace {

constexpr const char* kUsage =
    "usage: mirvane-asn1gen --out DIR FILE...\n"
    "       mirvane-asn1gen --list FILE...\n"
    "Writes DIR/NAME.h and DIR/NAME.cpp for each schema NAME.asn1, and DIR/type_index.cpp for all of them; "
    "files whose\n"
    "content stays the same are not touched. --list prints the names of these files and writes nothing.\n";

struct Arguments {
    bool list = false;
    std::filesystem::path out;
    std::vector<std::string> files;
};

std::optional<Arguments> parseArguments(int count, char** values) {
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string argument = values[i];
        if (argument == "--list") {
            arguments.list = true;
        } else if (argument == "--out" && i + 1 < count) {
            arguments.out = values[++i];
        } else if (argument.starts_with("-")) {
            return std::nullopt;
        } else {
            arguments.files.push_back(argument);
        }
    }
    const bool complete = !arguments.files.empty() && (arguments.list != !arguments.out.empty());
    return complete ? std::optional(arguments) : std::nullopt;
}

std::optional<std::string> readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

bool writeIfChanged(const std::filesystem::path& path, const std::string& text) {
    if (readFile(path) == text) return true;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (out) return true;
    std::cerr << path.string() << ": error: cannot be written\n";
    return false;
}

int listFiles(const Arguments& arguments) {
    for (const std::string& path : arguments.files) {
        const std::string stem = std::filesystem::path(path).stem().string();
        std::cout << stem << ".h\n" << stem << ".cpp\n";
    }
    std::cout << "type_index.cpp\n";
    return 0;
}

int generate(const Arguments& arguments) {
    std::deque<asn1gen::SourceFile> sources;
    for (const std::string& path : arguments.files) {
        std::optional<std::string> text = readFile(path);
        if (!text) {
            std::cerr << path << ": error: cannot be read\n";
            return 1;
        }
        sources.push_back({path, std::move(*text)});
    }
    asn1gen::Diagnostics diagnostics;
    const std::vector<asn1gen::GeneratedFile> files = asn1gen::compile(sources, diagnostics);
    diagnostics.print(std::cerr);
    if (!diagnostics.empty()) return 1;
    std::filesystem::create_directories(arguments.out);
    bool written = true;
    for (const asn1gen::GeneratedFile& file : files)
        written &= writeIfChanged(arguments.out / file.name, file.text);
    return written ? 0 : 1;
}

}  // namespace

int main(int count, char** values) {
    const std::optional<Arguments> arguments = parseArguments(count, values);
    if (!arguments) {
        std::cerr << kUsage;
        return 2;
    }
    try {
        return arguments->list ? listFiles(*arguments) : generate(*arguments);
    } catch (const std::exception& failure) {
        std::cerr << "mirvane-asn1gen: " << failure.what() << '\n';
        return 1;
    }
}
