// Real messages of many makers, through their types and back to their own bytes.
#include <gtest/gtest.h>
#include <openssl/pem.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/recode.h"
#include "support/vectors.h"

namespace {

using test::Octets;

// Why a file does not come back to its own bytes.
enum Change : int {
    kIndefinite = 1,     // BER: indefinite lengths come back definite
    kUnsorted,           // not DER: the elements of a SET OF stand in another order
    kExplicitDefault,    // not DER: a default value is written out
    kNotMinimal,         // not DER: an INTEGER has superfluous octets
    kPrimitiveExplicit,  // an explicit tag in primitive form, which goes out as a constructed one
};

// A file that is not as the others: the status with which it is refused, or how it comes back.
struct Exception {
    int outcome;
    const char* reason = "";
};

struct Kind {
    const char* name;
    const char* folder;
    const char* suffix;
    const char* type;
    std::map<std::string, Exception> exceptions;  // by the file's name without the suffix
};

class RealMessages : public ::testing::TestWithParam<Kind> {};

// Octets behind the message are no part of it.
bool beginsWith(const Octets& message, const Octets& octets) {
    return message.size() >= octets.size() && std::equal(octets.begin(), octets.end(), message.begin());
}

TEST_P(RealMessages, ComeBackToTheirOwnBytes) {
    const Kind& kind = GetParam();
    const auto& type = test::typeNamed(kind.type);
    std::size_t files = 0;
    std::size_t exceptions = 0;
    for (const auto& path : test::vectorFiles(kind.folder)) {
        const std::string name = path.filename().string();
        if (!name.ends_with(kind.suffix)) continue;
        ++files;
        const auto found =
            kind.exceptions.find(name.substr(0, name.size() - std::string(kind.suffix).size()));
        const int expected = found == kind.exceptions.end() ? 0 : found->second.outcome;
        exceptions += expected != 0;
        const Octets message = test::readFile(path);
        const test::Recoded recoded = test::recode(type, message);
        EXPECT_EQ(recoded.status, std::min(expected, 0)) << path;
        if (recoded.status != 0) continue;
        EXPECT_EQ(beginsWith(message, recoded.octets), expected == 0) << path;
        EXPECT_EQ(test::recode(type, recoded.octets).octets, recoded.octets) << path;
    }
    if (files == 0) GTEST_SKIP() << "no real messages here";
    EXPECT_EQ(exceptions, kind.exceptions.size()) << "an exception is told of a file that is not there";
}

const Kind kCertificates{"Certificates",
                         "certs",
                         ".crt.der",
                         "Certificate",
                         {{"dss-eu-lotl-pivot-335-b64_32", {-3, "a country name as UTF8String"}},
                          {"mbedtls-test_suite_x509parse-hex228", {-11, "no alternative of a CHOICE"}},
                          {"nss-jes2greg", {-23, "an empty list that may not be"}},
                          {"bssl-good_response_invalid_serial-pem2", {kNotMinimal}},
                          {"ocspbuilder-test-ocsp", {kUnsorted}},
                          {"pyca-san_edipartyname", {kPrimitiveExplicit}}}};

const Kind kLists{
    "RevocationLists",
    "crls",
    ".crl.der",
    "CertificateListLegacy",
    {{"djangoca-root.attribute", {-10, "an element behind the known ones of the distribution point"}},
     {"pyhanko-role-aa-aa-compromise-all-good", {-10}},
     {"pyhanko-role-aa-aa-compromise-some-revoked", {-10}},
     {"pyhanko-role-aa-all-good", {-10}},
     {"pyhanko-role-aa-nonaligned-name", {-10}},
     {"pyhanko-role-aa-other-reasons-all-good", {-10}},
     {"x509parser-only_attribute_certs", {-10}},
     {"nss-crldiff", {-6, "a revocation reason above 10"}},
     {"nss-crlgood", {-6}},
     {"nss-issuer-hanfei", {-6}},
     {"nss-issuer-none", {-6}},
     {"nss-sci", {-6}},
     {"rustlswebpki-crl.entry.invalid.reason", {-6}},
     {"zcrypto-x509_test-b64_8", {-23, "an empty list that may not be"}},
     {"mbedtls-test_suite_x509parse-hex294", {kExplicitDefault}}}};

const Kind kResponses{"OcspResponses",
                      "ocsp-responses",
                      ".ors.der",
                      "OCSPResponse",
                      {{"bcjava-OCSPTest-b64_4", {-23, "an empty list that may not be"}},
                       {"dss-DSSRevocationUtilsTest-b64_0", {kExplicitDefault}}}};

const Kind kRequests{"OcspRequests",
                     "ocsp-requests",
                     ".orq.der",
                     "OCSPRequest",
                     {{"bssl-good_response_invalid_serial-pem3", {kNotMinimal}}}};

const Kind kCertificationRequests{"CertificationRequests",
                                  "pkcs10",
                                  ".csr.der",
                                  "CertificationRequest",
                                  {{"ossl-s512-req", {-8, "no attributes field"}},
                                   {"ossl-testreq2", {-23, "an empty list that may not be"}},
                                   {"mbedtls-test_suite_x509parse-hex297", {kExplicitDefault}}}};

const Kind kCms{
    "Cms",
    "cms",
    ".p7.der",
    "ContentInfo",
    {{"jsrsasign-qunit-do-asn1cms-hex35", {-11, "no alternative of a CHOICE"}},
     {"pkijs-ECCCMSSharedInfo_before_RFC5753.spec.ts-pem1", {-10, "behind content of indefinite length"}},
     {"asn1crypto-meca2_compressed", {kIndefinite}},
     {"asn1crypto-smime-signature-generated-by-thunderbird", {kIndefinite}},
     {"bccs-3.1", {kIndefinite}},
     {"bcjava-BcEnvelopedDataTest-b64_2", {kIndefinite}},
     {"bcjava-CMSTest-b64_2", {kIndefinite}},
     {"bcjava-NewSignedDataTest-b64_8", {kIndefinite}},
     {"dss-counterSig", {kIndefinite}},
     {"forge-pkcs7-b64_12", {kIndefinite}},
     {"nss-pkcs7cnet.ber", {kIndefinite}},
     {"ossl-bad_signtime_attr.cms", {kIndefinite}},
     {"ossl-ct_multiple_attr.cms", {kIndefinite}},
     {"ossl-no_ct_attr.cms", {kIndefinite}},
     {"ossl-no_md_attr.cms", {kIndefinite}},
     {"rustcrypto-kms_ciphertext_for_recipient_3.ber", {kIndefinite}},
     {"smallstep-ber_test", {kIndefinite}},
     {"smallstep-verify_dsa_go1.15_test", {kIndefinite}},
     {"smallstep-verify_test-b64_12", {kIndefinite}},
     {"bcjava-BcSignedDataTest-b64_0", {kUnsorted}},
     {"bcjava-PSSSignDataSHA1.sig", {kUnsorted}},
     {"dss-JdbcCacheAIASourceTest-b64_1", {kUnsorted}},
     {"dss-cades-dss1956", {kUnsorted}},
     {"forge-pkcs7-b64_11", {kUnsorted}},
     {"forge-pkcs7-b64_13", {kUnsorted}},
     {"forge-pkcs7-b64_8", {kUnsorted}},
     {"ossl-dhparams", {kUnsorted}},
     {"smallstep-verify_test-pem6", {kUnsorted}},
     {"tspclient-TimeStampTokenWithInvalidContentType", {kUnsorted}},
     {"tspclient-TimeStampTokenWithInvalideContentType", {kUnsorted}}}};

const Kind kTokens{"TimeStampTokens",
                   "tsp",
                   ".tst.der",
                   "ContentInfo",
                   {{"digidoc4j-test-bdoc-tsa-b64_2", {kIndefinite}},
                    {"digidoc4j-test-signature-with-timestamp-b64_1", {kIndefinite}},
                    {"digidoc4j-timestamp", {kIndefinite}},
                    {"dss-TimestampTokenVerifierTest-b64_0", {kIndefinite}},
                    {"dss-detached_cts-b64_2", {kIndefinite}},
                    {"dss-er-data-group-b64_3", {kIndefinite}},
                    {"dss-signedXmlXadesLT-b64_3", {kIndefinite}},
                    {"dss-xades-x-level-wrong-sigAndRefsTstVersion-b64_2", {kIndefinite}},
                    {"digitorus-timestamp_test-arr7", {kUnsorted}},
                    {"dss-TimestampTokenTest-b64_7", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithInvalidCertificates", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithSHA1CertHash", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithSignedAttributeSHA1", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithSigningCertificateV1NoCert", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithWrongSigningCertificateV2IssuerChoiceTag", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithoutSignedAttributeContentType", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithoutSigner", {kUnsorted}},
                    {"tspclient-TimeStampTokenWithoutSigningCertificate", {kUnsorted}}}};

const Kind kTimeStampRequests{"TimeStampRequests", "tsp", ".tsq.der", "TimeStampReq", {}};

const Kind kTimeStampResponses{"TimeStampResponses",
                               "tsp",
                               ".tsr.der",
                               "TimeStampResp",
                               {{"digitorus-timestamp_test-arr2", {kUnsorted}},
                                {"ossl-sectigo-all-zero", {kUnsorted}},
                                {"tspclient-validResponseWithSigningCertificateV1", {kUnsorted}}}};

// Those of a fuzzer parse elsewhere and are no messages by RFC 2510 all the same.
const Kind kManagement{"CertificateManagement",
                       "cmp",
                       ".pki.der",
                       "PKIMessage",
                       {{"bctd-bad-no-body", {-3, "no body, on purpose"}},
                        {"bctd-sample_cr", {-10, "an implicit NULL (raVerified) with an explicit tag"}},
                        {"ossl-cmp-27a6142fc6", {-11, "fuzzed: a title as ENUMERATED, in a name"}},
                        {"ossl-cmp-a82d3a7af2", {-33, "fuzzed: a version of 29 octets"}},
                        {"ossl-cmp-b7c39d6ac1", {-8, "fuzzed: an ediPartyName without its partyName"}},
                        {"ossl-cmp-fda4e081e2", {-8, "fuzzed: an ediPartyName without its partyName"}},
                        {"pyasn1alt-test_rfc9480-b64_1", {-11, "certConf, a body that came with RFC 4210"}},
                        {"ossl-cmp-c10376a866", {kExplicitDefault}}}};

INSTANTIATE_TEST_SUITE_P(Kinds, RealMessages,
                         ::testing::Values(kCertificates, kLists, kResponses, kRequests,
                                           kCertificationRequests, kCms, kTokens, kTimeStampRequests,
                                           kTimeStampResponses, kManagement),
                         [](const auto& info) { return info.param.name; });

// Their subject is a holder of version 2, where this type is that of 1997.
TEST(AttributeCertificates, OfVersionTwoAreRefused) {
    const auto files = test::vectorFiles("attribute-certs");
    if (files.empty()) GTEST_SKIP() << "no real messages here";
    for (const auto& path : files) {
        EXPECT_EQ(test::recode(test::typeNamed("AttributeCertificate"), test::readFile(path)).status,
                  RTS_BAD_CHOICE)
            << path;
    }
}

// All certificates of the PEM files in a folder.
std::vector<Octets> pemCertificates(const std::filesystem::path& path) {
    std::vector<Octets> found;
    const std::unique_ptr<BIO, int (*)(BIO*)> file(BIO_new_file(path.c_str(), "r"), BIO_free);
    char* name = nullptr;
    char* header = nullptr;
    unsigned char* data = nullptr;
    long length = 0;
    while (file && PEM_read_bio(file.get(), &name, &header, &data, &length)) {
        found.emplace_back(data, data + length);
        OPENSSL_free(name);
        OPENSSL_free(header);
        OPENSSL_free(data);
    }
    return found;
}

TEST(SystemStore, EveryCertificateComesBackToItsOwnBytes) {
    const auto certificates = pemCertificates("/etc/ssl/certs/ca-certificates.crt");
    if (certificates.empty()) GTEST_SKIP() << "no system store here";
    for (const Octets& certificate : certificates) {
        const test::Recoded recoded = test::recode(test::typeNamed("Certificate"), certificate);
        EXPECT_EQ(recoded.status, RTS_OK);
        EXPECT_EQ(recoded.octets, certificate);
    }
}

}  // namespace
