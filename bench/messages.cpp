#include "messages.h"

#include <openssl/ec.h>

#include <cstdint>
#include <map>

namespace bench {
namespace {

constexpr std::uint64_t kFirstSerialNumber = 0x1234567890ABCDEF;

void addExtension(X509* certificate, X509* issuer, int type, const char* value) {
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, type, value);
    require(extension && X509_add_ext(certificate, extension, -1));
    X509_EXTENSION_free(extension);
}

void setName(X509_NAME* name, const char* commonName) {
    const auto add = [name](const char* type, const char* text) {
        require(X509_NAME_add_entry_by_txt(name, type, MBSTRING_UTF8,
                                           reinterpret_cast<const unsigned char*>(text), -1, -1, 0));
    };
    add("C", "DE");
    add("O", "Example Organisation");
    add("CN", commonName);
}

// Without its extensions and its signature.
Certificate newCertificate(const char* name, EVP_PKEY* key, X509* issuer) {
    Certificate made(X509_new());
    X509* self = made.get();
    X509_set_version(self, X509_VERSION_3);
    ASN1_INTEGER_set_uint64(X509_get_serialNumber(self), kFirstSerialNumber);
    setName(X509_get_subject_name(self), name);
    X509_set_issuer_name(self, X509_get_subject_name(issuer ? issuer : self));
    X509_gmtime_adj(X509_getm_notBefore(self), 0);
    X509_gmtime_adj(X509_getm_notAfter(self), 90L * 86400);
    X509_set_pubkey(self, key);
    return made;
}

struct Authority {
    Key key{EVP_EC_gen("P-256")};
    Certificate certificate = newCertificate("Example Authority", key.get(), nullptr);
    Octets octets;

    Authority() {
        X509* self = certificate.get();
        addExtension(self, self, NID_subject_key_identifier, "hash");
        addExtension(self, self, NID_authority_key_identifier, "keyid");
        addExtension(self, self, NID_basic_constraints, "critical,CA:TRUE");
        addExtension(self, self, NID_key_usage, "critical,keyCertSign,cRLSign");
        require(X509_sign(self, key.get(), EVP_sha256()) > 0);
        octets = encoded(i2d_X509, self);
    }
};

const Authority& authority() {
    static const Authority made;
    return made;
}

Certificate leafOf(EVP_PKEY* key) {
    X509* issuer = authority().certificate.get();
    Certificate made = newCertificate("www.example.com", key, issuer);
    const auto add = [&](int type, const char* value) { addExtension(made.get(), issuer, type, value); };
    add(NID_subject_key_identifier, "hash");
    add(NID_authority_key_identifier, "keyid");
    add(NID_basic_constraints, "critical,CA:FALSE");
    add(NID_key_usage, "critical,digitalSignature");
    add(NID_ext_key_usage, "serverAuth,clientAuth,OCSPSigning");
    add(NID_subject_alt_name, "DNS:www.example.com,DNS:example.com");
    add(NID_info_access, "OCSP;URI:http://ocsp.example.com,caIssuers;URI:http://example.com/ca.cer");
    add(NID_crl_distribution_points, "URI:http://example.com/ca.crl");
    add(NID_certificate_policies, "DER:300A3008060667810C010201");
    require(X509_sign(made.get(), authority().key.get(), EVP_sha256()) > 0);
    return made;
}

Identifier identifierOf(X509* certificate) {
    return Identifier(OCSP_cert_to_id(EVP_sha1(), certificate, authority().certificate.get()));
}

void addEntries(OCSP_BASICRESP* basic, int entries) {
    const Time thisUpdate(ASN1_TIME_set(nullptr, kThisUpdate));
    const Time nextUpdate(ASN1_TIME_set(nullptr, kNextUpdate));
    const Identifier id = identifierOf(signer().certificate());
    ASN1_INTEGER* serialNumber = nullptr;
    OCSP_id_get0_info(nullptr, nullptr, nullptr, &serialNumber, id.get());
    for (int i = 0; i < entries; ++i) {
        ASN1_INTEGER_set_uint64(serialNumber, kFirstSerialNumber + static_cast<std::uint64_t>(i));
        require(OCSP_basic_add1_status(basic, id.get(), V_OCSP_CERTSTATUS_GOOD, 0, nullptr, thisUpdate.get(),
                                       nextUpdate.get()));
    }
}

Octets makeResponse(int entries, bool typical, const Signer& by) {
    const Basic basic(OCSP_BASICRESP_new());
    addEntries(basic.get(), entries);
    if (typical) OCSP_basic_add1_nonce(basic.get(), nullptr, kNonceOctets);
    const unsigned long flags = OCSP_RESPID_KEY | (typical ? 0 : OCSP_NOCERTS);
    require(OCSP_basic_sign(basic.get(), by.certificate(), by.key(), EVP_sha256(), nullptr, flags));
    const Response response(OCSP_response_create(OCSP_RESPONSE_STATUS_SUCCESSFUL, basic.get()));
    require(response != nullptr);
    return encoded(i2d_OCSP_RESPONSE, response.get());
}

Octets makeRequest() {
    const Request request(OCSP_REQUEST_new());
    require(OCSP_request_add0_id(request.get(), identifierOf(signer().certificate()).release()));
    require(OCSP_request_add1_nonce(request.get(), nullptr, kNonceOctets));
    return encoded(i2d_OCSP_REQUEST, request.get());
}

void addRevoked(X509_CRL* list, int index, ASN1_TIME* date) {
    X509_REVOKED* entry = X509_REVOKED_new();
    const std::unique_ptr<ASN1_INTEGER, Release<ASN1_INTEGER_free>> serialNumber(ASN1_INTEGER_new());
    ASN1_INTEGER_set_uint64(serialNumber.get(), kFirstSerialNumber + static_cast<std::uint64_t>(index));
    const std::unique_ptr<ASN1_ENUMERATED, Release<ASN1_ENUMERATED_free>> reason(ASN1_ENUMERATED_new());
    ASN1_ENUMERATED_set(reason.get(), CRL_REASON_SUPERSEDED);
    X509_REVOKED_set_serialNumber(entry, serialNumber.get());
    X509_REVOKED_set_revocationDate(entry, date);
    require(X509_REVOKED_add1_ext_i2d(entry, NID_crl_reason, reason.get(), 0, 0) == 1);
    require(X509_CRL_add0_revoked(list, entry));
}

}  // namespace

