#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

#include "support/program.h"
#include "support/vectors.h"

namespace {

using nlohmann::json;
using test::Octets;
using test::Outcome;

const std::string kTool = MIRVANE_ASN1_TOOL " ";

// Runs a command on octets in a file, under the name `message` in the present folder.
Outcome runOn(const Octets& message, const std::string& command) {
    test::TemporaryFolder folder;
    folder.write("message", message);
    return test::run("cd " + folder.path("") + " && " + kTool + command);
}

std::string printed(const char* type, const char* octets) {
    return runOn(test::octets(octets), std::string("print ") + type + " message").output;
}

json printedJson(const std::string& type, const Octets& octets) {
    return json::parse(runOn(octets, "print " + type + " --json message").output);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST(Asn1Types, AreListedOnceEachInOrder) {
    const auto lines = linesOf(test::run(kTool + "types").output);
    EXPECT_GT(lines.size(), 500u);
    EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
    EXPECT_EQ(std::adjacent_find(lines.begin(), lines.end()), lines.end());
    for (const char* name :
         {"Certificate", "BasicOCSPResponse", "NULLParams", "SigningTime", "_commonName_Type"})
        EXPECT_TRUE(std::binary_search(lines.begin(), lines.end(), name)) << name;
}

TEST(Asn1Oid, TellsNamesAndDottedForm) {
    const struct {
        const char* argument;
        int status;
        const char* output;
        const char* errors;
    } rows[] = {
        {"id_kp_OCSPSigning", 0, "id_kp_OCSPSigning (1.3.6.1.5.5.7.3.9)\n", ""},
        {"id-kp-OCSPSigning", 0, "id_kp_OCSPSigning (1.3.6.1.5.5.7.3.9)\n", ""},
        {"1.3.6.1.5.5.7.48.1", 0, "id_ad_ocsp (1.3.6.1.5.5.7.48.1)\nid_pkix_ocsp (1.3.6.1.5.5.7.48.1)\n", ""},
        {"1.3.6.1.5.5.7.3.999.1", 0, "1.3.6.1.5.5.7.3.999.1: unknown, under id_kp (1.3.6.1.5.5.7.3)\n", ""},
        {"2.999", 0, "2.999: unknown\n", ""},
        {"OCSPSigning", 1, "", "mirvane-asn1: OCSPSigning: no such name; nearest: id_kp_OCSPSigning\n"},
        {"xyzzyxyzzy", 1, "", "mirvane-asn1: xyzzyxyzzy: no such name\n"},
        {"1.40.1", 2, "", "mirvane-asn1: 1.40.1 is no object identifier (see mirvane-asn1 oid --help)\n"},
        {"3.1", 2, "", "mirvane-asn1: 3.1 is no object identifier (see mirvane-asn1 oid --help)\n"},
        {"1.2..3", 2, "", "mirvane-asn1: 1.2..3 is no object identifier (see mirvane-asn1 oid --help)\n"},
        {"1.2.03", 2, "", "mirvane-asn1: 1.2.03 is no object identifier (see mirvane-asn1 oid --help)\n"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = test::run(kTool + "oid " + row.argument);
        EXPECT_EQ(outcome.status, row.status) << row.argument;
        EXPECT_EQ(outcome.output, row.output);
        EXPECT_EQ(outcome.errors, row.errors);
    }
}

TEST(Asn1CommandLine, WrongUsageIsTwoAndHelpIsSuccess) {
    for (const char* arguments : {"", "print", "recode", "oid", "nonsense", "types more", "print Time a b",
                                  "print --nonsense Time", "print Certifcate", "recode ''"}) {
        const Outcome outcome = test::run(kTool + arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(linesOf(outcome.errors).size(), 1u) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
    for (const char* arguments : {"--help", "print --help", "recode --help", "types --help", "oid --help",
                                  "--version", "print --version"}) {
        const Outcome outcome = test::run(kTool + arguments);
        EXPECT_EQ(outcome.status, 0) << arguments;
        EXPECT_NE(outcome.output, "");
    }
}

TEST(Asn1CommandLine, UnknownTypeNamesTheNearest) {
    EXPECT_EQ(test::run(kTool + "print Certifcate x").errors,
              "mirvane-asn1: there is no type Certifcate; nearest: Certificate, Certificates "
              "(see mirvane-asn1 print --help)\n");
    EXPECT_EQ(runOn(test::octets("04 04 01 02 03 04"), "print Gost28147-89-MAC message").output,
              "Gost28147-89-MAC: 4 octets 01020304\n");
}

constexpr char kValidity[] = "30 1E 17 0D 323430313331313230303030 5A 17 0D 323530313331313230303030 5A";

TEST(Asn1Recode, WritesTheEncodingToOutputOrFile) {
    const std::string der(reinterpret_cast<const char*>(test::octets(kValidity).data()), 32);
    const Outcome toOutput = runOn(test::octets(kValidity), "recode Validity message");
    EXPECT_EQ(toOutput.status, 0) << toOutput.errors;
    EXPECT_EQ(toOutput.output, der);
    EXPECT_EQ(runOn(test::octets(kValidity), "recode Validity <message").output, der);
    EXPECT_EQ(runOn(test::octets(kValidity), "recode Validity message -o out && cat out").output, der);
    EXPECT_EQ(runOn(test::octets(kValidity), "recode Validity - -o - <message").output, der);
}

TEST(Asn1Recode, GivesDerForOtherForms) {
    EXPECT_EQ(runOn(test::octets("30 80 01 01 07 00 00"), "recode BasicConstraintsSyntax message").output,
              "\x30\x03\x01\x01\xFF");
}

TEST(Asn1CommandLine, TakesTheFirstBlockOfPemAndTellsOfOthers) {
    const std::string block = "text\n-----BEGIN X-----\nMAMBAf8=\n-----END X-----\n";
    const struct {
        std::string pem;
        const char* errors;
    } rows[] = {{block, ""},
                {block + block + block, "mirvane-asn1: message: 2 more PEM blocks are left out\n"}};
    for (const auto& row : rows) {
        const Octets message(row.pem.begin(), row.pem.end());
        const Outcome recoded = runOn(message, "recode BasicConstraintsSyntax message");
        EXPECT_EQ(recoded.output, "\x30\x03\x01\x01\xFF");
        EXPECT_EQ(recoded.errors, row.errors);
        EXPECT_EQ(runOn(message, "print BasicConstraintsSyntax message").errors, row.errors);
    }
}

TEST(Asn1Recode, TellsStatusAndByteOfAFailure) {
    const struct {
        const char* type;
        const char* octets;
        const char* problem;
    } rows[] = {
        {"Validity", "31 00", "status -3 (RTS_TAG_MISMATCH) at byte 0"},
        {"Validity", "30 0F 17 0D 323430313331313230303030 5A", "status -8 (RTS_MISSING_ELEMENT) at byte 17"},
        {"Validity", "30 1E 17", "status -5 (RTS_BAD_LENGTH) at byte 0"},
        {"CRLReason", "0A 01 63", "status -6 (RTS_BAD_ENUM) at byte 3"},
        {"Extensions", "30 00", "status -23 (RTS_CONSTRAINT) at byte 2"},
    };
    for (const auto& row : rows) {
        for (const char* command : {"recode ", "print ", "print --json "}) {
            const Outcome outcome =
                runOn(test::octets(row.octets), std::string(command) + row.type + " message");
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(outcome.output, "");
            EXPECT_EQ(outcome.errors, std::string("mirvane-asn1: message: ") + row.problem + "\n");
        }
    }
}

TEST(Asn1Recode, FailuresOfFilesAreOneLine) {
    EXPECT_EQ(test::run(kTool + "recode Time /nowhere/x").errors,
              "mirvane-asn1: /nowhere/x: No such file or directory\n");
    EXPECT_EQ(runOn({}, "recode Time message").errors, "mirvane-asn1: message: is empty\n");
    const Outcome unwritable = runOn(test::octets(kValidity), "recode Validity message -o /nowhere/x");
    EXPECT_EQ(unwritable.status, 1);
    EXPECT_EQ(unwritable.errors, "mirvane-asn1: /nowhere/x: No such file or directory\n");
    const Outcome full = runOn(test::octets(kValidity), "recode Validity message -o /dev/full");
    EXPECT_EQ(full.status, 1);
}

TEST(Asn1Print, ValuesOnOneLine) {
    const struct {
        const char* type;
        const char* octets;
        const char* text;
    } rows[] = {
        {"NULLParams", "05 00", "NULL"},
        {"AlgorithmIdentifier", "30 0D 06 09 2A864886F70D010105 05 00",
         "sha1WithRSAEncryption (1.2.840.113549.1.1.5), parameters NULL"},
        {"AlgorithmIdentifier", "30 0B 06 09 2A864886F70D010105",
         "sha1WithRSAEncryption (1.2.840.113549.1.1.5)"},
        {"AlgorithmIdentifier", "30 0C 06 06 2A030405FF7F 0C 02 C3A9",
         "1.2.3.4.5.16383, parameters UTF8String \"\xC3\xA9\""},
        {"Version", "02 01 02", "v3 (2)"},
        {"Version", "02 01 09", "9"},
        {"CRLReason", "0A 01 01", "keyCompromise (1)"},
        {"CertificateSerialNumber", "02 02 00 80", "128"},
        {"CertificateSerialNumber", "02 02 01 00", "256 (0x0100)"},
        {"CertificateSerialNumber", "02 02 FF 00", "-256 (-0x0100)"},
        {"CertificateSerialNumber", "02 09 FE FFFFFFFFFFFFFFFF", "-0x010000000000000001"},
        {"CertificateSerialNumber", "02 09 01 0000000000000000", "0x010000000000000000"},
        {"KeyUsage", "03 02 01 06", "keyCertSign, cRLSign"},
        {"KeyUsage", "03 03 00 00 81", "decipherOnly, bit 15"},
        {"KeyUsage", "03 01 00", "none"},
        {"UniqueIdentifier", "03 02 03 A8", "5 bits A8"},
        {"KeyHash", "04 00", "0 octets"},
        {"KeyHash", "04 03 00 0A FF", "3 octets 000AFF"},
        {"Time", "17 0D 323430313331313230303030 5A", "utcTime 2024-01-31 12:00:00 UTC"},
        {"Time", "17 0B 32343031333131323030 5A", "utcTime \"2401311200Z\""},
        {"InvalidityDate", "18 11 3139393930323238323335393539 2E35 5A", "1999-02-28 23:59:59.5 UTC"},
        {"InvalidityDate", "18 12 3139393930323238323335393539 2E3530 5A",
         "1999-02-28 23:59:59.5 UTC (\"19990228235959.50Z\")"},
        {"InvalidityDate", "18 17 3139393930323238323335393539 2E31323334353637 5A",
         "1999-02-28 23:59:59.123456 UTC (\"19990228235959.1234567Z\")"},
        {"InvalidityDate", "18 0F 3136303031323331323335393539 5A", "\"16001231235959Z\""},
        {"InvalidityDate", "18 0F 3136303130313031303030303030 5A", "1601-01-01 00:00:00 UTC"},
        {"Time", "17 0D 343931323331323335393539 5A", "utcTime 2049-12-31 23:59:59 UTC"},
        {"Time", "17 0D 353030313031303030303030 5A", "utcTime 1950-01-01 00:00:00 UTC"},
        {"Time", "17 0D 343931323331323335393630 5A", "utcTime \"491231235960Z\""},
        {"InvalidityDate", "18 0F 3139393930323239323335393539 5A", "\"19990229235959Z\""},
        {"InvalidityDate", "18 0F 2031393930323239323335393539 5A", "\" 1990229235959Z\""},
        {"GeneralName", "87 04 7F000001", "iPAddress 4 octets 7F000001 (127.0.0.1)"},
        {"GeneralName", "82 01 61", "dNSName \"a\""},
        {"BasicConstraintsSyntax", "30 00", "{}"},
        {"GeneralNames", "30 00", "{}"},
        {"UniqueIdentifier", "03 06 00 30 03 02 01 07", "40 bits containing SEQUENCE\n  - INTEGER 7"},
        {"UniqueIdentifier", "03 06 01 30 03 02 01 06", "39 bits 3003020106"},
        {"KeyHash", "04 07 30 05 04 03 30 01 00",
         "7 octets containing SEQUENCE\n  - OCTET STRING 3 octets 300100"},
        {"KeyHash", "04 02 30 00", "2 octets 3000"},
        {"ANY", "30 00", "SEQUENCE {}"},
        {"ANY", "BF 83 7F 02 05 00", "[511]\n  - NULL"},
        {"ANY", "81 04 68747470", "[1] 4 octets 68747470 \"http\""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(printed(row.type, row.octets), std::string(row.type) + ": " + row.text + "\n")
            << row.octets;
    }
}

TEST(Asn1Print, StringsAreEscapedAndNeverAmbiguous) {
    const struct {
        const char* type;
        const char* octets;
        const char* text;
    } rows[] = {
        {"RegToken", "0C 05 61 22 5C 0A 7F", R"("a\"\\\x0A\x7F")"},
        {"RegToken", "0C 06 E2 80 AE D0 96 80",
         R"("\u{202E})"
         "\xD0\x96"
         R"(\x80")"},
        {"RegToken", "0C 06 C0 80 ED A0 80 41", R"("\xC0\x80\xED\xA0\x80A")"},
        {"RegToken", "0C 03 F0 9F 98", R"("\xF0\x9F\x98")"},
        {"PostalAddress_element", "14 02 E9 5C", R"(teletexString "\xE9\\")"},
        {"PostalAddress_element", "1E 08 00 41 D8 3D DE 00 D8 3D",
         "bmpString \"A\xF0\x9F\x98\x80\\u{D83D}\""},
        {"PostalAddress_element", "1C 08 00 00 00 42 00 11 00 00", R"(universalString "B\u{110000}")"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(printed(row.type, row.octets), std::string(row.type) + ": " + row.text + "\n");
    }
    EXPECT_EQ(printedJson("RegToken", test::octets("0C 02 0A E9"))["value"],
              json::parse(R"({"escaped": "\\x0A\\xE9"})"));
    EXPECT_EQ(printedJson("RegToken", test::octets("0C 03 0A C3 A9"))["value"], "\n\xC3\xA9");
}

Octets element(unsigned char tag, const Octets& content) {
    Octets result{tag, static_cast<unsigned char>(content.size())};
    result.insert(result.end(), content.begin(), content.end());
    return result;
}

TEST(Asn1Print, NamesAreOneLineWhereItTellsAll) {
    const struct {
        const char* attribute;
        const char* text;
    } rows[] = {
        {"06 03 55 04 03 0C 04 74657374", "\"CN=test\""},
        {"06 03 55 04 03 1E 04 0416 0022", "\"CN=\xD0\x96\\\"\""},
        {"06 03 55 04 0A 13 08 412C20422E2B4344", "\"O=A, B.+CD\""},
        {"06 03 55 04 03 0C 02 0A 3D", "\"CN=\\x0A=\""},
        {"06 0A 09 92 26 89 93 F2 2C 64 01 01 0C 01 61", "\"UID=a\""},
        {"06 03 2A 03 04 0C 01 61", "\"1.2.3.4=#0C0161\""},
        {"06 03 55 04 03 0C 05 612C4F3D62", "rdnSequence\n  - commonName (2.5.4.3) = utf8String \"a,O=b\""},
        {"06 03 55 04 03 0C 05 612B4F3D62", "rdnSequence\n  - commonName (2.5.4.3) = utf8String \"a+O=b\""},
        {"06 03 55 04 03 14 02 E9 5C", R"(rdnSequence
  - commonName (2.5.4.3) = teletexString "\xE9\\")"},
        {"06 03 55 04 03 1E 04 0061 0000", R"(rdnSequence
  - commonName (2.5.4.3) = bmpString "a\x00")"},
        {"06 05 2A 85 03 64 03 05 00", "rdnSequence\n  - id_snils_attribute (1.2.643.100.3) = NULL"},
    };
    for (const auto& row : rows) {
        const Octets name = element(0x30, element(0x31, element(0x30, test::octets(row.attribute))));
        EXPECT_EQ(runOn(name, "print Name message").output, std::string("Name: ") + row.text + "\n");
        const json value = printedJson("Name", name)["value"];
        EXPECT_EQ(value["rdnSequence"].size(), 1u);
        EXPECT_EQ(value["text"].is_null(), std::string(row.text).starts_with("rdnSequence")) << value;
    }
    EXPECT_EQ(printed("Name", "30 00"), "Name: \"\"\n");
    EXPECT_EQ(printed("GeneralName", "A4 02 30 00"), "GeneralName: directoryName \"\"\n");
}

// Two names in one relative name; critical key usage, an unknown extension that holds an element, one that
// holds none, octets behind a known value, and one that no table has but the tool knows.
constexpr char kRelativeName[] =
    "31 18 30 09 06 03 55 04 06 13 02 44 45 30 0B 06 03 55 04 03 0C 04 74 65 73 74";
constexpr char kExtensions[] =
    "30 51"
    "30 0E 06 03 55 1D 0F 01 01 FF 04 04 03 02 07 80"
    "30 0F 06 03 2A 03 04 04 08 30 06 02 01 07 81 01 41"
    "30 0A 06 03 2A 03 05 04 03 FF 00 01"
    "30 09 06 03 55 1D 13 04 02 30 00"
    "30 0B 06 03 55 1D 0E 04 04 04 00 05 00"
    "30 0A 06 03 55 1D 36 04 03 02 01 05";

TEST(Asn1Print, RecordsListsAndOpenTypes) {
    EXPECT_EQ(printed("RelativeDistinguishedName", kRelativeName),
              "RelativeDistinguishedName: countryName (2.5.4.6) = \"DE\" + commonName (2.5.4.3) = utf8String "
              "\"test\"\n");
    EXPECT_EQ(printed("Extensions", kExtensions),
              "Extensions\n"
              "  - extnID: id_ce_keyUsage (2.5.29.15)\n"
              "    critical: TRUE\n"
              "    extnValue: KeyUsage digitalSignature\n"
              "  - extnID: 1.2.3.4\n"
              "    extnValue: containing SEQUENCE\n"
              "      - INTEGER 7\n"
              "      - [1] 1 octet 41\n"
              "  - extnID: 1.2.3.5\n"
              "    extnValue: 3 octets FF0001\n"
              "  - extnID: id_ce_basicConstraints (2.5.29.19)\n"
              "    extnValue: BasicConstraintsSyntax {}\n"
              "  - extnID: id_ce_subjectKeyIdentifier (2.5.29.14)\n"
              "    extnValue: KeyIdentifier (2 octets behind it) 0 octets\n"
              "  - extnID: id_ce_inhibitAnyPolicy (2.5.29.54)\n"
              "    extnValue: SkipCerts 5\n"
              "-- encodes to other octets: the element at byte 65 differs\n");
}

TEST(Asn1Print, OpenTypesAreDecodedByIdentifierAndByPlace) {
    EXPECT_EQ(printed("ContentInfo", "30 11 06 09 2A864886F70D010701 A0 04 04 02 AB CD"),
              "ContentInfo\n"
              "  contentType: id_data (1.2.840.113549.1.7.1)\n"
              "  content: 2 octets ABCD\n");
    EXPECT_EQ(printed("AttributeRaw", "30 18 06 09 2A864886F70D010903 31 0B 06 09 2A864886F70D010701"),
              "AttributeRaw\n"
              "  type: id_contentType (1.2.840.113549.1.9.3)\n"
              "  valuesRaw\n"
              "    - ContentTypeIdentifier id_data (1.2.840.113549.1.7.1)\n");
    EXPECT_EQ(printed("IssuerAndSerialNumber", "30 12 30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45 02 01 07"),
              "IssuerAndSerialNumber\n"
              "  issuer: \"C=DE\"\n"
              "  serialNumber: 7\n");
    EXPECT_EQ(printed("Gost28147-89-BlobParameters", "30 08 06 03 2A 03 04 02 01 05"),
              "Gost28147-89-BlobParameters\n"
              "  encryptionParamSet: 1.2.3.4\n"
              "  extElem1\n"
              "    - INTEGER 5\n");
}

TEST(Asn1Print, JsonHasEverythingWithTheSameKeys) {
    const json result = printedJson("Extensions", test::octets(kExtensions));
    EXPECT_EQ(result["file"], "message");
    EXPECT_EQ(result["type"], "Extensions");
    EXPECT_EQ(result["recodes"], false);
    EXPECT_EQ(result["trailingOctets"], 0);
    const json expected = json::parse(R"([
        {"extnID": {"oid": "2.5.29.15", "name": "id_ce_keyUsage"}, "critical": true,
         "extnValue": {"type": "KeyUsage", "value": {"bits": 1, "names": ["digitalSignature"], "hex": "80"}}},
        {"extnID": {"oid": "1.2.3.4", "name": null}, "critical": false,
         "extnValue": {"hex": "3006020107810141", "elements": [{"tag": "SEQUENCE", "value": [
            {"tag": "INTEGER", "value": "0x07"}, {"tag": "[1]", "value": {"hex": "41"}}]}]}},
        {"extnID": {"oid": "1.2.3.5", "name": null}, "critical": false,
         "extnValue": {"hex": "FF0001", "elements": null}},
        {"extnID": {"oid": "2.5.29.19", "name": "id_ce_basicConstraints"}, "critical": false,
         "extnValue": {"type": "BasicConstraintsSyntax", "value": {"cA": false}}},
        {"extnID": {"oid": "2.5.29.14", "name": "id_ce_subjectKeyIdentifier"}, "critical": false,
         "extnValue": {"type": "KeyIdentifier", "value": {"hex": ""}, "trailing": 2}},
        {"extnID": {"oid": "2.5.29.54", "name": "id_ce_inhibitAnyPolicy"}, "critical": false,
         "extnValue": {"type": "SkipCerts", "value": 5}}])");
    EXPECT_EQ(result["value"], expected);
    EXPECT_EQ(printedJson("Time", test::octets("17 0B 32343031333131323030 5A"))["value"],
              json::parse(R"({"utcTime": {"time": null, "text": "2401311200Z"}})"));
    EXPECT_EQ(printedJson("CRLReason", test::octets("0A 01 07"))["value"],
              json::parse(R"({"value": 7, "name": null})"));
}

TEST(Asn1Print, LongOctetsAreCutInTextAndWholeInJson) {
    const struct {
        const char* header;
        std::size_t size;
        std::size_t lines;
    } rows[] = {{"04 20", 32, 1}, {"04 21", 33, 3}, {"04 81 80", 128, 5}, {"04 81 81", 129, 4}};
    for (const auto& row : rows) {
        Octets message = test::octets(row.header);
        message.resize(message.size() + row.size, 0xAB);
        const auto lines = linesOf(runOn(message, "print KeyHash message").output);
        EXPECT_EQ(lines.size(), row.lines) << row.size;
        EXPECT_EQ(lines.back() == "  ... and 65 octets more", row.size == 129);
        const std::string digits = printedJson("KeyHash", message)["value"]["hex"];
        EXPECT_EQ(digits.size(), 2 * row.size);
    }
}

TEST(Asn1Print, OctetsBehindTheMessageAreTold) {
    EXPECT_EQ(printed("CRLReason", "0A 01 01 05 00"),
              "CRLReason: keyCompromise (1)\n-- 2 octets behind it are not part of the message\n");
    const Outcome recoded = runOn(test::octets("0A 01 01 05 00"), "recode CRLReason message");
    EXPECT_EQ(recoded.status, 0);
    EXPECT_EQ(recoded.output, "\x0A\x01\x01");
    EXPECT_EQ(recoded.errors, "mirvane-asn1: message: 2 octets behind the message are left out\n");
    EXPECT_EQ(printedJson("CRLReason", test::octets("0A 01 01 00"))["trailingOctets"], 1);
}

TEST(Asn1Print, ZeroInsideAStringDoesNotPassUnnoticed) {
    const std::string text = printed("GeneralName", "82 05 61 62 00 63 64");
    EXPECT_EQ(text,
              "GeneralName: dNSName \"ab\"\n-- encodes to other octets: the element at byte 0 differs\n");
}

// How many values of each kind a tree has; what OCTET STRINGs hold encoded is left out, for openssl does not
// look into it either.
using Tally = std::map<std::string, int>;

void count(const json& value, Tally& tally) {
    if (value.is_null()) {
        ++tally["NULL"];
    } else if (value.is_string()) {
        const auto& text = value.get_ref<const std::string&>();
        ++tally[text.starts_with("0x") || text.starts_with("-0x") ? "INTEGER" : "string"];
    } else if (value.is_number() || (value.is_object() && value.size() == 2 && value.contains("name") &&
                                     value.value("value", json()).is_number())) {
        ++tally["INTEGER"];
    } else if (value.is_array()) {
        for (const json& element : value)
            count(element, tally);
    } else if (value.is_object()) {
        for (const auto& [key, kind] :
             {std::pair{"oid", "OBJECT"}, {"time", "time"}, {"bits", "BIT STRING"}}) {
            if (value.contains(key)) return void(++tally[kind]);
        }
        if (value.contains("elements")) return count(value["elements"], tally);
        if (value.contains("escaped")) return void(++tally["string"]);
        const bool isOpen = value.contains("value") && (value.contains("tag") || value["type"].is_string());
        for (const auto& [key, member] : value.items()) {
            if (key == "trailerField" && member == 1) continue;  // a default, which is not in the message
            if (key == "text" && value.contains("rdnSequence")) continue;  // says the same again
            if (key != "extnValue" && key != "hex" && !(isOpen && key != "value")) count(member, tally);
        }
    }
}

// The same of `openssl asn1parse`; empty if it fails.
Tally tallyOfAsn1parse(const std::filesystem::path& path) {
    Tally tally;
    for (const std::string& line :
         linesOf(test::run("openssl asn1parse -inform DER -in " + path.string()).output)) {
        const auto mark = line.find("prim: ");
        if (mark == std::string::npos) continue;
        std::string kind = line.substr(mark + 6, line.find_first_of(":[", mark + 6) - mark - 6);
        kind.erase(kind.find_last_not_of(' ') + 1);
        if (kind.ends_with("TIME")) kind = "time";
        if (kind.ends_with("STRING") && kind != "BIT STRING" && kind != "OCTET STRING") kind = "string";
        ++tally[kind];
    }
    return tally;
}

bool isForeign(const Tally& tally) {
    return std::any_of(tally.begin(), tally.end(),
                       [](const auto& entry) { return entry.first.starts_with("cont"); });
}

TEST(Asn1Print, HoldsTheValuesThatOpensslFinds) {
    if (test::run("openssl version").status != 0) GTEST_SKIP() << "no openssl program";
    const struct {
        const char* kind;
        const char* type;
    } rows[] = {
        {"certs", "Certificate"}, {"crls", "CertificateListLegacy"}, {"pkcs10", "CertificationRequest"}};
    int compared = 0;
    for (const auto& row : rows) {
        for (const auto& path : test::vectorFiles(row.kind, 40)) {
            Tally expected = tallyOfAsn1parse(path);
            const Outcome outcome = test::run(kTool + "print --json " + row.type + " " + path.string());
            // Bare context tags have no kind there, and some files are not for this type.
            if (expected.empty() || isForeign(expected) || outcome.status != 0) continue;
            Tally found;
            count(json::parse(outcome.output)["value"], found);
            for (const char* untold : {"OCTET STRING", "BOOLEAN", "ENUMERATED"})
                expected.erase(untold);
            EXPECT_EQ(found, expected) << path;
            ++compared;
        }
    }
    if (test::vectorFiles("certs").empty()) GTEST_SKIP() << "no folder of vectors";
    EXPECT_GT(compared, 60);
}

// Every file of real and of bad messages, whole, cut and damaged: an answer each time, never a crash.
TEST(Asn1Print, DamagedMessagesGiveAnAnswerEach) {
    const struct {
        const char* kind;
        const char* type;
    } rows[] = {
        {"cms", "ContentInfo"}, {"tsp", "TimeStampResp"}, {"cmp", "PKIMessage"}, {"malformed", "ANY"}};
    std::mt19937 random(42);
    test::TemporaryFolder folder;
    for (const auto& row : rows) {
        for (const auto& path : test::vectorFiles(row.kind, 25)) {
            Octets octets = test::readFile(path);
            if (octets.empty()) continue;
            if (random() % 4 == 0) octets.resize(1 + random() % octets.size());
            for (int hits = static_cast<int>(random() % 4); hits > 0; --hits)
                octets[random() % octets.size()] = static_cast<unsigned char>(random());
            const std::string damaged = folder.write("damaged", octets);
            const Outcome outcome = test::run(kTool + "print " + row.type + " " + damaged);
            EXPECT_TRUE(outcome.status == 0 || outcome.status == 1) << path << outcome.errors;
            EXPECT_EQ(outcome.status == 0, outcome.errors.empty()) << path;
        }
    }
}

TEST(Asn1Print, DeepNestingEnds) {
    Octets indefinite(100000, 0x80);
    for (std::size_t i = 0; i < indefinite.size(); i += 2)
        indefinite[i] = 0x30;
    EXPECT_EQ(runOn(indefinite, "print ANY message").errors,
              "mirvane-asn1: message: status -2 (RTS_END_OF_BUFFER) at byte 100000\n");
    Octets definite;
    for (int level = 0; level < 5000; ++level) {
        const std::size_t size = definite.size();
        definite.insert(definite.begin(), {0x30, 0x82, static_cast<unsigned char>(size >> 8),
                                           static_cast<unsigned char>(size)});
    }
    Octets strings;
    for (int level = 0; level < 5000; ++level) {
        const std::size_t size = strings.size();
        const unsigned char tag = level % 2 == 0 ? 0x30 : 0x04;
        strings.insert(strings.begin(),
                       {tag, 0x82, static_cast<unsigned char>(size >> 8), static_cast<unsigned char>(size)});
    }
    const auto levels = linesOf(runOn(strings, "print ANY message").output).size();
    EXPECT_TRUE(levels > 10 && levels < 32) << levels;
    const Outcome outcome = runOn(definite, "print ANY message");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.output.starts_with("ANY: 20000 octets\n")) << outcome.output.substr(0, 100);
}

}  // namespace
