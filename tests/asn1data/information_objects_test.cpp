#include "asn1data/information_objects.h"

#include <gtest/gtest.h>

#include "asn1data/object_identifiers.h"
#include "asn1data/x509_certificate.h"
#include "asn1data/x509_extensions.h"
#include "support/contexts.h"

namespace asn1data {
namespace {

TEST(ObjectTables, FindByIdentifierAlone) {
    EXPECT_EQ(SupportedAlgorithms::instance()->size(), 24u);
    EXPECT_EQ(ExtensionSet::instance()->size(), 24u);
    EXPECT_EQ(SupportedAttributes::instance()->size(), 29u);
    EXPECT_EQ(SupportedInfos::instance()->size(), 17u);
    EXPECT_EQ(SupportedSigPolicyQualifiers::instance()->size(), 0u);
    EXPECT_TRUE(id_ad_ocsp == id_pkix_ocsp) << "one identifier of two names";

    EXPECT_NE(ExtensionSet::instance()->lookupObject(id_ce_keyUsage), nullptr);
    EXPECT_EQ(ExtensionSet::instance()->lookupObject(id_pkix_ocsp_nonce), nullptr);
    ASN1OBJID prefix = id_ce_keyUsage;
    --prefix.numids;
    EXPECT_EQ(ExtensionSet::instance()->lookupObject(prefix), nullptr);
    EXPECT_EQ(ExtensionSet::instance()->lookupObject(ASN1OBJID{}), nullptr);
    EXPECT_EQ(SupportedSigPolicyQualifiers::instance()->lookupObject(id_ce_keyUsage), nullptr);
}

TEST(Objects, EncodeDecodeCopyAndFreeTheirType) {
    EXTENSION* constraints = ExtensionSet::instance()->lookupObject(id_ce_basicConstraints);
    ASSERT_NE(constraints, nullptr);
    test::Decoder decoder("30 03 01 01 FF");
    Asn1TObject object;
    EXPECT_EQ(constraints->decodeBERExtnType(decoder, object), RTS_OK);
    ASSERT_NE(object.decoded, nullptr);
    EXPECT_EQ(static_cast<ASN1T_BasicConstraintsSyntax*>(object.decoded)->cA, 0xFF);

    test::Encoder encoder;
    EXPECT_EQ(constraints->encodeBERExtnType(encoder, object), 5);
    EXPECT_EQ(encoder.message(), "30 03 01 01 FF");

    Asn1TObject copied;
    EXPECT_EQ(constraints->copyExtnType(encoder, object, copied), copied.decoded);
    EXPECT_NE(copied.decoded, object.decoded);
    constraints->freeExtnType(encoder, copied);
    EXPECT_EQ(copied.decoded, nullptr);
    EXPECT_EQ(constraints->copyExtnType(encoder, copied, object), nullptr)
        << "nothing decoded, nothing copied";
    EXPECT_EQ(constraints->encodeBERExtnType(encoder, object), 0);
}

TEST(Objects, WithoutAValueTypeAreKnownAndDoNothing) {
    ALGORITHM_ID* algorithm = SupportedAlgorithms::instance()->lookupObject(id_dsa_with_sha1);
    ASSERT_NE(algorithm, nullptr);
    test::Decoder decoder("02 01 05");
    Asn1TObject object;
    EXPECT_EQ(algorithm->decodeBERType(decoder, object), 0);
    EXPECT_EQ(object.decoded, nullptr);
    EXPECT_EQ(algorithm->constructASN1TType(decoder), nullptr);
    EXPECT_EQ(decoder.position(), 0u);
}

TEST(Objects, OfNullTypeShowThatTheyWereRead) {
    ALGORITHM_ID* algorithm = SupportedAlgorithms::instance()->lookupObject(rsaEncryption);
    ASSERT_NE(algorithm, nullptr);
    test::Decoder decoder("05 00");
    Asn1TObject object;
    EXPECT_EQ(algorithm->decodeBERType(decoder, object), RTS_OK);
    EXPECT_NE(object.decoded, nullptr);
    ASN1BEREncodeBuffer buffer;
    ASN1CType* control = algorithm->constructASN1CType(buffer, object.decoded);
    EXPECT_EQ(control->Encode(), 2);
    algorithm->destructASN1CType(control);
    Asn1TObject copied;
    EXPECT_EQ(algorithm->copyType(decoder, object, copied), copied.decoded);
    test::Encoder encoder;
    EXPECT_EQ(algorithm->encodeBERType(encoder, copied), 2);
    algorithm->freeType(decoder, copied);
    EXPECT_EQ(copied.decoded, nullptr);
}

TEST(Objects, ConstructControlsThatLeaveTheRecordAsItWas) {
    EXTENSION* usage = ExtensionSet::instance()->lookupObject(id_ce_keyUsage);
    ASN1BEREncodeBuffer buffer;
    auto* record = static_cast<ASN1T_KeyUsage*>(usage->constructASN1TExtnType(buffer.getCtxtPtr()));
    record->numbits = 3;
    record->data[0] = 0xFF;  // bits behind the count, which a control class would clear
    ASN1CType* control = usage->constructASN1CExtnType(buffer, record);
    EXPECT_EQ(record->data[0], 0xFF);
    EXPECT_EQ(control->Encode(), 4);
    usage->destructASN1CExtnType(control);

    EXTENSION* names = ExtensionSet::instance()->lookupObject(id_ce_subjectAltName);
    ASN1T_GeneralNames list;
    const int references = buffer.getContext()->getRefCount();
    control = names->constructASN1CExtnType(buffer, &list);
    EXPECT_EQ(control->Encode(), 2);
    names->destructASN1CExtnType(control);
    EXPECT_EQ(buffer.getContext()->getRefCount(), references);
}

TEST(TableStep, KeepsRawOctetsAndRecordInAgreement) {
    test::Encoder encoder;
    ASN1T_BasicConstraintsSyntax constraints;
    constraints.cA = 1;
    ASN1T_Extension extension;
    rtSetOID(&extension.extnID, &id_ce_basicConstraints);
    extension.extnValueObject.decoded = &constraints;
    test::Encoder whole;
    EXPECT_EQ(asn1E_Extension(whole, &extension, ASN1EXPL), 14);
    EXPECT_EQ(whole.message(), "30 0C 06 03 55 1D 13 04 05 30 03 01 01 FF");
    EXPECT_EQ(extension.extnValue.data, nullptr) << "the record is not touched while encoding";
    EXPECT_EQ(asn1ETC_Extension(encoder, &extension), RTS_OK);
    EXPECT_EQ(test::text(extension.extnValue.data, extension.extnValue.numocts), "30 03 01 01 FF");
    EXPECT_EQ(encoder.message(), "") << "the buffer in use is not touched";

    extension.extnValueObject = {};
    EXPECT_EQ(asn1DTC_Extension(encoder, &extension), RTS_OK);
    ASSERT_NE(extension.extnValueObject.decoded, nullptr);
    EXPECT_EQ(static_cast<ASN1T_BasicConstraintsSyntax*>(extension.extnValueObject.decoded)->cA, 0xFF);
}

TEST(TableStep, EachOfSeveralValuesIsResolvedAndWrittenAnew) {
    test::Decoder decoder(
        "30 2D 06 09 2A 86 48 86 F7 0D 01 09 05 31 20 17 0D 32 34 30 31 30 31 30 30 30 30 30 30 5A 18 0F 32 "
        "30 32 35 30 31 30 31 "
        "30 30 30 30 30 30 5A");
    ASN1T_Attribute attribute;
    ASSERT_EQ(asn1D_Attribute(decoder, &attribute, ASN1EXPL, 0), RTS_OK);
    ASSERT_EQ(attribute.values.count, 2u);
    const auto* first = static_cast<Asn1TObject*>(attribute.values.head->data);
    const auto* second = static_cast<Asn1TObject*>(attribute.values.tail->data);
    ASSERT_NE(first->decoded, nullptr);
    ASSERT_NE(second->decoded, nullptr);
    EXPECT_EQ(static_cast<ASN1T_Time*>(first->decoded)->t, 1u);
    EXPECT_EQ(static_cast<ASN1T_Time*>(second->decoded)->t, 2u);

    static_cast<ASN1T_Time*>(first->decoded)->u.utcTime = "250101000000Z";
    EXPECT_EQ(asn1ETC_Attribute(decoder, &attribute), RTS_OK);
    EXPECT_EQ(test::text(first->data, first->numocts), "17 0D 32 35 30 31 30 31 30 30 30 30 30 30 5A");
}

}  // namespace
}  // namespace asn1data
