#include "asn1/general_name.h"

#include <string>

#include "asn1/general_name_traits.h"
#include "asn1/name.h"
#include "value_test.h"

namespace {

const char* const kDirectoryName = "30 0C 31 0A 30 08 06 03 55 04 03 0C 01 61";  // CN=a

// One alternative whose value is text.
struct TextKind {
    CGeneralName::Type type;
    const wchar_t* (CGeneralName::*get)() const;
    void (CGeneralName::*put)(const wchar_t*);
    const wchar_t* text;
    const char* encoded;
    const wchar_t* shown;
};

const TextKind textKinds[] = {
    {CGeneralName::rfc822Name, &CGeneralName::get_rfc822Name, &CGeneralName::put_rfc822Name, L"a@b",
     "81 03 61 40 62", L"rfc822Name: a"},
    {CGeneralName::dNSName, &CGeneralName::get_dNSName, &CGeneralName::put_dNSName, L"ab.c",
     "82 04 61 62 2E 63", L"dNSName: a"},
    {CGeneralName::uniformResourceIdentifier, &CGeneralName::get_uniformResourceIdentifier,
     &CGeneralName::put_uniformResourceIdentifier, L"u:\xE9", "86 04 75 3A C3 A9",
     L"uniformResourceIdentifier: u"},
    {CGeneralName::registeredID, &CGeneralName::get_registeredID, &CGeneralName::put_registeredID, L"1.2.3",
     "88 02 2A 03", L"registeredID: 1"},
};

CGeneralName holding(const TextKind& kind, const wchar_t* text) {
    CGeneralName name;
    (name.*kind.put)(text);
    return name;
}

CGeneralName directory(const CBlob& encoded) {
    CGeneralName name;
    name.put_directoryName(encoded);
    return name;
}

CGeneralName address(const char* octets) {
    CGeneralName name;
    name.put_iPAddress(blob(octets));
    return name;
}

CGeneralName decoded(const CBlob& encoded) {
    CGeneralName name;
    name.decode(encoded);
    return name;
}

}  // namespace

TEST(GeneralName, TextsAreHeldShownAndCarried) {
    for (const TextKind& kind : textKinds) {
        SCOPED_TRACE(kind.encoded);
        const CGeneralName name = holding(kind, kind.text);
        EXPECT_EQ(name.get_type(), kind.type);
        EXPECT_STREQ((name.*kind.get)(), kind.text);
        EXPECT_EQ(name.get_directoryName(), nullptr);
        EXPECT_EQ(name.get_iPAddress(), nullptr);
        for (const TextKind& other : textKinds) {
            EXPECT_EQ((name.*other.get)() != nullptr, other.type == kind.type);
        }
        EXPECT_STREQ(name.toString().c_str(), kind.shown);
        EXPECT_EQ(test::text(name.encode()), kind.encoded);
        const CGeneralName read = decoded(blob(kind.encoded));
        EXPECT_EQ(read.get_type(), kind.type);
        EXPECT_STREQ((read.*kind.get)(), kind.text);
    }
}