Signer::Signer()
    : mKey(EVP_EC_gen("P-256")),
      mCertificate(leafOf(mKey.get())),
      mEncoded(bench::encoded(i2d_X509, mCertificate.get())) {}

const Signer& signer() {
    static const Signer made;
    return made;
}

X509* authorityCertificate() {
    return authority().certificate.get();
}

const Octets& authorityOctets() {
    return authority().octets;
}

Octets responseOf(int entries, const Signer& by) {
    return makeResponse(entries, false, by);
}

const Octets& smallResponse() {
    return largeResponse(1);
}

const Octets& typicalResponse() {
    static const Octets octets = makeResponse(1, true, signer());
    return octets;
}

const Octets& largeResponse(int entries) {
    static std::map<int, Octets> made;
    Octets& octets = made[entries];
    if (octets.empty()) octets = responseOf(entries);
    return octets;
}

Octets basicOctets(const Octets& response) {
    const auto whole = decoded<Response>(d2i_OCSP_RESPONSE, response);
    const Basic basic(OCSP_response_get1_basic(whole.get()));
    return encoded(i2d_OCSP_BASICRESP, basic.get());
}

Octets signedPart(const OCSP_BASICRESP* basic) {
    return encoded(i2d_OCSP_RESPDATA, OCSP_resp_get0_respdata(basic));
}

const Octets& typicalRequest() {
    static const Octets octets = makeRequest();
    return octets;
}

Octets revocationList(int entries) {
    const RevocationList list(X509_CRL_new());
    const Time thisUpdate(ASN1_TIME_set(nullptr, kThisUpdate));
    const Time nextUpdate(ASN1_TIME_set(nullptr, kNextUpdate));
    X509_CRL_set_version(list.get(), X509_CRL_VERSION_2);
    X509_CRL_set_issuer_name(list.get(), X509_get_subject_name(authorityCertificate()));
    X509_CRL_set1_lastUpdate(list.get(), thisUpdate.get());
    X509_CRL_set1_nextUpdate(list.get(), nextUpdate.get());
    for (int i = 0; i < entries; ++i)
        addRevoked(list.get(), i, thisUpdate.get());
    require(X509_CRL_sign(list.get(), authority().key.get(), EVP_sha256()) > 0);
    return encoded(i2d_X509_CRL, list.get());
}

}  // namespace bench
