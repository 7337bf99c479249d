#include "known_contents.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "asn1data/engine.h"
#include "identifier_names.h"
#include "type_names.h"

namespace tools {
namespace {

using asn1data::TypeDescriptor;

struct Place {
    std::string_view record;  // or the name of the open type
    std::string_view field;   // empty for an open type
    std::string_view content;
};

constexpr Place kPlaces[] = {
    {"CertificateList", "", "CertificateListLegacy"},       // large, and its octets are signed
    {"IssuerAndSerialNumber", "issuer", "Name"},            // compared as octets
    {"SignedOpenType", "toBeSigned", "TBSCertificate"},     // signed
    {"TSTInfoRaw", "tsa", "GeneralName"},                   // compared as octets
    {"TimeStampRespRaw", "timeStampToken", "ContentInfo"},  // signed
};

struct Content {
    std::string_view identifier;
    std::string_view type;
};

// RFC 6960, 5280, 3161, 4210, 4211, 5652, 5126, 8017, 8018, 8551, 9480 and [MS-WCCE].
constexpr Content kContents[] = {
    {"id_aa_encrypKeyPref", "SMIMEEncryptionKeyPreference"},
    {"id_aa_ets_archiveTimestamp", "TimeStampToken"},
    {"id_aa_ets_certCRLTimestamp", "TimeStampToken"},
    {"id_aa_ets_certificateRefs", "CompleteCertificateRefs"},
    {"id_aa_ets_certValues", "CertificateValues"},
    {"id_aa_ets_commitmentType", "CommitmentTypeIndication"},
    {"id_aa_ets_contentTimestamp", "TimeStampToken"},
    {"id_aa_ets_escTimeStamp", "TimeStampToken"},
    {"id_aa_ets_otherSigCert", "OtherSigningCertificate"},
    {"id_aa_ets_revocationRefs", "CompleteRevocationRefs"},
    {"id_aa_ets_revocationValues", "RevocationValues"},
    {"id_aa_ets_signerAttr", "SignerAttribute"},
    {"id_aa_ets_signerLocation", "SignerLocation"},
    {"id_aa_ets_sigPolicyId", "SignaturePolicy"},
    {"id_aa_signatureTimeStampToken", "TimeStampToken"},
    {"id_ce_inhibitAnyPolicy", "SkipCerts"},
    {"id_ce_nameConstraints", "NameConstraintsSyntax"},
    {"id_countersignature", "SignerInfo"},
    {"id_ct_DVCSRequestData", "DVCSRequest"},
    {"id_ct_DVCSResponseData", "DVCSResponse"},
    {"id_ct_TSTInfo", "TSTInfo"},
    {"id_DHBasedMac", "DHBMParameter"},
    {"id_it_origPKIMessage", "PKIMessage"},
    {"id_it_rootCaCert", "Certificate"},
    {"id_mgf1", "AlgorithmIdentifier"},
    {"id_Mirvane_ocsp_crl_locator", "CrlLocator"},
    {"id_Mirvane_ocsp_historical_request", "CrlID"},
    {"id_ms_certificateTemplate", "CertificateTemplate"},
    {"id_PasswordBasedMac", "PBMParameter"},
    {"id_PBES2", "PBES2_params"},
    {"id_PBKDF2", "PBKDF2_params"},
    {"id_pkix_ocsp_archive_cutoff", "ArchiveCutoff"},
    {"id_pkix_ocsp_crl", "CrlID"},
    {"id_pkix_ocsp_response", "AcceptableResponses"},
    {"id_pkix_ocsp_service_locator", "ServiceLocator"},
    {"id_qt_unotice", "QTUserNotice"},
    {"id_regCtrl_authenticator", "Authenticator"},
    {"id_regCtrl_oldCertID", "OldCertId"},
    {"id_regCtrl_pkiArchiveOptions", "PKIArchiveOptions"},
    {"id_regCtrl_pkiPublicationInfo", "PKIPublicationInfo"},
    {"id_regCtrl_protocolEncrKey", "ProtocolEncrKey"},
    {"id_regCtrl_regToken", "RegToken"},
    {"id_regInfo_certReq", "CertReq"},
    {"id_regInfo_utf8Pairs", "UTF8Pairs"},
    {"id_ri_ocsp_response", "OCSPResponse"},
    {"id_RSAES_OAEP", "RSAES_OAEP_params"},
    {"rsassa_pss", "RSASSA_PSS_params"},
    {"smimeCapabilities", "SMIMECapabilities"},
};

// The value types that the table of attributes has.
const TypeDescriptor* attributeValue(const ASN1OBJID& identifier) {
    const TypeDescriptor* attribute = findType("Attribute");
    if (!attribute || !attribute->table) return nullptr;
    const asn1data::ObjectEntry* entry = asn1data::findObject(*attribute->table->objects, identifier);
    return entry ? entry->value : nullptr;
}

}  // namespace

const TypeDescriptor* contentByPlace(std::string_view record, std::string_view field,
                                     std::string_view openType) {
    const auto found = std::ranges::find_if(kPlaces, [&](const Place& place) {
        return place.field.empty() ? place.record == openType
                                   : place.record == record && place.field == field;
    });
    return found == std::end(kPlaces) ? nullptr : findType(found->content);
}

const TypeDescriptor* contentByIdentifier(const ASN1OBJID& identifier) {
    if (const TypeDescriptor* value = attributeValue(identifier)) return value;
    const auto& names = namesOf(dotted(identifier));
    const auto found = std::ranges::find_if(kContents, [&names](const Content& content) {
        return std::ranges::find(names, content.identifier) != names.end();
    });
    return found == std::end(kContents) ? nullptr : findType(found->type);
}

}  // namespace tools
