#include "asn1gen/source.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <tuple>

namespace asn1gen {
namespace {

void printPlace(std::ostream& out, const Span& span) {
    if (!span.file) return;
    const std::string_view before = std::string_view(span.file->text).substr(0, span.begin);
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0: the first line
    out << span.file->path << ':' << 1 + std::count(before.begin(), before.end(), '\n') << ':'
        << before.size() - lineStart + 1 << ": ";
}

}  // namespace

std::string SourceFile::stem() const {
    return std::filesystem::path(path).stem().string();
}

void Diagnostics::error(const Span& span, std::string message) {
    const bool known = std::any_of(mErrors.begin(), mErrors.end(), [&](const Error& other) {
        return other.span.file == span.file && other.span.begin == span.begin && other.message == message;
    });
    if (known) return;
    if (std::find(mFiles.begin(), mFiles.end(), span.file) == mFiles.end()) mFiles.push_back(span.file);
    mErrors.push_back({span, std::move(message)});
}

void Diagnostics::print(std::ostream& out) const {
    std::vector<const Error*> sorted;
    for (const Error& error : mErrors)
        sorted.push_back(&error);
    const auto order = [&](const Error* error) {
        return std::tuple(std::find(mFiles.begin(), mFiles.end(), error->span.file), error->span.begin);
    };
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const Error* left, const Error* right) { return order(left) < order(right); });
    for (const Error* error : sorted) {
        printPlace(out, error->span);
        out << "error: " << error->message << '\n';
    }
}

}  // namespace asn1gen
