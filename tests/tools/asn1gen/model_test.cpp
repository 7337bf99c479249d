// What a notation becomes: kind, limits, names, tags and presence.
#include <gtest/gtest.h>

#include <sstream>

#include "asn1gen/model_builder.h"
#include "asn1gen/parser.h"

namespace {

using asn1gen::Kind;
using asn1gen::kNoBound;

// A model that lives with the text it was made from.
class Schema {
  public:
    explicit Schema(const std::string& assignments, const std::string& tags = "EXPLICIT")
        : mFile{"test.asn1", "M DEFINITIONS " + tags + " TAGS ::= BEGIN\n" + assignments + "\nEND\n"} {
        mTrees.push_back(asn1gen::parse(mFile, mDiagnostics));
        mModel = asn1gen::buildModel(mTrees, mDiagnostics);
    }
    Schema(const Schema&) = delete;

    const asn1gen::Type& type(const std::string& name) const {
        static const asn1gen::Type kNone;
        std::ostringstream messages;
        mDiagnostics.print(messages);
        EXPECT_EQ(messages.str(), "");
        for (const auto& type : mModel.types) {
            if (type->scope != asn1gen::Type::Scope::Builtin && type->name == name) return *type;
        }
        ADD_FAILURE() << "no type is named " << name;
        return kNone;
    }

    const asn1gen::Model& model() const { return mModel; }

