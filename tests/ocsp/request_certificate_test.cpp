#include "ocsp/request_certificate.h"

#include <utility>

#include "asn1data/ocsp.h"
#include "asn1data/x509_matching.h"
#include "ocsp/made_certificates.h"
#include "ocsp_test.h"
#include "support/vectors.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using ASN1::CAlgorithmIdentifier;
using ASN1::CBigInteger;
using test::operator+;

CCertID someCertID() {
    return CCertID(CAlgorithmIdentifier("1.2.3"), blob("0A"), blob("0B"), CBigInteger(1));
}

CCertIdWithSignature someIdentifier() {
    return CCertIdWithSignature(blob("30 00"), CBigInteger(1), blob("0C"), CAlgorithmIdentifier("1.2.3"),
                                blob("0D"));
}

// One of version 1, for the holder of a name.
Octets attributeCertificate() {
    const Octets names = element(0x30, octets("82 01 61"));
    const Octets time = element(0x18, octets("32 30 32 36 30 31 30 31 30 30 30 30 30 30 5A"));
    const Octets algorithm = octets(kSha256WithRsa);
    return element(0x30, element(0x30, element(0xA1, names) + names + algorithm + octets("02 01 05") +
                                           element(0x30, time + time) + octets("30 00")) +
                             algorithm + octets("03 02 00 DE"));
}

// The DER of the choice, made through its record. Throws kAsn1 for a record that does not encode.
CBlob encoded(CReqCert const& value) {
    Encoder output;
    asn1data::ASN1T_ReqCert record;
    ASN1T_ReqCert_set(output, record, value);
    const int length = asn1data::asn1E_ReqCert(output, &record, ASN1EXPL);
    if (length < 0) failure::raise(failure::asn1);
    return CBlob(xe_getp(output), static_cast<unsigned long>(length));
}

// Puts what the bytes tell into `value`.
void decode(CBlob const& bytes, CReqCert& value) {
    ASN1BERDecodeBuffer buffer(bytes.pbData(), static_cast<int>(bytes.cbData()));
    asn1data::ASN1T_ReqCert record;
    asn1data::ASN1C_ReqCert control(buffer, record);
    if (control.Decode() < 0) failure::raise(failure::asn1);
    ASN1T_ReqCert_get(record, value);
}

CReqCert decoded(CBlob const& bytes) {
    CReqCert value;
    decode(bytes, value);
    return value;
}

// Which getters answer, in the order of the interface.
std::string answers(CReqCert const& value) {
    std::string result;
    if (value.get_certID()) result += "certID ";
    if (value.get_fullCert()) result += "fullCert ";
    if (value.get_fullCertType()) result += "type ";
    if (value.get_certIdWithSignature()) result += "signature ";
    return result;
}

TEST(ReqCert, HoldsExactlyOneChoiceAlsoAfterItWasCleared) {
    CReqCert value;
    EXPECT_EQ(answers(value), "certID ");
    EXPECT_TRUE(*value.get_certID() == CCertID());
    value.put_fullCert(CReqCert::attributeCertificate, CBlob());
    EXPECT_EQ(answers(value), "fullCert type ");
    EXPECT_EQ(*value.get_fullCertType(), CReqCert::attributeCertificate);
    value.put_certIdWithSignature(someIdentifier());
    EXPECT_EQ(answers(value), "signature ");
    value.put_certID(someCertID());
    EXPECT_EQ(answers(value), "certID ");
    value.clear();
    value.put_certID(someCertID());
    EXPECT_EQ(answers(value), "certID ");
    const CReqCert moved(std::move(value));
    value.put_fullCert(CReqCert::certificate, CBlob());
    EXPECT_EQ(answers(value), "fullCert type ");
    EXPECT_EQ(answers(CReqCert(someCertID())), "certID ");
    EXPECT_EQ(answers(CReqCert(CReqCert::certificate, CBlob())), "fullCert type ");
    EXPECT_EQ(answers(CReqCert(someIdentifier())), "signature ");
}

TEST(ReqCert, ArgumentMayBeAPartOfTheObject) {
    CReqCert value(someCertID());
    value.put_certID(*value.get_certID());
    EXPECT_TRUE(*value.get_certID() == someCertID());
    value.put_fullCert(CReqCert::certificate, value.get_certID()->get_issuerKeyHash());
    value.put_fullCert(*value.get_fullCertType(), *value.get_fullCert());
    EXPECT_EQ(text(*value.get_fullCert()), "0B");
    value.put_certIdWithSignature(someIdentifier());
    value.put_certIdWithSignature(*value.get_certIdWithSignature());
    EXPECT_TRUE(*value.get_certIdWithSignature() == someIdentifier());
}

