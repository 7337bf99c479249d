// Messages that the openssl command makes on the spot: they decode, come back to their own bytes where they
// are DER, and mirvane-asn1 shows what they say.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "support/program.h"
#include "support/recode.h"
#include "support/vectors.h"

namespace {

using test::Octets;
using test::Outcome;

constexpr char kAuthority[] = R"([tsa]
default_tsa = authority
[authority]
serial = serial
signer_cert = time.pem
signer_key = time.key
signer_digest = sha256
default_policy = 1.2.3.4
digests = sha256
accuracy = secs:1, millisecs:500
ordering = yes
tsa_name = yes
ess_cert_id_alg = sha256
)";

class MadeMessages : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        mFolder = std::make_unique<test::TemporaryFolder>();
        mFolder->write("time.cnf", std::string(kAuthority));
        mFolder->write("data", std::string("hello"));
        for (
            const char* command : {
                "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj "
                "'/C=RU/O=Example, "
                "Ltd./CN=Time' -addext extendedKeyUsage=critical,timeStamping -keyout time.key -out time.pem",
                "req -newkey rsa:2048 -nodes -subj '/DC=org/CN=www' -addext "
                "subjectAltName=DNS:www.example.org "
                "-keyout www.key -outform DER -out request",
                "cms -sign -in data -signer time.pem -inkey time.key -nodetach -binary -outform DER -out "
                "signed",
                "cms -sign -in data -signer time.pem -inkey time.key -nodetach -binary -stream -outform DER "
                "-out streamed",
                "ts -query -data data -sha256 -cert -out query",
                "ts -reply -config time.cnf -queryfile query -out reply",
                "ts -reply -config time.cnf -queryfile query -token_out -out token",
                "cmp -cmd ir -use_mock_srv -srv_ref 1234 -srv_secret pass:x -secret pass:x -ref 1234 -newkey "
                "time.key -subject /CN=New -recipient /CN=Authority -rsp_cert time.pem -certout new.pem "
                "-reqout "
                "ir,certConf -rspout ip,pkiconf",
                "cmp -cmd rr -use_mock_srv -srv_ref 1234 -srv_secret pass:x -secret pass:x -ref 1234 "
                "-oldcert "
                "time.pem -revreason 1 -recipient /CN=Authority -reqout rr -rspout error",
            })
            openssl(command);
    }
    static void TearDownTestSuite() { mFolder.reset(); }

    // What a message is made in matters, not whether openssl is content with the exchange afterwards.
    static Outcome openssl(const std::string& arguments) { return inFolder("openssl " + arguments); }
    static Outcome inFolder(const std::string& command) {
        return test::run("cd " + mFolder->path("") + " && " + command);
    }
    static Octets message(const std::string& name) { return test::readFile(mFolder->path(name)); }

    static inline std::unique_ptr<test::TemporaryFolder> mFolder;
};

struct Row {
    const char* file;
    const char* type;
    std::vector<std::string> lines;  // among those that are shown, in this order
};

const std::vector<std::string> kSigned = {
    "content: SignedData",
    "digestAlgorithms",
    "- id_sha256 (2.16.840.1.101.3.4.2.1)",
    "eContentType: id_data (1.2.840.113549.1.7.1)",
    R"(eContent: 5 octets 68656C6C6F "hello")",
    R"(subject: "C=RU,O=Example, Ltd.,CN=Time")",
    "- id_kp_timeStamping (1.3.6.1.5.5.7.3.8)",
    R"(issuer: "C=RU,O=Example, Ltd.,CN=Time")",
    "- ContentTypeIdentifier id_data (1.2.840.113549.1.7.1)",
    "- type: id_messageDigest (1.2.840.113549.1.9.4)",
    "- 32 octets 2CF24DBA5FB0A30E26E83B2AC5B9E29E1B161E5C1FA7425E73043362938B9824",
    "- SMIMECapabilities",
    "signatureAlgorithm: ecdsa_with_SHA256 (1.2.840.10045.4.3.2)",
};

const std::vector<std::string> kStamped = {
    "content: SignedData",
    "eContent: TSTInfo",
    "policy: 1.2.3.4",
    "hashedMessage: 32 octets 2CF24DBA5FB0A30E26E83B2AC5B9E29E1B161E5C1FA7425E73043362938B9824",
    "accuracy",
    "millis: 500",
    "ordering: TRUE",
    R"(tsa: directoryName "C=RU,O=Example, Ltd.,CN=Time")",
    "- ContentTypeIdentifier id_ct_TSTInfo (1.2.840.113549.1.9.16.1.4)",
    "- SigningCertificateV2",
};

