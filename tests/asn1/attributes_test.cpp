#include "asn1/attributes.h"

#include <algorithm>
#include <map>
#include <set>

#include "asn1/attribute_string_value.h"
#include "asn1/certificate_values.h"
#include "asn1/signing_certificate_attributes.h"
#include "asn1/typed_attributes.h"
#include "real_signatures.h"
#include "value_test.h"

namespace {

constexpr char kUnknown[] = "1.2.3";
constexpr char kMessageDigest[] = "1.2.840.113549.1.9.4";
constexpr char kSigningTime[] = "1.2.840.113549.1.9.5";
constexpr char kSigningCertificate[] = "1.2.840.113549.1.9.16.2.12";
constexpr char kSigningCertificateV2[] = "1.2.840.113549.1.9.16.2.47";

CAttribute attribute(char const* oid, std::initializer_list<std::string_view> values) {
    CAttribute result(oid);
    for (const auto value : values)
        result.add(blob(value));
    return result;
}

CAttributes three() {
    return {attribute("1.2.1", {"05 00"}), attribute("1.2.2", {}), attribute("1.2.3", {"02 01 07"})};
}

CPolicyInformationList policies() {
    return {CPolicyInformation("1.2.3.4"), CPolicyInformation("1.2.3.5")};
}

}  // namespace

TEST(Attribute, AddGivesTheAttributesIdentifierOrKeepsTheValues) {
    CAttribute subject(kUnknown);
    subject.add(blob("05 00"));
    EXPECT_STREQ(subject.begin()->get_oid(), kUnknown);
    subject.add(CAttrCommonName("Ivan"));
    ASSERT_EQ(subject.size(), 2u);
    EXPECT_STREQ(std::next(subject.begin())->get_oid(), "2.5.4.3");
    subject.erase(subject.begin());
    EXPECT_EQ(subject.size(), 1u);
    EXPECT_STREQ(std::as_const(subject).begin()->get_oid(), "2.5.4.3");
    EXPECT_STREQ(CAttribute(nullptr).get_oid(), "");
}

TEST(Attribute, EncodesItsValuesInTheOrderOfDer) {
    EXPECT_EQ(test::text(attribute(kUnknown, {}).encode()), "30 06 06 02 2A 03 31 00");
    EXPECT_EQ(test::text(attribute(kUnknown, {"05 00", "02 01 07", "01 01 FF"}).encode()),
              "30 0E 06 02 2A 03 31 08 01 01 FF 02 01 07 05 00");
}

TEST(Attribute, ComesBackWithItsIdentifierInEveryValue) {
    CAttribute written = attribute(kUnknown, {"02 01 07"});
    written.add(CAttrValue("1.9", blob("05 00")));
    CAttribute read(kMessageDigest);
    read.decode(written.encode());
    EXPECT_EQ(read, attribute(kUnknown, {"02 01 07", "05 00"}));
    EXPECT_NE(read, written) << "each value is compared with its own identifier";
}

