#include "asn1/pki_status.h"

#include <openssl/ts.h>

#include "asn1/pki_status_traits.h"
#include "asn1/revocation_announcement.h"
#include "asn1/text_conversion.h"
#include "real_objects.h"
#include "value_test.h"

namespace {

CPKIStatusInfo refusal() {
    CPKIStatusInfo status(rejection);
    status.put_failureInfo(CPKIFailureInfo(0x5));
    status.put_statusString(CPKIFreeText(L"no", CLanguageTagDefaultRead()));
    return status;
}

CBlob octetsOf(CPKIFreeTextString const& text) {
    const std::string utf8 = tostring(text.get_value());
    return CBlob(reinterpret_cast<unsigned char const*>(utf8.data()), utf8.size());
}

void expectSame(CPKIStatusInfo const& left, CPKIStatusInfo const& right) {
    EXPECT_EQ(left.get_pkiStatus(), right.get_pkiStatus());
    EXPECT_EQ(left.get_failureInfo(), right.get_failureInfo());
    EXPECT_EQ(left.get_statusString(), right.get_statusString());
}

CRevAnnContent announcement() {
    return CRevAnnContent(revocationNotification, CCertId(url(L"ca:1"), integer("01 02")),
                          CDateTime("20240229120000.75Z"), CDateTime("20240101000000Z"));
}

constexpr char kAnnouncement[] =
    "30 31 02 01 05 30 0A 86 04 63 61 3A 31 02 02 01 02"
    "18 0F 32 30 32 34 30 32 32 39 31 32 30 30 30 30 5A 18 0F 32 30 32 34 30 31 30 31 30 30 30 30 30 30 5A";

}  // namespace

TEST(FailureInfo, EndsWithItsLastBit) {
    const std::pair<unsigned, char const*> rows[] = {
        {0, "03 01 00"},           {0x1, "03 02 07 80"},           {0x80, "03 02 00 01"},
        {0x100, "03 03 07 00 80"}, {0x10005, "03 04 07 A0 00 80"}, {0x80000000, "03 05 00 00 00 00 01"},
    };
    for (auto const& [value, encoded] : rows) {
        EXPECT_EQ(test::text(CPKIFailureInfo(value).encode()), encoded);
        CPKIFailureInfo read(0);
        read.decode(blob(encoded));
        EXPECT_EQ(read.get_value(), value);
    }
}

TEST(FailureInfo, DecodingAddsToTheBitsThatAreSet) {
    CPKIFailureInfo info(0x2);
    info.decode(blob("03 02 07 80"));
    EXPECT_EQ(info.get_value(), 0x3u);
    expectRefused(info, 0x80093101, {"03 06 00 00 00 00 00 80" /* 40 bits */, "04 01 80"});
}

TEST(FailureInfo, HasThirtyTwoBits) {
    CPKIFailureInfo info(0x1);
    info.put_bit(31, true);
    info.put_bit(0, false);
    EXPECT_EQ(info.get_value(), 0x80000000u);
    EXPECT_TRUE(info.get_bit(31));
    EXPECT_FALSE(info.get_bit(30));
    EXPECT_EQ(thrownCode([&] { info.put_bit(32, true); }), 0x80070057u);
    EXPECT_EQ(thrownCode([&] { info.get_bit(32); }), 0x80070057u);
}

TEST(StatusInfo, LeavesOutWhatItDoesNotHave) {
    EXPECT_EQ(test::text(CPKIStatusInfo(accepted).encode()), "30 03 02 01 00");
    EXPECT_EQ(test::text(refusal().encode()), "30 0D 02 01 02 30 04 0C 02 6E 6F 03 02 05 A0");
}

TEST(StatusInfo, DecodingReplacesEverything) {
    CPKIStatusInfo read = refusal();
    read.decode(CPKIStatusInfo(waiting).encode());
    expectSame(read, CPKIStatusInfo(waiting));
    read.decode(refusal().encode());
    expectSame(read, refusal());
}

