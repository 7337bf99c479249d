#include "asn1/access_description.h"

#include "real_objects.h"
#include "value_test.h"

namespace {

constexpr char kOcsp[] = "1.3.6.1.5.5.7.48.1";

// { id-ad-ocsp, uri "x:b" }
constexpr char kEncoded[] = "30 0F 06 08 2B 06 01 05 05 07 30 01 86 03 78 3A 62";

}  // namespace

TEST(AccessDescription, TravelsBothWays) {
    const CAccessDescription written(kOcsp, url(L"x:b"));
    EXPECT_EQ(test::text(written.encode()), kEncoded);
    CAccessDescription read("1.2", url(L"y"));
    read.decode(blob(kEncoded));
    EXPECT_STREQ(read.get_accessMethod(), kOcsp);
    EXPECT_STREQ(read.get_accessLocation().get_uniformResourceIdentifier(), L"x:b");
    EXPECT_EQ(read, CAccessDescription(kOcsp, url(L"xyz"))) << "the first character of the URL counts";
    EXPECT_NE(read, CAccessDescription(kOcsp, url(L"ldap://a")));
    EXPECT_NE(read, CAccessDescription("1.3.6.1.5.5.7.48.2", url(L"x:b")));
}

TEST(AccessDescription, IsRefusedWithTheStatedCodeAndStays) {
    EXPECT_EQ(thrownCode([] { CAccessDescription().encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CAccessDescription(kOcsp, CGeneralName()).encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CAccessDescription("1.x", url(L"a")).encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CAccessDescription("1.40", url(L"a")).encode(); }), 0x80093101u);
    const CAccessDescription kept(kOcsp, url(L"x:b"));
    expectRefused(kept, 0x80093101, {"30 03 06 01 2A"});
    expectRefused(kept, 0x80070057, {"30 0C 06 01 2A A0 07 06 01 2A A0 02 05 00"});  // an otherName
}

TEST(AccessDescription, PutReplacesEachPart) {
    CAccessDescription description;
    description.put_accessMethod(kOcsp);
    description.put_accessLocation(url(L"x:b"));
    description.put_accessMethod(description.get_accessMethod());
    description.put_accessLocation(description.get_accessLocation());
    EXPECT_EQ(test::text(description.encode()), kEncoded);
    description.put_accessMethod(nullptr);
    EXPECT_STREQ(description.get_accessMethod(), "");
}

TEST(AuthorityInfoAccess, AnEmptyListAndAnUnsupportedLocationAreRefused) {
    EXPECT_EQ(thrownCode([] { CAuthorityInfoAccessSyntax().encode(); }), 0x80093101u);
    const CAuthorityInfoAccessSyntax kept{CAccessDescription(kOcsp, url(L"x:b"))};
    expectRefused(kept, 0x80093101, {"30 00"});
    expectRefused(kept, 0x80070057,
                  {"30 16 30 06 06 01 2A 86 01 79 30 0C 06 01 2A A0 07 06 01 2A A0 02 05 00"});
}

TEST(RealAccessDescriptions, ComeBack) {
    const auto extensions = test::extensionsNamed(test::certificateExtensions(), "1.3.6.1.5.5.7.1.1");
    if (extensions.empty()) GTEST_SKIP() << "no real access descriptions here";
    for (const auto& real : extensions) {
        CAuthorityInfoAccessSyntax ours;
        ours.decode(real.value);
        EXPECT_EQ(test::text(ours.encode()), test::text(real.value)) << real.file;
    }
}