TEST(Attribute, IsRefusedWithTheStatedCodeAndStays) {
    EXPECT_EQ(thrownCode([] { CAttribute().encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { attribute("1.2.x", {}).encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { attribute("1.40.1", {}).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { attribute(kMessageDigest, {"05 00"}).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { attribute(kMessageDigest, {"04 00", "05 00"}).encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { attribute(kMessageDigest, {""}).encode(); }), 0u)
        << "no bytes are not looked at";
    expectRefused(attribute(kUnknown, {"05 00"}), 0x80093101,
                  {"", "30 00", "30 04 06 02 2A 03", "31 06 06 02 2A 03 31 00",
                   "30 0F 06 09 2A 86 48 86 F7 0D 01 09 04 31 02 05 00"});
}

TEST(Attribute, AKnownValueThatIsNotDerIsWrittenInDer) {
    EXPECT_EQ(test::text(attribute(kMessageDigest, {"04 81 01 AA"}).encode()),
              "30 10 06 09 2A 86 48 86 F7 0D 01 09 04 31 03 04 01 AA");
    EXPECT_EQ(test::text(attribute(kUnknown, {"04 81 01 AA"}).encode()),
              "30 0A 06 02 2A 03 31 04 04 81 01 AA");
}

TEST(Attributes, AreFoundAndErasedByTheirExactIdentifier) {
    CAttributes list = three();
    list.push_back(attribute("1.2.2", {"01 01 00"}));
    EXPECT_EQ(list.find("1.2.2"), std::next(list.begin()));
    EXPECT_EQ(std::as_const(list).find("1.2.2"), std::next(list.cbegin()));
    for (char const* other : {"1.2", "1.2.22", "", static_cast<char const*>(nullptr)}) {
        EXPECT_EQ(list.find(other), list.end());
        list.erase(other);
    }
    EXPECT_EQ(list.size(), 4u);
    list.erase("1.2.2");
    EXPECT_EQ(list, (CAttributes{attribute("1.2.1", {"05 00"}), attribute("1.2.3", {"02 01 07"}),
                                 attribute("1.2.2", {"01 01 00"})}));
}

TEST(Attributes, EncodeAsASortedSetAndKeepTheOrderOfTheEncoding) {
    const CBlob encoded = three().encode();
    EXPECT_EQ(test::text(encoded),
              "31 1D 30 06 06 02 2A 02 31 00 30 08 06 02 2A 01 31 02 05 00 30 09 06 02 2A 03 31 03 02 01 07");
    CAttributes read;
    read.decode(encoded);
    EXPECT_NE(read, three()) << "another order";
    CAttributes sorted = three();
    sorted.splice(sorted.begin(), sorted, std::next(sorted.begin()));
    EXPECT_EQ(read, sorted);
}

TEST(Attributes, AnEmptySetIsRefusedBothWays) {
    EXPECT_EQ(thrownCode([] { CAttributes().encode(); }), 0x80093101u);
    expectRefused(three(), 0x80093101, {"31 00"});
}

TEST(TypedAttributes, KeepMemberAndBlobInStep) {
    CAttrContentType type("1.2.840.113549.1.7.1");
    EXPECT_STREQ(type.get_oid(), "1.2.840.113549.1.9.3");
    EXPECT_EQ(test::text(type.get_value()), "06 09 2A 86 48 86 F7 0D 01 07 01");
    type.put_contentType(kUnknown);
    EXPECT_STREQ(CAttrContentType(type.get_value()).get_contentType(), kUnknown);

    CAttrMessageDigest digest;
    EXPECT_STREQ(digest.get_oid(), kMessageDigest);
    EXPECT_EQ(digest.get_value().cbData(), 0u);
    digest.put_messageDigest(blob("AA BB"));
    EXPECT_EQ(test::text(digest.get_value()), "04 02 AA BB");
    digest.value() = blob("04 01 CC");
    EXPECT_EQ(test::text(digest.get_messageDigest()), "AA BB") << "until decode()";
    digest.decode();
    EXPECT_EQ(test::text(digest.get_messageDigest()), "CC");
    EXPECT_EQ(CAttrMessageDigest(CBlob()).get_messageDigest().cbData(), 0u);
}

TEST(TypedAttributes, ASigningTimeChangesItsFormAfter2049) {
    CAttrSigningTime time(CDateTime("20491231235959Z"));
    EXPECT_STREQ(time.get_oid(), "1.2.840.113549.1.9.5");
    EXPECT_EQ(test::text(time.get_value()), "17 0D 34 39 31 32 33 31 32 33 35 39 35 39 5A");
    const CAttrSigningTime copy(time);
    time.put_time(CDateTime("20500101000000Z"));
    EXPECT_EQ(test::text(time.get_value()), "18 0F 32 30 35 30 30 31 30 31 30 30 30 30 30 30 5A");
    EXPECT_EQ(CAttrSigningTime(time.get_value()).get_time(), CDateTime("20500101000000Z"));
    EXPECT_EQ(copy.get_time(), CDateTime("20491231235959Z"));
    time = copy;
    EXPECT_EQ(time.get_time(), copy.get_time());
    EXPECT_EQ(time, copy);
}

TEST(TypedAttributes, AreRefusedWithTheStatedCode) {
    for (char const* text : {"one", static_cast<char const*>(nullptr)})
        EXPECT_EQ(thrownCode([&] { CAttrContentType{text}; }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CAttrContentType{blob("04 01 2A")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttrMessageDigest{blob("06 01 2A")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttrMessageDigest{blob("04 02 2A")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttrSigningTime{blob("04 00")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttrSigningTime{CBlob()}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttrSigningCertificate{blob("30 00")}; }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { CAttrSigningCertificateV2{CBlob()}; }), 0x80093101u);

    CAttrContentType type(kUnknown);
    EXPECT_EQ(thrownCode([&] { type.put_contentType("one"); }), 0x80070057u);
    EXPECT_EQ(test::text(type.get_value()), "06 02 2A 03");
}

// What the three attributes of signing certificates have in common.
template <typename Attribute>
class SigningCertificates : public ::testing::Test {
  protected:
    using List = std::decay_t<decltype(std::declval<Attribute>().get_certs())>;
    using Identifier = typename List::value_type;

    static List certs() { return {Identifier(blob("AA BB")), Identifier(blob("CC"))}; }
};

using AllSigningCertificates =
    ::testing::Types<CAttrSigningCertificate, CAttrSigningCertificateV2, CAttrOtherSigningCertificate>;
TYPED_TEST_SUITE(SigningCertificates, AllSigningCertificates);

TYPED_TEST(SigningCertificates, OnlyTheThirdEncodesItsPoliciesAtOnce) {
    TypeParam subject(this->certs());
    const CBlob without = subject.get_value();
    const auto list = policies();
    subject.put_policies(&list);
    const bool atOnce = std::is_same_v<TypeParam, CAttrOtherSigningCertificate>;
    EXPECT_EQ(subject.get_value() != without, atOnce);
    subject.encode();
    EXPECT_GT(subject.get_value().cbData(), without.cbData());
    subject.put_policies(subject.get_policies());
    EXPECT_EQ(subject.get_policies()->size(), 2u);
    subject.put_policies(nullptr);
    subject.put_certs(subject.get_certs());
    EXPECT_EQ(subject.get_value(), without);
}

TYPED_TEST(SigningCertificates, ComeBackAndKeepTheBlobThatWasGiven) {
    TypeParam written(this->certs());
    const auto list = policies();
    written.put_policies(&list);
    written.encode();
    TypeParam read(written.get_value());
    EXPECT_EQ(read, written) << "policies included";
    EXPECT_EQ(read.get_certs(), this->certs());
    ASSERT_NE(read.get_policies(), nullptr);
    EXPECT_STREQ(read.get_policies()->back().get_policyIdentifier(), "1.2.3.5");

    read.value() = TypeParam(this->certs()).get_value();
    read.value() += blob("05 00");
    const CBlob given = read.get_value();
    read.decode();
    EXPECT_EQ(read.get_value(), given);
    EXPECT_EQ(read.get_policies(), nullptr);
}

TYPED_TEST(SigningCertificates, PoliciesWithoutAnElementAreLeftOut) {
    TypeParam subject(this->certs());
    const CBlob without = subject.get_value();
    const CPolicyInformationList none;
    subject.put_policies(&none);
    subject.encode();
    EXPECT_EQ(subject.get_value(), without);
    subject.decode();
    EXPECT_EQ(subject.get_policies(), nullptr);
}

TYPED_TEST(SigningCertificates, AFailureLeavesTheMembersOrTheBlob) {
    TypeParam subject(this->certs());
    const CBlob encoded = subject.get_value();
    const CPolicyInformationList bad{CPolicyInformation("one")};
    const auto putAndEncode = [&] {
        subject.put_policies(&bad);
        subject.encode();
    };
    EXPECT_EQ(thrownCode(putAndEncode), 0x80070057u);
    EXPECT_EQ(subject.get_value(), encoded);
    subject.put_policies(nullptr);

    subject.value() = blob("30 02 05 00");
    EXPECT_EQ(thrownCode([&] { subject.decode(); }), 0x80093101u);
    EXPECT_EQ(subject.get_certs(), this->certs());
    EXPECT_EQ(test::text(subject.get_value()), "30 02 05 00");
}

TEST(CertificateValues, OfRealCertificatesComeBack) {
    CCertificateValues written;
    for (auto const& path : test::vectorFiles("certs", 40)) {
        const auto octets = test::readFile(path);
        CCertificateValue certificate;
        if (thrownCode([&] { certificate.decode(CBlob(octets.data(), octets.size())); }) != 0) continue;
        EXPECT_EQ(certificate.encode(), certificate);
        written.push_back(certificate);
    }
    if (written.empty()) GTEST_SKIP() << "no real certificates here";
    CCertificateValues read;
    read.decode(written.encode());
    EXPECT_TRUE(std::equal(read.begin(), read.end(), written.begin(), written.end()));
}

TEST(CertificateValues, MayBeNoneAndHoldNothingElse) {
    EXPECT_EQ(test::text(CCertificateValues().encode()), "30 00");
    CCertificateValues other;
    other.push_back(blob("05 00"));
    EXPECT_EQ(thrownCode([&] { other.encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([&] { other.decode(blob("30 02 05 00")); }), 0x80093101u);
    EXPECT_EQ(other.size(), 1u);
    EXPECT_EQ(thrownCode([&] { CCertificateValue(blob("30 00")).encode(); }), 0x80093101u);
}

// Values that come back to other bytes than their own when they are built from their members.
struct Exception {
    char const* oid;
    char const* reason;
};

const std::map<std::string, Exception> kExceptions = {
    {"dss-TimestampTokenTest-b64_7.tst.der",
     {kSigningCertificateV2, "the default hash algorithm, written out"}},
    {"dss-cades-dss1956.p7.der", {kSigningCertificateV2, "the default hash algorithm, written out"}},
    {"forge-pkcs7-b64_8.p7.der", {kSigningTime, "GeneralizedTime of 1949, which goes out as UTCTime"}},
};

bool comesBack(test::RealSigner const& signer, std::string_view oid) {
    const auto exception = kExceptions.find(signer.file);
    return exception == kExceptions.end() || exception->second.oid != oid;
}

using RealAttributes = test::RealSigners;

TEST_F(RealAttributes, AreTakenApartAndBuiltAgain) {
    std::set<std::string> kinds;
    for (auto const& signer : signers()) {
        auto attributes = signer.signedAttributes;
        attributes.insert(attributes.end(), signer.unsignedAttributes.begin(),
                          signer.unsignedAttributes.end());
        for (test::RealAttribute const& real : attributes) {
            const bool malformed = real.file == test::kMalformedSigner && real.oid == kSigningCertificateV2;
            CAttribute read;
            EXPECT_EQ(thrownCode([&] { read.decode(real.encoded); }), malformed ? 0x80093101u : 0u)
                << real.file;
            if (malformed) continue;
            CAttribute built(real.oid.c_str());
            for (auto const& value : real.values)
                built.add(value);
            EXPECT_EQ(read, built) << real.file << real.oid;
            EXPECT_EQ(built.encode(), real.encoded) << real.file << real.oid;
            kinds.insert(real.oid);
        }
    }
    EXPECT_GT(kinds.size(), 10u);
}

// What is signed is the set in the order of DER.
TEST_F(RealAttributes, AsASetStandInOrder) {
    for (auto const& signer : signers()) {
        if (signer.file == test::kMalformedSigner || signer.signedAttributes.empty()) continue;
        CAttributes attributes;
        std::multiset<CBlob> inOrder;
        for (auto const& real : signer.signedAttributes) {
            attributes.emplace_front().decode(real.encoded);
            inOrder.insert(real.encoded);
        }
        CBlob content;
        for (CBlob const& encoded : inOrder)
            content += encoded;
        const CBlob written = attributes.encode();
        ASSERT_GT(written.cbData(), content.cbData()) << signer.file;
        EXPECT_EQ(CBlob(written.pbData() + written.cbData() - content.cbData(), content.cbData()), content)
            << signer.file;
    }
}

TEST_F(RealAttributes, ContentTypesAreThoseOfLibcryptoAndComeBack) {
    for (auto const& [signer, value] : values("1.2.840.113549.1.9.3")) {
        const auto theirs = test::parsed(d2i_ASN1_OBJECT, ASN1_OBJECT_free, value);
        const CAttrContentType read(value);
        EXPECT_EQ(read.get_contentType(), test::dotted(theirs.get())) << signer->file;
        EXPECT_EQ(CAttrContentType(read.get_contentType()).get_value(), value) << signer->file;
    }
}

TEST_F(RealAttributes, MessageDigestsAreThoseOfLibcryptoAndComeBack) {
    for (auto const& [signer, value] : values(kMessageDigest)) {
        const CAttrMessageDigest read(value);
        void const* const theirs = CMS_signed_get0_data_by_OBJ(
            signer->info, OBJ_nid2obj(NID_pkcs9_messageDigest), -1, V_ASN1_OCTET_STRING);
        ASSERT_NE(theirs, nullptr) << signer->file;
        EXPECT_EQ(read.get_messageDigest(), test::blobOf(static_cast<ASN1_STRING const*>(theirs)));
        CAttrMessageDigest built;
        built.put_messageDigest(read.get_messageDigest());
        EXPECT_EQ(built.get_value(), value) << signer->file;
    }
}

TEST_F(RealAttributes, SigningTimesAreThoseOfLibcryptoAndComeBack) {
    for (auto const& [signer, value] : values(kSigningTime)) {
        const auto theirs = test::parsed(d2i_ASN1_TIME, ASN1_TIME_free, value);
        std::tm fields{};
        ASSERT_EQ(ASN1_TIME_to_tm(theirs.get(), &fields), 1) << signer->file;
        const CAttrSigningTime read(value);
        EXPECT_EQ(read.get_time(), CDateTime(timegm(&fields), 0)) << signer->file;
        EXPECT_EQ(CAttrSigningTime(read.get_time()).get_value() == value, comesBack(*signer, kSigningTime))
            << signer->file;
    }
}

TEST_F(RealAttributes, SigningCertificatesComeBack) {
    const auto check = [](auto attribute, test::RealSigner const& signer, CBlob const& value) {
        attribute.value() = value;
        attribute.decode();
        EXPECT_EQ(attribute.get_value(), value) << signer.file;
        attribute.encode();
        EXPECT_EQ(attribute.get_value() == value, comesBack(signer, attribute.get_oid())) << signer.file;
    };
    for (auto const& [signer, value] : values(kSigningCertificate))
        check(CAttrSigningCertificate(), *signer, value);
    for (auto const& [signer, value] : values(kSigningCertificateV2)) {
        if (signer->file != test::kMalformedSigner) check(CAttrSigningCertificateV2(), *signer, value);
    }
}
