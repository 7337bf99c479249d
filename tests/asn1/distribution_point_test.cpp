#include "asn1/distribution_point.h"

#include <gtest/gtest.h>

#include "asn1/bridge.h"
#include "asn1/distribution_point_traits.h"
#include "asn1/text_conversion.h"
#include "real_objects.h"
#include "support/blobs.h"
#include "support/failures.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;
using test::thrownCode;

namespace {

CGeneralName url(wchar_t const* text) {
    CGeneralName name;
    name.put_uniformResourceIdentifier(text);
    return name;
}

CDistributionPoint point(CGeneralNames const& names, unsigned int reasons, CGeneralNames const& issuer) {
    CDistributionPoint made;
    const CDistributionPointName name(names);
    const CReasonFlags flags(reasons);
    made.put_distributionPoint(&name);
    made.put_reasons(&flags);
    made.put_cRLIssuer(&issuer);
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
}

TEST(DistributionPointName, CopiesAreDeepAndEmptyOnesEmpty) {
    const CDistributionPointName empty;
    CDistributionPointName copy(empty);
    EXPECT_EQ(copy, empty);
    const CDistributionPointName source(CGeneralNames{url(L"a")});
    copy = source;
    EXPECT_EQ(copy, source);
    copy.put_fullName({url(L"b"), url(L"c")});
    EXPECT_EQ(source.get_fullName()->size(), 1u);
    copy = *&copy;
    EXPECT_EQ(copy.get_fullName()->size(), 2u);
    CDistributionPointName cleared(copy);
    cleared.clear();
    const CDistributionPointName copyOfCleared(cleared);
    copy = copyOfCleared;
    copy = source;
    EXPECT_EQ(copy, source);
}

TEST(DistributionPointName, IsEqualByTypeAndNamesInOrder) {
    const CDistributionPointName two(CGeneralNames{url(L"a"), url(L"b")});
    EXPECT_NE(CDistributionPointName(), CDistributionPointName(CGeneralNames()));
    EXPECT_NE(two, CDistributionPointName(CGeneralNames{url(L"b"), url(L"a")}));
    EXPECT_NE(two, CDistributionPointName(CGeneralNames{url(L"a")}));
    EXPECT_EQ(two, CDistributionPointName(CGeneralNames{url(L"aa"), url(L"bb")})) << "first characters count";
}

TEST(DistributionPointName, ARelativeNameLeavesTheValueAsItWas) {
    CDistributionPointName name(CGeneralNames{url(L"a")});
    name.decode(blob("A1 0A 30 08 06 03 55 04 03 0C 01 61"));
    EXPECT_EQ(name, CDistributionPointName(CGeneralNames{url(L"a")}));
}

TEST(DistributionPoint, EncodesItsThreeFields) {
    EXPECT_EQ(test::text(full().encode()), kFull);
    EXPECT_EQ(test::text(CDistributionPoint().encode()), "30 00");
    EXPECT_EQ(decoded(kFull), full());
}

TEST(DistributionPoint, DecodingClearsWhatTheEncodingLacks) {
    const CDistributionPoint nothing = decoded("30 00");
    EXPECT_EQ(nothing.get_distributionPoint(), nullptr);
    EXPECT_EQ(nothing.get_reasons(), nullptr);
    EXPECT_EQ(nothing.get_cRLIssuer(), nullptr);
    const CDistributionPoint reasons = decoded("30 04 81 02 01 46");
    ASSERT_NE(reasons.get_reasons(), nullptr);
    EXPECT_EQ(reasons.get_reasons()->get_value(), 0x62u);
    EXPECT_EQ(reasons.get_cRLIssuer(), nullptr);
}

TEST(DistributionPoint, AnIssuerWithoutNamesIsLeftOut) {
    CDistributionPoint made;
    const CGeneralNames none;
    made.put_cRLIssuer(&none);
    EXPECT_NE(made.get_cRLIssuer(), nullptr);
    EXPECT_EQ(test::text(made.encode()), "30 00");
}

TEST(DistributionPoint, AnEmptyNameIsHeldAndNotEncoded) {
    CDistributionPoint made;
    const CDistributionPointName empty;
    made.put_distributionPoint(&empty);
    const CDistributionPoint copy(made);
    ASSERT_NE(copy.get_distributionPoint(), nullptr);
    EXPECT_EQ(copy.get_distributionPoint()->get_type(), 0u);
    EXPECT_EQ(copy, made);
    EXPECT_EQ(thrownCode([&] { made.encode(); }), 0x80093101u);
}

TEST(DistributionPoint, ARelativeNameDecodesAsAnEmptyOne) {
    const CDistributionPoint read = decoded(kRelative);
    ASSERT_NE(read.get_distributionPoint(), nullptr);
    EXPECT_EQ(read.get_distributionPoint()->get_type(), 0u);
    EXPECT_EQ(CDistributionPoint(read), read);
    EXPECT_EQ(thrownCode([&] { read.encode(); }), 0x80093101u);
}

TEST(DistributionPoint, IsRefusedWithTheStatedCodeAndStays) {
    CDistributionPoint read = full();
    // Not a point; a reason bit too many; an otherName, which no general name holds.
    EXPECT_EQ(thrownCode([&] { read.decode(blob("31 00")); }), 0x80093101u);
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 06 81 04 07 00 00 80")); }), 0x80093101u);
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 0B A2 09 A0 07 06 01 2A A0 02 05 00")); }), 0x80070057u);
    EXPECT_EQ(read, full());
    EXPECT_EQ(thrownCode([] { point({CGeneralName()}, 0, {}).encode(); }), 0x80070057u);
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

TEST(DistributionPoint, CopiesAreDeepAndClearedOnesCleared) {
    const CDistributionPoint source = full();
    CDistributionPoint copy(source);
    copy.put_reasons(nullptr);
    EXPECT_EQ(source, full());
    copy = source;
    EXPECT_EQ(copy, source);
    CDistributionPoint cleared(source);
    cleared.clear();
    copy = cleared;
    CDistributionPoint again(copy);
    again = source;
    EXPECT_EQ(again, source);
}

TEST(DistributionPoints, AListWithAnUnsupportedNameIsRefusedAndStays) {
    CCRLDistPointsSyntax read{full()};
    const CBlob encoded = blob("30 0F 30 00 30 0B A2 09 A0 07 06 01 2A A0 02 05 00");
    EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1T_CRLDistPointsSyntax_traits>(encoded, read); }), 0x80070057u);
    EXPECT_EQ(read, CCRLDistPointsSyntax{full()});
}

