#include "messages.h"

#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/ocsp.h>
#include <openssl/x509v3.h>

#include <memory>
#include <stdexcept>

namespace bench {
namespace {

template <auto Free>
struct Release {
    template <typename T>
    void operator()(T* pointer) const {
        Free(pointer);
    }
};

using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;
using Basic = std::unique_ptr<OCSP_BASICRESP, Release<OCSP_BASICRESP_free>>;
using Response = std::unique_ptr<OCSP_RESPONSE, Release<OCSP_RESPONSE_free>>;
using Identifier = std::unique_ptr<OCSP_CERTID, Release<OCSP_CERTID_free>>;
using Time = std::unique_ptr<ASN1_TIME, Release<ASN1_TIME_free>>;

void require(bool done) {
    if (!done) throw std::runtime_error("OpenSSL could not make a message");
}

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

struct Authority {
    Key key{EVP_EC_gen("P-256")};
    Certificate certificate;
    Key leafKey{EVP_EC_gen("P-256")};
    Certificate leaf;

    Authority() {
        certificate = make("Example Authority", key.get(), nullptr);
        leaf = make("www.example.com", leafKey.get(), certificate.get());
    }

    Certificate make(const char* name, EVP_PKEY* subjectKey, X509* issuer) {
        Certificate made(X509_new());
        X509* self = made.get();
        if (!issuer) issuer = self;
        X509_set_version(self, X509_VERSION_3);
        ASN1_INTEGER_set_uint64(X509_get_serialNumber(self), 0x1234567890ABCDEF);
        setName(X509_get_subject_name(self), name);
        X509_set_issuer_name(self, X509_get_subject_name(issuer));
        X509_gmtime_adj(X509_getm_notBefore(self), 0);
        X509_gmtime_adj(X509_getm_notAfter(self), 90L * 86400);
        X509_set_pubkey(self, subjectKey);
        addExtension(self, issuer, NID_subject_key_identifier, "hash");
        addExtension(self, issuer, NID_authority_key_identifier, "keyid");
        addExtension(self, issuer, NID_basic_constraints,
                     issuer == self ? "critical,CA:TRUE" : "critical,CA:FALSE");
        addExtension(self, issuer, NID_key_usage, "critical,digitalSignature,keyCertSign");
        if (issuer != self) {
            addExtension(self, issuer, NID_ext_key_usage, "serverAuth,clientAuth,OCSPSigning");
            addExtension(self, issuer, NID_subject_alt_name, "DNS:www.example.com,DNS:example.com");
            addExtension(self, issuer, NID_info_access,
                         "OCSP;URI:http://ocsp.example.com,caIssuers;URI:http://example.com/ca.cer");
            addExtension(self, issuer, NID_crl_distribution_points, "URI:http://example.com/ca.crl");
            addExtension(self, issuer, NID_certificate_policies, "DER:300A3008060667810C010201");
        }
        require(X509_sign(self, key.get(), EVP_sha256()) > 0);
        return made;
    }
};

const Authority& authority() {
    static const Authority made;
    return made;
}

template <typename T>
Octets encoded(int (*encode)(const T*, unsigned char**), const T* value) {
    Octets octets(static_cast<std::size_t>(encode(value, nullptr)));
    unsigned char* end = octets.data();
    encode(value, &end);
    return octets;
}

Octets makeResponse(int entries, bool typical) {
    const Authority& by = authority();
    Basic basic(OCSP_BASICRESP_new());
    Time thisUpdate(ASN1_TIME_set(nullptr, 1767225600));
    Time nextUpdate(ASN1_TIME_set(nullptr, 1767830400));
    for (int i = 0; i < entries; ++i) {
        Identifier id(OCSP_cert_to_id(EVP_sha1(), by.leaf.get(), by.certificate.get()));
        ASN1_INTEGER* serial = nullptr;
        OCSP_id_get0_info(nullptr, nullptr, nullptr, &serial, id.get());
        ASN1_INTEGER_set_uint64(serial, 0x1234567890ABCDEF + static_cast<std::uint64_t>(i));
        require(OCSP_basic_add1_status(basic.get(), id.get(), V_OCSP_CERTSTATUS_GOOD, 0, nullptr,
                                       thisUpdate.get(), nextUpdate.get()));
    }
    if (typical) OCSP_basic_add1_nonce(basic.get(), nullptr, 16);
    const unsigned long flags = OCSP_RESPID_KEY | (typical ? 0 : OCSP_NOCERTS);
    require(OCSP_basic_sign(basic.get(), by.leaf.get(), by.leafKey.get(), EVP_sha256(), nullptr, flags));
    Response response(OCSP_response_create(OCSP_RESPONSE_STATUS_SUCCESSFUL, basic.get()));
    require(response != nullptr);
    return encoded(i2d_OCSP_RESPONSE, response.get());
}

}  // namespace

const Octets& typicalCertificate() {
    static const Octets octets = encoded(i2d_X509, authority().leaf.get());
    return octets;
}

const Octets& smallResponse() {
    static const Octets octets = makeResponse(1, false);
    return octets;
}

const Octets& typicalResponse() {
    static const Octets octets = makeResponse(1, true);
    return octets;
}

Octets responseOf(int entries) {
    return makeResponse(entries, false);
}

}  // namespace bench
