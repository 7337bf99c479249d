#include "asn1/distribution_point.h"

#include "asn1/distribution_point_traits.h"
#include "real_objects.h"
#include "value_test.h"

namespace {

CDistributionPoint point(CGeneralNames const& names, unsigned int reasons, CGeneralNames const& issuer,
                         bool hasNames = true) {
    CDistributionPoint made;
    const CDistributionPointName name(names);
    const CReasonFlags flags(reasons);
    made.put_distributionPoint(hasNames ? &name : nullptr);
    made.put_reasons(&flags);
    made.put_cRLIssuer(hasNames ? &issuer : nullptr);
    return made;
}

CDistributionPoint full() {
    return point({url(L"http://a")}, 0x62, {url(L"x:b")});
}

// { fullName { uri "http://a" }, reasons { keyCompromise, cessationOfOperation, certificateHold },
//   cRLIssuer { uri "x:b" } }
constexpr char kFull[] = "30 19 A0 0C A0 0A 86 08 68 74 74 70 3A 2F 2F 61 81 02 01 46 A2 05 86 03 78 3A 62";

// { nameRelativeToCRLIssuer { CN=a } }
constexpr char kRelative[] = "30 0E A0 0C A1 0A 30 08 06 03 55 04 03 0C 01 61";

CDistributionPoint decoded(char const* encoded) {
    CDistributionPoint read = full();
    read.decode(blob(encoded));
    return read;
}

}  // namespace

TEST(DistributionPointName, HoldsFullNamesOrNothing) {
    CDistributionPointName name;
    EXPECT_EQ(name.get_type(), 0u);
    EXPECT_EQ(name.get_fullName(), nullptr);
    name.put_fullName({url(L"http://a")});
    EXPECT_EQ(name.get_type(), CDistributionPointName::fullName);
    name.put_fullName(*name.get_fullName());
    ASSERT_NE(name.get_fullName(), nullptr);
    EXPECT_STREQ(name.get_fullName()->front().get_uniformResourceIdentifier(), L"http://a");
    EXPECT_EQ(test::text(name.encode()), "A0 0A 86 08 68 74 74 70 3A 2F 2F 61");
    CDistributionPointName read;
    read.decode(name.encode());
    EXPECT_EQ(read, name);
    read.decode(blob("A1 0A 30 08 06 03 55 04 03 0C 01 61"));
    EXPECT_EQ(read, name) << "a relative name leaves the value as it was";
}

TEST(DistributionPointName, IsEqualByTypeAndNamesInOrder) {
    const CDistributionPointName two(CGeneralNames{url(L"a"), url(L"b")});
    EXPECT_NE(CDistributionPointName(), CDistributionPointName(CGeneralNames()));
    EXPECT_NE(two, CDistributionPointName(CGeneralNames{url(L"b"), url(L"a")}));
    EXPECT_NE(two, CDistributionPointName(CGeneralNames{url(L"a")}));
    EXPECT_EQ(two, CDistributionPointName(CGeneralNames{url(L"aa"), url(L"bb")})) << "first characters count";
}

TEST(DistributionPoint, EncodesItsThreeFieldsAndDecodingClearsWhatIsAbsent) {
    EXPECT_EQ(test::text(full().encode()), kFull);
    EXPECT_EQ(decoded(kFull), full());
    EXPECT_EQ(decoded("30 00"), CDistributionPoint());
    CDistributionPoint reasons = decoded("30 04 81 02 01 46");
    EXPECT_EQ(reasons, point({}, 0x62, {}, false));
    const CGeneralNames none;
    reasons.put_cRLIssuer(&none);
    EXPECT_EQ(test::text(reasons.encode()), "30 04 81 02 01 46") << "no names are left out";
}

TEST(DistributionPoint, AnEmptyNameIsHeldAndNotEncoded) {
    CDistributionPoint made;
    const CDistributionPointName empty;
    made.put_distributionPoint(&empty);
    for (CDistributionPoint const& held : {made, decoded(kRelative)}) {
        const CDistributionPoint copy(held);
        ASSERT_NE(copy.get_distributionPoint(), nullptr);
        EXPECT_EQ(copy.get_distributionPoint()->get_type(), 0u);
        EXPECT_EQ(copy, made);
        EXPECT_EQ(thrownCode([&] { copy.encode(); }), 0x80093101u);
    }
}

TEST(DistributionPoint, IsRefusedWithTheStatedCodeAndStays) {
    // Not a point; a reason bit too many; an otherName, which no general name holds.
    expectRefused(full(), 0x80093101, {"31 00", "30 06 81 04 07 00 00 80"});
    expectRefused(full(), 0x80070057, {"30 0B A2 09 A0 07 06 01 2A A0 02 05 00"});
    EXPECT_EQ(thrownCode([] { point({CGeneralName()}, 0, {}).encode(); }), 0x80070057u);
    CCRLDistPointsSyntax list{full()};
    const CBlob encoded = blob("30 0F 30 00 30 0B A2 09 A0 07 06 01 2A A0 02 05 00");
    EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1T_CRLDistPointsSyntax_traits>(encoded, list); }), 0x80070057u);
    EXPECT_EQ(list, CCRLDistPointsSyntax{full()});
}

TEST(DistributionPoint, PutTakesCopiesAndRemoves) {
    CDistributionPoint made = full();
    made.put_distributionPoint(made.get_distributionPoint());
    made.put_reasons(made.get_reasons());
    made.put_cRLIssuer(made.get_cRLIssuer());
    EXPECT_EQ(made, full());
    made.put_distributionPoint(nullptr);
    made.put_reasons(nullptr);
    made.put_cRLIssuer(nullptr);
    EXPECT_EQ(made, CDistributionPoint());
}

TEST(DistributionPoint, EqualityLooksAtEachField) {
    EXPECT_EQ(full(), point({url(L"h")}, 0x62, {url(L"x")})) << "first characters count";
    EXPECT_NE(full(), point({url(L"g")}, 0x62, {url(L"x")}));
    EXPECT_NE(full(), point({url(L"h")}, 0x63, {url(L"x")}));
    EXPECT_NE(full(), point({url(L"h")}, 0x62, {url(L"y")}));
    for (const int absent : {0, 1, 2}) {
        CDistributionPoint less = full();
        if (absent == 0) less.put_distributionPoint(nullptr);
        if (absent == 1) less.put_reasons(nullptr);
        if (absent == 2) less.put_cRLIssuer(nullptr);
        EXPECT_NE(less, full());
        EXPECT_NE(full(), less);
        EXPECT_EQ(less, CDistributionPoint(less));
    }
}

TEST(RealDistributionPoints, ComeBack) {
    const auto extensions = test::extensionsNamed(test::certificateExtensions(), "2.5.29.31");
    if (extensions.empty()) GTEST_SKIP() << "no real distribution points here";
    for (const auto& real : extensions) {
        CCRLDistPointsSyntax ours;
        asn1Decode<ASN1T_CRLDistPointsSyntax_traits>(real.value, ours);
        EXPECT_EQ(test::text(asn1Encode<ASN1T_CRLDistPointsSyntax_traits>(ours)), test::text(real.value))
            << real.file;
    }
}
