#include "asn1/ess_identifiers.h"

#include <map>

#include "asn1/policy_information.h"
#include "asn1/signing_certificate_attributes.h"
#include "provider/hashing.h"
#include "real_signatures.h"
#include "value_test.h"

namespace {

constexpr char kSha256[] = "2.16.840.1.101.3.4.2.1";
constexpr char kSha512[] = "2.16.840.1.101.3.4.2.3";

CGeneralNames names(wchar_t const* text) {
    CGeneralName name;
    name.put_dNSName(text);
    return {name};
}

const CIssuerSerial kIssuerSerial(names(L"ca"), integer("01 02"));
constexpr char kIssuerSerialEncoded[] = "30 0A 30 04 82 02 63 61 02 02 01 02";

CAlgorithmIdentifier withNull(char const* oid) {
    CAlgorithmIdentifier alg(oid);
    alg.put_parameters(blob("05 00"));
    return alg;
}

// Decodes into another value than the one that comes.
template <typename Value>
Value roundTrip(Value const& value, Value before) {
    before.decode(value.encode());
    return before;
}

}  // namespace

TEST(IssuerSerial, EncodesAndComesBack) {
    EXPECT_EQ(test::text(kIssuerSerial.encode()), kIssuerSerialEncoded);
    const CIssuerSerial read = roundTrip(kIssuerSerial, CIssuerSerial(names(L"x"), integer("7F")));
    EXPECT_STREQ(read.get_issuer().front().get_dNSName(), L"ca");
    EXPECT_EQ(test::text(read.get_serialNumber()), "01 02");
    CIssuerSerial copy;
    copy = read;
    copy = *&copy;
    EXPECT_EQ(copy, read);
}

TEST(IssuerSerial, IsEqualInNamesAndNumberByTheirLooseRules) {
    EXPECT_EQ(kIssuerSerial, CIssuerSerial(names(L"c"), integer("00 01 02"))) << "first character, value";
    EXPECT_NE(kIssuerSerial, CIssuerSerial(names(L"da"), integer("01 02")));
    EXPECT_NE(kIssuerSerial, CIssuerSerial(names(L"ca"), integer("01 03")));
    CIssuerSerial longer(kIssuerSerial);
    CGeneralNames two = names(L"ca");
    two.push_back(two.front());
    longer.put_issuer(two);
    EXPECT_NE(kIssuerSerial, longer);
    EXPECT_NE(longer, kIssuerSerial);
}

TEST(IssuerSerial, AUniqueIdentifierIsReadAndDropped) {
    CIssuerSerial read;
    read.decode(blob("30 0E 30 04 82 02 63 61 02 02 01 02 03 02 00 AA"));
    EXPECT_EQ(test::text(read.encode()), kIssuerSerialEncoded);
}

TEST(IssuerSerial, IsRefusedWithTheStatedCodeAndStays) {
    EXPECT_EQ(thrownCode([] { CIssuerSerial().encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CIssuerSerial({CGeneralName()}, integer("01")).encode(); }), 0x80070057u);
    expectRefused(kIssuerSerial, 0x80093101, {"30 06 30 04 82 02 63 61"});
    expectRefused(kIssuerSerial, 0x80070057, {"30 09 30 04 A0 02 05 00 02 01 01"});  // otherName
}

TEST(OtherHash, HoldsOneAlternative) {
    COtherHash hash;
    EXPECT_EQ(hash.get_type(), 0u);
    hash.put_sha1Hash(blob("AA"));
    EXPECT_EQ(hash.get_type(), COtherHash::sha1Hash);
    EXPECT_EQ(hash.get_otherHash(), nullptr);
    EXPECT_EQ(test::text(hash.encode()), "04 01 AA");
    hash.put_otherHash(COtherHashAlgAndValue(*hash.get_sha1Hash(), CAlgorithmIdentifier(kSha256)));
    EXPECT_EQ(hash.get_type(), COtherHash::otherHash);
    EXPECT_EQ(hash.get_sha1Hash(), nullptr);
    EXPECT_EQ(test::text(hash.encode()), "30 10 30 0B 06 09 60 86 48 01 65 03 04 02 01 04 01 AA");
    EXPECT_EQ(roundTrip(hash, COtherHash(blob("BB"))), hash);
    EXPECT_EQ(roundTrip(COtherHash(blob("BB")), hash), COtherHash(blob("BB")));
}

TEST(OtherHash, IsComparedWithTheAlgorithmOrWithout) {
    const COtherHash bare(blob("AA"));
    const COtherHash sha256(COtherHashAlgAndValue(blob("AA"), CAlgorithmIdentifier(kSha256)));
    const COtherHash parameters(COtherHashAlgAndValue(blob("AA"), withNull(kSha256)));
    const COtherHash other(COtherHashAlgAndValue(blob("AB"), CAlgorithmIdentifier(kSha256)));
    EXPECT_NE(sha256, parameters);
    EXPECT_TRUE(sha256.compare_hashValue(parameters));
    EXPECT_FALSE(sha256.compare_hashValue(other));
    EXPECT_FALSE(sha256.compare_hashValue(bare));
    EXPECT_FALSE(bare.compare_hashValue(sha256));
    EXPECT_TRUE(bare.compare_hashValue(COtherHash(blob("AA"))));
    EXPECT_FALSE(bare.compare_hashValue(COtherHash(blob("AB"))));
    EXPECT_NE(bare, COtherHash(blob("AB")));
    EXPECT_NE(bare, COtherHash());
    EXPECT_EQ(COtherHash(), COtherHash());
    EXPECT_FALSE(COtherHash().compare_hashValue(bare));
}

