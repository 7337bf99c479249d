#include "asn1/access_description.h"

#include <gtest/gtest.h>

#include "real_objects.h"
#include "support/blobs.h"
#include "support/failures.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;
using test::thrownCode;

namespace {

constexpr char kOcsp[] = "1.3.6.1.5.5.7.48.1";

// { id-ad-ocsp, uri "x:b" }
constexpr char kEncoded[] = "30 0F 06 08 2B 06 01 05 05 07 30 01 86 03 78 3A 62";

CGeneralName url(wchar_t const* text) {
    CGeneralName name;
    name.put_uniformResourceIdentifier(text);
    return name;
}

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

    CAccessDescription read(kOcsp, url(L"x:b"));
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 03 06 01 2A")); }), 0x80093101u);
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 0C 06 01 2A A0 07 06 01 2A A0 02 05 00")); }),
              0x80070057u)
        << "an otherName";
    EXPECT_EQ(test::text(read.encode()), kEncoded);
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
    CAuthorityInfoAccessSyntax read{CAccessDescription(kOcsp, url(L"x:b"))};
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 00")); }), 0x80093101u);
    const CBlob encoded = blob("30 16 30 06 06 01 2A 86 01 79 30 0C 06 01 2A A0 07 06 01 2A A0 02 05 00");
    EXPECT_EQ(thrownCode([&] { read.decode(encoded); }), 0x80070057u);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(test::text(read.front().encode()), kEncoded);
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
