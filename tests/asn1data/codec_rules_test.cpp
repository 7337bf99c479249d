// The rules that all codecs follow, each on a type that has it.
#include <gtest/gtest.h>
#include <pthread.h>

#include <string>

#include "asn1data/cms.h"
#include "asn1data/constraint.h"
#include "asn1data/ocsp.h"
#include "asn1data/x509_certificate.h"
#include "asn1rt/cursor.h"
#include "support/allocation.h"
#include "support/nests.h"
#include "support/recode.h"

namespace {

using test::Nest;

struct Row {
    const char* name;
    const char* type;
    const char* octets;
    int status;
    const char* back;  // what the value encodes to again
};

class CodecRules : public ::testing::TestWithParam<Row> {};

TEST_P(CodecRules, Hold) {
    const test::Recoded recoded =
        test::recode(test::typeNamed(GetParam().type), test::octets(GetParam().octets));
    EXPECT_EQ(recoded.status, GetParam().status);
    EXPECT_EQ(test::text(recoded.octets), GetParam().back);
}

INSTANTIATE_TEST_SUITE_P(
    Failures, CodecRules,
    ::testing::Values(
        Row{"RequiredFieldMissingInTheMiddle", "Certificate", "30 02 05 00", RTS_TAG_MISMATCH, ""},
        Row{"RequiredFieldMissingAtTheEnd", "CertID", "30 05 30 03 06 01 2A", RTS_MISSING_ELEMENT, ""},
        Row{"ElementBehindTheLastField", "OCSPResponse", "30 05 0A 01 01 05 00", RTS_EXTRA_ELEMENT, ""},
        Row{"NoEndOfContentsWhereItIsConsumed", "IssuerAndSerialNumber", "30 80 30 00 02 01 05",
            RTS_BAD_LENGTH, ""},
        Row{"NumberAboveTheEnumeration", "OCSPResponseStatus", "0A 01 09", RTS_BAD_ENUM, ""},
        Row{"MillisecondsBeyondTheirRange", "Accuracy", "30 04 80 02 03 E8", RTS_CONSTRAINT, ""},
        Row{"MillisecondsBeyondTheirField", "Accuracy", "30 05 80 03 01 00 01", RTS_INT_TOO_LARGE, ""},
        Row{"LengthThatIsNoneInAnOptionalChoice", "QTUserNotice", "30 05 16 83 01 00 00", RTS_BAD_LENGTH, ""},
        Row{"NegativeEnumeration", "OCSPResponseStatus", "0A 01 FF", RTS_BAD_ENUM, ""},
        Row{"DuplicateInASet", "PersonalName", "31 0A A0 03 13 01 41 A0 03 13 01 41", RTS_DUPLICATE_ELEMENT,
            ""},
        Row{"UnknownInASet", "PersonalName", "31 05 A9 03 13 01 41", RTS_UNKNOWN_ELEMENT, ""},
        Row{"MissingInASet", "PersonalName", "31 05 A1 03 13 01 41", RTS_MISSING_ELEMENT, ""},
        Row{"TagOfNoAlternative", "CertStatus", "83 00", RTS_BAD_CHOICE, ""},
        Row{"ConstructedFormOfAnAlternative", "CertStatus", "A0 00", RTS_BAD_CHOICE, ""},
        Row{"OpenAlternativeThatIsNoSequence", "RevocationInfoChoice", "02 01 05", RTS_BAD_CHOICE, ""},
        Row{"EmptyListThatMayNotBe", "Extensions", "30 00", RTS_CONSTRAINT, ""},
        Row{"ListBeyondItsBound", "BuiltInDomainDefinedAttributes",
            "30 28 30 06 13 01 41 13 01 42 30 06 13 01 41 13 01 42 30 06 13 01 41 13 01 42 30 06 13 01 41 13 "
            "01 42 "
            "30 06 13 01 41 13 01 42",
            RTS_EXTRA_ELEMENT, ""},
        Row{"InlineArrayBeyondItsBound", "OrganizationalUnitNames",
            "30 0F 13 01 41 13 01 41 13 01 41 13 01 41 13 01 41", RTS_EXTRA_ELEMENT, ""},
        Row{"EmptyInlineArray", "OrganizationalUnitNames", "30 00", RTS_CONSTRAINT, ""},
        Row{"WrongFixedSize", "Gost28147_89_IV", "04 07 01 02 03 04 05 06 07", RTS_CONSTRAINT, ""},
        Row{"AboveTheFixedSize", "Gost28147_89_IV", "04 09 01 02 03 04 05 06 07 08 09", RTS_BUFFER_TOO_SMALL,
            ""},
        Row{"BetweenTwoSizes", "GostR3410_2001_CertificateSignature",
            "03 22 00 01 02 03 04 05 06 07 08 01 02 03 04 05 06 07 08 01 02 03 04 05 06 07 08 01 02 03 04 05 "
            "06 07 08 09",
            RTS_CONSTRAINT, ""},
        Row{"TextThatIsNoUtf8", "_commonName_Type", "0C 01 FF", RTS_CONSTRAINT, ""},
        Row{"EmptyText", "_commonName_Type", "0C 00", RTS_CONSTRAINT, ""},
        Row{"KnownIdentifierWithBadContent", "AlgorithmIdentifier",
            "30 0E 06 09 2A 86 48 86 F7 0D 01 01 01 02 01 05", RTS_TAG_MISMATCH, ""},
        Row{"MismatchInsideAnOptionalValue", "ServiceLocator", "30 06 30 00 30 02 05 00", RTS_TAG_MISMATCH,
            ""}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Forms, CodecRules,
    ::testing::Values(
        Row{"NegativeEnumerationWithoutBound", "CertificateAndCrlMatchingTechnique", "0A 01 FF", 0,
            "0A 01 FF"},
        Row{"CutHeaderOfAnOptionalOpenValue", "AlgorithmIdentifier", "30 05 06 02 2A 03 04", 0,
            "30 04 06 02 2A 03"},
        Row{"AllOptionalAndEmpty", "CrlID", "30 00", 0, "30 00"},
        Row{"ExplicitFalseIsAbsentAgain", "BasicConstraintsSyntax", "30 03 01 01 00", 0, "30 00"},
        Row{"TrueIsAlwaysWritten", "BasicConstraintsSyntax", "30 03 01 01 01", 0, "30 03 01 01 FF"},
        Row{"DefaultNumberIsAbsentAgain", "RSASSA_PSS_params", "30 05 A2 03 02 01 14", 0, "30 00"},
        Row{"OtherNumberStays", "RSASSA_PSS_params", "30 05 A2 03 02 01 20", 0, "30 05 A2 03 02 01 20"},
        Row{"PresentDefaultWithABitStays", "TBSRequest", "30 07 A0 03 02 01 00 30 00", 0,
            "30 07 A0 03 02 01 00 30 00"},
        Row{"PrimitiveFormOfAnExplicitTag", "TBSRequest", "30 07 80 03 02 01 00 30 00", 0,
            "30 07 A0 03 02 01 00 30 00"},
        Row{"EmptyUnboundedList", "TBSRequest", "30 02 30 00", 0, "30 02 30 00"},
        Row{"AbsentOptionalSequence", "ServiceLocator", "30 02 30 00", 0, "30 02 30 00"},
        Row{"SetInAnyOrder", "PersonalName", "31 0A A1 03 13 01 42 A0 03 13 01 41", 0,
            "31 0A A0 03 13 01 41 A1 03 13 01 42"},
        Row{"SetOfIsSorted", "AttributeRaw_valuesRaw", "31 06 02 01 02 02 01 01", 0,
            "31 06 02 01 01 02 01 02"},
        Row{"ArrayOfASetIsSorted", "_SetOfAttributeType", "31 07 06 02 2A 04 06 01 2A", 0,
            "31 07 06 01 2A 06 02 2A 04"},
        Row{"UnknownTrailingElementsAreKept", "Gost28147_89_BlobParameters",
            "30 09 06 02 2A 03 05 00 02 01 07", 0, "30 09 06 02 2A 03 05 00 02 01 07"},
        Row{"UnknownIdentifierStaysRaw", "AlgorithmIdentifier", "30 07 06 02 2A 03 02 01 05", 0,
            "30 07 06 02 2A 03 02 01 05"},
        Row{"KnownIdentifierWithoutParameters", "AlgorithmIdentifier",
            "30 0B 06 09 2A 86 48 86 F7 0D 01 01 01", 0, "30 0B 06 09 2A 86 48 86 F7 0D 01 01 01"},
        Row{"KnownIdentifierWithoutValueType", "AlgorithmIdentifier",
            "30 0C 06 07 2A 86 48 CE 38 04 03 02 01 05", 0, "30 0C 06 07 2A 86 48 CE 38 04 03 02 01 05"},
        Row{"NameConstraintsStayRaw", "Extension", "30 0A 06 03 55 1D 1E 04 03 02 01 05", 0,
            "30 0A 06 03 55 1D 1E 04 03 02 01 05"},
        Row{"EmptyValueOfAKnownExtension", "Extension", "30 07 06 03 55 1D 13 04 00", 0,
            "30 07 06 03 55 1D 13 04 00"},
        Row{"EmptyResponseOfAKnownType", "ResponseBytes", "30 0D 06 09 2B 06 01 05 05 07 30 01 01 04 00", 0,
            "30 0D 06 09 2B 06 01 05 05 07 30 01 01 04 00"},
        Row{"OtherNameKeepsBothElements", "GeneralName", "A0 08 06 02 2A 03 A0 02 05 00", 0,
            "A0 08 06 02 2A 03 A0 02 05 00"},
        Row{"OtherNameOfIndefiniteLength", "GeneralName", "A0 80 06 02 2A 03 A0 02 05 00 00 00", 0,
            "A0 08 06 02 2A 03 A0 02 05 00"},
        Row{"OpenAlternative", "RevocationInfoChoice", "30 03 02 01 05", 0, "30 03 02 01 05"},
        Row{"GoodIsAnEmptyTag", "CertStatus", "80 00", 0, "80 00"},
        Row{"RevokedUnderItsTag", "CertStatus", "A1 11 18 0F 32 30 32 34 30 31 30 31 31 32 30 30 30 30 5A", 0,
            "A1 11 18 0F 32 30 32 34 30 31 30 31 31 32 30 30 30 30 5A"},
        Row{"TaggedChoice", "CountryName", "61 04 13 02 52 55", 0, "61 04 13 02 52 55"},
        Row{"IndefiniteOutermost", "TBSRequest", "30 80 30 00 00 00", 0, "30 02 30 00"},
        Row{"IndefiniteWithoutItsEnd", "OCSPResponse", "30 80 0A 01 00", 0, "30 03 0A 01 00"}),
    [](const auto& info) { return info.param.name; });

TEST(EndOfContents, StaysForTheCommonFormAndIsTakenInTheCmsForm) {
    test::Decoder common("30 80 30 00 00 00");
    asn1data::ASN1T_TBSRequest request;
    EXPECT_EQ(asn1data::asn1D_TBSRequest(common, &request, ASN1EXPL, 0), RTS_OK);
    EXPECT_EQ(common.position(), 4u);

    test::Decoder cms("30 80 30 00 02 01 05 00 00");
    asn1data::ASN1T_IssuerAndSerialNumber issuer;
    EXPECT_EQ(asn1data::asn1D_IssuerAndSerialNumber(cms, &issuer, ASN1EXPL, 0), RTS_OK);
    EXPECT_EQ(cms.position(), 9u);

    test::Decoder chosen("30 80 30 00 02 01 05 00 00");
    asn1data::ASN1T_SignerIdentifier signer;
    EXPECT_EQ(asn1data::asn1D_SignerIdentifier(chosen, &signer, ASN1EXPL, 0), RTS_OK);
    EXPECT_EQ(chosen.position(), 9u);
}

TEST(UnknownElements, AreFreedWithTheirRecord) {
    const auto& type = test::typeNamed("Gost28147_89_BlobParameters");
    test::CountedAllocations memory;
    test::Decoder decoder("30 09 06 02 2A 03 05 00 02 01 07");
    void* record = asn1data::newRecord(decoder, type);
    const int before = memory.alive();
    ASSERT_EQ(asn1data::decode(decoder, type, record, ASN1EXPL, 0), RTS_OK);
    EXPECT_GT(memory.alive(), before);
    asn1data::freeValue(decoder, type, record);
    EXPECT_EQ(memory.alive(), before);
}

TEST(Nesting, EndsAtItsBoundWhateverTheSize) {
    for (const Nest& nest : test::kNests) {
        SCOPED_TRACE(nest.type);
        const auto& type = test::typeNamed(nest.type);
        const int turns = deepest(nest);
        EXPECT_EQ(test::recode(type, nested(nest, turns)).octets, nested(nest, turns));
        EXPECT_EQ(test::recode(type, nested(nest, turns + 1)).status, RTS_NO_MEMORY);
        EXPECT_EQ(test::recode(type, nested(nest, 200)).status, RTS_NO_MEMORY);
        EXPECT_GE(turns * nest.levelsPerTurn, 64);
        EXPECT_LE(turns * nest.levelsPerTurn, asn1data::kMostLevels + nest.levelsPerTurn);
    }
}

// The deepest value that passes.
void* liveThroughDeepest(void* argument) {
    const auto& nest = *static_cast<const Nest*>(argument);
    EXPECT_TRUE(test::liveThrough(test::typeNamed(nest.type), nested(nest, deepest(nest))));
    return nullptr;
}

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kSmallStack = 1024 * 1024;  // frames are larger there
#else
constexpr std::size_t kSmallStack = 256 * 1024;
#endif

TEST(Nesting, AtItsBoundFitsASmallStack) {
    for (const Nest& nest : test::kNests) {
        pthread_attr_t attributes;
        ASSERT_EQ(pthread_attr_init(&attributes), 0);
        ASSERT_EQ(pthread_attr_setstacksize(&attributes, kSmallStack), 0);
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &attributes, liveThroughDeepest, const_cast<Nest*>(&nest)), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
    }
}

TEST(ConstraintText, NamesWhatWasMeasured) {
    using asn1data::constraintText;
    using asn1data::Place;
    const auto& extensions = test::typeNamed("Extensions");
    const auto& unitNames = test::typeNamed("OrganizationalUnitNames");
    const auto& initializationVector = test::typeNamed("Gost28147_89_IV");
    const auto& serial = test::typeNamed("CPSuri");
    const auto& bmp = test::typeNamed("_commonName_Type");
    EXPECT_STREQ(constraintText(extensions, {}).data(), "pvalue->count");
    EXPECT_STREQ(constraintText(extensions, {Place::Kind::Field, "crlExtensions"}).data(), "pvalue->count");
    EXPECT_STREQ(constraintText(unitNames, {}).data(), "pvalue->n");
    EXPECT_STREQ(constraintText(initializationVector, {}).data(), "pvalue->numocts");
    EXPECT_STREQ(constraintText(serial, {}).data(), "*pvalue");
    EXPECT_STREQ(constraintText(serial, {Place::Kind::Field, "surname"}).data(), "pvalue->surname");
    EXPECT_STREQ(constraintText(serial, {Place::Kind::Element}).data(), "pvalue->elem[xx1]");
    for (std::uint32_t i = 0; i < bmp.fieldCount; ++i) {
        const std::string name = bmp.fields[i].name;
        const std::string expected =
            "pvalue->u." + name + (name == "bmpString" || name == "universalString" ? ".nchars" : "");
        const Place place{Place::Kind::Alternative, bmp.fields[i].name};
        EXPECT_EQ(constraintText(*bmp.fields[i].type, place).data(), expected);
    }
}

TEST(OpenTypes, OfNoOctetsAreAnEmptyElement) {
    test::Decoder decoder("");
    ASN1TOpenType element{5, reinterpret_cast<const unsigned char*>("x")};
    EXPECT_EQ(asn1data::decode(decoder, test::typeNamed("CertificateList"), &element, ASN1EXPL, 0), RTS_OK);
    EXPECT_EQ(element.numocts, 0u);
    EXPECT_EQ(element.data, nullptr);
}

TEST(OpenTypes, AListOfThemEndsWhereTheMessageDoes) {
    test::Decoder decoder("04 00 00 00", ASN1_INDEF_MESSAGE | ASN1_END_REACHED);
    asn1data::ASN1T_AttributeRaw_valuesRaw values{};
    EXPECT_EQ(asn1data::asn1D_AttributeRaw_valuesRaw(decoder, &values, ASN1IMPL, ASN1_INDEFLEN),
              RTS_END_OF_BUFFER);
}

}  // namespace
