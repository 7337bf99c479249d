#include "asn1/access_description.h"

#include <gtest/gtest.h>

#include "asn1/text_conversion.h"
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

TEST(AccessDescription, IsEqualInMethodAndTheFirstCharacterOfTheUrl) {
    const CAccessDescription first(kOcsp, url(L"http://a"));
    EXPECT_EQ(first, CAccessDescription(kOcsp, url(L"https://b")));
    EXPECT_NE(first, CAccessDescription(kOcsp, url(L"ldap://a")));
    EXPECT_NE(first, CAccessDescription("1.3.6.1.5.5.7.48.2", url(L"http://a")));
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

TEST(AuthorityInfoAccess, AnEmptyListIsRefusedBothWays) {
    EXPECT_EQ(thrownCode([] { CAuthorityInfoAccessSyntax().encode(); }), 0x80093101u);
    CAuthorityInfoAccessSyntax read{CAccessDescription(kOcsp, url(L"a"))};
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 00")); }), 0x80093101u);
    EXPECT_EQ(read.size(), 1u);
}

TEST(AuthorityInfoAccess, AListWithAnUnsupportedLocationIsRefusedAndStays) {
    CAuthorityInfoAccessSyntax read{CAccessDescription(kOcsp, url(L"x:b"))};
    const CBlob encoded = blob("30 16 30 06 06 01 2A 86 01 79 30 0C 06 01 2A A0 07 06 01 2A A0 02 05 00");
    EXPECT_EQ(thrownCode([&] { read.decode(encoded); }), 0x80070057u);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(test::text(read.front().encode()), kEncoded);
}

TEST(RealAccessDescriptions, AreThoseOfLibcryptoAndComeBack) {
    const auto extensions = test::extensionsNamed(test::certificateExtensions(), "1.3.6.1.5.5.7.1.1");
    if (extensions.empty()) GTEST_SKIP() << "no real access descriptions here";
    for (const auto& real : extensions) {
        unsigned char const* data = real.value.pbData();
        const std::unique_ptr<AUTHORITY_INFO_ACCESS, decltype(&AUTHORITY_INFO_ACCESS_free)> theirs(
            d2i_AUTHORITY_INFO_ACCESS(nullptr, &data, static_cast<long>(real.value.cbData())),
            &AUTHORITY_INFO_ACCESS_free);
        CAuthorityInfoAccessSyntax ours;
        ours.decode(real.value);
        ASSERT_EQ(static_cast<int>(ours.size()), sk_ACCESS_DESCRIPTION_num(theirs.get())) << real.file;
        int index = 0;
        for (const CAccessDescription& our : ours) {
            ACCESS_DESCRIPTION const* const their = sk_ACCESS_DESCRIPTION_value(theirs.get(), index++);
            EXPECT_EQ(our.get_accessMethod(), test::dotted(their->method)) << real.file;
            if (their->location->type != GEN_URI) continue;
            const CBlob text = test::blobOf(their->location->d.uniformResourceIdentifier);
            EXPECT_EQ(tostring(our.get_accessLocation().get_uniformResourceIdentifier()),
                      std::string(reinterpret_cast<char const*>(text.pbData()), text.cbData()));
        }
        EXPECT_EQ(test::text(ours.encode()), test::text(real.value)) << real.file;
    }
}
