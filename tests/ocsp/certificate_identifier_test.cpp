#include "ocsp/certificate_identifier.h"

#include <openssl/ocsp.h>

#include "asn1data/ocsp.h"
#include "ocsp/made_certificates.h"
#include "ocsp/parsed_certificate.h"
#include "ocsp/real_certificates.h"
#include "ocsp_test.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using ASN1::CAlgorithmIdentifier;
using ASN1::CAlgorithmIdentifierEx;
using ASN1::CBigInteger;

constexpr char kSha1[] = "1.3.14.3.2.26";
constexpr char kSha256[] = "2.16.840.1.101.3.4.2.1";

CAlgorithmIdentifierEx algorithm(char const* oid, char const* parameters = "05 00") {
    CAlgorithmIdentifierEx result;
    result.put_algorithm(oid);
    result.put_parameters(blob(parameters));
    return result;
}

// What libcrypto hashes these octets to.
CBlob digest(EVP_MD const* hash, CBlob const& data) {
    unsigned char value[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    EVP_Digest(data.pbData(), data.cbData(), value, &size, hash, nullptr);
    return CBlob(value, size);
}

CCertID someCertID() {
    const MadeCertificate made;
    return CCertID(algorithm(kSha256), made.encoded(), made.encoded());
}

// The certificate that issued this one, or the certificate itself where that is not here.
X509* issuerOf(X509* certificate, std::vector<RealCertificate> const& all) {
    for (auto const& candidate : all) {
        if (X509_check_issued(candidate.parsed.get(), certificate) == X509_V_OK)
            return candidate.parsed.get();
    }
    return certificate;
}

TEST(CertID, IsTheOneOfLibcryptoForRealCertificates) {
    const auto certificates = realCertificates();
    if (certificates.empty()) GTEST_SKIP() << "no real certificates here";
    const std::pair<char const*, EVP_MD const*> hashes[] = {
        {kSha1, EVP_sha1()},
        {kSha256, EVP_sha256()},
        {"2.16.840.1.101.3.4.2.2", EVP_sha384()},
        {"2.16.840.1.101.3.4.2.3", EVP_sha512()},
    };
    int pairs = 0;
    for (auto const& [file, encoded, parsed] : certificates) {
        X509* const issuer = issuerOf(parsed.get(), certificates);
        pairs += issuer != parsed.get();
        const CBlob issuerEncoded = writtenBy(i2d_X509, static_cast<X509 const*>(issuer));
        for (auto const& [oid, hash] : hashes) {
            const auto expected = owned(OCSP_cert_to_id(hash, parsed.get(), issuer), OCSP_CERTID_free);
            ASSERT_TRUE(expected) << file;
            const CCertID made(algorithm(oid), encoded, issuerEncoded);
            EXPECT_EQ(text(made.encode()),
                      text(writtenBy(i2d_OCSP_CERTID, static_cast<OCSP_CERTID const*>(expected.get()))))
                << file << " " << oid;
        }
    }
    EXPECT_GT(pairs, 10);
}

TEST(CertID, HashesTheIssuerAsTheCertificateWritesIt) {
    MadeCertificate issuer;
    issuer.subject = madeName("CA", 0x0C);  // UTF8String there, PrintableString here
    issuer.keyBits = "03 A8";
    const MadeCertificate leaf;
    const CCertID made(algorithm(kSha1), leaf.encoded(), issuer.encoded());
    EXPECT_EQ(made.get_issuerNameHash(), digest(EVP_sha1(), blobFrom(madeName("CA"))));
    EXPECT_EQ(made.get_issuerKeyHash(), digest(EVP_sha1(), blob("A8")));
    EXPECT_STREQ(made.get_hashAlgorithm().get_algorithm(), kSha1);
    EXPECT_EQ(text(made.get_hashAlgorithm().get_parameters()), "05 00");
    const CCertID exchanged(algorithm(kSha1), issuer.encoded(), leaf.encoded());
    EXPECT_TRUE(made != exchanged);
}

TEST(CertID, SerialNumbersKeepTheirValue) {
    const std::pair<char const*, char const*> rows[] = {
        {"00", "02 01 00"},
        {"7F", "02 01 7F"},
        {"00 80", "02 02 00 80"},
        {"80", "02 01 80"},
        {"FF", "02 01 FF"},
        {"FF 7F", "02 02 FF 7F"},
        {"00 00 01", "02 01 01"},
        {"FF FF 80", "02 01 80"},
        {"00 FF EE DD CC BB AA 99 88 77 66 55 44 33 22 11 00 01 02 03",
         "02 14 00 FF EE DD CC BB AA 99 88 77 66 55 44 33 22 11 00 01 02 03"},
        {"9A FF EE DD CC BB AA 99 88 77 66 55 44 33 22 11 00 01 02 03",
         "02 14 9A FF EE DD CC BB AA 99 88 77 66 55 44 33 22 11 00 01 02 03"},
    };
    for (auto const& [inCertificate, inIdentifier] : rows) {
        MadeCertificate made;
        made.serial = inCertificate;
        const CCertID identifier(algorithm(kSha1), made.encoded(), made.encoded());
        EXPECT_EQ(text(identifier.get_serialNumber().encode()), inIdentifier) << inCertificate;
        const std::string encoded = text(identifier.encode());
        EXPECT_TRUE(encoded.ends_with(inIdentifier)) << encoded;
    }
}

TEST(CertID, WhatCannotBeMadeThrowsThePlatformsCode) {
    const CBlob good = MadeCertificate().encoded();
    const CBlob empty, unreadable = blob("30 03 02 01 01");
    CBlob trailing = good;
    trailing += blob("00");
    struct {
        char const* oid;
        CBlob const& certificate;
        CBlob const& issuer;
        unsigned code;
    } const rows[] = {
        {kSha1, empty, good, 0x80093102},
        {kSha1, good, empty, 0x80093102},
        {kSha1, unreadable, good, 0x80093103},
        {kSha1, good, unreadable, 0x80093103},
        {kSha1, good, trailing, 0x80093202},
        {kSha1, empty, unreadable, 0x80093103},
        {kSha1, unreadable, empty, 0x80093102},
        {"1.2.3.4", good, good, 0x80090008},               // unknown
        {"", good, good, 0x80090008},                      // none
        {"1.2.840.113549.1.1.1", good, good, 0x80090008},  // a key
    };
    for (auto const& row : rows) {
        SetLastError(0);
        const auto make = [&] { CCertID(algorithm(row.oid), row.certificate, row.issuer); };
        EXPECT_EQ(thrownCode(make), row.code) << row.oid << ": " << text(row.certificate);
    }
}

TEST(CertID, SerialNumberThatThePlatformRefusesThrowsItsCode) {
    unsigned char octet = 1;
    CERT_INFO info = {};
    info.SerialNumber = {0xFFFFFFFF, nullptr};
    const CERT_CONTEXT certificate = {kCertificateEncoding, &octet, 1, &info};
    SetLastError(0);
    EXPECT_EQ(thrownCode([&] { ASN1::GetSerialFromCertContext(&certificate); }), 0x80070057);
}

TEST(CertID, EveryFieldCountsForEquality) {
    expectEachChangeCounts<CCertID>(someCertID(),
                                    {[](CCertID& id) { id.put_hashAlgorithm(algorithm(kSha1)); },
                                     [](CCertID& id) { id.put_hashAlgorithm(algorithm(kSha256, "")); },
                                     [](CCertID& id) { id.put_issuerNameHash(blob("00")); },
                                     [](CCertID& id) { id.put_issuerKeyHash(CBlob()); },
                                     [](CCertID& id) { id.put_serialNumber(CBigInteger(2)); }});
}

TEST(CertID, DecodesToWhatWasEncoded) {
    const CCertID original = someCertID();
    CCertID read;
    read.decode(original.encode());
    EXPECT_TRUE(read == original);
    CCertID bare;
    bare.put_hashAlgorithm(CAlgorithmIdentifier("1.2.3"));
    bare.put_serialNumber(CBigInteger(reinterpret_cast<unsigned char const*>("\1"), 1));
    EXPECT_EQ(text(bare.encode()), "30 0D 30 04 06 02 2A 03 04 00 04 00 02 01 01");
    read.decode(bare.encode());
    EXPECT_TRUE(read == bare);
}

TEST(CertID, WhatIsNotWellFormedThrowsAndChangesNothing) {
    EXPECT_EQ(thrownCode([] { CCertID().encode(); }), kAsn1);
    CCertID withoutNumber = someCertID();
    withoutNumber.put_serialNumber(CBigInteger());
    EXPECT_EQ(thrownCode([&] { withoutNumber.encode(); }), kAsn1);
    expectRefused(someCertID(), kAsn1,
                  {"", "30 00", "30 0D 30 04 06 02 2A 03 04 00 04 00 02 01",
                   "30 0A 30 04 06 02 2A 03 04 00 04 00", "31 0D 30 04 06 02 2A 03 04 00 04 00 02 01 01",
                   "30 0F 30 04 06 02 2A 03 04 00 04 00 02 01 01 05 00"});
}

void expectFieldsOf(RealCertificate const& certificate, CCertIdWithSignature const& made) {
    X509* const parsed = certificate.parsed.get();
    ASN1_BIT_STRING const* signature = nullptr;
    X509_get0_signature(&signature, nullptr, parsed);
    EXPECT_EQ(made.get_issuer(), writtenBy<X509_NAME>(i2d_X509_NAME, X509_get_issuer_name(parsed)));
    EXPECT_EQ(text(made.get_serialNumber().encode()),
              text(writtenBy(i2d_ASN1_INTEGER, X509_get0_serialNumber(parsed))));
    EXPECT_EQ(text(made.get_signatureAlgorithm().encode()),
              text(writtenBy(i2d_X509_ALGOR, X509_get0_tbs_sigalg(parsed))));
    EXPECT_EQ(made.get_signatureValue(), blobOf(signature));
}

TEST(CertIdWithSignature, HasTheFieldsOfRealCertificates) {
    const auto certificates = realCertificates();
    if (certificates.empty()) GTEST_SKIP() << "no real certificates here";
    constexpr DWORD stale = 0x89ABCDEF;
    int made = 0;
    for (auto const& certificate : certificates) {
        SCOPED_TRACE(certificate.file);
        SetLastError(stale);
        CCertIdWithSignature identifier;
        const unsigned code = thrownCode([&] { identifier = CCertIdWithSignature(certificate.encoded); });
        if (code == 0) {
            ++made;
            expectFieldsOf(certificate, identifier);
            CCertIdWithSignature read;
            read.decode(identifier.encode());
            EXPECT_TRUE(read == identifier);
        } else {
            // No hash of its own, or not written as this library's tables have it.
            EXPECT_TRUE(code == 0x80090008 || code == stale) << std::hex << code;
        }
    }
    EXPECT_GT(made * 10, static_cast<int>(certificates.size()) * 8);
}

TEST(CertIdWithSignature, TakesTheInnerAlgorithmAndTheHashOfTheOuterOne) {
    MadeCertificate made;
    made.outerAlgorithm = test::kSha1WithRsa;
    made.signatureBits = "04 DE A0";  // 12 bits
    const CCertIdWithSignature identifier(made.encoded());
    EXPECT_STREQ(identifier.get_signatureAlgorithm().get_algorithm(), "1.2.840.113549.1.1.11");
    EXPECT_EQ(text(identifier.get_signatureAlgorithm().get_parameters()), "05 00");
    EXPECT_EQ(identifier.get_tbsCertificateHash(), digest(EVP_sha1(), blobFrom(made.signedPart())));
    EXPECT_EQ(text(identifier.get_signatureValue()), "DE A0");
    EXPECT_EQ(identifier.get_issuer(), blobFrom(made.issuer));
    made.signatureBits = "00";
    EXPECT_EQ(CCertIdWithSignature(made.encoded()).get_signatureValue().cbData(), 0u);
}

TEST(CertIdWithSignature, WhatCannotBeMadeThrowsThePlatformsCode) {
    MadeCertificate unknown;
    unknown.outerAlgorithm = "30 05 06 03 2B 65 70";  // Ed25519
    EXPECT_EQ(thrownCode([&] { CCertIdWithSignature{unknown.encoded()}; }), kBadAlgorithm);
    EXPECT_EQ(thrownCode([&] { CCertIdWithSignature{CBlob()}; }), 0x80093102);
    EXPECT_EQ(thrownCode([&] { CCertIdWithSignature{blob("30 00")}; }), 0x80093103);
}

TEST(CertIdWithSignature, CertificateThatOnlyThePlatformReadsThrowsTheCodeThatStands) {
    MadeCertificate badCountry;
    badCountry.subject = madeName("DE", 0x0C, "55 04 06");  // countryName is a PrintableString
    // A length of five octets, around the whole.
    test::Octets longHeader = test::octets("30 85 00 00 00 00");
    const CBlob plain = MadeCertificate().encoded();
    ASSERT_EQ(plain.pbData()[1], 0x81);
    longHeader.insert(longHeader.end(), plain.pbData() + 2, plain.pbData() + plain.cbData());
    for (CBlob const& certificate : {badCountry.encoded(), test::blobFrom(longHeader)}) {
        SetLastError(0x2A);
        EXPECT_EQ(thrownCode([&] { CCertIdWithSignature{certificate}; }), 0x8007002A);
        SetLastError(0);
        EXPECT_THROW(CCertIdWithSignature{certificate}, ATL::CAtlException);
    }
}

TEST(CertIdWithSignature, FieldsStandInTheEncodingAsTheyAre) {
    const CCertIdWithSignature value(blob("30 00"), CBigInteger(1), blob("01 02"),
                                     CAlgorithmIdentifier("1.2.3"), blob("03"));
    EXPECT_EQ(text(value.encode()),
              "30 18 30 05 30 00 02 01 00 03 03 00 01 02 30 0A 30 04 06 02 2A 03 03 02 00 03");
    CCertIdWithSignature read;
    read.decode(value.encode());
    EXPECT_TRUE(read == value);
    EXPECT_EQ(thrownCode([] { CCertIdWithSignature().encode(); }), kAsn1);
    expectRefused(value, kAsn1, {"30 00"});
}

TEST(CertIdWithSignature, EveryFieldCountsForEquality) {
    using Identifier = CCertIdWithSignature;
    expectEachChangeCounts<Identifier>(Identifier(MadeCertificate().encoded()),
                                       {[](Identifier& id) { id.put_issuer(blobFrom(madeName("CA", 0x0C))); },
                                        [](Identifier& id) { id.put_serialNumber(CBigInteger(2)); },
                                        [](Identifier& id) { id.put_tbsCertificateHash(blob("00")); },
                                        [](Identifier& id) { id.put_signatureAlgorithm(algorithm(kSha1)); },
                                        [](Identifier& id) { id.put_signatureValue(CBlob()); }});
}

TEST(Identifiers, RecordsAreCopiedDeeply) {
    EXPECT_TRUE(throughCopiedRecord<ASN1T_CertID_traits>(someCertID()) == someCertID());
    const CCertIdWithSignature withSignature(MadeCertificate().encoded());
    EXPECT_TRUE(throughCopiedRecord<ASN1T_CertIdWithSignature_traits>(withSignature) == withSignature);
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
