// Requests, responses and what stands in them while memory fails.
#include "allocation/sweep.h"
#include "asn1/certificate_values.h"
#include "asn1/name.h"
#include "ocsp/crl_id_extensions.h"
#include "ocsp/messages.h"
#include "ocsp/ocsp_extensions.h"
#include "ocsp/response_message.h"
#include "ocsp/service_locator.h"

namespace Mirvane::PKI::OCSP {
namespace {

using test::After;
using test::blob;
using test::kAssignedSound;
using test::kDecodedSound;
using test::kSound;
using test::rsaSigner;
using test::sweepChange;
using test::sweepMake;
using test::sweepValue;

CCertIdWithSignature signatureIdentifier() {
    return CCertIdWithSignature(rsaSigner().encoded);
}

std::vector<CReqCert> allWaysToName() {
    return {CReqCert(test::certID()), CReqCert(CReqCert::certificate, rsaSigner().encoded),
            CReqCert(signatureIdentifier())};
}

TEST(MessagesWithoutMemory, Identifiers) {
    sweepValue("CCertID", test::certID(), kAssignedSound);
    sweepMake("CCertID of certificates", [] { return test::certID(); });
    sweepValue("CCertIdWithSignature", signatureIdentifier(), kAssignedSound);
    sweepMake("CCertIdWithSignature of a certificate", signatureIdentifier);
    for (const CReqCert& certificate : allWaysToName()) {
        sweepValue("CReqCert", certificate, kAssignedSound);
        sweepValue("CSingleRequest", CSingleRequest(certificate));
        sweepChange(
            "certID put", certificate, [id = test::certID()](CReqCert& object) { object.put_certID(id); },
            After::sound);
        sweepChange(
            "full certificate put", certificate,
            [](CReqCert& object) { object.put_fullCert(CReqCert::certificate, rsaSigner().encoded); },
            After::sound);
    }
    const ASN1::CExtensions extensions = test::nonceExtension();
    sweepChange("extensions put", CSingleRequest(test::certID()),
                [&](CSingleRequest& object) { object.put_singleRequestExtensions(&extensions); });
    sweepValue("CResponderID", CResponderID::fromCert(CResponderID::byName, rsaSigner().encoded));
    sweepMake("CResponderID of a certificate",
              [] { return CResponderID::fromCert(CResponderID::byKey, rsaSigner().encoded); });
}

TEST(MessagesWithoutMemory, StatusEntries) {
    const CDateTime time("20260101120000Z");
    const ASN1::CrlReason reason = ASN1::keyCompromise;
    const CCertStatus revoked(time, &reason);
    const ASN1::CExtensions extensions = test::nonceExtension();
    CSingleResponse entry(test::certID(), revoked, time);
    entry.put_nextUpdate(&time);
    sweepValue("CCertStatus", revoked);
    sweepChange("revoked put", CCertStatus(),
                [&](CCertStatus& object) { object.put_revoked(time, &reason); });
    sweepValue("CSingleResponse", entry);
    sweepChange("nextUpdate put", entry, [&](CSingleResponse& object) { object.put_nextUpdate(&time); });
    sweepChange("extensions put", entry,
                [&](CSingleResponse& object) { object.put_singleExtensions(&extensions); });
}

TEST(MessagesWithoutMemory, Requests) {
    CRequestMessage message = test::signedRequest();
    CSingleRequestList entries;
    for (const CReqCert& certificate : allWaysToName())
        entries.push_back(CSingleRequest(certificate));
    const ASN1::CExtensions extensions = test::nonceExtension();
    const CBlob name = ASN1::CName(L"C=RU,O=Example").encode();
    sweepValue("CRequestMessage", message, kSound);
    sweepChange(
        "entries put", message, [&](CRequestMessage& object) { object.put_requestList(entries); },
        After::sound);
    sweepChange("extensions put", message,
                [&](CRequestMessage& object) { object.put_requestExtensions(&extensions); });
    sweepChange("name put", message, [&](CRequestMessage& object) { object.put_requestorName(&name); });
    message.put_requestList(entries);
    sweepValue("CRequestMessage of all entries", message, kSound);
    const CBlobList certificates{rsaSigner().encoded};
    const test::Provider provider(rsaSigner().open());
    sweepChange("signed", message, [&](CRequestMessage& object) {
        object.sign(provider, AT_SIGNATURE, rsaSigner().algorithm, &certificates);
    });
    sweepMake("verified", [message = test::signedRequest()] { return message.verify(rsaSigner().encoded); });
}

TEST(MessagesWithoutMemory, Responses) {
    CBasicResponse message = test::signedResponse();
    const CBlobList certificates{rsaSigner().encoded};
    const ASN1::CExtensions extensions = test::nonceExtension();
    sweepChange("certificates put", message,
                [&](CBasicResponse& object) { object.put_certs(&certificates); });
    sweepChange("extensions put", message,
                [&](CBasicResponse& object) { object.put_responseExtensions(&extensions); });
    sweepChange("entries put", message, [entries = message.get_responses()](CBasicResponse& object) {
        object.put_responses(entries);
    });
    message.put_certs(&certificates);
    message.put_responseExtensions(&extensions);
    sweepValue("CBasicResponse", message, kSound);
    const test::Provider provider(rsaSigner().open());
    sweepChange("signed", message,
                [&](CBasicResponse& object) { object.sign(provider, AT_SIGNATURE, rsaSigner().algorithm); });
    sweepMake("verified", [message = test::signedResponse()] { return message.verify(rsaSigner().encoded); });

    const CBlob encoded = message.encode();
    CResponseMessage answer;
    answer.put_response("1.3.6.1.5.5.7.48.1.1", &encoded);
    sweepValue("CResponseMessage", answer, kSound);
    sweepChange("response put", CResponseMessage(),
                [&](CResponseMessage& object) { object.put_response("1.3.6.1.5.5.7.48.1.1", &encoded); });
}

TEST(MessagesWithoutMemory, Extensions) {
    const CDateTime time("20260101120000Z");
    const unsigned int number = 70000;
    CExtCrlID crl;
    sweepChange(
        "place put", crl, [](CExtCrlID& object) { object.put_crlUrl("http://example.org/a.crl"); },
        After::sound);
    crl.put_crlUrl("http://example.org/a.crl");
    crl.put_crlNum(&number);
    crl.put_crlTime(&time);
    sweepValue("CExtCrlID", crl);
    sweepValue("CExtHistoricalRequest", CExtHistoricalRequest(crl.get_value()));
    sweepValue("CExtNonce", CExtNonce(CBlob(32)));
    sweepChange("nonce put", CExtNonce(CBlob(32)), [](CExtNonce& object) { object.put_nonce(CBlob(8)); });
    sweepValue(
        "CExtAcceptableResponses",
        CExtAcceptableResponses(CStringList{CStringProxy("1.3.6.1.5.5.7.48.1.1"), CStringProxy("1.2.3")}),
        kAssignedSound);
    sweepValue("CExtArchiveCutoff", CExtArchiveCutoff(time));
    ASN1::CGeneralName place;
    place.put_uniformResourceIdentifier(L"http://example.org/of/some/length");
    const ASN1::CDistributionPointName name(ASN1::CGeneralNames{place});
    ASN1::CDistributionPoint point;
    point.put_distributionPoint(&name);
    sweepValue("CExtCRLLocator", CExtCRLLocator(ASN1::CCRLDistPointsSyntax{point}), kAssignedSound);
    CExtServiceLocator locator;
    const ASN1::CAuthorityInfoAccessSyntax access{{"1.3.6.1.5.5.7.48.1", place}};
    locator.put_issuer(ASN1::CName(L"C=RU,O=Example").encode());
    sweepChange(
        "locator put", locator, [&](CExtServiceLocator& object) { object.put_locator(&access); },
        After::sound);
    locator.put_locator(&access);
    sweepValue("CExtServiceLocator", locator, kDecodedSound);
}

TEST(MessagesWithoutMemory, EmbeddedCertificates) {
    sweepValue("CCertificateValue", ASN1::CCertificateValue(rsaSigner().encoded));
    sweepValue("CCertificateValues", ASN1::CCertificateValues{rsaSigner().encoded, rsaSigner().encoded});
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
