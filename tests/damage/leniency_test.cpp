// No malformed message is taken that OpenSSL refuses, but for those listed here with the rule that lets them
// pass. A file is offered to every type, whatever it was meant to be.
#include <gtest/gtest.h>
#include <openssl/cms.h>
#include <openssl/err.h>
#include <openssl/ocsp.h>
#include <openssl/ts.h>
#include <openssl/x509.h>

#include <map>

#include "support/recode.h"
#include "support/vectors.h"

namespace {

using test::Octets;

template <typename Object, Object* (*read)(Object**, const unsigned char**, long), void (*end)(Object*)>
bool opensslReads(const Octets& octets) {
    const unsigned char* position = octets.data();
    Object* const object = read(nullptr, &position, static_cast<long>(octets.size()));
    ERR_clear_error();
    if (object) end(object);
    return object != nullptr;
}

// The envelope and, as the openssl command does, the basic response in it.
bool opensslReadsResponse(const Octets& octets) {
    const unsigned char* position = octets.data();
    OCSP_RESPONSE* const response = d2i_OCSP_RESPONSE(nullptr, &position, static_cast<long>(octets.size()));
    OCSP_BASICRESP* const basic = response ? OCSP_response_get1_basic(response) : nullptr;
    const bool isRead =
        response && (basic || OCSP_response_status(response) != OCSP_RESPONSE_STATUS_SUCCESSFUL);
    OCSP_BASICRESP_free(basic);
    OCSP_RESPONSE_free(response);
    ERR_clear_error();
    return isRead;
}

bool weRead(const asn1data::TypeDescriptor& type, const Octets& octets) {
    test::LiveContext input;
    if (octets.empty()) return false;
    const int size = static_cast<int>(octets.size());
    return xd_setp(input, octets.data(), size, nullptr, nullptr) == RTS_OK &&
           asn1data::decode(input, type, asn1data::newRecord(input, type), ASN1EXPL, 0) == RTS_OK;
}

// Why we take what OpenSSL does not.
constexpr char kPadding[] = "BER: an INTEGER may have superfluous octets, or none";
constexpr char kCharacters[] = "which characters a string type has is not checked";
constexpr char kStringType[] = "an attribute's value may be of any type (X.501)";
constexpr char kCutArc[] = "an identifier's last arc ends with its content";
constexpr char kCutCharacter[] = "an odd octet at the end of a wide string is dropped";
constexpr char kNoResponse[] = "a success without a response is for the reader of the response to refuse";
constexpr char kMissingEnd[] = "the end of the message ends what has indefinite length";
constexpr char kOverrun[] = "a length is not held against the values inside, which may end behind it";
constexpr char kInside[] = "what a content type has inside is left to the reader of that type";
constexpr char kMeaning[] = "OpenSSL looks at the meaning here: a token without its content";

struct Kind {
    const char* type;
    bool (*opensslReads)(const Octets&);
    std::map<std::string, const char*> exceptions;  // by the file's name; some versions take some of them
};

void PrintTo(const Kind& kind, std::ostream* stream) {
    *stream << kind.type;
}

class Leniency : public ::testing::TestWithParam<Kind> {};

TEST_P(Leniency, IsNeverMoreThanOpensslsButByARule) {
    const auto files = test::vectorFiles("malformed");
    if (files.empty()) GTEST_SKIP() << "no malformed messages here";
    const Kind& kind = GetParam();
    const auto& type = test::typeNamed(kind.type);
    for (const auto& path : files) {
        const Octets octets = test::readFile(path);
        const bool isListed = kind.exceptions.contains(path.filename());
        if (!weRead(type, octets)) {
            EXPECT_FALSE(isListed) << path.filename() << " is not taken any more";
        } else if (!isListed) {
            EXPECT_TRUE(kind.opensslReads(octets)) << path.filename();
        }
    }
}

const Kind kKinds[] = {
    {"OCSPResponse",
     opensslReadsResponse,
     {{"bssl-bad_ocsp_type.ors.der", kInside},
      {"bssl-good_response_invalid_serial.ors.der", kPadding},
      {"gnutls-gnutls_ocsp_resp_par-2504b7ee8a.ors.der", kCutArc},
      {"gnutls-gnutls_ocsp_resp_par-abc5dae199.ors.der", kCutCharacter},
      {"gnutls-gnutls_ocsp_resp_par-c4a80026d3.ors.der", kCutArc},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-07928dfa48.bin", kStringType},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-0e173d5542.bin", kCutArc},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-329aca065f.bin", kCutCharacter},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-61873b0274.bin", kCutArc},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-6c5c667d2a.bin", kStringType},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-925313b18b.bin", kStringType},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-be9d66797c.bin", kCutArc},
      {"gnutlsfuzz-gnutls_ocsp_resp_par-c1ce7a89b8.bin", kCutArc},
      {"pyca-resp-successful-no-response-bytes.ors.der", kNoResponse}}},
    {"BasicOCSPResponse", opensslReads<OCSP_BASICRESP, d2i_OCSP_BASICRESP, OCSP_BASICRESP_free>, {}},
    {"ResponseData", opensslReads<OCSP_RESPDATA, d2i_OCSP_RESPDATA, OCSP_RESPDATA_free>, {}},
    {"SingleResponse", opensslReads<OCSP_SINGLERESP, d2i_OCSP_SINGLERESP, OCSP_SINGLERESP_free>, {}},
    {"CertID",
     opensslReads<OCSP_CERTID, d2i_OCSP_CERTID, OCSP_CERTID_free>,
     {{"bsslfuzz-ocsp_cert_id-non_minimal_serial.bin", kPadding}}},
    {"OCSPRequest",
     opensslReads<OCSP_REQUEST, d2i_OCSP_REQUEST, OCSP_REQUEST_free>,
     {{"bssl-good_response_invalid_serial-pem3-2.orq.der", kPadding},
      {"gnutls-gnutls_ocsp_req_pars-d754cd5e53.orq.der", kPadding},
      {"gnutls-gnutls_ocsp_req_pars-ee21b9fd31.orq.der", kPadding}}},
    {"Certificate",
     opensslReads<X509, d2i_X509, X509_free>,
     {{"awslc-cert_corpus-a6e50bf5f5.crt.der", kStringType},
      {"bssl-good_response_invalid_serial-pem2-2.crt.der", kPadding},
      {"bsslfuzz-parse_certificate_fu-b6f7858019.bin", kCharacters},
      {"bsslfuzz-parse_certificate_fu-f45461144e.bin", kStringType},
      {"libtasn1-invalid-x509-id-000523_src-000001_op-int8_pos-43_val--128_co.bin", kCutArc},
      {"zcrypto-parsecert11-ia5.crt.der", kCharacters}}},
    {"CertificateListLegacy", opensslReads<X509_CRL, d2i_X509_CRL, X509_CRL_free>, {}},
    {"CertificationRequest",
     opensslReads<X509_REQ, d2i_X509_REQ, X509_REQ_free>,
     {{"bcjava-PKCS10Test-b64_1-3.csr.der", kCharacters}}},
    {"ContentInfo",
     opensslReads<CMS_ContentInfo, d2i_CMS_ContentInfo, CMS_ContentInfo_free>,
     {{"awslc-pkcs7_decrypt_corpus-a11a4582c0.p7.der", kStringType},
      {"awslc-pkcs7_verify_corpus-1b0b01acd0.p7.der", kCharacters},
      {"awslc-pkcs7_verify_corpus-25e68f4651.p7.der", kCharacters},
      {"awslc-pkcs7_verify_corpus-5b6c9c15c8.p7.der", kStringType},
      {"awslc-pkcs7_verify_corpus-c6cc95a2f6.p7.der", kOverrun},
      {"gnutlsfuzz-gnutls_pkcs7_parser_-31133ee7f2.bin", kOverrun},
      {"mbedtls-test_suite_pkcs7-hex247.p7.der", kStringType},
      {"mbedtls-test_suite_pkcs7-hex357.p7.der", kStringType},
      {"pyasn1-test_rfc5083-b64_1.p7.der", kInside}}},
    {"TimeStampReq", opensslReads<TS_REQ, d2i_TS_REQ, TS_REQ_free>, {}},
    {"TimeStampResp",
     opensslReads<TS_RESP, d2i_TS_RESP, TS_RESP_free>,
     {{"ossl-asn1-2201f097d3.tsr.der", kMeaning},
      {"ossl-asn1-c6b73c3482.tsr.der", kMeaning},
      {"osslfuzz-asn1-fbec0c2042.tsr.der", kMeaning},
      {"osslfuzz-x509-d444263006.bin", kMissingEnd}}},
};

INSTANTIATE_TEST_SUITE_P(Kinds, Leniency, ::testing::ValuesIn(kKinds),
                         [](const auto& info) { return std::string(info.param.type); });

}  // namespace
