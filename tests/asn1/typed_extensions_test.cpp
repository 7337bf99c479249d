#include "asn1/typed_extensions.h"

#include <gtest/gtest.h>

#include <set>

#include "asn1/bridge.h"
#include "asn1/private_key_usage_period_traits.h"
#include "asn1/revocation_reason_traits.h"
#include "real_objects.h"
#include "support/blobs.h"
#include "support/failures.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;
using test::thrownCode;

namespace {

const CDateTime kDate("20240229235958Z");
const CDateTime kLater("20250101000000Z");

// GeneralizedTime 20240229235958Z.
constexpr char kDateEncoded[] = "18 0F 32 30 32 34 30 32 32 39 32 33 35 39 35 38 5A";

CGeneralNames issuerNames() {
    CGeneralName name;
    name.put_dNSName(L"ca.example");
    return {name};
}

std::string dateText(CDateTime const* date) {
    return date != nullptr ? date->tostring().c_str() : "absent";
}

// The same for a time of libcrypto.
std::string dateText(ASN1_TIME const* time) {
    if (time == nullptr) return "absent";
    std::tm fields{};
    ASN1_TIME_to_tm(time, &fields);
    char text[64];
    std::strftime(text, sizeof(text), "%d.%m.%Y %H:%M:%S", &fields);
    return text;
}

template <typename Object>
std::unique_ptr<Object, void (*)(Object*)> parsed(Object* (*read)(Object**, unsigned char const**, long),
                                                  void (*release)(Object*), CBlob const& value) {
    unsigned char const* data = value.pbData();
    return {read(nullptr, &data, static_cast<long>(value.cbData())), release};
}

}  // namespace

TEST(TypedExtensions, WithoutArgumentsHaveTheirIdentifierAndNoValue) {
    const CExtCRLReason reason;
    const CExtHoldInstructionCode code;
    const CExtInvalidityDate date;
    const CExtCertificateIssuer issuer;
    EXPECT_STREQ(reason.get_oid(), "2.5.29.21");
    EXPECT_STREQ(code.get_oid(), "2.5.29.23");
    EXPECT_STREQ(date.get_oid(), "2.5.29.24");
    EXPECT_STREQ(issuer.get_oid(), "2.5.29.29");
    for (CExtValue const* value :
         {static_cast<CExtValue const*>(&reason), static_cast<CExtValue const*>(&code),
          static_cast<CExtValue const*>(&date), static_cast<CExtValue const*>(&issuer)}) {
        EXPECT_EQ(value->get_value().cbData(), 0u);
    }
    EXPECT_EQ(reason.get_reason(), unspecified);
    EXPECT_STREQ(code.get_code(), "");
    EXPECT_EQ(date.get_invalidityDate(), CDateTime(0, 0));
    EXPECT_TRUE(issuer.get_issuer().empty());
}

TEST(TypedExtensions, KeepMemberAndBlobInStep) {
    CExtCRLReason reason(cessationOfOperation);
    EXPECT_EQ(test::text(reason.get_value()), "0A 01 05");
    reason.put_reason(aACompromise);
    EXPECT_EQ(test::text(reason.get_value()), "0A 01 0A");
    EXPECT_EQ(CExtCRLReason(reason.get_value()).get_reason(), aACompromise);

    CExtHoldInstructionCode code("1.2.840.10040.2.2");
    EXPECT_EQ(test::text(code.get_value()), "06 07 2A 86 48 CE 38 02 02");
    code.put_code(code.get_code());
    EXPECT_STREQ(CExtHoldInstructionCode(code.get_value()).get_code(), "1.2.840.10040.2.2");

    CExtInvalidityDate date(kLater);
    date.put_invalidityDate(kDate);
    EXPECT_EQ(test::text(date.get_value()), kDateEncoded);
    EXPECT_EQ(CExtInvalidityDate(date.get_value()).get_invalidityDate(), kDate);

    CExtCertificateIssuer issuer(issuerNames());
    EXPECT_EQ(test::text(issuer.get_value()), "30 0C 82 0A 63 61 2E 65 78 61 6D 70 6C 65");
    issuer.put_issuer(issuer.get_issuer());
    EXPECT_STREQ(CExtCertificateIssuer(issuer.get_value()).get_issuer().front().get_dNSName(), L"ca.example");
}

