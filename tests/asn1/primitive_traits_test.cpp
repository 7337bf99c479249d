#include "asn1/primitive_traits.h"

#include "value_test.h"

namespace {

// A record that `Traits` copied still encodes when the source and its context are gone.
template <typename Traits, typename Value>
std::string encodedCopy(const Value& value) {
    ASN1BEREncodeBuffer output;
    typename Traits::ASN1_T copy{};
    {
        test::LiveContext context;
        typename Traits::ASN1_T source{};
        Traits::set(context, source, value);
        Traits::copy(output.getCtxtPtr(), source, copy);
    }
    const int length = Traits::encode(output, copy);
    return length < 0 ? "refused" : test::text(output.getMsgPtr(), static_cast<std::size_t>(length));
}

template <typename Traits>
void expectBlobRoundTrip(const char* value, const char* encoded) {
    SCOPED_TRACE(encoded);
    EXPECT_EQ(test::text(asn1Encode<Traits>(blob(value))), encoded);
    EXPECT_EQ(encodedCopy<Traits>(blob(value)), encoded);
    CBlob read(3);
    asn1Decode<Traits>(blob(encoded), read);
    EXPECT_EQ(test::text(read), value);
}

}  // namespace

TEST(PrimitiveTraits, BlobsTravelAsOctetStringsOpenTypesAndBitStrings) {
    expectBlobRoundTrip<ASN1TDynOctStr_traits>("", "04 00");
    expectBlobRoundTrip<ASN1TDynOctStr_traits>("01 02", "04 02 01 02");
    expectBlobRoundTrip<ASN1TOpenType_traits>("30 03 02 01 05", "30 03 02 01 05");
    expectBlobRoundTrip<ASN1TDynBitStr_traits>("", "03 01 00");
    expectBlobRoundTrip<ASN1TDynBitStr_traits>("01 80", "03 03 00 01 80");
    CBlob read;
    asn1Decode<ASN1TDynOctStr_traits>(blob("24 80 04 01 41 04 01 42 00 00"), read);
    EXPECT_EQ(test::text(read), "41 42");
    asn1Decode<ASN1TDynBitStr_traits>(blob("03 03 07 01 80"), read);
    EXPECT_EQ(test::text(read), "01 80") << "nine bits are two bytes";
    EXPECT_EQ(thrownCode([] { asn1Encode<ASN1TOpenType_traits>(blob("30 03 02")); }), 0x80093101u);
    test::LiveContext context;
    ASN1TDynBitStr record{5, nullptr};
    const CBlob tooLong(0x20000000);  // its bits cannot be counted
    EXPECT_EQ(thrownCode([&] { ASN1TDynBitStr_traits::set(context, record, tooLong); }), 0x80093106u);
    EXPECT_EQ(record.numbits, 5u);
}

TEST(PrimitiveTraits, IdentifiersTravelAsText) {
    const char* const text = "1.2.840.113549";
    EXPECT_EQ(test::text(asn1Encode<ASN1TObjId_traits>(text)), "06 06 2A 86 48 86 F7 0D");
    EXPECT_EQ(encodedCopy<ASN1TObjId_traits>(text), "06 06 2A 86 48 86 F7 0D");
    CStringProxy read;
    asn1Decode<ASN1TObjId_traits>(blob("06 06 2A 86 48 86 F7 0D"), read);
    EXPECT_STREQ(read.c_str(), text);
    EXPECT_EQ(thrownCode([] { asn1Encode<ASN1TObjId_traits, char const*>("1..2"); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { asn1Encode<ASN1TObjId_traits, char const*>(nullptr); }), 0x80070057u);
}

TEST(PrimitiveTraits, NarrowTextTravelsAsItStands) {
    EXPECT_EQ(test::text(asn1Encode<ASN1IA5String_traits, char const*>("ab")), "16 02 61 62");
    CStringProxy read;
    asn1Decode<ASN1IA5String_traits>(blob("16 02 61 62"), read);
    EXPECT_STREQ(read.c_str(), "ab");
    EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1IA5String_traits>(blob("0C 02 61 62"), read); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { asn1Encode<ASN1IA5String_traits, char const*>(nullptr); }), 0x80070057u);
    test::LiveContext context;
    const char* const source = "ab";
    const char* target = nullptr;
    ASN1IA5String_traits::copy(context, source, target);
    EXPECT_EQ(target, source) << "a copy shares its text";
}

TEST(PrimitiveTraits, WideTextTravelsAsUtf8) {
    const std::pair<const wchar_t*, const char*> rows[] = {
        {L"", "0C 00"},
        {L"a", "0C 01 61"},
        {L"\xE9", "0C 02 C3 A9"},
        {L"\x20AC\x1F600", "0C 07 E2 82 AC F0 9F 98 80"},
    };
    for (const auto& [text, encoded] : rows) {
        EXPECT_EQ(test::text(asn1Encode<ASN1UTF8String_traits>(text)), encoded);
        EXPECT_EQ(encodedCopy<ASN1UTF8String_traits>(text), encoded);
        CWStringProxy read(L"?");
        asn1Decode<ASN1UTF8String_traits>(blob(encoded), read);
        EXPECT_STREQ(read.c_str(), text);
    }
}

TEST(PrimitiveTraits, WhatIsNoUtf8IsRefused) {
    const wchar_t impossible[] = {L'a', static_cast<wchar_t>(0x80000000), 0};
    EXPECT_EQ(thrownCode([&] { asn1Encode<ASN1UTF8String_traits>(&impossible[0]); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { asn1Encode<ASN1UTF8String_traits, wchar_t const*>(nullptr); }), 0x80070057u);
    CWStringProxy read(L"?");
    for (const char* encoded : {"0C 01 FF", "0C 01 80", "0C 02 C3 28"}) {
        EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1UTF8String_traits>(blob(encoded), read); }), 0x80093101u)
            << encoded;
    }
    EXPECT_STREQ(read.c_str(), L"?");
}