TEST(GeneralName, ADirectoryNameIsHeldShownAndCarried) {
    const CGeneralName name = directory(blob(kDirectoryName));
    EXPECT_EQ(name.get_type(), 5u);
    EXPECT_STREQ(name.toString().c_str(), L"directoryName: CN=a");
    const std::string encoded = std::string("A4 0E ") + kDirectoryName;
    EXPECT_EQ(test::text(name.encode()), encoded);
    EXPECT_EQ(test::text(*decoded(blob(encoded)).get_directoryName()), kDirectoryName);
    EXPECT_EQ(thrownCode([] { directory(blob("31 00")).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { directory(blob("31 00")).toString(); }), 0x80093101u);
}

TEST(GeneralName, AnAddressReadsBackAsADirectoryName) {
    const CGeneralName name = address("C0 00 02 01");
    EXPECT_EQ(name.get_type(), 8u);
    EXPECT_EQ(test::text(*name.get_iPAddress()), "C0 00 02 01");
    EXPECT_STREQ(name.toString().c_str(), L"iPAddress: (to string is not implemented)");
    EXPECT_EQ(test::text(name.encode()), "87 04 C0 00 02 01");
    const CGeneralName read = decoded(name.encode());
    EXPECT_EQ(read.get_type(), 5u);
    EXPECT_EQ(read.get_iPAddress(), nullptr);
    EXPECT_EQ(test::text(*read.get_directoryName()), "C0 00 02 01");
    EXPECT_EQ(thrownCode([&] { read.encode(); }), 0x80093101u);
    EXPECT_NE(read, name);
}

TEST(GeneralName, AnEmptyNameIsCopiedComparedAndShownButNotEncoded) {
    const CGeneralName empty;
    EXPECT_EQ(empty.get_type(), 0u);
    EXPECT_EQ(empty.get_rfc822Name(), nullptr);
    EXPECT_STREQ(empty.toString().c_str(), L"");
    EXPECT_EQ(CGeneralName(empty), empty);
    EXPECT_NE(empty, address(""));
    EXPECT_EQ(thrownCode([&] { empty.encode(); }), 0x80070057u);
}

TEST(GeneralName, AlternativesWithoutSupportAreRefusedAndChangeNothing) {
    expectRefused(address("01"), 0x80070057,
                  {"A0 06 06 01 2A A0 01 05", "A3 02 30 00", "A5 05 A1 03 13 01 61"});
    expectRefused(address("01"), 0x80093101,
                  {"", "89 01 61", "02 01 05", "82 05 61", "88 00", "A4 02 31 00"});
}

TEST(GeneralName, TextsThatCannotBeCarriedAreRefused) {
    CGeneralName name;
    for (const TextKind& kind : textKinds)
        EXPECT_EQ(thrownCode([&] { (name.*kind.put)(nullptr); }), 0x80070057u);
    EXPECT_EQ(name.get_type(), 0u);
    for (const wchar_t* text : {L"", L"a", L"1..2", L"1.2."}) {
        name.put_registeredID(text);
        EXPECT_EQ(thrownCode([&] { name.encode(); }), 0x80070057u);
    }
    name.put_registeredID(L"3.1");
    EXPECT_EQ(thrownCode([&] { name.encode(); }), 0x80093101u);
    name.put_dNSName(L"");
    EXPECT_EQ(test::text(name.encode()), "82 00");
    EXPECT_STREQ(name.toString().c_str(), L"dNSName: ");
    asn1data::ASN1T_GeneralName record;
    record.t = asn1data::T_GeneralName_dNSName;
    EXPECT_EQ(thrownCode([&] { asn1EncodeT<ASN1T_GeneralName_traits>(record); }), 0x80093101u) << "no text";
    record.t = 0;
    EXPECT_EQ(thrownCode([&] { ASN1T_GeneralName_traits::get(record, name); }), 0x80070057u);
    const std::wstring huge(8 << 20, L'a');
    name.put_uniformResourceIdentifier(huge.c_str());
    EXPECT_EQ(decoded(name.encode()).get_uniformResourceIdentifier(), huge) << "takes no stack";
}

TEST(GeneralName, TextsCompareByTheirFirstCharacter) {
    for (const TextKind& kind : textKinds) {
        EXPECT_EQ(holding(kind, L"abc"), holding(kind, L"a"));
        EXPECT_EQ(holding(kind, L""), holding(kind, L""));
        EXPECT_NE(holding(kind, L"a"), holding(kind, L"A"));
        EXPECT_NE(holding(kind, L"a"), holding(kind, L""));
    }
    EXPECT_NE(holding(textKinds[0], L"a"), holding(textKinds[1], L"a"));
    EXPECT_NE(address("01 02"), address("01"));
    EXPECT_NE(address("01"), directory(blob("01")));
}

TEST(GeneralName, WhatItHoldsMayBePutIntoIt) {
    CGeneralName name = directory(blob("01 02"));
    name.put_directoryName(*name.get_directoryName());
    EXPECT_EQ(test::text(*name.get_directoryName()), "01 02");
    name.put_dNSName(L"ab");
    name.put_rfc822Name(name.get_dNSName());
    EXPECT_STREQ(name.get_rfc822Name(), L"ab");
}

TEST(GeneralName, ListsKeepTheirOrderAndStayWhenOneIsRefused) {
    CGeneralNames names{holding(textKinds[1], L"b"), directory(blob(kDirectoryName)),
                        holding(textKinds[1], L"a")};
    const CBlob encoded = asn1Encode<ASN1T_GeneralNames_traits>(names);
    EXPECT_EQ(test::text(encoded), std::string("30 16 82 01 62 A4 0E ") + kDirectoryName + " 82 01 61");
    CGeneralNames read{address("01")};
    asn1Decode<ASN1T_GeneralNames_traits>(encoded, read);
    EXPECT_EQ(read, names);
    EXPECT_EQ(test::text(asn1Encode<ASN1T_GeneralNames_traits>(CGeneralNames())), "30 00");
    const CBlob unsupported = blob("30 0B 82 01 61 A0 06 06 01 2A A0 01 05");
    EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1T_GeneralNames_traits>(unsupported, read); }), 0x80070057u);
    EXPECT_EQ(read, names);
}

TEST(GeneralName, ACopiedRecordOutlivesItsSource) {
    CGeneralNames names{directory(blob(kDirectoryName))};
    for (const TextKind& kind : textKinds)
        names.push_back(holding(kind, kind.text));
    EXPECT_EQ(test::throughCopiedRecord<ASN1T_GeneralNames_traits>(names), names);
}