TEST(ReqCertRecord, EachWayHasItsPlaceInTheEncoding) {
    const Octets certificate = octets(text(MadeCertificate().encoded()));
    const Octets attributes = attributeCertificate();
    const std::pair<CReqCert, Octets> rows[] = {
        {CReqCert(someCertID()), octets("30 0F 30 04 06 02 2A 03 04 01 0A 04 01 0B 02 01 00")},
        {CReqCert(CReqCert::certificate, blobFrom(certificate)), element(0xA0, element(0xA0, certificate))},
        {CReqCert(CReqCert::attributeCertificate, blobFrom(attributes)),
         element(0xA0, element(0xA1, attributes))},
        {CReqCert(someIdentifier()), octets("A1 19 30 17 30 05 30 00 02 01 00 03 02 00 0C "
                                            "30 0A 30 04 06 02 2A 03 03 02 00 0D")},
    };
    for (auto const& [value, expected] : rows) {
        EXPECT_EQ(text(encoded(value)), text(expected));
        const CReqCert read = decoded(blobFrom(expected));
        EXPECT_EQ(answers(read), answers(value));
        EXPECT_EQ(text(encoded(read)), text(expected));
    }
}

TEST(ReqCertRecord, FullCertificateThatIsNotDerComesBackAsDer) {
    // The certificate in the indefinite form, with the same inside.
    const Octets der = octets(text(MadeCertificate().encoded()));
    Octets indefinite = {0xA0, 0x80, 0xA0, 0x80, 0x30, 0x80};
    indefinite.insert(indefinite.end(), der.begin() + 3, der.end());
    indefinite.insert(indefinite.end(), 6, 0);
    const CReqCert read = decoded(blobFrom(indefinite));
    ASSERT_NE(read.get_fullCert(), nullptr);
    EXPECT_EQ(text(*read.get_fullCert()), text(der));
    EXPECT_EQ(*read.get_fullCertType(), CReqCert::certificate);
}

TEST(ReqCertRecord, BytesThatAreNoCertificateOfTheTypeFail) {
    const CBlob certificate = MadeCertificate().encoded();
    CBlob truncated = certificate;
    truncated.resize_to(certificate.cbData() - 1);
    for (CReqCert const& value :
         {CReqCert(CReqCert::certificate, CBlob()), CReqCert(CReqCert::certificate, blob("30 00")),
          CReqCert(CReqCert::certificate, truncated), CReqCert(CReqCert::attributeCertificate, CBlob()),
          CReqCert(CReqCert::attributeCertificate, certificate),
          CReqCert(CReqCert::certificate, blobFrom(attributeCertificate()))}) {
        LiveContext context;
        asn1data::ASN1T_ReqCert record;
        EXPECT_EQ(thrownCode([&] { ASN1T_ReqCert_set(context, record, value); }), kAsn1);
    }
}

TEST(ReqCertRecord, UnknownTypeIsFoundWhenItIsEncoded) {
    const CReqCert value(static_cast<CReqCert::fullCertificateType>(2), MadeCertificate().encoded());
    Encoder output;
    asn1data::ASN1T_ReqCert record;
    ASN1T_ReqCert_set(output, record, value);
    EXPECT_EQ(record.u.fullCert->t, 0u);
    EXPECT_LT(asn1data::asn1E_ReqCert(output, &record, ASN1EXPL), 0);
}

TEST(ReqCertRecord, UnknownAlternativesAreLeftOrRefused) {
    CReqCert value(someIdentifier());
    asn1data::ASN1T_ReqCert record;
    record.t = 4;
    ASN1T_ReqCert_get(record, value);
    EXPECT_EQ(answers(value), "signature ");
    asn1data::ASN1T_FullCertificate full;
    full.t = 3;
    record.t = asn1data::T_ReqCert_fullCert;
    record.u.fullCert = &full;
    EXPECT_EQ(thrownCode([&] { ASN1T_ReqCert_get(record, value); }), kAsn1);
    EXPECT_EQ(answers(value), "signature ");
}

TEST(ReqCertRecord, RealCertificatesComeBackWithTheirBytes) {
    int files = 0, unchanged = 0;
    for (auto const& path : vectorFiles("certs")) {
        ++files;
        const CBlob bytes = blobFrom(readFile(path));
        CReqCert read;
        const unsigned code =
            thrownCode([&] { decode(encoded(CReqCert(CReqCert::certificate, bytes)), read); });
        // Not written as this library's tables have it.
        if (code != 0) {
            EXPECT_EQ(code, kAsn1) << path;
            continue;
        }
        unchanged += *read.get_fullCert() == bytes;
        // What was written is DER, and so stays.
        EXPECT_EQ(*decoded(encoded(read)).get_fullCert(), *read.get_fullCert()) << path;
    }
    if (files == 0) GTEST_SKIP() << "no real certificates here";
    EXPECT_GT(unchanged * 10, files * 8);
}

TEST(ReqCertRecord, AttributeCertificatesOfVersion2AreRefused) {
    for (auto const& path : vectorFiles("attribute-certs")) {
        const CReqCert value(CReqCert::attributeCertificate, blobFrom(readFile(path)));
        EXPECT_EQ(thrownCode([&] { encoded(value); }), kAsn1) << path;
    }
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
