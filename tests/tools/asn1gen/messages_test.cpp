// Schemas with mistakes, held against the messages that they give.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "asn1gen/compiler.h"

namespace {

std::string readFile(const std::string& name) {
    std::ifstream in(std::string(MIRVANE_ASN1GEN_SCHEMAS) + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string messagesOf(const std::deque<asn1gen::SourceFile>& sources) {
    asn1gen::Diagnostics diagnostics;
    const bool nothingWritten = asn1gen::compile(sources, diagnostics).empty();
    EXPECT_EQ(nothingWritten, !diagnostics.empty());
    std::ostringstream out;
    diagnostics.print(out);
    return out.str();
}

TEST(Messages, EveryMistakeIsNamedOnce) {
    const std::string schema = readFile("mistakes.asn1");
    ASSERT_FALSE(schema.empty());
    EXPECT_EQ(messagesOf({{"mistakes.asn1", schema}}), readFile("mistakes.expected"));
}

struct Row {
    const char* name;
    const char* text;
    const char* message;
};

class BrokenFrame : public testing::TestWithParam<Row> {};

TEST_P(BrokenFrame, EndsTheFileWithOneMessage) {
    EXPECT_EQ(messagesOf({{"f.asn1", GetParam().text}}), "f.asn1:" + std::string(GetParam().message) + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Messages, BrokenFrame,
    testing::Values(
        Row{"SmallModuleName", "m DEFINITIONS ::= BEGIN END",
            "1:1: error: expected a module name, which begins with a capital"},
        Row{"NoDefinitions", "M ::= BEGIN END", "1:3: error: expected DEFINITIONS"},
        Row{"AutomaticTags", "M DEFINITIONS AUTOMATIC TAGS ::= BEGIN END",
            "1:15: error: expected EXPLICIT TAGS or IMPLICIT TAGS"},
        Row{"NoTags", "M DEFINITIONS IMPLICIT ::= BEGIN END", "1:24: error: expected TAGS"},
        Row{"OpenExports", "M DEFINITIONS ::= BEGIN EXPORTS A END",
            "1:38: error: expected ; behind the list"},
        Row{"ImportsWithoutModule", "M DEFINITIONS ::= BEGIN IMPORTS A; END", "1:34: error: expected FROM"},
        Row{"OpenArcs", "M { 1 2", "1:8: error: expected an arc: a number, a name or name(number)"},
        Row{"NoEnd", "M DEFINITIONS ::= BEGIN\nA ::= NULL", "2:11: error: expected END behind the module"}),
    [](const auto& info) { return info.param.name; });

std::string module(const std::string& name, const std::string& types) {
    return name + " DEFINITIONS EXPLICIT TAGS ::= BEGIN\n" + types + "\nEND";
}

TEST(Messages, NamesAreSharedByAllFiles) {
    EXPECT_EQ(messagesOf({{"a.asn1", module("A", "T ::= NULL")}, {"b.asn1", module("B", "T ::= NULL")}}),
              "b.asn1:2:1: error: T is defined twice, first in a.asn1\n");
}

TEST(Messages, HeadersThatNeedEachOtherAreRefused) {
    const std::string both =
        messagesOf({{"a.asn1", module("A", "A1 ::= SEQUENCE { f B1 }\nA2 ::= SEQUENCE { }")},
                    {"b.asn1", module("B", "B1 ::= SEQUENCE { }\nB2 ::= SEQUENCE { f A2 }")}});
    EXPECT_NE(both.find("a.asn1:2:1: error: A1 needs a type of b.asn1"), std::string::npos) << both;
    EXPECT_NE(both.find("b.asn1:3:1: error: B2 needs a type of a.asn1"), std::string::npos) << both;
}

TEST(Messages, PointersBetweenFilesNeedNoHeader) {
    EXPECT_EQ(messagesOf({{"a.asn1", module("A", "A1 ::= CHOICE { f B1, g B2 }\nA2 ::= SEQUENCE { }")},
                          {"b.asn1", module("B", "B1 ::= SEQUENCE { f A2 }\nB2 ::= INTEGER")}}),
              "");
}

TEST(Messages, ALongCycleIsToldFromItsStart) {
    const std::string message =
        messagesOf({{"a.asn1", module("A",
                                      "X ::= SEQUENCE { f A1 }\nA1 ::= SEQUENCE { f A2 }\n"
                                      "A2 ::= SEQUENCE { f A3 }\nA3 ::= SET { f A1 }")}});
    EXPECT_EQ(message,
              "a.asn1:3:1: error: a record cannot hold itself (A1 holds A2 holds A3 holds A1): "
              "put a CHOICE or a SEQUENCE OF between\n");
}

}  // namespace
