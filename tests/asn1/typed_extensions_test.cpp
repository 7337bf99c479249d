#include "asn1/typed_extensions.h"

#include <algorithm>
#include <utility>

#include "asn1/private_key_usage_period_traits.h"
#include "asn1/revocation_reason_traits.h"
#include "real_objects.h"
#include "value_test.h"

using test::parsed;

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

}  // namespace

TEST(TypedExtensions, WithoutArgumentsHaveTheirIdentifierAndNoValue) {
    const std::pair<CExtValue, char const*> rows[] = {{CExtCRLReason(), "2.5.29.21"},
                                                      {CExtHoldInstructionCode(), "2.5.29.23"},
                                                      {CExtInvalidityDate(), "2.5.29.24"},
                                                      {CExtCertificateIssuer(), "2.5.29.29"}};
    for (auto const& [value, oid] : rows) {
        EXPECT_STREQ(value.get_oid(), oid);
        EXPECT_EQ(value.get_value().cbData(), 0u);
        EXPECT_EQ(thrownCode([&] { CExtension(value, false).encode(); }), 0u) << "no value at all";
    }
    EXPECT_EQ(CExtCRLReason().get_reason(), unspecified);
    EXPECT_STREQ(CExtHoldInstructionCode().get_code(), "");
    EXPECT_EQ(CExtInvalidityDate().get_invalidityDate(), CDateTime(0, 0));
}