TEST(TypedExtensions, DecodeAndEncodeBringThemInStepAgain) {
    CExtCRLReason reason(superseded);
    reason.value() = blob("0A 01 01");
    EXPECT_EQ(reason.get_reason(), superseded);
    reason.decode();
    EXPECT_EQ(reason.get_reason(), keyCompromise);
    reason.value().clear();
    reason.encode();
    EXPECT_EQ(test::text(reason.get_value()), "0A 01 01");
}

TEST(TypedExtensions, AFractionStaysInTheMemberOnly) {
    const CDateTime fraction(1709251198, 999999);
    const CExtInvalidityDate date(fraction);
    EXPECT_EQ(test::text(date.get_value()), kDateEncoded);
    EXPECT_EQ(date.get_invalidityDate(), fraction);
}

TEST(TypedExtensions, AMemberThatDoesNotEncodeLeavesTheOldBlob) {
    CExtCRLReason reason(superseded);
    EXPECT_EQ(thrownCode([&] { reason.put_reason(static_cast<CrlReason>(11)); }), 0x80093101u);
    EXPECT_EQ(reason.get_reason(), 11u);
    EXPECT_EQ(test::text(reason.get_value()), "0A 01 04");

    CExtHoldInstructionCode code("1.2");
    EXPECT_EQ(thrownCode([&] { code.put_code("one"); }), 0x80070057u);
    EXPECT_STREQ(code.get_code(), "one");
    EXPECT_EQ(test::text(code.get_value()), "06 01 2A");
    EXPECT_EQ(thrownCode([&] { code.put_code("1.40"); }), 0x80093101u);

    CExtInvalidityDate date(kDate);
    EXPECT_EQ(thrownCode([&] { date.put_invalidityDate(CDateTime(1000000000000LL, 0)); }), 0x80070057u);
    EXPECT_EQ(test::text(date.get_value()), kDateEncoded);

    CExtCertificateIssuer issuer(issuerNames());
    EXPECT_EQ(thrownCode([&] { issuer.put_issuer({CGeneralName()}); }), 0x80070057u);
    EXPECT_EQ(issuer.get_issuer().front().get_type(), 0u);
    EXPECT_EQ(issuer.get_value().cbData(), 14u);
}