TEST(OtherHash, IsRefusedWithTheStatedCodeAndStays) {
    EXPECT_EQ(thrownCode([] { COtherHash().encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { COtherHash(COtherHashAlgAndValue()).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { COtherHashAlgAndValue(blob("AA"), CAlgorithmIdentifier("1.2.x")).encode(); }),
              0x80093101u);
    expectRefused(COtherHashAlgAndValue(blob("AA"), CAlgorithmIdentifier("1.2")), 0x80093101, {"30 00"});
    expectRefused(COtherHash(blob("AA")), 0x80093101, {"05 00"});
}

TEST(EssIdentifiers, EncodeAsTheirStandardsTell) {
    CESSCertID first(blob("AA"));
    CESSCertIDv2 second(blob("AA"), CAlgorithmIdentifier(kSha512));
    COtherCertID third(blob("AA"));
    EXPECT_EQ(test::text(first.encode()), "30 03 04 01 AA");
    EXPECT_EQ(test::text(second.encode()), "30 10 30 0B 06 09 60 86 48 01 65 03 04 02 03 04 01 AA");
    EXPECT_EQ(test::text(third.encode()), "30 03 04 01 AA");
    first.put_issuerSerial(&kIssuerSerial);
    EXPECT_EQ(test::text(first.encode()), std::string("30 0F 04 01 AA ") + kIssuerSerialEncoded);
}

template <typename Identifier>
class EssIdentifiers : public ::testing::Test {};

using AllIdentifiers = ::testing::Types<CESSCertID, CESSCertIDv2, COtherCertID>;
TYPED_TEST_SUITE(EssIdentifiers, AllIdentifiers);

TYPED_TEST(EssIdentifiers, TheIssuerSerialMayBeAbsent) {
    TypeParam identifier(blob("AA"));
    EXPECT_EQ(identifier.get_issuerSerial(), nullptr);
    const TypeParam without(identifier);
    identifier.put_issuerSerial(&kIssuerSerial);
    EXPECT_NE(identifier, without);
    EXPECT_NE(without, identifier);
    EXPECT_EQ(roundTrip(identifier, without), identifier);
    EXPECT_EQ(roundTrip(without, identifier), without);
    identifier.put_issuerSerial(identifier.get_issuerSerial());
    EXPECT_EQ(*identifier.get_issuerSerial(), kIssuerSerial);
    identifier.put_issuerSerial(nullptr);
    EXPECT_EQ(identifier.get_issuerSerial(), nullptr);
    EXPECT_EQ(identifier, without);
}

TYPED_TEST(EssIdentifiers, AreRefusedWithTheStatedCodeAndStay) {
    TypeParam identifier(blob("AA"));
    identifier.put_issuerSerial(&kIssuerSerial);
    expectRefused(identifier, 0x80093101, {"", "30 00", "30 03 05 01 AA", "30 05 04 01 AA 30 00"});
    expectRefused(identifier, 0x80070057, {"30 0E 04 01 AA 30 09 30 04 A0 02 05 00 02 01 01"});
    const CIssuerSerial empty;
    identifier.put_issuerSerial(&empty);
    EXPECT_EQ(thrownCode([&] { identifier.encode(); }), 0x80093101u);
}

TEST(EssCertIdV2, TheDefaultAlgorithmIsLeftOutWhateverItsParameters) {
    EXPECT_STREQ(CESSCertIDv2().get_hashAlgorithm().get_algorithm(), kSha256);
    const CESSCertIDv2 plain(blob("AA"));
    const CESSCertIDv2 parameters(blob("AA"), withNull(kSha256));
    EXPECT_NE(plain, parameters);
    EXPECT_EQ(test::text(plain.encode()), "30 03 04 01 AA");
    EXPECT_EQ(parameters.encode(), plain.encode());
    EXPECT_EQ(roundTrip(parameters, CESSCertIDv2(blob("BB"), CAlgorithmIdentifier(kSha512))), plain);
}

TEST(EssCertIdV2, AnAlgorithmThatDoesNotEncodeIsRefused) {
    for (char const* oid : {"", "1.2.x", "1.40"}) {
        EXPECT_EQ(thrownCode([&] { CESSCertIDv2(blob("AA"), CAlgorithmIdentifier(oid)).encode(); }),
                  0x80093101u)
            << oid;
    }
    CAlgorithmIdentifier sha1("1.3.14.3.2.26");
    sha1.put_parameters(blob("04 00"));
    EXPECT_EQ(thrownCode([&] { CESSCertIDv2(blob("AA"), sha1).encode(); }), 0x80093101u);
}

TEST(OtherCertId, IsASha1HashUnlessAnAlgorithmIsGiven) {
    EXPECT_EQ(COtherCertID(blob("AA")).get_otherCertHash().get_type(), COtherHash::sha1Hash);
    const COtherCertID other(blob("AA"), CAlgorithmIdentifier(kSha256));
    EXPECT_EQ(other.get_otherCertHash().get_type(), COtherHash::otherHash);
    EXPECT_EQ(roundTrip(other, COtherCertID()), other);
    EXPECT_EQ(thrownCode([] { COtherCertID().encode(); }), 0x80093101u);
    COtherCertID self(other);
    self.put_otherCertHash(self.get_otherCertHash());
    EXPECT_EQ(self, other);
}

TEST(OtherCertId, IsComparedWithTheAlgorithmOrWithout) {
    COtherCertID sha256(blob("AA"), CAlgorithmIdentifier(kSha256));
    const COtherCertID sha512(blob("AA"), CAlgorithmIdentifier(kSha512));
    EXPECT_NE(sha256, sha512);
    EXPECT_TRUE(sha256.compare_noHashParam(sha512));
    EXPECT_FALSE(sha256.compare_noHashParam(COtherCertID(blob("AA"))));
    sha256.put_issuerSerial(&kIssuerSerial);
    EXPECT_FALSE(sha256.compare_noHashParam(sha512));
}

TEST(PolicyInformation, LosesItsQualifiers) {
    CPolicyInformation read("1.2");
    read.decode(blob("30 12 06 02 2A 03 30 0C 30 0A 06 08 2B 06 01 05 05 07 02 01"));
    EXPECT_STREQ(read.get_policyIdentifier(), "1.2.3");
    EXPECT_EQ(test::text(read.encode()), "30 04 06 02 2A 03");
}

TEST(PolicyInformation, IsRefusedWithTheStatedCodeAndStays) {
    for (char const* none : {static_cast<char const*>(nullptr), "1.2.x"})
        EXPECT_EQ(thrownCode([&] { CPolicyInformation(none).encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CPolicyInformation("1.40").encode(); }), 0x80093101u);
    expectRefused(CPolicyInformation("1.2"), 0x80093101, {"30 00"});
}

// Messages whose identifier is not that of the signer's certificate.
const std::map<std::string, char const*> kOthers = {
    {"tspclient-TimeStampTokenWithInvalidCertificates.tst.der", "made to be so"},
    {"tspclient-TimeStampTokenWithSHA1CertHash.tst.der", "names SHA-1, and holds 32 bytes"},
};

class RealIdentifiers : public test::RealSigners {
  protected:
    static CBlob hashOf(X509 const* certificate, char const* oid) {
        const CAlgorithmIdentifierEx algorithm{CAlgorithmIdentifier(oid)};
        return MakeHash(0, algorithm.get_algId(), test::writtenBy(i2d_X509, certificate), nullptr);
    }

    // Names and number as the certificate has them.
    static CBlob issuerSerialOf(X509* certificate) {
        CGeneralName issuer;
        issuer.put_directoryName(test::writtenBy(i2d_X509_NAME, X509_get_issuer_name(certificate)));
        CBigInteger serial;
        serial.decode(test::writtenBy(i2d_ASN1_INTEGER, X509_get0_serialNumber(certificate)));
        return CIssuerSerial({issuer}, serial).encode();
    }

    // Gives back whether the message holds the certificate.
    template <typename Identifier>
    static bool check(test::RealSigner const& signer, Identifier const& identifier, char const* oid) {
        const auto certificate = test::signerCertificate(signer);
        if (!certificate) return false;
        const bool expected = !kOthers.count(signer.file);
        EXPECT_EQ(identifier.get_certHash() == hashOf(certificate.get(), oid), expected) << signer.file;
        if (auto const* const issuerSerial = identifier.get_issuerSerial(); expected && issuerSerial) {
            EXPECT_EQ(issuerSerial->encode(), issuerSerialOf(certificate.get())) << signer.file;
        }
        EXPECT_EQ(roundTrip(identifier, Identifier()).encode(), identifier.encode()) << signer.file;
        return true;
    }
};

TEST_F(RealIdentifiers, EqualTheHashOfTheSignersCertificate) {
    int count = 0;
    for (auto const& [signer, value] : values("1.2.840.113549.1.9.16.2.12")) {
        const CAttrSigningCertificate attribute(value);
        if (attribute.get_certs().empty()) continue;
        count += check(*signer, attribute.get_certs().front(), "1.3.14.3.2.26") ? 1 : 0;
    }
    for (auto const& [signer, value] : values("1.2.840.113549.1.9.16.2.47")) {
        if (signer->file == test::kMalformedSigner) continue;
        const CAttrSigningCertificateV2 attribute(value);
        auto const& first = attribute.get_certs().front();
        count += check(*signer, first, first.get_hashAlgorithm().get_algorithm()) ? 1 : 0;
    }
    EXPECT_GT(count, 20);
}
