#include "identifier_names.h"

#include <algorithm>
#include <map>
#include <span>

#include "asn1data/descriptor.h"
#include "nearest_names.h"

namespace tools {
namespace {

struct OtherName {
    const char* name;
    const char* dotted;
};

// Names as in RFC 2985, 3274, 4210, 4519, 5280, 5480, 5758, 5940, 6211, 6962, 7633, 7894, 8410, 9215, 9480,
// 9763, 9881, 9909, X.520, ETSI EN 319 412-5 and 319 421 and the CA/Browser Forum's, with underscores as in
// the registry, and those of old extensions that certificates still carry.
constexpr OtherName kOtherNames[] = {
    {"anyExtendedKeyUsage", "2.5.29.37.0"},
    {"anyPolicy", "2.5.29.32.0"},
    {"best_practices_ts_policy", "0.4.0.2023.1.1"},
    {"businessCategory", "2.5.4.15"},
    {"cabf_domain_validated", "2.23.140.1.2.1"},
    {"cabf_extended_validation", "2.23.140.1.1"},
    {"cabf_individual_validated", "2.23.140.1.2.3"},
    {"cabf_organization_validated", "2.23.140.1.2.2"},
    {"challengePassword", "1.2.840.113549.1.9.7"},
    {"ct_cert_scts", "1.3.6.1.4.1.11129.2.4.5"},
    {"ct_precert_poison", "1.3.6.1.4.1.11129.2.4.3"},
    {"ct_precert_scts", "1.3.6.1.4.1.11129.2.4.2"},
    {"description", "2.5.4.13"},
    {"ecdsa_with_SHA1", "1.2.840.10045.4.1"},
    {"ecdsa_with_SHA224", "1.2.840.10045.4.3.1"},
    {"ecdsa_with_SHA256", "1.2.840.10045.4.3.2"},
    {"ecdsa_with_SHA384", "1.2.840.10045.4.3.3"},
    {"ecdsa_with_SHA512", "1.2.840.10045.4.3.4"},
    {"id_aa_CMSAlgorithmProtect", "1.2.840.113549.1.9.52"},
    {"id_aa_otpChallenge", "1.2.840.113549.1.9.16.2.56"},
    {"id_aa_relatedCertRequest", "1.2.840.113549.1.9.16.2.60"},
    {"id_alg_zlibCompress", "1.2.840.113549.1.9.16.3.8"},
    {"id_at_organizationIdentifier", "2.5.4.97"},
    {"id_ce", "2.5.29"},
    {"id_ce_nameConstraints", "2.5.29.30"},
    {"id_ct_compressedData", "1.2.840.113549.1.9.16.1.9"},
    {"id_DHBasedMac", "1.2.840.113533.7.66.30"},
    {"id_dsa_with_sha224", "2.16.840.1.101.3.4.3.1"},
    {"id_dsa_with_sha256", "2.16.840.1.101.3.4.3.2"},
    {"id_ecPublicKey", "1.2.840.10045.2.1"},
    {"id_Ed25519", "1.3.101.112"},
    {"id_Ed448", "1.3.101.113"},
    {"id_etsi_qcs_LimitValue", "0.4.0.1862.1.2"},
    {"id_etsi_qcs_QcCClegislation", "0.4.0.1862.1.7"},
    {"id_etsi_qcs_QcCompliance", "0.4.0.1862.1.1"},
    {"id_etsi_qcs_QcPDS", "0.4.0.1862.1.5"},
    {"id_etsi_qcs_QcSSCD", "0.4.0.1862.1.4"},
    {"id_etsi_qcs_QcType", "0.4.0.1862.1.6"},
    {"id_etsi_qcs_RetentionPeriod", "0.4.0.1862.1.3"},
    {"id_it_caCerts", "1.3.6.1.5.5.7.4.17"},
    {"id_it_certProfile", "1.3.6.1.5.5.7.4.21"},
    {"id_it_certReqTemplate", "1.3.6.1.5.5.7.4.19"},
    {"id_it_confirmWaitTime", "1.3.6.1.5.5.7.4.14"},
    {"id_it_implicitConfirm", "1.3.6.1.5.5.7.4.13"},
    {"id_it_keyPairParamRep", "1.3.6.1.5.5.7.4.11"},
    {"id_it_keyPairParamReq", "1.3.6.1.5.5.7.4.10"},
    {"id_it_origPKIMessage", "1.3.6.1.5.5.7.4.15"},
    {"id_it_revPassphrase", "1.3.6.1.5.5.7.4.12"},
    {"id_it_rootCaCert", "1.3.6.1.5.5.7.4.20"},
    {"id_it_rootCaKeyUpdate", "1.3.6.1.5.5.7.4.18"},
    {"id_it_suppLangTags", "1.3.6.1.5.5.7.4.16"},
    {"id_it_unsupportedOIDs", "1.3.6.1.5.5.7.4.7"},
    {"id_kp_clientAuth", "1.3.6.1.5.5.7.3.2"},
    {"id_kp_codeSigning", "1.3.6.1.5.5.7.3.3"},
    {"id_kp_emailProtection", "1.3.6.1.5.5.7.3.4"},
    {"id_kp_serverAuth", "1.3.6.1.5.5.7.3.1"},
    {"id_kp_timeStamping", "1.3.6.1.5.5.7.3.8"},
    {"id_ml_dsa_44", "2.16.840.1.101.3.4.3.17"},
    {"id_ml_dsa_65", "2.16.840.1.101.3.4.3.18"},
    {"id_ml_dsa_87", "2.16.840.1.101.3.4.3.19"},
    {"id_ms_certificateTemplate", "1.3.6.1.4.1.311.21.7"},
    {"id_ms_enrollCertType", "1.3.6.1.4.1.311.20.2"},
    {"id_ms_userPrincipalName", "1.3.6.1.4.1.311.20.2.3"},
    {"id_PasswordBasedMac", "1.2.840.113533.7.66.13"},
    {"id_pe_qcStatements", "1.3.6.1.5.5.7.1.3"},
    {"id_pe_tlsfeature", "1.3.6.1.5.5.7.1.24"},
    {"id_pkix_ocsp_extended_revoke", "1.3.6.1.5.5.7.48.1.9"},
    {"id_pkix_ocsp_pref_sig_algs", "1.3.6.1.5.5.7.48.1.8"},
    {"id_ri_ocsp_response", "1.3.6.1.5.5.7.16.2"},
    {"id_slh_dsa_sha2_128f", "2.16.840.1.101.3.4.3.21"},
    {"id_slh_dsa_sha2_128s", "2.16.840.1.101.3.4.3.20"},
    {"id_slh_dsa_sha2_192f", "2.16.840.1.101.3.4.3.23"},
    {"id_slh_dsa_sha2_192s", "2.16.840.1.101.3.4.3.22"},
    {"id_slh_dsa_sha2_256f", "2.16.840.1.101.3.4.3.25"},
    {"id_slh_dsa_sha2_256s", "2.16.840.1.101.3.4.3.24"},
    {"id_slh_dsa_shake_128f", "2.16.840.1.101.3.4.3.27"},
    {"id_slh_dsa_shake_128s", "2.16.840.1.101.3.4.3.26"},
    {"id_slh_dsa_shake_192f", "2.16.840.1.101.3.4.3.29"},
    {"id_slh_dsa_shake_192s", "2.16.840.1.101.3.4.3.28"},
    {"id_slh_dsa_shake_256f", "2.16.840.1.101.3.4.3.31"},
    {"id_slh_dsa_shake_256s", "2.16.840.1.101.3.4.3.30"},
    {"id_tc26_gost3411_12_256", "1.2.643.7.1.1.2.2"},
    {"id_tc26_gost3411_12_512", "1.2.643.7.1.1.2.3"},
    {"id_X25519", "1.3.101.110"},
    {"id_X448", "1.3.101.111"},
    {"netscape_ca_policy_url", "2.16.840.1.113730.1.8"},
    {"netscape_ca_revocation_url", "2.16.840.1.113730.1.4"},
    {"netscape_cert_type", "2.16.840.1.113730.1.1"},
    {"netscape_comment", "2.16.840.1.113730.1.13"},
    {"rsaSignatureWithripemd160", "1.3.36.3.3.1.2"},
    {"secp256r1", "1.2.840.10045.3.1.7"},
    {"secp384r1", "1.3.132.0.34"},
    {"secp521r1", "1.3.132.0.35"},
    {"userId", "0.9.2342.19200300.100.1.1"},
};

struct Index {
    std::map<std::string, std::vector<std::string_view>, std::less<>> names;  // by dotted form
    std::map<std::string_view, std::string> identifiers;                      // by name

