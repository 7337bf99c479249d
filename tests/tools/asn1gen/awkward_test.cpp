// The code generated from awkward.asn1: that it compiles is half of the test, the other half that the engine
// reads and writes each of its types as the notation says.
#include <gtest/gtest.h>

#include "asn1data/awkward.h"
#include "asn1rt/status.h"
#include "support/octets.h"
#include "support/recode.h"

namespace {

using namespace asn1data;

struct Row {
    const char* type;
    const char* octets;
};

class Awkward : public testing::TestWithParam<Row> {};

TEST_P(Awkward, ComesBackToItsOctets) {
    const test::Octets message = test::octets(GetParam().octets);
    const test::Recoded recoded = test::recode(test::typeNamed(GetParam().type), message);
    EXPECT_EQ(recoded.status, RTS_OK);
    EXPECT_EQ(test::text(recoded.octets), test::text(message)) << GetParam().type;
}

INSTANTIATE_TEST_SUITE_P(
    Structures, Awkward,
    testing::Values(
        Row{"Keywords", "30 15 020105 0101FF 020107 A3020500 A403010100 160161"},
        Row{"Keywords", "30 05 020105 0500"}, Row{"Case", "30 08 3003020101 020102"},
        Row{"Forward", "30 0C 3007 020101 02020100 8001FD"}, Row{"Forward", "30 09 3007 020101 02020100"},
        Row{"Alias2", "30 07 020101 02020100"},
        Row{"Shuffled",
            "31 28 A003020105 A10A31083006020101020102 A203020101 A3020500 5E0105 C00102 3006020101020102"},
        Row{"Shuffled", "31 08 3006020101020102"}, Row{"Extensible", "30 09 020101 8001FF 040107"},
        Row{"Empty", "30 00"}, Row{"Nothing_Else", "05 00"}));

INSTANTIATE_TEST_SUITE_P(
    SimpleKinds, Awkward,
    testing::Values(Row{
        "Simple_Kinds",
        "30 78 0101FF 0201FF 020500FFFFFFFF 020300FFFF 0209010000000000000000 020107 0A0105 0A0163 0500"
        "06022A03 0400 04020102 040401020304 040101 03020080 03020780 0C0161 120131 160161"
        "170D3930303130313030303030305A 180F32303230303130313030303030305A 1E020061 1C0400000061"
        "0500"}));

INSTANTIATE_TEST_SUITE_P(Choices, Awkward,
                         testing::Values(Row{"Chosen", "02 01 05"}, Row{"Chosen", "A0 03 020105"},
                                         Row{"Chosen", "30 03 020105"}, Row{"Chosen", "A1 04 06022A03"},
                                         Row{"Application_Choice", "63 03 020105"},
                                         Row{"Holder", "30 0B 63020500 A00563 03020105"},
                                         Row{"Holder", "30 07 A0056303020105"}, Row{"Only_Null", "80 00"},
                                         Row{"Keywords_namespace", "A2 03 0101FF"}));

INSTANTIATE_TEST_SUITE_P(Collections, Awkward,
                         testing::Values(Row{"Inline_Array", "30 06 130161 130162"},
                                         Row{"Open_Array", "31 06 06012A 06012B"},
                                         Row{"Nested", "30 08 3106 020101 020102"},
                                         Row{"Unnamed",
                                             "30 24 30083006020101020102 3100 30083006020101020102"
                                             "300C 300A 020101 3105 30030101FF"},
                                         Row{"Tree", "30 13 0C0161 A00730050C01620500 30050C01630500"}));

INSTANTIATE_TEST_SUITE_P(Tables, Awkward,
                         testing::Values(Row{"Open_Table", "30 0A 06022B05 A00403020780"},
                                         Row{"Open_Table", "30 04 06022B05"},
                                         Row{"Open_Table", "30 07 06012A A0020500"},
                                         Row{"Octet_Table", "30 10 0602551D 040A 30083003020101020102"},
                                         Row{"List_Table", "30 0C 06020103 3106 130161 130162"}));

TEST(AwkwardTypes, ANoteMakesAnIndefiniteLengthEndInside) {
    const test::Recoded recoded =
        test::recode(test::typeNamed("Streamed"), test::octets("30 80 30 80 04 01 01 00 00 00 00"));
    EXPECT_EQ(recoded.status, RTS_OK);
    EXPECT_EQ(test::text(recoded.octets), "30 05 30 03 04 01 01");
}

TEST(AwkwardTypes, OnlyTheTwoSizesPass) {
    const TypeDescriptor& type = test::typeNamed("Simple_Kinds_two_sizes");
    EXPECT_EQ(test::recode(type, test::octets("04 02 01 02")).status, RTS_OK);
    EXPECT_EQ(test::recode(type, test::octets("04 03 01 02 03")).status, RTS_CONSTRAINT);
    EXPECT_EQ(test::recode(type, test::octets("04 04 01 02 03 04")).status, RTS_OK);
}

TEST(AwkwardTypes, RecordsAreFilledAndCopiedByTheirNames) {
    ASN1T_Keywords record;
    record.class_ = -1;
    record.m.default_Present = 1;
    record.default_ = 1;
    record.m_ = 7;
    record.extElem1_ = 1;
    record.namespace_.t = T_Keywords_namespace_int;
    record.namespace_.u.int_ = "a";

    ASN1BEREncodeBuffer buffer;
    ASN1C_Keywords control(buffer, record);
    const int length = control.Encode();
    ASSERT_GT(length, 0);
    EXPECT_EQ(test::text(buffer.getMsgPtr(), static_cast<std::size_t>(length)),
              "30 09 02 01 FF 01 01 FF 16 01 61");

    const ASN1T_Keywords copy(control);
    EXPECT_STREQ(copy.namespace_.u.int_, "a");
    EXPECT_NE(copy.namespace_.u.int_, record.namespace_.u.int_);
}

TEST(AwkwardTypes, EveryTypeAndIdentifierIsListedInOrder) {
    for (std::uint32_t i = 1; i < kAllTypesCount; ++i) {
        EXPECT_LT(std::string_view(kAllTypes[i - 1].name), kAllTypes[i].name);
    }
    EXPECT_EQ(&test::typeNamed("Alias2"), &types::Hyphen_ated);
    ASSERT_EQ(kAllIdentifiersCount, 4u);
    EXPECT_STREQ(kAllIdentifiers[0].name, "caSe");
    EXPECT_STREQ(kAllIdentifiers[3].name, "new_delete");
}

TEST(AwkwardObjects, TablesHaveTheirObjectsInOrder) {
    ASSERT_EQ(sets::Class_Set.count, 5u);
    EXPECT_STREQ(sets::Class_Set.entries[0].name, "delete_");
    EXPECT_EQ(sets::Class_Set.entries[1].value, &types::Case);
    EXPECT_EQ(sets::Class_Set.entries[2].value, nullptr);
    EXPECT_EQ(sets::Empty_Set.count, 0u);

    EXTENSION* object = Class_Set::instance()->lookupObject(new_delete);
    ASSERT_NE(object, nullptr);
    EXPECT_NE(dynamic_cast<delete_*>(object), nullptr);
    EXPECT_EQ(Class_Set::instance()->lookupObject(caSe), nullptr);
    EXPECT_EQ(Empty_Set::instance()->lookupObject(caSe), nullptr);
}

}  // namespace
