// Values of X.509 and CMS while memory fails.
#include <algorithm>

#include "allocation/sweep.h"
#include "asn1/access_description.h"
#include "asn1/attribute_register.h"
#include "asn1/attribute_string_value.h"
#include "asn1/attributes.h"
#include "asn1/certificate_values.h"
#include "asn1/content_info.h"
#include "asn1/distribution_point.h"
#include "asn1/ess_identifiers.h"
#include "asn1/name.h"
#include "asn1/pki_status.h"
#include "asn1/signing_certificate_attributes.h"
#include "asn1/typed_attributes.h"
#include "asn1/typed_extensions.h"
#include "base/date_time_span.h"

namespace Mirvane::ASN1 {
namespace {

using test::After;
using test::blob;
using test::kAssignedSound;
using test::kDecodedSound;
using test::sweepChange;
using test::sweepMake;
using test::sweepValue;

// Longer than what a string holds in place, so that each copy allocates.
constexpr wchar_t longText[] = L"a text that is longer than any string holds in place";
constexpr char longIdentifier[] = "1.3.6.1.4.1.99999.1.2.3.4.5.6.7.8.9.10";

CAlgorithmIdentifier algorithm() {
    CAlgorithmIdentifier result("2.16.840.1.101.3.4.2.1");
    result.put_parameters(blob("05 00"));
    return result;
}

CGeneralNames names() {
    CGeneralNames result(4);
    auto position = result.begin();
    (position++)->put_uniformResourceIdentifier(longText);
    (position++)->put_directoryName(CName(L"C=RU,O=Example").encode());
    (position++)->put_dNSName(L"ocsp.example.org");
    position->put_registeredID(L"1.2.643.7.1.1.3.2");
    return result;
}

CBigInteger number() {
    CBigInteger result;
    result.assign(blob("01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10").pbData(), 16);
    return result;
}

CIssuerSerial issuerSerial() {
    return {names(), number()};
}

CBlob hash() {
    return CBlob(20);
}

CExtensions extensions() {
    CExtensions result;
    result.insert(CExtension(CExtCRLReason(keyCompromise), false));
    result.insert(CExtension(CExtInvalidityDate(CDateTime("20260101120000Z")), true));
    result.insert(CExtension(CExtValue(longIdentifier, blob("04 02 01 02")), false));
    return result;
}

TEST(ValuesWithoutMemory, BytesAndTexts) {
    sweepValue("CBlob", blob("01 02 03"));
    sweepChange("CBlob grown", blob("01 02 03"), [](CBlob& object) {
        object.resize_to(100);
        std::fill_n(object.pbData(), 100, 7);
    });
    sweepChange("CBlob assigned from bytes", blob("01 02 03"), [](CBlob& object) {
        object.assign(reinterpret_cast<unsigned char const*>(longIdentifier), sizeof longIdentifier);
    });
    sweepChange("CBlob appended", blob("01 02 03"),
                [other = blob("04 05")](CBlob& object) { object += other; });
    sweepChange("CBlob from digits", blob("01"),
                [](CBlob& object) { object.readFromHexString("0102030405"); });
    sweepMake("CBlob as digits", [bytes = CBlob(100)] { return bytes.writeToHexString(4); });
    sweepValue("CStringProxy", CStringProxy(longIdentifier));
    sweepValue("CWStringProxy", CWStringProxy(longText));
    sweepValue("CBlobList", CBlobList{blob("01"), blob("02 03")});
    const CStringList texts{CStringProxy("1.2"), CStringProxy(longIdentifier)};
    sweepMake("CStringList copied", [&] { return CStringList(texts); });
    sweepChange(
        "CStringList assigned", texts, [&](CStringList& object) { object = texts; }, After::sound);
}

TEST(ValuesWithoutMemory, TimesAndNumbers) {
    const CDateTime time("20260101120000.123456Z");
    sweepMake("CDateTime from text", [] { return CDateTime("20260101120000.123456Z").tostring(); });
    sweepMake("CDateTime as text", [&] { return time.getGeneralizedTime(); });
    sweepMake("CDateTime as wide text", [&] { return time.towstring(); });
    sweepMake("CDateTimeSpan from text", [] { return CDateTimeSpan("00000001020000Z").tostring(); });
    sweepMake("DateAddW", [&] { return DateAddW(L"y", 1, time).tostring(); });
    sweepValue("CTimeChoice", CTimeChoice(time), CTimeChoice("20600101000000Z"));
    sweepChange("CTimeChoice put", CTimeChoice(time),
                [](CTimeChoice& object) { object.put_time(CDateTime("20510101120000Z")); });
    sweepValue("CBigInteger", number());
    sweepChange("CBigInteger counted up", number(), [](CBigInteger& object) { ++object; });
    sweepMake("CBigInteger without sign", [value = number()] { return value.abs(); });
}

TEST(ValuesWithoutMemory, Algorithms) {
    sweepValue("CAlgorithmIdentifier", algorithm(), kDecodedSound);
    sweepValue("CAlgorithmIdentifierEx", CAlgorithmIdentifierEx(algorithm()), kDecodedSound);
    sweepChange("algorithm put", CAlgorithmIdentifierEx(algorithm()),
                [](CAlgorithmIdentifierEx& object) { object.put_algorithm(longIdentifier); });
    sweepChange("parameters put", algorithm(),
                [](CAlgorithmIdentifier& object) { object.put_parameters(CBlob(100)); });
}

TEST(ValuesWithoutMemory, Names) {
    const CAttributeTypeAndValue attribute(L"CN=a common name of some length");
    sweepValue("CAttributeTypeAndValue", attribute, kAssignedSound);
    sweepChange("type put", attribute, [](CAttributeTypeAndValue& object) { object.put_type("2.5.4.10"); });
    sweepChange("type text put", attribute,
                [](CAttributeTypeAndValue& object) { object.put_type_str(L"O"); });
    sweepChange("value text put", attribute,
                [](CAttributeTypeAndValue& object) { object.put_value_str(longText); });
    sweepChange("attribute from text", attribute, [](CAttributeTypeAndValue& object) {
        object.fromString(L"O=an organization of some length");
    });
    sweepMake("attribute's value as text", [&] { return attribute.get_value_str(); });
    sweepMake("attribute's type as text", [&] { return attribute.get_type_str(); });
    sweepMake("registered type", [] { return CATAVRegister::typeFromStr(L"CN"); });
    sweepValue("CRelativeDistinguishedName", CRelativeDistinguishedName(L"CN=Ivan+E=ivan@example.org"));
    const CName name(L"C=RU,O=an organization of some length,CN=Ivan+E=ivan@example.org");
    sweepValue("CName", name, CName(L"C=DE"), kAssignedSound);
    sweepChange("CName from text", name, [](CName& object) { object.fromString(L"OU=Department,L=Omsk"); });
    for (const CGeneralName& general : names())
        sweepValue("CGeneralName", general, names().front());
    sweepChange("general name put", names().front(),
                [](CGeneralName& object) { object.put_iPAddress(CBlob(4)); });
    sweepChange("general name's text put", names().front(),
                [](CGeneralName& object) { object.put_rfc822Name(longText); });
}

TEST(ValuesWithoutMemory, ExtensionsAndWhatStandsInThem) {
    sweepValue("CExtension", extensions().back());
    sweepValue("CExtensions", extensions(), CExtensions{extensions().back()}, kAssignedSound);
    sweepChange("extension inserted", extensions(), [](CExtensions& object) {
        object.insert(CExtension(CExtValue("1.2.3.4.5.6.7.8.9.10", CBlob(30)), true));
    });
    sweepChange("extension replaced", extensions(), [](CExtensions& object) {
        object.insert(CExtension(CExtValue(longIdentifier, CBlob(30)), true));
    });
    sweepValue("CExtCRLReason", CExtCRLReason(keyCompromise));
    sweepValue("CExtHoldInstructionCode", CExtHoldInstructionCode("1.2.840.10040.2.3"), kAssignedSound);
    sweepValue("CExtInvalidityDate", CExtInvalidityDate(CDateTime("20260101120000Z")));
    sweepValue("CExtCertificateIssuer", CExtCertificateIssuer(names()), kAssignedSound);
    const CDateTime time("20260101120000Z");
    sweepValue("CExtPrivateKeyUsagePeriod", CExtPrivateKeyUsagePeriod(&time, &time));
    sweepChange(
        "end put", CExtPrivateKeyUsagePeriod(&time, nullptr),
        [&](CExtPrivateKeyUsagePeriod& object) { object.put_notAfter(&time); }, After::sound);

    CDistributionPoint point;
    const CDistributionPointName pointName(names());
    const CGeneralNames issuer = names();
    point.put_distributionPoint(&pointName);
    point.put_cRLIssuer(&issuer);
    sweepValue("CDistributionPointName", pointName, CDistributionPointName(CGeneralNames(1, issuer.back())));
    sweepValue("CDistributionPoint", point);
    sweepChange("issuer put", point, [&](CDistributionPoint& object) { object.put_cRLIssuer(&issuer); });
    const CAccessDescription access("1.3.6.1.5.5.7.48.1", names().front());
    sweepValue("CAccessDescription", access);
    sweepValue("CAuthorityInfoAccessSyntax", CAuthorityInfoAccessSyntax{access, access});
}

TEST(ValuesWithoutMemory, Attributes) {
    CAttribute attribute("1.2.840.113549.1.9.4");
    attribute.add(blob("04 03 01 02 03"));
    attribute.add(blob("04 03 01 02 04"));
    sweepValue("CAttribute", attribute, CAttribute(longIdentifier));
    sweepChange("value added", attribute, [](CAttribute& object) { object.add(blob("04 01 07")); });
    sweepValue("CAttributes", CAttributes{attribute, attribute}, CAttributes{CAttribute(longIdentifier)},
               kAssignedSound);
    sweepValue("CAttrValue", CAttrValue(longIdentifier, CBlob(20)), kAssignedSound);
    sweepMake("CAttrCommonName", [] { return CAttrCommonName("a common name of some length"); });
    sweepValue("CAttrContentType", CAttrContentType("1.2.840.113549.1.7.1"));
    CAttrMessageDigest digest;
    digest.put_messageDigest(hash());
    sweepValue("CAttrMessageDigest", digest, kAssignedSound);
    sweepValue("CAttrSigningTime", CAttrSigningTime(CDateTime("20260101120000Z")),
               CAttrSigningTime(CDateTime(1, 0)));
}

TEST(ValuesWithoutMemory, IdentifiersOfSigningCertificates) {
    CESSCertID first(hash());
    CESSCertIDv2 second(hash(), algorithm());
    COtherCertID other(hash(), algorithm());
    const CIssuerSerial issuer = issuerSerial();
    sweepValue("CIssuerSerial", issuer);
    sweepChange("issuer put", first, [&](CESSCertID& object) { object.put_issuerSerial(&issuer); });
    sweepChange("issuer put", second, [&](CESSCertIDv2& object) { object.put_issuerSerial(&issuer); });
    sweepChange("issuer put", other, [&](COtherCertID& object) { object.put_issuerSerial(&issuer); });
    first.put_issuerSerial(&issuer);
    second.put_issuerSerial(&issuer);
    other.put_issuerSerial(&issuer);
    sweepValue("CESSCertID", first, CESSCertID(CBlob(8)));
    sweepValue("CESSCertIDv2", second, CESSCertIDv2(CBlob(8)));
    sweepValue("COtherCertID", other, COtherCertID(CBlob(8), algorithm()));
    sweepValue("COtherHashAlgAndValue", COtherHashAlgAndValue(hash(), algorithm()));
    const COtherHash otherHash(COtherHashAlgAndValue(hash(), algorithm()));
    sweepValue("COtherHash of SHA-1", COtherHash(hash()), otherHash);
    sweepValue("COtherHash", otherHash, COtherHash(hash()));
    sweepValue("CPolicyInformation", CPolicyInformation(longIdentifier));
    sweepValue("CAttrSigningCertificate", CAttrSigningCertificate({first, first}));
    sweepValue("CAttrSigningCertificateV2", CAttrSigningCertificateV2({second}),
               CAttrSigningCertificateV2({CESSCertIDv2(CBlob(8))}));
    sweepValue("CAttrOtherSigningCertificate", CAttrOtherSigningCertificate({other}));
    const CPolicyInformationList policies{CPolicyInformation(longIdentifier)};
    sweepChange(
        "policies put", CAttrSigningCertificate({first}),
        [&](CAttrSigningCertificate& object) { object.put_policies(&policies); }, After::sound);
}

TEST(ValuesWithoutMemory, StatusOfManagementMessages) {
    CPKIFreeText texts(longText, CLanguageTag("en-US"));
    texts.insert(CPKIFreeTextString(longText, CLanguageTag("ru-RU")));
    sweepValue("CPKIFreeTextString", texts.front());
    sweepValue("CPKIFreeText", texts);
    CPKIStatusInfo status(rejection);
    status.put_statusString(texts);
    status.put_failureInfo(CPKIFailureInfo(5));
    sweepValue("CPKIFailureInfo", CPKIFailureInfo(5));
    sweepValue("CPKIStatusInfo", status, CPKIStatusInfo(accepted));
    CInfoTypeAndValueList infos;
    infos.insert(CInfoTypeAndValue(longIdentifier, blob("05 00")));
    sweepValue("CInfoTypeAndValueList", infos);
    sweepChange("info inserted", infos, [](CInfoTypeAndValueList& object) {
        object.insert(CInfoTypeAndValue("1.2.3.4.5.6.7.8.9.10", CBlob(30)));
    });
    CRevAnnContent announcement(revocationWarning, CCertId(names().front(), number()),
                                CDateTime("20260101120000Z"), CDateTime("20260102120000Z"));
    const CRevAnnContent bare = announcement;
    const CExtensions details = extensions();
    sweepChange("details put", announcement,
                [&](CRevAnnContent& object) { object.put_crlDetails(&details); });
    announcement.put_crlDetails(&details);
    sweepValue("CCertId", announcement.get_certId());
    sweepValue("CRevAnnContent", announcement, bare);
}

TEST(ValuesWithoutMemory, SignedData) {
    sweepValue("CContentInfo", CContentInfo("1.2.840.113549.1.7.1", blob("04 03 01 02 03")),
               CContentInfo("1.2", blob("05 00")));
    CSignerInfo signer;
    signer.put_issuer(CName(L"C=RU,O=Example").encode());
    signer.put_serialNumber(number());
    signer.put_digestAlgorithm(algorithm());
    signer.put_signature(CBlob(64));
    sweepValue("CSignerInfo", signer, kAssignedSound);
}

}  // namespace
}  // namespace Mirvane::ASN1
