// Walks over the tokens of a file for the parser. What was expected and is not there is reported and thrown,
// up to a place from which parsing can go on.
#ifndef MIRVANE_ASN1GEN_TOKEN_READER_H
#define MIRVANE_ASN1GEN_TOKEN_READER_H

#include <string>
#include <string_view>
#include <vector>

#include "asn1gen/lexer.h"
#include "asn1gen/source.h"

namespace asn1gen {

class TokenReader {
  public:
    // Thrown behind every reported error.
    struct Unexpected {};

    // `tokens` ends with an End token and outlives the reader.
    TokenReader(const std::vector<Token>& tokens, Diagnostics& diagnostics)
        : mTokens(tokens), mDiagnostics(diagnostics) {}

    const Token& peek(std::size_t ahead = 0) const {
        return mTokens[mAt + ahead < mTokens.size() ? mAt + ahead : mTokens.size() - 1];
    }
    bool atEnd() const { return peek().kind == TokenKind::End; }
    bool isName() const { return peek().kind == TokenKind::Upper || peek().kind == TokenKind::Lower; }
    bool isWord(std::string_view word, std::size_t ahead = 0) const {
        return peek(ahead).kind == TokenKind::Upper && peek(ahead).text == word;
    }
    bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const {
        return peek(ahead).kind == TokenKind::Symbol && peek(ahead).text == symbol;
    }

    // Whether nothing but blank space stands before the next token on its line.
    bool startsLine() const {
        const Span& span = peek().span;
        const std::size_t before =
            span.file->text.find_last_not_of(" \t", span.begin == 0 ? 0 : span.begin - 1);
        return span.begin == 0 || before == std::string::npos || span.file->text[before] == '\n';
    }

    // Stays at the end of the file.
    const Token& next() { return mTokens[mAt + 1 < mTokens.size() ? mAt++ : mAt]; }

    bool acceptWord(std::string_view word) { return isWord(word) && (next(), true); }
    bool acceptSymbol(std::string_view symbol) { return isSymbol(symbol) && (next(), true); }

    void takeWord(std::string_view word) {
        if (!acceptWord(word)) fail("expected " + std::string(word));
    }
    void takeSymbol(std::string_view symbol) { takeSymbol(symbol, "expected " + std::string(symbol)); }
    void takeSymbol(std::string_view symbol, std::string message) {
        if (!acceptSymbol(symbol)) fail(std::move(message));
    }

    // `what` completes "expected ".
    Name takeUpper(std::string_view what) { return takeKind(TokenKind::Upper, what, "a capital"); }
    Name takeLower(std::string_view what) { return takeKind(TokenKind::Lower, what, "a small letter"); }
    Name takeName(std::string_view what) {
        if (!isName()) fail("expected " + std::string(what));
        return toName(next());
    }

    std::int64_t takeSignedNumber() {
        const bool negative = acceptSymbol("-");
        if (peek().kind != TokenKind::Number) fail("expected a number");
        const auto number = static_cast<std::int64_t>(next().number);
        return negative ? -number : number;
    }

    // Reports an error at the next token and throws.
    [[noreturn]] void fail(std::string message) {
        mDiagnostics.error(peek().span, std::move(message));
        throw Unexpected();
    }

    // Reports an error and goes on.
    void report(const Span& span, std::string message) { mDiagnostics.error(span, std::move(message)); }

  private:
    static Name toName(const Token& token) { return {std::string(token.text), token.span}; }

    Name takeKind(TokenKind kind, std::string_view what, std::string_view letter) {
        if (peek().kind == kind) return toName(next());
        std::string message = "expected " + std::string(what);
        if (isName()) message += ", which begins with " + std::string(letter);
        fail(std::move(message));
    }

    const std::vector<Token>& mTokens;
    Diagnostics& mDiagnostics;
    std::size_t mAt = 0;
};

}  // namespace asn1gen

#endif