  private:
    asn1gen::SourceFile mFile;
    asn1gen::Diagnostics mDiagnostics;
    std::vector<asn1gen::syntax::File> mTrees;
    asn1gen::Model mModel;
};

struct KindRow {
    const char* notation;
    Kind kind;
    bool tested = false;
    std::uint32_t lower = 0;
    std::uint32_t upper = kNoBound;
    std::uint32_t capacity = 0;
};

class Kinds : public testing::TestWithParam<KindRow> {};

TEST_P(Kinds, OfANotation) {
    const KindRow& row = GetParam();
    const Schema schema("T ::= " + std::string(row.notation) +
                        "\nOther ::= SEQUENCE { }\nSimple ::= BOOLEAN");
    const asn1gen::Type& type = schema.type("T");
    EXPECT_EQ(type.kind, row.kind);
    EXPECT_EQ(type.hasBounds, row.tested);
    EXPECT_EQ(type.lowerBound, row.lower);
    EXPECT_EQ(type.upperBound, row.upper);
    EXPECT_EQ(type.capacity, row.capacity);
}

INSTANTIATE_TEST_SUITE_P(Numbers, Kinds,
                         testing::Values(KindRow{"INTEGER", Kind::Integer},
                                         KindRow{"INTEGER (0..MAX)", Kind::Unsigned},
                                         KindRow{"INTEGER (0..65535)", Kind::Uint16},
                                         KindRow{"INTEGER (MIN..MAX)", Kind::BigInteger},
                                         KindRow{"INTEGER (1..MAX)", Kind::Unsigned, true, 1},
                                         KindRow{"INTEGER (0..65536)", Kind::Unsigned, true, 0, 65536},
                                         KindRow{"INTEGER (7)", Kind::Uint16, true, 7, 7},
                                         KindRow{"ENUMERATED { a(0), b(4) }", Kind::Enumerated, false, 0, 5},
                                         KindRow{"ENUMERATED { a(0), ... }", Kind::Enumerated}));

INSTANTIATE_TEST_SUITE_P(
    Strings, Kinds,
    testing::Values(KindRow{"OCTET STRING", Kind::OctetString},
                    KindRow{"OCTET STRING (SIZE (8))", Kind::InlineOctetString, true, 8, 8, 8},
                    KindRow{"OCTET STRING (SIZE (1..128))", Kind::InlineOctetString, true, 1, 128, 128},
                    KindRow{"OCTET STRING (SIZE (1..129))", Kind::OctetString, true, 1, 129},
                    KindRow{"OCTET STRING (SIZE (1..MAX))", Kind::OctetString, true, 1},
                    KindRow{"OCTET STRING (SIZE (0..MAX))", Kind::OctetString},
                    KindRow{"BIT STRING (SIZE (256 | 512))", Kind::BitString, true, 256, 512},
                    KindRow{"BIT STRING { a(0), b(8) } (SIZE (0..9))", Kind::InlineBitString, false, 0, 9, 2},
                    KindRow{"IA5String (SIZE (1..64))", Kind::CharString, true, 1, 64},
                    KindRow{"BMPString", Kind::BmpString},
                    KindRow{"UniversalString", Kind::UniversalString}));

INSTANTIATE_TEST_SUITE_P(
    Collections, Kinds,
    testing::Values(KindRow{"SEQUENCE OF Other", Kind::List}, KindRow{"SET OF ANY", Kind::List},
                    KindRow{"SEQUENCE SIZE (1..4) OF Other", Kind::List, true, 1, 4},
                    KindRow{"SEQUENCE OF SEQUENCE OF BOOLEAN", Kind::List},
                    KindRow{"SEQUENCE OF Simple", Kind::Array},
                    KindRow{"SET SIZE (1..16) OF INTEGER", Kind::Array, true, 1, 16, 16},
                    KindRow{"SET SIZE (1..17) OF INTEGER", Kind::Array, true, 1, 17},
                    KindRow{"SEQUENCE SIZE (1..MAX) OF OBJECT IDENTIFIER", Kind::Array, true, 1}));

TEST(Names, OfTypesThatStandInOthers) {
    const Schema schema(R"(
        E ::= SEQUENCE { }
        X-Y ::= SEQUENCE {
            a-field  CHOICE { n NULL },
            listed   SEQUENCE OF E,
            bounded  SET SIZE (1..2) OF E,
            builtin  SEQUENCE OF INTEGER,
            inner    SEQUENCE OF SEQUENCE { flag BOOLEAN },
            version  INTEGER { v1(0) } (0..MAX),
            salt     OCTET STRING (SIZE (8)) }
        Elements ::= SEQUENCE OF CHOICE { n NULL }
        id OBJECT IDENTIFIER ::= { 1 2 }
        o-1 ATTRIBUTE ::= { ID id TYPE OCTET STRING }
        o-2 EXTENSION ::= { ID id TYPE SEQUENCE OF E })");
    for (const char* name : {"X_Y_a_field", "_SeqOfE", "X_Y_bounded", "X_Y_builtin", "X_Y_inner_element",
                             "_SeqOfX_Y_inner_element", "X_Y_version", "X_Y_salt", "Elements_element",
                             "_o_1_Type", "_o_2_ExtnType"}) {
        EXPECT_EQ(schema.type(name).name, name);
    }
}

TEST(Names, UnnamedStringsWithASizeHaveADescriptorAndNoName) {
    const Schema schema("X ::= SEQUENCE { s IA5String (SIZE (1..5)), t IA5String }");
    EXPECT_EQ(schema.type("X_s").scope, asn1gen::Type::Scope::Local);
    EXPECT_EQ(schema.type("X").fields[1].type->scope, asn1gen::Type::Scope::Builtin);
}

struct TagRow {
    const char* component;
    const char* moduleTags;
    std::uint32_t tag;
    asn1gen::Tagging tagging;
};

class Tags : public testing::TestWithParam<TagRow> {};

TEST_P(Tags, OfAComponent) {
    const Schema schema("X ::= SEQUENCE { f " + std::string(GetParam().component) +
                            " }\nC ::= CHOICE { n NULL }\nS ::= SEQUENCE { }",
                        GetParam().moduleTags);
    ASSERT_EQ(schema.type("X").fields.size(), 1u);
    EXPECT_EQ(schema.type("X").fields[0].tag, GetParam().tag);
    EXPECT_EQ(schema.type("X").fields[0].tagging, GetParam().tagging);
}

INSTANTIATE_TEST_SUITE_P(
    ByModuleAndType, Tags,
    testing::Values(
        TagRow{"BOOLEAN", "EXPLICIT", asn1gen::kNoTag, asn1gen::Tagging::None},
        TagRow{"[0] BOOLEAN", "EXPLICIT", 0xA0000000, asn1gen::Tagging::Explicit},
        TagRow{"[0] BOOLEAN", "IMPLICIT", 0x80000000, asn1gen::Tagging::Implicit},
        TagRow{"[1] S", "IMPLICIT", 0xA0000001, asn1gen::Tagging::Implicit},
        TagRow{"[1] SET OF BOOLEAN", "IMPLICIT", 0xA0000001, asn1gen::Tagging::Implicit},
        TagRow{"[2] C", "IMPLICIT", 0xA0000002, asn1gen::Tagging::Explicit},
        TagRow{"[3] ANY", "IMPLICIT", 0xA0000003, asn1gen::Tagging::Explicit},
        TagRow{"[4] IMPLICIT INSTANCE OF OTHER", "EXPLICIT", 0xA0000004, asn1gen::Tagging::Implicit},
        TagRow{"[APPLICATION 5] INTEGER", "IMPLICIT", 0x40000005, asn1gen::Tagging::Implicit},
        TagRow{"[PRIVATE 30] EXPLICIT INTEGER", "IMPLICIT", 0xE000001E, asn1gen::Tagging::Explicit}));

TEST(Presence, OnlyNumbersHoldTheirDefaultByValue) {
    const Schema schema(R"(
        X ::= SEQUENCE {
            a BOOLEAN DEFAULT TRUE,
            b [0] INTEGER (MIN..MAX) DEFAULT 1,
            c [1] Version DEFAULT v3,
            d [2] ENUMERATED { one(1) } DEFAULT one,
            e [3] X2 DEFAULT { flag TRUE },
            f [4] X2 OPTIONAL }
        X2 ::= SEQUENCE { flag BOOLEAN }
        Version ::= INTEGER { v3(2) } (0..MAX))");
    using asn1gen::Presence;
    const auto& fields = schema.type("X").fields;
    const Presence expected[] = {Presence::DefaultNumber, Presence::DefaultInteger, Presence::DefaultNumber,
                                 Presence::Optional,      Presence::Optional,       Presence::Optional};
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(fields[i].presence, expected[i]) << fields[i].name;
    EXPECT_EQ(fields[0].defaultNumber, 1);
    EXPECT_EQ(fields[2].defaultNumber, 2);
    EXPECT_EQ(fields[3].bit, 0u);
    EXPECT_EQ(fields[5].bit, 2u);
}

TEST(Notes, EndOfContentsHoldsForTheTypesWithin) {
    const Schema schema(
        "--! end-of-contents\nX ::= SEQUENCE { f SET OF ANY }\nY ::= SEQUENCE { f SET OF ANY }");
    EXPECT_TRUE(schema.type("X").takesEnd);
    EXPECT_TRUE(schema.type("X_f").takesEnd);
    EXPECT_FALSE(schema.type("Y").takesEnd);
}

TEST(Values, RecordsInsideTheValueOfAnObjectCanBeCopied) {
    const Schema schema(R"(
        Value ::= SEQUENCE { inner Inner, list SEQUENCE OF Element }
        Inner ::= SEQUENCE { }
        Element ::= SEQUENCE { }
        id OBJECT IDENTIFIER ::= { 1 2 }
        o ATTRIBUTE ::= { ID id TYPE Value })");
    EXPECT_TRUE(schema.type("Value").isValue);
    EXPECT_TRUE(schema.type("Inner").isValue);
    EXPECT_TRUE(schema.type("_SeqOfElement").isValue);
    EXPECT_FALSE(schema.type("Element").isValue);
}

TEST(Values, IdentifiersHaveTheArcsOfTheirParents) {
    const Schema schema(
        "top OBJECT IDENTIFIER ::= { joint-iso-itu-t 999 }\nmid OBJECT IDENTIFIER ::= { top 4294967295 }\n"
        "leaf OBJECT IDENTIFIER ::= { mid under(0) 7 }");
    ASSERT_EQ(schema.model().identifiers.size(), 3u);
    EXPECT_EQ(schema.model().identifiers[2]->arcs, (std::vector<std::uint32_t>{2, 999, 4294967295, 0, 7}));
}

}  // namespace