const Row kRows[] = {
    {"request",
     "CertificationRequest",
     {R"(subject: "DC=org,CN=www")", "algorithm: rsaEncryption (1.2.840.113549.1.1.1), parameters NULL",
      "subjectPublicKey: 2160 bits containing SEQUENCE", "- INTEGER number of 256 octets",
      "- INTEGER 65537 (0x010001)", "- type: pkcs_9_at_extensionRequest (1.2.840.113549.1.9.14)",
      R"(- dNSName "www.example.org")",
      "signatureAlgorithm: sha256WithRSAEncryption (1.2.840.113549.1.1.11), parameters NULL"}},
    {"signed", "ContentInfo", kSigned},
    {"query",
     "TimeStampReq",
     {"version: v1 (1)", "hashAlgorithm: id_sha256 (2.16.840.1.101.3.4.2.1), parameters NULL",
      "certReq: TRUE"}},
    {"reply", "TimeStampResp", kStamped},
    {"token", "ContentInfo", kStamped},
    {"ir",
     "PKIMessage",
     {R"(recipient: directoryName "CN=Authority")", "algorithm: id_PasswordBasedMac (1.2.840.113533.7.66.13)",
      "parameters: PBMParameter", "iterationCount: 500", "senderKID: 4 octets 31323334", "body: ir",
      R"(subject: "CN=New")", "pop: signature"}},
    {"ip",
     "PKIMessage",
     {"body: ip", "certReqId: 0", "status: granted (0)", "certOrEncCert: certificate",
      R"(issuer: "C=RU,O=Example, Ltd.,CN=Time")"}},
    {"pkiconf", "PKIMessage", {"body: conf"}},
    {"rr",
     "PKIMessage",
     {"body: rr", R"(issuer: "C=RU,O=Example, Ltd.,CN=Time")", "- extnID: id_ce_reasonCode (2.5.29.21)",
      "extnValue: CRLReason keyCompromise (1)"}},
    {"error", "PKIMessage", {"body: error", "status: rejection (2)", "failInfo: badRequest"}},
};

// Whether the text has these lines in this order, whatever stands before each and between them.
::testing::AssertionResult shows(const std::string& text, const std::vector<std::string>& lines) {
    std::size_t position = 0;
    for (const std::string& line : lines) {
        position = text.find(line + '\n', position);
        if (position == std::string::npos) return ::testing::AssertionFailure() << line << "\nin\n" << text;
        position += line.size();
    }
    return ::testing::AssertionSuccess();
}

TEST_F(MadeMessages, InDerComeBackToTheirOwnBytesAndAreShown) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.file);
        ASSERT_FALSE(message(row.file).empty()) << "openssl did not make it";
        const test::Recoded recoded = test::recode(test::typeNamed(row.type), message(row.file));
        EXPECT_EQ(recoded.status, RTS_OK);
        EXPECT_EQ(recoded.octets, message(row.file));
        const Outcome printed =
            inFolder(MIRVANE_ASN1_TOOL " print " + std::string(row.type) + ' ' + row.file);
        EXPECT_TRUE(shows(printed.output, row.lines));
        EXPECT_EQ(printed.output.find("\n--"), std::string::npos) << "a note about the message";
        EXPECT_EQ(printed.errors, "");
    }
}

TEST_F(MadeMessages, OfIndefiniteLengthAreShownAndVerifyAsDer) {
    const std::string streamed = inFolder(MIRVANE_ASN1_TOOL " print ContentInfo streamed").output;
    EXPECT_TRUE(shows(streamed, kSigned));
    EXPECT_TRUE(
        streamed.ends_with("-- encodes to other octets: the element at byte 0 has indefinite length\n"));
    EXPECT_EQ(inFolder(MIRVANE_ASN1_TOOL " recode ContentInfo streamed -o definite").status, 0);
    EXPECT_LT(message("definite").size(), message("streamed").size());
    const Outcome verified = openssl("cms -verify -noverify -binary -inform DER -in definite");
    EXPECT_EQ(verified.status, 0) << verified.errors;
    EXPECT_EQ(verified.output, "hello");
}

// The confirmation of certificates came with RFC 4210; the bodies here are those of RFC 2510.
TEST_F(MadeMessages, OfLaterEditionsAreRefused) {
    ASSERT_FALSE(message("certConf").empty()) << "openssl did not make it";
    EXPECT_EQ(test::recode(test::typeNamed("PKIMessage"), message("certConf")).status, RTS_BAD_CHOICE);
}

}  // namespace