    void add(std::string_view name, const std::string& form) {
        if (identifiers.emplace(name, form).second) names[form].push_back(name);
    }
};

Index makeIndex() {
    Index index;
    for (const asn1data::NamedIdentifier& entry :
         std::span(asn1data::kAllIdentifiers, asn1data::kAllIdentifiersCount))
        index.add(entry.name, dotted(*entry.id));
    for (const OtherName& entry : kOtherNames) {
        if (!index.names.contains(entry.dotted)) index.add(entry.name, entry.dotted);
    }
    return index;
}

const Index& index() {
    static const Index instance = makeIndex();
    return instance;
}

std::string withUnderscores(std::string_view name) {
    std::string result(name);
    std::ranges::replace(result, '-', '_');
    return result;
}

bool isArc(std::string_view arc) {
    if (arc.empty() || (arc.size() > 1 && arc.front() == '0')) return false;
    return std::ranges::all_of(arc, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string dotted(const ASN1OBJID& identifier) {
    std::string text(static_cast<std::size_t>(rtOidToStrLen(&identifier)) + 1, '\0');
    rtOidToStr(&identifier, text.data(), static_cast<int>(text.size()) - 1);
    text.pop_back();
    return text;
}

const std::vector<std::string_view>& namesOf(std::string_view dotted) {
    static const std::vector<std::string_view> none;
    const auto found = index().names.find(dotted);
    return found == index().names.end() ? none : found->second;
}

std::string_view nameOf(std::string_view dotted) {
    const auto& names = namesOf(dotted);
    return names.empty() ? std::string_view() : names.front();
}

std::optional<std::string> findIdentifier(std::string_view name) {
    const auto found = index().identifiers.find(withUnderscores(name));
    if (found == index().identifiers.end()) return std::nullopt;
    return found->second;
}

std::string nearestIdentifiers(std::string_view name) {
    std::vector<std::string_view> names;
    for (const auto& entry : index().identifiers)
        names.push_back(entry.first);
    return hint(withUnderscores(name), names);
}

std::string_view knownParent(std::string_view dotted) {
    for (auto dot = dotted.rfind('.'); dot != std::string_view::npos; dot = dotted.rfind('.')) {
        dotted = dotted.substr(0, dot);
        if (!namesOf(dotted).empty()) return dotted;
    }
    return {};
}

bool isDotted(std::string_view text) {
    std::vector<std::string_view> arcs;
    for (std::string_view rest = text;;) {
        const auto dot = rest.find('.');
        arcs.push_back(rest.substr(0, dot));
        if (dot == std::string_view::npos) break;
        rest = rest.substr(dot + 1);
    }
    if (arcs.size() < 2 || !std::ranges::all_of(arcs, isArc)) return false;
    const bool belowTwo = arcs[0] == "0" || arcs[0] == "1";
    const bool belowForty = arcs[1].size() == 1 || (arcs[1].size() == 2 && arcs[1] < "40");
    return arcs[0] == "2" || (belowTwo && belowForty);
}

}  // namespace tools