TEST(TypedExtensions, KeepMemberAndBlobInStep) {
    CExtCRLReason reason(cessationOfOperation);
    EXPECT_EQ(test::text(reason.get_value()), "0A 01 05");
    reason.put_reason(aACompromise);
    EXPECT_EQ(test::text(reason.get_value()), "0A 01 0A");
    EXPECT_EQ(CExtCRLReason(reason.get_value()).get_reason(), aACompromise);
    reason.value() = blob("0A 01 01");
    EXPECT_EQ(reason.get_reason(), aACompromise) << "until decode()";
    reason.decode();
    EXPECT_EQ(reason.get_reason(), keyCompromise);
    reason.value().clear();
    reason.encode();
    EXPECT_EQ(test::text(CExtension(reason, false).encode()), "30 0A 06 03 55 1D 15 04 03 0A 01 01");

    CExtHoldInstructionCode code("1.2.840.10040.2.2");
    EXPECT_EQ(test::text(code.get_value()), "06 07 2A 86 48 CE 38 02 02");
    code.put_code(code.get_code());
    EXPECT_STREQ(CExtHoldInstructionCode(code.get_value()).get_code(), "1.2.840.10040.2.2");

    CExtInvalidityDate date(kLater);
    const CDateTime fraction(1709251198, 999999);  // stays in the member only
    date.put_invalidityDate(fraction);
    EXPECT_EQ(date.get_invalidityDate(), fraction);
    EXPECT_EQ(test::text(date.get_value()), kDateEncoded);
    EXPECT_EQ(CExtInvalidityDate(date.get_value()).get_invalidityDate(), kDate);

    CExtCertificateIssuer issuer(issuerNames());
    EXPECT_EQ(test::text(issuer.get_value()), "30 0C 82 0A 63 61 2E 65 78 61 6D 70 6C 65");
    issuer.put_issuer(issuer.get_issuer());
    EXPECT_STREQ(CExtCertificateIssuer(issuer.get_value()).get_issuer().front().get_dNSName(), L"ca.example");
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
    for (char const* other : {"", "0A 01 0B", "02 01 01", "0A 02 01"})
        EXPECT_EQ(thrownCode([&] { CExtCRLReason{blob(other)}; }), 0x80093101u) << other;
    EXPECT_EQ(thrownCode([] { CExtHoldInstructionCode{blob("04 01 2A")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CExtCertificateIssuer{blob("30 02 82 05")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CExtCertificateIssuer{blob("30 04 A0 02 05 00")}; }),
              0x80070057u);  // otherName
    EXPECT_EQ(thrownCode([] { CExtPrivateKeyUsagePeriod{blob("")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CExtInvalidityDate{blob("17 01 30")}; }), 0x80093101u);
    for (auto const& [first, code] : {std::pair('x', 0x8007076Du), {'0', 0x80004005u}}) {
        CBlob date = blob(kDateEncoded);
        date.pbData()[2] = static_cast<unsigned char>(first);  // no digit; the year 24
        EXPECT_EQ(thrownCode([&] { CExtInvalidityDate{date}; }), code) << first;
    }
    CExtCRLReason reason(superseded);
    reason.value() = blob("0A 01 0B");
    EXPECT_EQ(thrownCode([&] { reason.decode(); }), 0x80093101u);
    EXPECT_EQ(reason.get_reason(), superseded);
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

// Every real value comes back to its own bytes when it is built from its members; `same` tells whether the
// members are what libcrypto reads.
template <typename Extension, typename Member>
void expectEachComesBack(std::vector<test::RealExtension> const& found, Member (*member)(Extension const&),
                         bool (*same)(Extension const&, CBlob const&)) {
    for (auto const& real : found) {
        const Extension ours(real.value);
        EXPECT_EQ(Extension(member(ours)).get_value(), real.value) << real.file;
        EXPECT_TRUE(same(ours, real.value)) << real.file;
    }
}

TEST(RealExtensions, AreThoseOfLibcryptoAndComeBack) {
    const auto entries = test::entryExtensions();
    if (entries.empty()) GTEST_SKIP() << "no real revocation lists here";
    auto reasons = test::extensionsNamed(entries, "2.5.29.21");
    const auto unknown = std::stable_partition(reasons.begin(), reasons.end(), [](auto const& real) {
        const auto theirs = parsed(d2i_ASN1_ENUMERATED, ASN1_ENUMERATED_free, real.value);
        return ASN1_ENUMERATED_get(theirs.get()) <= 10;
    });
    for (auto refused = unknown; refused != reasons.end(); ++refused) {
        EXPECT_EQ(thrownCode([&] { CExtCRLReason{refused->value}; }), 0x80093101u) << refused->file;
    }
    reasons.erase(unknown, reasons.end());
    EXPECT_GT(reasons.size(), 4u);
    expectEachComesBack<CExtCRLReason, CrlReason>(
        reasons, [](auto const& ours) { return ours.get_reason(); },
        [](auto const& ours, auto const& value) {
            const auto theirs = parsed(d2i_ASN1_ENUMERATED, ASN1_ENUMERATED_free, value);
            return ASN1_ENUMERATED_get(theirs.get()) == static_cast<long>(ours.get_reason());
        });
    expectEachComesBack<CExtInvalidityDate, CDateTime>(
        test::extensionsNamed(entries, "2.5.29.24"),
        [](auto const& ours) { return ours.get_invalidityDate(); },
        [](auto const& ours, auto const& value) {
            const auto theirs = parsed(d2i_ASN1_GENERALIZEDTIME, ASN1_GENERALIZEDTIME_free, value);
            return dateText(&ours.get_invalidityDate()) == dateText(theirs.get());
        });
    expectEachComesBack<CExtHoldInstructionCode, char const*>(
        test::extensionsNamed(entries, "2.5.29.23"), [](auto const& ours) { return ours.get_code(); },
        [](auto const& ours, auto const& value) {
            return ours.get_code() == test::dotted(parsed(d2i_ASN1_OBJECT, ASN1_OBJECT_free, value).get());
        });
    expectEachComesBack<CExtCertificateIssuer, CGeneralNames>(
        test::extensionsNamed(entries, "2.5.29.29"), [](auto const& ours) { return ours.get_issuer(); },
        [](auto const& ours, auto const&) { return !ours.get_issuer().empty(); });
    for (auto const& real : test::extensionsNamed(test::certificateExtensions(), "2.5.29.16")) {
        const auto theirs = parsed(d2i_PKEY_USAGE_PERIOD, PKEY_USAGE_PERIOD_free, real.value);
        const CExtPrivateKeyUsagePeriod ours(real.value);
        EXPECT_EQ(dateText(ours.get_notBefore()), dateText(theirs->notBefore)) << real.file;
        EXPECT_EQ(dateText(ours.get_notAfter()), dateText(theirs->notAfter)) << real.file;
        EXPECT_EQ(ours.get_value(), real.value) << real.file;
    }
}
