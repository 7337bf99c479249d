// Schema files and what is wrong with them. A stage that finds an error reports the stretch of text that it
// is about and goes on, so that one run shows as many errors as it can; lines and columns are worked out when
// they are printed.
#ifndef MIRVANE_ASN1GEN_SOURCE_H
#define MIRVANE_ASN1GEN_SOURCE_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace asn1gen {

// One schema file. Everything that later stages make points into it, so it stays where it is until the end.
struct SourceFile {
    std::string path;  // as given, for messages
    std::string text;

    // The file name without folders and extension: what the generated files are named after.
    std::string stem() const;
};

// Characters [begin, end) of a file. A null file is the span of what no file says, such as a builtin type.
struct Span {
    const SourceFile* file = nullptr;
    std::size_t begin = 0;
    std::size_t end = 0;
};

// A name together with the place where it was written.
struct Name {
    std::string text;
    Span span;
};

class Diagnostics {
  public:
    // Records "expected X" or the like. The message says what to write instead, without a full stop. What was
    // reported at a place already is not taken twice.
    void error(const Span& span, std::string message);

    bool empty() const { return mErrors.empty(); }

    // One line each, `path:line:column: error: message`, by file in the order in which files were first
    // reported and by place within a file. Lines and columns count from 1, columns in octets.
    void print(std::ostream& out) const;

  private:
    struct Error {
        Span span;
        std::string message;
    };

    std::vector<Error> mErrors;
    std::vector<const SourceFile*> mFiles;
};

}  // namespace asn1gen

#endif
