#include "asn1gen/text_template.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace asn1gen {
namespace {

// Takes the text up to the next `end`, without it, from the front of `rest`.
std::string_view takeUntil(std::string_view& rest, char end) {
    const std::size_t at = rest.find(end);
    const std::string_view taken = rest.substr(0, at);
    rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + 1);
    return taken;
}

class Filler {
  public:
    explicit Filler(std::initializer_list<Hole> holes) : mHoles(holes) {}

    std::string run(std::string_view text) {
        if (text.starts_with('\n')) text.remove_prefix(1);
        while (!text.empty())
            addLine(takeUntil(text, '\n'));
        for (const Hole& hole : mHoles) {
            if (!mUsed.contains(hole.name))
                throw std::logic_error("no hole @" + std::string(hole.name) + "@");
        }
        return std::move(mResult);
    }

  private:
    const std::string& valueOf(std::string_view name) {
        for (const Hole& hole : mHoles) {
            if (hole.name != name) continue;
            mUsed.insert(hole.name);
            return hole.value;
        }
        throw std::logic_error("no value for the hole @" + std::string(name) + "@");
    }

    void addLine(std::string_view line) {
        const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
        const std::string_view content = line.substr(start);
        const bool alone =
            content.size() > 2 && content.front() == '@' && content.find('@', 1) == content.size() - 1;
        if (alone) {
            addLines(line.substr(0, start), valueOf(content.substr(1, content.size() - 2)));
        } else {
            addFilled(line);
            mResult += '\n';
        }
    }

    void addLines(std::string_view indentation, std::string_view lines) {
        while (!lines.empty()) {
            const std::string_view line = takeUntil(lines, '\n');
            if (!line.empty()) mResult.append(indentation).append(line);
            mResult += '\n';
        }
    }

    void addFilled(std::string_view line) {
        while (!line.empty()) {
            mResult += line.substr(0, line.find('@'));
            if (line.find('@') == std::string_view::npos) return;
            takeUntil(line, '@');
            mResult += valueOf(takeUntil(line, '@'));
        }
    }

    std::initializer_list<Hole> mHoles;
    std::set<std::string_view> mUsed;
    std::string mResult;
};

}  // namespace

std::string fill(std::string_view text, std::initializer_list<Hole> holes) {
    return Filler(holes).run(text);
}

}  // namespace asn1gen