TEST(RealDistributionPoints, AreThoseOfLibcryptoAndComeBack) {
    const auto extensions = test::extensionsNamed(test::certificateExtensions(), "2.5.29.31");
    if (extensions.empty()) GTEST_SKIP() << "no real distribution points here";
    for (const auto& real : extensions) {
        unsigned char const* data = real.value.pbData();
        const std::unique_ptr<CRL_DIST_POINTS, decltype(&CRL_DIST_POINTS_free)> theirs(
            d2i_CRL_DIST_POINTS(nullptr, &data, static_cast<long>(real.value.cbData())),
            &CRL_DIST_POINTS_free);
        CCRLDistPointsSyntax ours;
        asn1Decode<ASN1T_CRLDistPointsSyntax_traits>(real.value, ours);
        ASSERT_EQ(static_cast<int>(ours.size()), sk_DIST_POINT_num(theirs.get())) << real.file;
        int index = 0;
        for (const CDistributionPoint& our : ours) {
            DIST_POINT const* const their = sk_DIST_POINT_value(theirs.get(), index++);
            ASSERT_EQ(our.get_distributionPoint() != nullptr, their->distpoint != nullptr) << real.file;
            EXPECT_EQ(our.get_reasons() != nullptr, their->reasons != nullptr) << real.file;
            EXPECT_EQ(our.get_cRLIssuer() != nullptr, their->CRLissuer != nullptr) << real.file;
            if (!their->distpoint) continue;
            ASSERT_EQ(their->distpoint->type, 0) << real.file;
            GENERAL_NAME const* const name = sk_GENERAL_NAME_value(their->distpoint->name.fullname, 0);
            if (name->type != GEN_URI) continue;
            const CBlob text = test::blobOf(name->d.uniformResourceIdentifier);
            EXPECT_EQ(
                tostring(
                    our.get_distributionPoint()->get_fullName()->front().get_uniformResourceIdentifier()),
                std::string(reinterpret_cast<char const*>(text.pbData()), text.cbData()));
        }
        EXPECT_EQ(test::text(asn1Encode<ASN1T_CRLDistPointsSyntax_traits>(ours)), test::text(real.value))
            << real.file;
    }
}