TEST(StatusInfo, IsRefusedWithTheStatedCodeAndStays) {
    expectRefused(refusal(), 0x80093101, {"30 00"});
    expectRefused(refusal(), 0x8009310E, {"30 08 02 01 00 30 03 0C 01 80"});
    expectRefused(refusal(), 0x80070057, {"30 0A 02 01 00 30 05 0C 03 E0 B8 81"});
}

TEST(RevocationAnnouncement, ComesBackFromItsEncodingInWholeSeconds) {
    CRevAnnContent content = announcement();
    EXPECT_EQ(content.encode(), blob(kAnnouncement));
    const CExtensions none;
    content.put_crlDetails(&none);
    EXPECT_EQ(content.encode(), blob(kAnnouncement)) << "no extensions are left out";
    const CExtensions details{CExtension(CExtValue("1.2.3", blob("05 00")), true)};
    content.put_crlDetails(&details);

    CRevAnnContent read;
    read.decode(content.encode());
    EXPECT_EQ(read.get_status(), revocationNotification);
    EXPECT_STREQ(read.get_certId().get_issuer().get_uniformResourceIdentifier(), L"ca:1");
    EXPECT_EQ(test::text(read.get_certId().get_serialNumber()), "01 02");
    EXPECT_EQ(read.get_willBeRevokedAt(), CDateTime("20240229120000Z"));
    EXPECT_EQ(read.get_badSinceDate(), CDateTime("20240101000000Z"));
    ASSERT_NE(read.get_crlDetails(), nullptr);
    EXPECT_EQ(*read.get_crlDetails(), details);
    read.decode(blob(kAnnouncement));
    EXPECT_EQ(read.get_crlDetails(), nullptr);
}

TEST(RevocationAnnouncement, ANewOneHasNoName) {
    EXPECT_EQ(thrownCode([] { CRevAnnContent().encode(); }), 0x80070057u);
    EXPECT_EQ(CRevAnnContent().get_badSinceDate(), CDateTime(0, 0));
}

// Every time-stamp response's status, as libcrypto finds it.
TEST(RealStatusInfo, OfTimeStampResponsesIsAsLibcryptoReadsIt) {
    std::size_t read = 0;
    for (auto const& path : test::vectorFiles("tsp")) {
        const test::Octets message = test::readFile(path);
        const auto response = test::parsed(d2i_TS_RESP, TS_RESP_free, message.data(), message.size());
        if (!response) continue;
        TS_STATUS_INFO const* const expected = TS_RESP_get_status_info(response.get());
        const CBlob encoded = test::writtenBy(i2d_TS_STATUS_INFO, expected);
        SCOPED_TRACE(path.filename().string());
        CPKIStatusInfo status(waiting);
        ASSERT_EQ(thrownCode([&] { status.decode(encoded); }), 0u);
        EXPECT_EQ(status.get_pkiStatus(), ASN1_INTEGER_get(TS_STATUS_INFO_get0_status(expected)));
        ASN1_BIT_STRING const* const bits = TS_STATUS_INFO_get0_failure_info(expected);
        for (unsigned i = 0; i < 32; ++i) {
            EXPECT_EQ(status.get_failureInfo().get_bit(i),
                      bits != nullptr && ASN1_BIT_STRING_get_bit(bits, static_cast<int>(i)) != 0);
        }
        int index = 0;
        for (auto const& text : status.get_statusString()) {
            EXPECT_EQ(test::blobOf(sk_ASN1_UTF8STRING_value(TS_STATUS_INFO_get0_text(expected), index++)),
                      octetsOf(text));
        }
        EXPECT_EQ(index, std::max(0, sk_ASN1_UTF8STRING_num(TS_STATUS_INFO_get0_text(expected))));
        EXPECT_EQ(status.encode(), encoded);
        ++read;
    }
    if (read == 0) GTEST_SKIP() << "no real time-stamp responses here";
}