TEST(TypedExtensions, ABlobThatDoesNotDecodeIsRefused) {
    for (char const* other : {"", "0A 01 0B", "02 01 01", "0A 02 01"}) {
        EXPECT_EQ(thrownCode([&] { CExtCRLReason{blob(other)}; }), 0x80093101u) << other;
    }
    EXPECT_EQ(thrownCode([] { CExtHoldInstructionCode{blob("04 01 2A")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CExtCertificateIssuer{blob("30 02 82 05")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CExtCertificateIssuer{blob("30 04 A0 02 05 00")}; }), 0x80070057u)
        << "otherName";
    EXPECT_EQ(thrownCode([] { CExtInvalidityDate{blob("17 01 30")}; }), 0x80093101u);
    CBlob date = blob(kDateEncoded);
    date.pbData()[2] = 'x';
    EXPECT_EQ(thrownCode([&] { CExtInvalidityDate{date}; }), 0x8007076Du) << "no digit";
    date.pbData()[2] = '0';
    EXPECT_EQ(thrownCode([&] { CExtInvalidityDate{date}; }), 0x80004005u) << "no date: the year 24";
    EXPECT_EQ(thrownCode([] { CExtPrivateKeyUsagePeriod{blob("")}; }), 0x80093101u);

    CExtCRLReason reason(superseded);
    reason.value() = blob("0A 01 0B");
    EXPECT_EQ(thrownCode([&] { reason.decode(); }), 0x80093101u);
    EXPECT_EQ(reason.get_reason(), superseded);
}

TEST(TypedExtensions, TravelInAnExtension) {
    const CExtension extension(CExtCRLReason(keyCompromise), false);
    EXPECT_EQ(test::text(extension.encode()), "30 0A 06 03 55 1D 15 04 03 0A 01 01");
    EXPECT_EQ(thrownCode([] { CExtension(CExtCRLReason(), false).encode(); }), 0u) << "no value at all";
}

TEST(PrivateKeyUsagePeriod, EachEndMayBeAbsent) {
    EXPECT_EQ(test::text(CExtPrivateKeyUsagePeriod(nullptr, nullptr).get_value()), "30 00");
    for (CDateTime const* before : {static_cast<CDateTime const*>(nullptr), &kDate}) {
        for (CDateTime const* after : {static_cast<CDateTime const*>(nullptr), &kLater}) {
            const CExtPrivateKeyUsagePeriod written(before, after);
            EXPECT_STREQ(written.get_oid(), "2.5.29.16");
            const CExtPrivateKeyUsagePeriod read(written.get_value());
            EXPECT_EQ(read.get_value(), written.get_value());
            EXPECT_EQ(dateText(read.get_notBefore()), dateText(before));
            EXPECT_EQ(dateText(read.get_notAfter()), dateText(after));
        }
    }
    EXPECT_EQ(test::text(CExtPrivateKeyUsagePeriod(&kDate, nullptr).get_value()),
              std::string("30 11 80") + (kDateEncoded + 2));
}

TEST(PrivateKeyUsagePeriod, PutReplacesAndRemoves) {
    CExtPrivateKeyUsagePeriod period(&kDate, nullptr);
    period.put_notAfter(period.get_notBefore());
    period.put_notBefore(period.get_notBefore());
    EXPECT_EQ(period.get_value(), CExtPrivateKeyUsagePeriod(&kDate, &kDate).get_value());
    period.put_notBefore(nullptr);
    EXPECT_EQ(period.get_value(), CExtPrivateKeyUsagePeriod(nullptr, &kDate).get_value());
}

TEST(PrivateKeyUsagePeriod, DecodeReadsTheWholeBlobAndWritesItAnew) {
    // 20240229235958.5Z to 20250101000000Z, in a longer form of the length.
    const CBlob given = blob(
        "30 81 24 80 11 32 30 32 34 30 32 32 39 32 33 35 39 35 38 2E 35 5A"
        "81 0F 32 30 32 35 30 31 30 31 30 30 30 30 30 30 5A");
    CExtPrivateKeyUsagePeriod period(nullptr, nullptr);
    period.value() = given;
    period.decode();
    ASSERT_TRUE(period.get_notBefore() && period.get_notAfter());
    EXPECT_EQ(*period.get_notBefore(), CDateTime(1709251198, 500000));
    EXPECT_EQ(*period.get_notAfter(), kLater);
    EXPECT_EQ(period.get_value(), CExtPrivateKeyUsagePeriod(&kDate, &kLater).get_value());
}

TEST(PrivateKeyUsagePeriod, ADateThatDoesNotParseChangesNothing) {
    CExtPrivateKeyUsagePeriod period(&kDate, &kLater);
    const CBlob bad = blob("30 08 80 02 32 30 81 02 32 78");
    period.value() = bad;
    EXPECT_EQ(thrownCode([&] { period.decode(); }), 0x80004005u);
    EXPECT_EQ(*period.get_notBefore(), kDate);
    EXPECT_EQ(*period.get_notAfter(), kLater);
    EXPECT_EQ(period.get_value(), bad);
}

TEST(PrivateKeyUsagePeriod, CopiesAreIndependent) {
    const CExtPrivateKeyUsagePeriod source(&kDate, &kLater);
    CExtPrivateKeyUsagePeriod copy(source);
    copy.put_notAfter(nullptr);
    EXPECT_NE(copy.get_value(), source.get_value());
    EXPECT_EQ(*source.get_notAfter(), kLater);
    copy = source;
    EXPECT_EQ(copy.get_value(), source.get_value());
    EXPECT_NE(copy.get_notBefore(), source.get_notBefore());
    copy = *&copy;
    EXPECT_EQ(*copy.get_notBefore(), kDate);
}

class RealEntries : public ::testing::Test {
  protected:
    void SetUp() override {
        if (entries().empty()) GTEST_SKIP() << "no real revocation lists here";
    }
    static std::vector<test::RealExtensionList> const& entries() {
        static const auto lists = test::entryExtensions();
        return lists;
    }
};

TEST_F(RealEntries, ReasonsAreThoseOfLibcryptoAndComeBack) {
    std::set<unsigned> seen;
    for (const auto& real : test::extensionsNamed(entries(), "2.5.29.21")) {
        const auto theirs = parsed(d2i_ASN1_ENUMERATED, ASN1_ENUMERATED_free, real.value);
        ASSERT_TRUE(theirs) << real.file;
        const long number = ASN1_ENUMERATED_get(theirs.get());
        if (number > 10) {
            EXPECT_EQ(thrownCode([&] { CExtCRLReason{real.value}; }), 0x80093101u) << real.file;
            continue;
        }
        const CExtCRLReason ours(real.value);
        EXPECT_EQ(static_cast<long>(ours.get_reason()), number) << real.file;
        EXPECT_EQ(CExtCRLReason(ours.get_reason()).get_value(), real.value) << real.file;
        seen.insert(ours.get_reason());
    }
    EXPECT_GT(seen.size(), 4u);
}

TEST_F(RealEntries, InvalidityDatesAreThoseOfLibcryptoAndComeBack) {
    for (const auto& real : test::extensionsNamed(entries(), "2.5.29.24")) {
        const auto theirs = parsed(d2i_ASN1_GENERALIZEDTIME, ASN1_GENERALIZEDTIME_free, real.value);
        ASSERT_TRUE(theirs) << real.file;
        const CExtInvalidityDate ours(real.value);
        EXPECT_EQ(dateText(&ours.get_invalidityDate()), dateText(theirs.get())) << real.file;
        EXPECT_EQ(CExtInvalidityDate(ours.get_invalidityDate()).get_value(), real.value) << real.file;
    }
}

TEST_F(RealEntries, HoldInstructionsAreThoseOfLibcryptoAndComeBack) {
    for (const auto& real : test::extensionsNamed(entries(), "2.5.29.23")) {
        const auto theirs = parsed(d2i_ASN1_OBJECT, ASN1_OBJECT_free, real.value);
        ASSERT_TRUE(theirs) << real.file;
        const CExtHoldInstructionCode ours(real.value);
        EXPECT_EQ(ours.get_code(), test::dotted(theirs.get())) << real.file;
        EXPECT_EQ(CExtHoldInstructionCode(ours.get_code()).get_value(), real.value) << real.file;
    }
}

TEST_F(RealEntries, CertificateIssuersComeBack) {
    for (const auto& real : test::extensionsNamed(entries(), "2.5.29.29")) {
        const CExtCertificateIssuer ours(real.value);
        EXPECT_FALSE(ours.get_issuer().empty());
        EXPECT_EQ(CExtCertificateIssuer(ours.get_issuer()).get_value(), real.value) << real.file;
    }
}

TEST_F(RealEntries, UsagePeriodsOfCertificatesAreThoseOfLibcryptoAndComeBack) {
    for (const auto& real : test::extensionsNamed(test::certificateExtensions(), "2.5.29.16")) {
        const auto theirs = parsed(d2i_PKEY_USAGE_PERIOD, PKEY_USAGE_PERIOD_free, real.value);
        ASSERT_TRUE(theirs) << real.file;
        const CExtPrivateKeyUsagePeriod ours(real.value);
        EXPECT_EQ(dateText(ours.get_notBefore()), dateText(theirs->notBefore)) << real.file;
        EXPECT_EQ(dateText(ours.get_notAfter()), dateText(theirs->notAfter)) << real.file;
        EXPECT_EQ(ours.get_value(), real.value) << real.file;
    }
}
