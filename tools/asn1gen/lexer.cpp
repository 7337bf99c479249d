#include "asn1gen/lexer.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace asn1gen {
namespace {

constexpr std::string_view kSpace = " \t\r\n\f\v";
constexpr std::string_view kDigits = "0123456789";
// Longer symbols stand before those that they begin with.
constexpr std::array<std::string_view, 17> kSymbols = {"::=", "...", "..", "{", "}", "(", ")", "[", "]",
                                                       ",",   ";",   "|",  ".", "@", "-", ":", "&"};

bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isNameCharacter(char c) {
    return isUpper(c) || isLower(c) || isDigit(c) || c == '_';
}

class Lexer {
  public:
    Lexer(const SourceFile& file, Diagnostics& diagnostics)
        : mFile(file), mText(file.text), mDiagnostics(diagnostics) {}

    std::vector<Token> run() {
        while (skipBlank())
            readToken();
        mTokens.push_back({TokenKind::End, {}, Span{&mFile, mText.size(), mText.size()}});
        return std::move(mTokens);
    }

  private:
    bool startsWith(std::string_view text) const { return mText.substr(mAt).starts_with(text); }
    Span spanTo(std::size_t end) const { return {&mFile, mAt, end}; }

    // Moves to the next token; false at the end of the file.
    bool skipBlank() {
        for (;;) {
            mAt = std::min(mText.find_first_not_of(kSpace, mAt), mText.size());
            if (startsWith("--!")) {
                return true;
            } else if (startsWith("--")) {
                mAt = lineCommentEnd();
            } else if (startsWith("/*")) {
                skipBlockComment();
            } else {
                return mAt < mText.size();
            }
        }
    }

    // A comment ends with its line, or with the next two hyphens on it.
    std::size_t lineCommentEnd() const {
        const std::size_t line = std::min(mText.find('\n', mAt), mText.size());
        const std::size_t hyphens = mText.find("--", mAt + 2);
        return hyphens < line ? hyphens + 2 : line;
    }

    void skipBlockComment() {
        const std::size_t end = mText.find("*/", mAt + 2);
        if (end == std::string_view::npos) {
            mDiagnostics.error(spanTo(mAt + 2), "this comment has no end: write */ behind it");
            mAt = mText.size();
        } else {
            mAt = end + 2;
        }
    }

    void readToken() {
        const char first = mText[mAt];
        if (startsWith("--!")) return readNote();
        if (isUpper(first)) return push(TokenKind::Upper, nameEnd());
        if (isLower(first) || first == '_') return push(TokenKind::Lower, nameEnd());
        if (isDigit(first)) return readNumber();
        for (std::string_view symbol : kSymbols) {
            if (startsWith(symbol)) return push(TokenKind::Symbol, mAt + symbol.size());
        }
        mDiagnostics.error(spanTo(mAt + 1),
                           std::string("no name, number or symbol begins with '") + first + "'");
        ++mAt;
    }

    void readNote() {
        const std::size_t end = std::min(mText.find('\n', mAt), mText.size());
        std::string_view text = mText.substr(mAt + 3, end - mAt - 3);
        text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
        text.remove_suffix(text.size() - (text.find_last_not_of(kSpace) + 1));
        mTokens.push_back({TokenKind::Note, text, spanTo(end)});
        mAt = end;
    }

    // A single hyphen belongs to a name if the name goes on behind it.
    std::size_t nameEnd() const {
        std::size_t end = mAt + 1;
        while (end < mText.size()) {
            const bool hyphen =
                mText[end] == '-' && end + 1 < mText.size() && isNameCharacter(mText[end + 1]);
            if (!hyphen && !isNameCharacter(mText[end])) break;
            ++end;
        }
        return end;
    }

    void readNumber() {
        const std::size_t end = std::min(mText.find_first_not_of(kDigits, mAt), mText.size());
        std::uint64_t number = 0;
        const auto result = std::from_chars(mText.data() + mAt, mText.data() + end, number);
        if (result.ec != std::errc() || number > INT64_MAX) {
            mDiagnostics.error(spanTo(end), "this number is too large: write one of at most 63 bits");
            number = 0;
        }
        push(TokenKind::Number, end, number);
    }

    void push(TokenKind kind, std::size_t end, std::uint64_t number = 0) {
        mTokens.push_back({kind, mText.substr(mAt, end - mAt), spanTo(end), number});
        mAt = end;
    }

    const SourceFile& mFile;
    std::string_view mText;
    Diagnostics& mDiagnostics;
    std::size_t mAt = 0;
    std::vector<Token> mTokens;
};

}  // namespace

std::vector<Token> tokenize(const SourceFile& file, Diagnostics& diagnostics) {
    return Lexer(file, diagnostics).run();
}

}  // namespace asn1gen
