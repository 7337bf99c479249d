#include "asn1/attribute_register.h"

#include <map>
#include <stdexcept>
#include <string>

#include "asn1/attribute_string_value.h"
#include "asn1/text_conversion.h"
#include "value_test.h"

namespace {

// Looked up before main, perhaps before the register's own file is initialised.
const std::wstring nameFoundEarly = CATAVRegister::typeToStr("2.5.4.3").c_str();

}  // namespace

TEST(AttributeRegister, FindsEachKnownAttributeByTypeAndByNameFromBeforeMainOn) {
    EXPECT_EQ(nameFoundEarly, L"CN");
    const std::map<StringType, std::string> special = {{StringTypePrintable, " Printable"},
                                                       {StringTypeIA5, " IA5"}};
    std::string known;
    auto entry = CATAVRegister::find("2.5.4.3");
    for (int i = 0; i < 22 && entry != CATAVRegister::end(); ++i, ++entry) {
        EXPECT_EQ(CATAVRegister::find(entry->type.c_str()), entry);
        EXPECT_EQ(CATAVRegister::find(entry->name.c_str()), entry);
        EXPECT_EQ(entry->maxLength, 32768u);
        const bool isUtf8 = entry->stringType == StringTypeUTF8;
        known += tostring(entry->name.c_str()) + '=' + entry->type +
                 (isUtf8 ? "" : special.at(entry->stringType)) + ' ';
    }
    EXPECT_EQ(known,
              "CN=2.5.4.3 C=2.5.4.6 Printable L=2.5.4.7 ST=2.5.4.8 E=1.2.840.113549.1.9.1 IA5 "
              "O=2.5.4.10 OU=2.5.4.11 T=2.5.4.12 GN=2.5.4.42 I=2.5.4.43 SN=2.5.4.4 PS=2.5.4.65 "
              "OGRN=1.2.643.100.1 OGRNIP=1.2.643.100.5 SNILS=1.2.643.100.3 INNLE=1.2.643.100.4 "
              "INN=1.2.643.3.131.1.1 STREET=2.5.4.9 DC=0.9.2342.19200300.100.1.25 IA5 "
              "UnstructuredName=1.2.840.113549.1.9.2 PostalCode=2.5.4.17 "
              "SERIALNUMBER=2.5.4.5 Printable ");
}

TEST(AttributeRegister, UnknownTypesGoThroughAsTheyAre) {
    EXPECT_EQ(CATAVRegister::find("2.5.4"), CATAVRegister::end());
    EXPECT_EQ(CATAVRegister::find(L"cn"), CATAVRegister::end()) << "case counts";
    EXPECT_EQ(CATAVRegister::find(static_cast<const char*>(nullptr)), CATAVRegister::end());
    EXPECT_STREQ(CATAVRegister::typeToStr("1.2.3").c_str(), L"1.2.3");
    EXPECT_STREQ(CATAVRegister::typeToStr("2.5.4.6").c_str(), L"C");
    EXPECT_STREQ(CATAVRegister::typeFromStr(L"cn").c_str(), "cn");
    EXPECT_STREQ(CATAVRegister::typeFromStr(L"CN").c_str(), "2.5.4.3");
    EXPECT_STREQ(CATAVRegister::typeFromStr(nullptr).c_str(), "");
}

TEST(AttributeRegister, AnAddedTypeIsFoundOnceAndBehindTheKnownOnes) {
    const CATAVRegister added("1.2.643.5555.1", L"TEST", StringTypeBMP, 2);
    const CATAVRegister second("1.2.643.5555.2", L"CN", StringTypeBMP, 2);
    const CATAVRegister copy = added;
    auto entry = CATAVRegister::find(added.type.c_str());
    ASSERT_NE(entry, CATAVRegister::end());
    EXPECT_EQ(std::distance(entry, CATAVRegister::end()), 2) << "copies add nothing";
    EXPECT_STREQ(CATAVRegister::typeFromStr(L"CN").c_str(), "2.5.4.3");
    EXPECT_EQ(test::text(CATAVRegister::makeATAV(L"TEST=ab").get_value()), "1E 04 00 61 00 62");
    EXPECT_EQ(thrownCode([] { CATAVRegister::makeATAV(L"TEST=abc"); }), 0x80070057u);
}

