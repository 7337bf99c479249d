#include "nearest_names.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cctype>
#include <numeric>

namespace tools {
namespace {

constexpr std::size_t kMostHints = 3;
constexpr std::size_t kLongestName = 100;

std::string lowerCase(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

// Letters to insert, remove or replace on the way from one word to the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row[to.size()];
}

struct Candidate {
    std::size_t distance;
    std::string_view name;
    auto operator<=>(const Candidate&) const = default;
};

// A name that holds the word is near however long it is; of those, short ones come first.
bool isNear(std::string_view wanted, std::string_view name, std::size_t* letters) {
    *letters = distance(wanted, name);
    if (wanted.size() < 3) return *letters <= 1;
    return *letters <= 1 + wanted.size() / 4 || name.find(wanted) != std::string_view::npos;
}

}  // namespace

std::string hint(std::string_view wanted, const std::vector<std::string_view>& names) {
    if (wanted.size() > kLongestName) return {};
    const std::string word = lowerCase(wanted);
    std::vector<Candidate> candidates;
    for (std::string_view name : names) {
        std::size_t letters = 0;
        if (isNear(word, lowerCase(name), &letters)) candidates.push_back({letters, name});
    }
    if (candidates.empty()) return {};
    std::ranges::sort(candidates);
    candidates.resize(std::min(candidates.size(), kMostHints));
    std::vector<std::string_view> nearest;
    nearest.reserve(candidates.size());
    for (const Candidate& candidate : candidates)
        nearest.push_back(candidate.name);
    return fmt::format("; nearest: {}", fmt::join(nearest, ", "));
}

}  // namespace tools
