#include "ocsp/ocsp_extensions.h"

#include <openssl/ocsp.h>
#include <openssl/x509v3.h>

#include <string>
#include <utility>

#include "asn1/object_identifier_text.h"
#include "asn1data/object_identifiers.h"
#include "libcrypto_extension.h"
#include "ocsp_test.h"

namespace Mirvane::PKI::OCSP {
namespace {

constexpr char kUrl[] = "http://ca.example/list.crl";
const CDateTime kDate("20240229235958Z");
const CDateTime kDateWithFraction(1709251198, 999999);

// CN=CA.
constexpr char kName[] = "30 0D 31 0B 30 09 06 03 55 04 03 13 02 43 41";
// One description: OCSP, and the address "a".
constexpr char kAccess[] = "30 0F 30 0D 06 08 2B 06 01 05 05 07 30 01 86 01 61";

ASN1::CGeneralName urlName(wchar_t const* url) {
    ASN1::CGeneralName name;
    name.put_uniformResourceIdentifier(url);
    return name;
}

ASN1::CAuthorityInfoAccessSyntax access(wchar_t const* url) {
    return {ASN1::CAccessDescription("1.3.6.1.5.5.7.48.1", urlName(url))};
}

ASN1::CCRLDistPointsSyntax places(wchar_t const* url) {
    const ASN1::CDistributionPointName name(ASN1::CGeneralNames{urlName(url)});
    ASN1::CDistributionPoint point;
    point.put_distributionPoint(&name);
    return {point};
}

// The value of an extension that libcrypto made, after a look at its identifier.
CBlob theirs(X509_EXTENSION* made, char const* oid) {
    const auto extension = test::owned(made, X509_EXTENSION_free);
    const ASN1::CExtension read = test::extensionOf(extension.get());
    EXPECT_STREQ(read.get_oid(), oid);
    return read.get_extnValue();
}

template <typename Extension>
void expectEmpty(char const* oid, ASN1OBJID const& registered) {
    const Extension extension;
    EXPECT_STREQ(extension.get_oid(), oid);
    EXPECT_STREQ(ASN1::toOID(registered).c_str(), oid);
    EXPECT_EQ(extension.get_value().cbData(), 0u) << oid;
}

TEST(OcspExtensions, WithoutArgumentsHaveTheirIdentifierAndNoValue) {
    using namespace asn1data;
    expectEmpty<CExtNonce>("1.3.6.1.5.5.7.48.1.2", id_pkix_ocsp_nonce);
    expectEmpty<CExtCrlID>("1.3.6.1.5.5.7.48.1.3", id_pkix_ocsp_crl);
    expectEmpty<CExtAcceptableResponses>("1.3.6.1.5.5.7.48.1.4", id_pkix_ocsp_response);
    expectEmpty<CExtArchiveCutoff>("1.3.6.1.5.5.7.48.1.6", id_pkix_ocsp_archive_cutoff);
    expectEmpty<CExtServiceLocator>("1.3.6.1.5.5.7.48.1.7", id_pkix_ocsp_service_locator);
    expectEmpty<CExtCRLLocator>("1.2.643.2.2.47.2", id_Mirvane_ocsp_crl_locator);
    expectEmpty<CExtInstantRevocationIndicator>("1.2.643.2.2.47.3",
                                                id_Mirvane_ocsp_instant_revocation_indicator);
    expectEmpty<CExtRevocationAnnouncementReference>("1.2.643.2.2.47.4",
                                                     id_Mirvane_ocsp_revocation_announcement_reference);
    expectEmpty<CExtHistoricalRequest>("1.2.643.2.2.47.5", id_Mirvane_ocsp_historical_request);

    EXPECT_EQ(CExtArchiveCutoff().get_archiveCutoff(), CDateTime("19700101000000Z"));
    const CExtCrlID list;
    EXPECT_TRUE(!list.get_crlUrl() && !list.get_crlNum() && !list.get_crlTime());
    const CExtServiceLocator service;
    EXPECT_TRUE(service.get_issuer().cbData() == 0 && !service.get_locator());
}

TEST(OcspExtensions, OpaqueValuesAreTheBytesAsGiven) {
    const CBlob bytes = blob("04 02 01");  // no whole encoding of anything
    CExtNonce nonce(bytes);
    EXPECT_EQ(nonce.get_nonce(), bytes);
    nonce.put_nonce(blob("AA"));
    nonce.put_nonce(nonce.get_nonce());
    EXPECT_EQ(text(nonce.get_value()), "AA");
    EXPECT_EQ(CExtInstantRevocationIndicator(bytes).get_value(), bytes);
    EXPECT_EQ(CExtRevocationAnnouncementReference(bytes).get_value(), bytes);
}

TEST(CrlIdExtensions, EveryChoiceOfFieldsIsLibcryptosAndComesBack) {
    std::string url = kUrl;
    std::string time = "20240229235958Z";
    long theirNumber = 70000;
    const unsigned ourNumber = 70000;
    for (unsigned fields = 0; fields < 8; ++fields) {
        const bool withUrl = fields & 1;
        const bool withNumber = fields & 2;
        const bool withTime = fields & 4;
        const CBlob expected =
            theirs(OCSP_crlID_new(withUrl ? url.data() : nullptr, withNumber ? &theirNumber : nullptr,
                                  withTime ? time.data() : nullptr),
                   "1.3.6.1.5.5.7.48.1.3");
        CExtCrlID written;
        written.put_crlUrl(withUrl ? kUrl : nullptr);
        written.put_crlNum(withNumber ? &ourNumber : nullptr);
        written.put_crlTime(withTime ? &kDate : nullptr);
        EXPECT_EQ(written.get_value(), expected) << fields;

        const CExtCrlID read(expected);
        EXPECT_EQ(read.get_value(), expected);
        EXPECT_STREQ(read.get_crlUrl(), withUrl ? kUrl : nullptr);
        ASSERT_EQ(read.get_crlNum() != nullptr, withNumber);
        if (withNumber) {
            EXPECT_EQ(*read.get_crlNum(), 70000u);
        }
        ASSERT_EQ(read.get_crlTime() != nullptr, withTime);
        if (withTime) {
            EXPECT_EQ(*read.get_crlTime(), kDate);
        }

        const CExtHistoricalRequest request(expected);
        EXPECT_EQ(request.get_value(), expected);
        EXPECT_STREQ(request.get_oid(), "1.2.643.2.2.47.5");
        EXPECT_STREQ(request.get_crlUrl(), read.get_crlUrl());
    }
}

TEST(CrlIdExtensions, RemovingTheLastFieldLeavesAnEmptySequence) {
    const unsigned number = 5;
    CExtHistoricalRequest request;
    request.put_crlNum(&number);
    EXPECT_EQ(text(request.get_value()), "30 05 A1 03 02 01 05");
    request.put_crlNum(nullptr);
    EXPECT_EQ(text(request.get_value()), "30 00");
}

TEST(CrlIdExtensions, SignsAndFractionsAreNotKeptAlike) {
    const std::pair<unsigned, char const*> rows[] = {{0x7FFFFFFF, "30 08 A1 06 02 04 7F FF FF FF"},
                                                     {0x80000000, "30 08 A1 06 02 04 80 00 00 00"},
                                                     {0xFFFFFFFF, "30 05 A1 03 02 01 FF"}};
    for (auto const& [number, encoded] : rows) {
        CExtCrlID list;
        list.put_crlNum(&number);
        EXPECT_EQ(text(list.get_value()), encoded) << "signed on the wire only";
        EXPECT_EQ(*CExtCrlID(list.get_value()).get_crlNum(), number);
    }
    EXPECT_EQ(thrownCode([] { CExtCrlID{blob("30 09 A1 07 02 05 00 80 00 00 00")}; }), kAsn1);
    CExtCrlID list;
    list.put_crlTime(&kDateWithFraction);
    EXPECT_EQ(*list.get_crlTime(), kDateWithFraction) << "a fraction stays in the field only";
    EXPECT_EQ(*CExtCrlID(list.get_value()).get_crlTime(), kDate);
}

TEST(CrlIdExtensions, AFieldMayBePutIntoItselfAndACopyEncodesNothing) {
    const unsigned number = 1;
    CExtCrlID list;
    list.put_crlUrl(kUrl);
    list.put_crlNum(&number);
    list.put_crlTime(&kDate);
    const CBlob before = list.get_value();
    list.put_crlUrl(list.get_crlUrl());
    list.put_crlNum(list.get_crlNum());
    list.put_crlTime(list.get_crlTime());
    EXPECT_EQ(list.get_value(), before);
    list.put_crlUrl(list.get_crlUrl() + 7);
    EXPECT_STREQ(list.get_crlUrl(), "ca.example/list.crl");
    list.value() = blob("01");
    const CExtCrlID copy(list);
    EXPECT_EQ(text(copy.get_value()), "01");
    EXPECT_STREQ(copy.get_crlUrl(), "ca.example/list.crl");
}

TEST(AcceptableResponses, AreLibcryptosAndComeBack) {
    char const* names[] = {"basicOCSPResponse", "1.3.6.1.5.5.7.48.1.2", nullptr};
    const CBlob expected =
        theirs(OCSP_accept_responses_new(const_cast<char**>(names)), "1.3.6.1.5.5.7.48.1.4");
    const CExtAcceptableResponses written(CStringList{"1.3.6.1.5.5.7.48.1.1", "1.3.6.1.5.5.7.48.1.2"});
    EXPECT_EQ(written.get_value(), expected);
    const CExtAcceptableResponses read(expected);
    ASSERT_EQ(read.get_acceptableResponses().size(), 2u);
    EXPECT_STREQ(read.get_acceptableResponses().front().c_str(), "1.3.6.1.5.5.7.48.1.1");
    EXPECT_STREQ(read.get_acceptableResponses().back().c_str(), "1.3.6.1.5.5.7.48.1.2");
    EXPECT_EQ(text(CExtAcceptableResponses(CStringList()).get_value()), "30 00") << "an empty list";
    EXPECT_TRUE(CExtAcceptableResponses(blob("30 00")).get_acceptableResponses().empty());
}

TEST(AcceptableResponses, DecodeAppends) {
    CExtAcceptableResponses responses(CStringList{"1.2.3"});
    responses.value() = blob("30 04 06 02 2A 04");
    responses.decode();
    ASSERT_EQ(responses.get_acceptableResponses().size(), 2u);
    EXPECT_STREQ(responses.get_acceptableResponses().back().c_str(), "1.2.4");
    EXPECT_EQ(text(responses.get_value()), "30 04 06 02 2A 04");
    responses.encode();
    EXPECT_EQ(text(responses.get_value()), "30 08 06 02 2A 03 06 02 2A 04");
    responses.put_acceptableResponses(responses.get_acceptableResponses());
    EXPECT_EQ(text(responses.get_value()), "30 08 06 02 2A 03 06 02 2A 04");
}

TEST(ArchiveCutoff, IsLibcryptosAndComesBack) {
    std::string time = "20240229235958Z";
    const CBlob expected = theirs(OCSP_archive_cutoff_new(time.data()), "1.3.6.1.5.5.7.48.1.6");
    EXPECT_EQ(CExtArchiveCutoff(kDate).get_value(), expected);
    EXPECT_EQ(CExtArchiveCutoff(expected).get_archiveCutoff(), kDate);

    CExtArchiveCutoff cutoff;
    cutoff.put_archiveCutoff(kDateWithFraction);
    EXPECT_EQ(cutoff.get_value(), expected) << "the fraction is cut off";
    EXPECT_EQ(cutoff.get_archiveCutoff(), kDateWithFraction);
    cutoff.decode();
    EXPECT_EQ(cutoff.get_archiveCutoff(), kDate);
}

TEST(ServiceLocator, IsLibcryptosAndComesBack) {
    const auto name = test::owned(X509_NAME_new(), X509_NAME_free);
    X509_NAME_add_entry_by_txt(name.get(), "CN", MBSTRING_UTF8, reinterpret_cast<unsigned char const*>("CA"),
                               -1, -1, 0);
    unsigned char const* encodedName = nullptr;
    std::size_t size = 0;
    ASSERT_EQ(X509_NAME_get0_der(name.get(), &encodedName, &size), 1);
    char const* urls[] = {"http://a.example", "http://b.example", nullptr};
    const CBlob expected = theirs(OCSP_url_svcloc_new(name.get(), urls), "1.3.6.1.5.5.7.48.1.7");

    const CExtServiceLocator read(expected);
    EXPECT_EQ(read.get_value(), expected);
    EXPECT_EQ(read.get_issuer(), CBlob(encodedName, size));
    ASSERT_TRUE(read.get_locator());
    ASSERT_EQ(read.get_locator()->size(), 2u);
    EXPECT_STREQ(read.get_locator()->back().get_accessLocation().get_uniformResourceIdentifier(),
                 L"http://b.example");

    CExtServiceLocator written;
    written.put_issuer(read.get_issuer());
    written.put_locator(read.get_locator());
    EXPECT_EQ(written.get_value(), expected);
    written.put_issuer(written.get_issuer());
    written.put_locator(written.get_locator());
    EXPECT_EQ(written.get_value(), expected) << "its own members";
}

TEST(ServiceLocator, ALocatorWaitsForTheIssuer) {
    const auto locator = access(L"a");
    CExtServiceLocator service;
    service.put_locator(&locator);
    EXPECT_EQ(service.get_value().cbData(), 0u);
    EXPECT_EQ(thrownCode([&] { service.encode(); }), kAsn1);
    service.put_issuer(blob(kName));
    EXPECT_EQ(text(service.get_value()), std::string("30 20 ") + kName + " " + kAccess);
    service.put_locator(nullptr);
    EXPECT_EQ(text(service.get_value()), std::string("30 0F ") + kName);
    EXPECT_EQ(CExtServiceLocator(service.get_value()).get_locator(), nullptr);
    const ASN1::CAuthorityInfoAccessSyntax none;
    service.put_locator(&none);
    EXPECT_EQ(text(service.get_value()), std::string("30 0F ") + kName) << "left out";
}

TEST(ServiceLocator, DecodeReplacesBothMembersAndWritesDer) {
    const auto locator = access(L"a");
    CExtServiceLocator service;
    service.put_issuer(blob("30 00"));
    service.put_locator(&locator);
    service.value() = blob(std::string("30 80 ") + kName + " " + kAccess + " 00 00 FF");
    service.decode();
    EXPECT_EQ(text(service.get_issuer()), kName);
    ASSERT_TRUE(service.get_locator());
    EXPECT_EQ(text(service.get_value()), std::string("30 20 ") + kName + " " + kAccess);

    service.value() = blob("30 02 30 00");
    service.decode();
    EXPECT_EQ(text(service.get_issuer()), "30 00");
    EXPECT_FALSE(service.get_locator());
}

TEST(ServiceLocator, ALocatorOfAnotherKindLeavesTheIssuer) {
    CExtServiceLocator service;
    service.value() =
        blob("30 19 30 00 30 15 30 13 06 08 2B 06 01 05 05 07 30 01 A0 07 06 01 2A A0 02 05 00");
    EXPECT_EQ(thrownCode([&] { service.decode(); }), kInvalidArgument) << "an otherName";
    EXPECT_EQ(text(service.get_issuer()), "30 00");
    EXPECT_FALSE(service.get_locator());
    EXPECT_EQ(text(service.get_value()), "30 02 30 00");
}

TEST(ServiceLocator, AnIssuerThatIsNoNameLeavesTheOldBlob) {
    CExtServiceLocator service;
    service.put_issuer(blob(kName));
    const CBlob before = service.get_value();
    EXPECT_EQ(thrownCode([&] { service.put_issuer(blob("04 00")); }), kAsn1);
    EXPECT_EQ(text(service.get_issuer()), "04 00");
    EXPECT_EQ(service.get_value(), before);
    EXPECT_EQ(thrownCode([&] { service.put_issuer(CBlob()); }), kAsn1);
    const auto locator = access(L"a");
    EXPECT_EQ(thrownCode([&] { service.put_locator(&locator); }), 0u) << "waits for an issuer again";
    EXPECT_EQ(service.get_value(), before);
}

TEST(CrlLocator, IsLibcryptosAndComesBack) {
    const CBlob expected =
        theirs(X509V3_EXT_conf_nid(nullptr, nullptr, NID_crl_distribution_points, "URI:http://a.example"),
               "2.5.29.31");
    EXPECT_EQ(CExtCRLLocator(places(L"http://a.example")).get_value(), expected);
    const CExtCRLLocator read(expected);
    EXPECT_EQ(read.get_value(), expected);
    ASSERT_EQ(read.get_distributionPoints().size(), 1u);

    CExtCRLLocator copy(read);
    copy.put_distributionPoints(places(L"b"));
    EXPECT_EQ(read.get_value(), expected);
    EXPECT_EQ(read.get_distributionPoints(), places(L"http://a.example"));
    copy.put_distributionPoints(copy.get_distributionPoints());
    EXPECT_EQ(copy.get_value(), CExtCRLLocator(places(L"b")).get_value());
    copy.value() = expected;
    copy.decode();
    EXPECT_EQ(copy.get_distributionPoints(), read.get_distributionPoints());
}

TEST(OcspExtensions, ABlobThatDoesNotDecodeIsRefused) {
    for (char const* other : {"", "05 00", "30", "30 02 04 00", "30 03 06 02 2A"}) {
        EXPECT_EQ(thrownCode([&] { CExtCrlID{blob(other)}; }), kAsn1) << other;
        EXPECT_EQ(thrownCode([&] { CExtHistoricalRequest{blob(other)}; }), kAsn1) << other;
        EXPECT_EQ(thrownCode([&] { CExtAcceptableResponses{blob(other)}; }), kAsn1) << other;
        EXPECT_EQ(thrownCode([&] { CExtArchiveCutoff{blob(other)}; }), kAsn1) << other;
        EXPECT_EQ(thrownCode([&] { CExtServiceLocator{blob(other)}; }), kAsn1) << other;
        EXPECT_EQ(thrownCode([&] { CExtCRLLocator{blob(other)}; }), kAsn1) << other;
    }
    EXPECT_EQ(thrownCode([] { CExtServiceLocator{blob("30 00")}; }), kAsn1) << "no issuer";
    EXPECT_EQ(thrownCode([] { CExtServiceLocator{blob("30 04 30 00 30 00")}; }), kAsn1) << "no descriptions";
    EXPECT_EQ(thrownCode([] { CExtCRLLocator{blob("30 00")}; }), kAsn1) << "no points";
}

TEST(OcspExtensions, ATimeThatIsNoneIsToldApart) {
    EXPECT_EQ(thrownCode([] { CExtArchiveCutoff{blob("18 04 32 30 32 78")}; }), 0x8007076Du) << "no digit";
    EXPECT_EQ(thrownCode([] { CExtArchiveCutoff{blob("18 02 32 30")}; }), kGeneral) << "no date";
    EXPECT_EQ(thrownCode([] { CExtCrlID{blob("30 08 A2 06 18 04 32 30 32 78")}; }), 0x8007076Du);
    EXPECT_EQ(thrownCode([] { CExtCrlID{blob("30 06 A2 04 18 02 32 30")}; }), kGeneral);
}

TEST(OcspExtensions, AMemberThatDoesNotEncodeLeavesTheOldBlob) {
    const CDateTime outside(1000000000000LL, 0);
    CExtAcceptableResponses responses(CStringList{"1.2.3"});
    EXPECT_EQ(thrownCode([&] { responses.put_acceptableResponses({"1.2", "one"}); }), kInvalidArgument);
    EXPECT_EQ(responses.get_acceptableResponses().size(), 2u);
    EXPECT_EQ(text(responses.get_value()), "30 04 06 02 2A 03");
    EXPECT_EQ(thrownCode([&] { responses.put_acceptableResponses({"1.40"}); }), kAsn1);

    CExtArchiveCutoff cutoff(kDate);
    const CBlob before = cutoff.get_value();
    EXPECT_EQ(thrownCode([&] { cutoff.put_archiveCutoff(outside); }), kInvalidArgument);
    EXPECT_EQ(cutoff.get_value(), before);

    CExtCrlID list;
    EXPECT_EQ(thrownCode([&] { list.put_crlTime(&outside); }), kInvalidArgument);
    EXPECT_EQ(list.get_value().cbData(), 0u);

    CExtCRLLocator locator(places(L"a"));
    EXPECT_EQ(thrownCode([&] { locator.put_distributionPoints({}); }), kAsn1);
    EXPECT_EQ(locator.get_value(), CExtCRLLocator(places(L"a")).get_value());
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
