#include "asn1/pki_status.h"

#include <gtest/gtest.h>
#include <openssl/ts.h>

#include "asn1/bridge.h"
#include "asn1/pki_status_traits.h"
#include "asn1/revocation_announcement.h"
#include "asn1/text_conversion.h"
#include "asn1data/cmp.h"
#include "real_objects.h"
#include "support/blobs.h"
#include "support/failures.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;
using test::thrownCode;

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
    CGeneralName issuer;
    issuer.put_uniformResourceIdentifier(L"ca:1");
    const unsigned char serial[] = {0x01, 0x02};
    return CRevAnnContent(revocationNotification, CCertId(issuer, CBigInteger(serial, sizeof serial)),
                          CDateTime("20240229120000.75Z"), CDateTime("20240101000000Z"));
}

constexpr char kAnnouncement[] =
    "30 31 02 01 05 30 0A 86 04 63 61 3A 31 02 02 01 02"
    "18 0F 32 30 32 34 30 32 32 39 31 32 30 30 30 30 5A 18 0F 32 30 32 34 30 31 30 31 30 30 30 30 30 30 5A";

}  // namespace

TEST(FailureInfo, EndsWithItsLastBit) {
    struct Row {
        unsigned value;
        char const* encoded;
    };
    const Row rows[] = {
        {0, "03 01 00"},           {0x1, "03 02 07 80"},           {0x80, "03 02 00 01"},
        {0x100, "03 03 07 00 80"}, {0x10005, "03 04 07 A0 00 80"}, {0x80000000, "03 05 00 00 00 00 01"},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(test::text(CPKIFailureInfo(row.value).encode()), row.encoded);
        CPKIFailureInfo read(0);
        read.decode(blob(row.encoded));
        EXPECT_EQ(read.get_value(), row.value);
    }
}

TEST(FailureInfo, DecodingAddsToTheBitsThatAreSet) {
    CPKIFailureInfo info(0x2);
    info.decode(blob("03 02 07 80"));
    EXPECT_EQ(info.get_value(), 0x3u);
    EXPECT_EQ(thrownCode([&] { info.decode(blob("03 06 00 00 00 00 00 80")); }), 0x80093101u) << "40 bits";
    EXPECT_EQ(thrownCode([&] { info.decode(blob("04 01 80")); }), 0x80093101u);
    EXPECT_EQ(info.get_value(), 0x3u);
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
    CPKIStatusInfo read = refusal();
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 00")); }), 0x80093101u);
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 08 02 01 00 30 03 0C 01 80")); }), 0x8009310Eu);
    EXPECT_EQ(thrownCode([&] { read.decode(blob("30 0A 02 01 00 30 05 0C 03 E0 B8 81")); }), 0x80070057u);
    expectSame(read, refusal());
}

TEST(RevocationAnnouncement, ComesBackFromItsEncodingInWholeSeconds) {
    CRevAnnContent content = announcement();
    EXPECT_EQ(test::text(content.encode()), test::text(blob(kAnnouncement)));
    const CExtensions none;
    content.put_crlDetails(&none);
    EXPECT_EQ(test::text(content.encode()), test::text(blob(kAnnouncement))) << "no extensions are left out";
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
        const CBlob encoded = test::encodedBy(i2d_TS_STATUS_INFO, expected);
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

namespace {

struct MessageTraits
    : RecordTraits<asn1data::ASN1T_PKIMessage, asn1data::ASN1C_PKIMessage, asn1data::asn1Copy_PKIMessage> {
    using Value = CPKIStatusInfo;

    static void get(ASN1_T const& rec, CPKIStatusInfo& status) {
        switch (rec.body.t) {
            case asn1data::T_PKIBody_error:
                return ASN1T_PKIStatusInfo_traits::get(rec.body.u.error->pKIStatusInfo, status);
            case asn1data::T_PKIBody_kup:
                return firstResponse(*rec.body.u.kup, status);
            case asn1data::T_PKIBody_cp:
                return firstResponse(*rec.body.u.cp, status);
            case asn1data::T_PKIBody_ip:
                return firstResponse(*rec.body.u.ip, status);
        }
    }

  private:
    static void firstResponse(asn1data::ASN1T_CertRepMessage const& message, CPKIStatusInfo& status) {
        auto const* const first =
            static_cast<asn1data::ASN1T_CertResponse const*>(message.response.head->data);
        ASN1T_PKIStatusInfo_traits::get(first->status, status);
    }
};

}  // namespace

// Expected values are those that a dump of the messages shows.
TEST(RealStatusInfo, OfCertificateManagementMessagesIsRead) {
    struct Row {
        char const* file;
        PKIStatusEnum status;
        unsigned failures;
        wchar_t const* text;  // the start of it
    };
    const Row rows[] = {
        {"rustcrypto-failed_kur_rsp_01", rejection, 1u << 2, L"wrong certid"},
        {"ossl-cmp-280f933b7f", rejection, 1u << 1, L"CMP header protection check failed. (type: rr from: "},
        {"rustcrypto-kur_rsp_01", accepted, 0, nullptr},
        {"rustcrypto-p10cr_rsp_01", accepted, 0, nullptr},
        {"siemenscmp-raw-cmp-response-accept", accepted, 0, nullptr},
    };
    if (test::vectorFiles("cmp").empty()) GTEST_SKIP() << "no real messages here";
    for (auto const& row : rows) {
        SCOPED_TRACE(row.file);
        CBlob message;
        message.readFromFile((test::vectorsFolder() / "cmp" / (std::string(row.file) + ".pki.der")).c_str());
        CPKIStatusInfo status(keyUpdateWarning);
        ASSERT_EQ(thrownCode([&] { asn1Decode<MessageTraits>(message, status); }), 0u);
        EXPECT_EQ(status.get_pkiStatus(), row.status);
        EXPECT_EQ(status.get_failureInfo().get_value(), row.failures);
        EXPECT_EQ(status.get_statusString().size(), row.text != nullptr ? 1u : 0u);
        if (row.text == nullptr) continue;
        CPKIFreeTextString const& text = std::as_const(status).get_statusString();
        EXPECT_EQ(std::wstring(text.get_value()).rfind(row.text, 0), 0u);
        EXPECT_EQ(text.get_language(), CLanguageTagDefaultRead());
    }
}
