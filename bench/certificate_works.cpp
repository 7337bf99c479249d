// Certificates and revocation lists through the engine, beside OpenSSL's d2i and i2d functions.
#include "asn1data/x509_certificate.h"
#include "messages.h"
#include "works.h"

namespace bench {
namespace {

using namespace asn1data;

template <typename Record, typename Control>
void decodeOurs(const Octets& octets) {
    ASN1BERDecodeBuffer buffer(octets.data(), static_cast<int>(octets.size()));
    Record record;
    require(Control(buffer, record).Decode() == RTS_OK);
}

// A record that stays, with the context that holds its values.
struct DecodedCertificate {
    explicit DecodedCertificate(const Octets& octets)
        : buffer(octets.data(), static_cast<int>(octets.size())) {
        require(ASN1C_Certificate(buffer, record).Decode() == RTS_OK);
    }

    ASN1BERDecodeBuffer buffer;
    ASN1T_Certificate record;
};

void encodeOurs(ASN1T_Certificate& record, std::size_t length) {
    ASN1BEREncodeBuffer output;
    require(ASN1C_Certificate(output, record).Encode() == static_cast<int>(length));
}

// i2d_X509 hands out the octets that it read; this one encodes, all but the signature.
void encodeOpenssl(X509* certificate) {
    unsigned char* written = nullptr;
    require(i2d_re_X509_tbs(certificate, &written) > 0);
    OPENSSL_free(written);
}

}  // namespace

void addCertificateWorks(Works& works) {
    const Octets& octets = signer().encoded();
    works.push_back({"certificate decode",
                     [&octets] { decodeOurs<ASN1T_Certificate, ASN1C_Certificate>(octets); },
                     [&octets] { decoded<Certificate>(d2i_X509, octets); },
                     {},
                     octets.size()});
    const auto ours = std::make_shared<DecodedCertificate>(octets);
    const std::shared_ptr<X509> theirs = decoded<Certificate>(d2i_X509, octets);
    works.push_back({"certificate encode",
                     [ours, length = octets.size()] { encodeOurs(ours->record, length); },
                     [theirs] { encodeOpenssl(theirs.get()); },
                     {}});
    static const Octets list = revocationList(100000);
    works.push_back({"decode of a revocation list of 100000 entries",
                     [] { decodeOurs<ASN1T_CertificateListLegacy, ASN1C_CertificateListLegacy>(list); },
                     [] { decoded<RevocationList>(d2i_X509_CRL, list); },
                     {},
                     list.size()});
}

}  // namespace bench