TEST(AttributeRegister, TextsBecomeAttributes) {
    struct Row {
        const wchar_t* text;
        StringType stringType;
        const char* oid;
        const char* value;
    };
    const Row rows[] = {
        {L"CN=Ivan", StringTypeDefault, "2.5.4.3", "0C 04 49 76 61 6E"},
        {L"CN=", StringTypeDefault, "2.5.4.3", "0C 00"},
        {L"CN= a=b ", StringTypeDefault, "2.5.4.3", "0C 05 20 61 3D 62 20"},
        {L"C=RU", StringTypeDefault, "2.5.4.6", "13 02 52 55"},
        {L"C=RU", StringTypeUTF8, "2.5.4.6", "0C 02 52 55"},
        {L"E=x", StringTypeDefault, "1.2.840.113549.1.9.1", "16 01 78"},
        {L"E=x", StringTypeUTF8, "1.2.840.113549.1.9.1", "0C 01 78"},
        {L"2.5.4.3=a", StringTypeBMP, "2.5.4.3", "1E 02 00 61"},
        {L"1.2.3=#0C0141", StringTypeDefault, "1.2.3", "0C 01 41"},
        {L"1.2.3=x0C01 41", StringTypeUTF8, "1.2.3", "0C 01 41"},
        {L"1.2.3=#0C0q", StringTypeDefault, "1.2.3", "0C"},
        {L"1.2.3=#", StringTypeDefault, "1.2.3", ""},
        {L"cn=x", StringTypeDefault, "cn", ""},
        {L" CN=x00", StringTypeDefault, " CN", "00"},
        {L"=x00", StringTypeDefault, "", "00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(tostring(row.text));
        const CAttributeTypeAndValue made(row.text, row.stringType);
        EXPECT_STREQ(made.get_type(), row.oid);
        EXPECT_EQ(test::text(made.get_value()), row.value);
    }
}

TEST(AttributeRegister, TextsThatTellNoAttributeAreRefused) {
    for (const wchar_t* text : {static_cast<const wchar_t*>(nullptr), L"", L"CN", L"CN:a"})
        EXPECT_EQ(thrownCode([&] { CATAVRegister::makeATAV(text); }), 0x80070057u) << tostring(text);
    EXPECT_EQ(thrownCode([] { CATAVRegister::makeATAV(L"CN", nullptr, StringTypeDefault); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CATAVRegister::makeATAV(L"CN=a", static_cast<StringType>(7)); }), 0x80093101u);
    EXPECT_THROW(CATAVRegister::makeATAV(L"1.2.3="), std::out_of_range);
    const std::wstring longest = L"CN=" + std::wstring(32768, L'a');
    EXPECT_EQ(CATAVRegister::makeATAV(longest.c_str()).get_value().cbData(), 32772u);
    EXPECT_EQ(thrownCode([&] { CATAVRegister::makeATAV((longest + L'a').c_str()); }), 0x80070057u);
    const std::wstring unknown = L"1.2.3=#" + std::wstring(65540, L'0');
    EXPECT_EQ(CATAVRegister::makeATAV(unknown.c_str()).get_value().cbData(), 32770u);
}

TEST(AttributeTypeAndValue, IsShownAndReadInText) {
    CAttributeTypeAndValue value;
    for (const wchar_t* text :
         {L"CN=Ivan", L"CN=", L"CN=\x418\x432\x430\x43D", L"C=RU", L"1.2.3=#0C0141", L"1.2.3=#"}) {
        value.fromString(text);
        EXPECT_STREQ(value.toString().c_str(), text);
    }
    value.fromString(L"C=RU", StringTypeBMP);
    EXPECT_EQ(test::text(value.get_value()), "13 02 52 55") << "the string type is ignored";
    EXPECT_EQ(thrownCode([&] { value.fromString(L"CN"); }), 0x80070057u);
    EXPECT_STREQ(value.toString().c_str(), L"C=RU");
    EXPECT_STREQ(CAttributeTypeAndValue("2.5.4.3", blob("1E 02 00 61")).toString().c_str(), L"CN=a");
    for (const char* noText : {"", "02 01 05"}) {
        const CAttributeTypeAndValue other("2.5.4.3", blob(noText));
        EXPECT_EQ(thrownCode([&] { other.toString(); }), 0x80093101u) << noText;
    }
}

TEST(AttributeTypeAndValue, ItsPartsAreReadAndReplacedOneByOne) {
    CAttributeTypeAndValue value(L"CN", L"a", StringTypeIA5);
    EXPECT_STREQ(value.get_type_str().c_str(), L"CN");
    EXPECT_EQ(test::text(value.get_value()), "16 01 61");
    value.put_type_str(L"C");
    EXPECT_STREQ(value.get_type(), "2.5.4.6");
    value.put_value_str(L"RU");
    EXPECT_EQ(test::text(value.get_value()), "13 02 52 55");
    value.put_value_str(L"RU", StringTypeUTF8);
    EXPECT_STREQ(value.get_value_str().c_str(), L"RU");
    value.put_type(value.get_type());
    value.put_value(blob("0C 01 78"));
    EXPECT_STREQ(value.toString().c_str(), L"C=x");
    value.put_type(nullptr);
    EXPECT_STREQ(value.get_type(), "");
}

TEST(AttributeTypeAndValue, ComparesBytesAlone) {
    const CAttributeTypeAndValue value(L"CN=A");
    EXPECT_EQ(value, CAttributeTypeAndValue("2.5.4.3", blob("0C 01 41")));
    EXPECT_NE(value, CAttributeTypeAndValue(L"CN=a"));
    EXPECT_NE(value, CAttributeTypeAndValue(L"CN=A", StringTypePrintable));
    EXPECT_NE(value, CAttributeTypeAndValue(L"O=A"));
}

TEST(AttributeTypeAndValue, TravelsAsDer) {
    const std::pair<const wchar_t*, const char*> rows[] = {
        {L"CN=A", "30 08 06 03 55 04 03 0C 01 41"},
        {L"1.2.3=#020105", "30 07 06 02 2A 03 02 01 05"},
    };
    for (const auto& [text, encoded] : rows) {
        EXPECT_EQ(test::text(CAttributeTypeAndValue(text).encode()), encoded);
        CAttributeTypeAndValue read;
        read.decode(blob(encoded));
        EXPECT_STREQ(read.toString().c_str(), text);
    }
    EXPECT_EQ(test::text(CAttributeTypeAndValue("2.5.4.3", CBlob()).encode()), "30 05 06 03 55 04 03")
        << "no value at all is let pass";
}

TEST(AttributeTypeAndValue, WhatDoesNotFitItsTypeIsRefusedOnTheRoad) {
    EXPECT_EQ(thrownCode([] { CAttributeTypeAndValue(L"cn=x").encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CAttributeTypeAndValue("3.1", blob("05 00")).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttributeTypeAndValue("2.5.4.3", blob("02 01 05")).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttributeTypeAndValue("2.5.4.3", blob("0C 05 41")).encode(); }), 0x80093101u);
    expectRefused(CAttributeTypeAndValue(L"CN=A"), 0x80093101,
                  {"", "30 00", "30 08 06 03 55 04 03 02 01 05", "31 08 06 03 55 04 03 0C 01 41"});
}

TEST(AttributeStringValue, EachClassHasItsIdentifierAndItsStringType) {
    const std::pair<CAttrValue, const wchar_t*> rows[] = {
        {CAttrCommonName("a"), L"CN=a"},
        {CAttrSurname("a"), L"SN=a"},
        {CAttrSerialNumber("a"), L"SERIALNUMBER=a"},
        {CAttrCountry("RU"), L"C=RU"},
        {CAttrLocality("a"), L"L=a"},
        {CAttrStateOrProvinceName("a"), L"ST=a"},
        {CAttrOrganizationName("a"), L"O=a"},
        {CAttrOrganizationalUnitName("a"), L"OU=a"},
        {CAttrTitle("a"), L"T=a"},
        {CAttrGivenName("\xD0\x98"), L"GN=\x418"},
        {CAttrInitials("a"), L"I=a"},
        {CAttrPseudonym("a"), L"PS=a"},
        {CAttrEmailAddress("a"), L"E=a"},
        {CAttrStringValue("1.2.3", "#0500"), L"1.2.3=#0500"},
        {CAttrStringValue("2.5.4.3", L"\x418"), L"CN=\x418"}};
    for (const auto& [value, text] : rows) {
        EXPECT_STREQ(CAttributeTypeAndValue(value).toString().c_str(), text);
        EXPECT_EQ(CAttributeTypeAndValue(value), CAttributeTypeAndValue(text));
    }
}

TEST(AttributeValue, ComparesIdentifiersAndBytesInStoredOrder) {
    const CAttrValue value("1.2.3", blob("05 00"));
    EXPECT_EQ(value, CAttrValue("1.2.3", blob("05 00")));
    EXPECT_NE(value, CAttrValue("1.2.4", blob("05 00")));
    EXPECT_NE(value, CAttrValue("1.2.3"));
    EXPECT_STREQ(CAttrValue().get_oid(), "");
    EXPECT_EQ((CAttrValueList{value, CAttrValue()}), (CAttrValueList{value, CAttrValue()}));
    EXPECT_NE((CAttrValueList{value, CAttrValue()}), (CAttrValueList{CAttrValue(), value}));
    EXPECT_NE((CAttrValueList{value, CAttrValue()}), (CAttrValueList{value}));
}
