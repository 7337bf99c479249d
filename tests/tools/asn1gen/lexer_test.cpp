#include "asn1gen/lexer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// The tokens between bars, each as written.
std::string tokensOf(const std::string& text) {
    const asn1gen::SourceFile file{"test.asn1", text};
    asn1gen::Diagnostics diagnostics;
    std::string result;
    for (const asn1gen::Token& token : asn1gen::tokenize(file, diagnostics)) {
        if (token.kind != asn1gen::TokenKind::End) result += std::string(token.text) + "|";
    }
    std::ostringstream messages;
    diagnostics.print(messages);
    return result + messages.str();
}

struct Row {
    const char* name;
    const char* text;
    const char* tokens;
};

class LexerTable : public testing::TestWithParam<Row> {};

TEST_P(LexerTable, Tokens) {
    EXPECT_EQ(tokensOf(GetParam().text), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(
    Lexer, LexerTable,
    testing::Values(
        Row{"Nothing", "", ""},  //
        Row{"BlankAlone", " \t\r\n", ""},
        Row{"SymbolsSideBySide", "A::={a(0)}..b...[1]", "A|::=|{|a|(|0|)|}|..|b|...|[|1|]|"},
        Row{"HyphensInside", "id-at-name Gost28147-89-IV", "id-at-name|Gost28147-89-IV|"},
        Row{"HyphenBehindAName", "a- b", "a|-|b|"}, Row{"TwoHyphensEndAName", "a--comment\nb", "a|b|"},
        Row{"NegativeNumber", "(-5)", "(|-|5|)|"}, Row{"CommentToTheEndOfTheLine", "a -- b c\nd", "a|d|"},
        Row{"CommentWithinALine", "a -- b -- c", "a|c|"}, Row{"CommentAtTheEndOfTheFile", "a -- b", "a|"},
        Row{"BlockComment", "a /* b -- \n c */ d", "a|d|"},
        Row{"Note", "--!  end-of-contents \r\na", "end-of-contents|a|"},
        Row{"EmptyNoteAtTheEndOfTheFile", "--!", "|"},
        Row{"StrangeCharacter", "a $ b",
            "a|b|test.asn1:1:3: error: no name, number or symbol begins with '$'\n"},
        Row{"OpenComment", "a\n /* b",
            "a|test.asn1:2:2: error: this comment has no end: write */ behind it\n"}),
    [](const auto& info) { return info.param.name; });

TEST(Lexer, LargestNumberIsTakenAndTheNextRefused) {
    EXPECT_EQ(tokensOf("9223372036854775807"), "9223372036854775807|");
    EXPECT_NE(tokensOf("9223372036854775808").find("1:1: error: this number is too large"),
              std::string::npos);
}

}  // namespace
