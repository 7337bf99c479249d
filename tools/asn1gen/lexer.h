// Cuts a schema file into tokens (X.680, clause 12). Reserved words are not told apart from names here: most
// of them are names elsewhere, and the parser knows where it expects one.
#ifndef MIRVANE_ASN1GEN_LEXER_H
#define MIRVANE_ASN1GEN_LEXER_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "asn1gen/source.h"

namespace asn1gen {

enum class TokenKind {
    Upper,   // a name that begins with a capital: a type, a class, a set, a reserved word
    Lower,   // any other name: a field, a value, an object
    Number,  // without a sign
    Symbol,  // ::= { } ( ) [ ] , ; | . .. ... @ -
    Note,    // a line that begins with --! and tells the generator something: the rest of that line
    End,
};

struct Token {
    TokenKind kind;
    std::string_view text;  // within the file; empty at the end
    Span span;
    std::uint64_t number = 0;
};

// All tokens, an End token last. Reports characters and numbers that no token has, and comments without an
// end, and goes on behind them.
std::vector<Token> tokenize(const SourceFile& file, Diagnostics& diagnostics);

}  // namespace asn1gen

#endif
