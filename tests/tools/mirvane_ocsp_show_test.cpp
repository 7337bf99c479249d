#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/program.h"

namespace {

using test::Octets;
using test::Outcome;

constexpr char kUnauthorized[] = "30 03 0A 01 06";
constexpr char kBasic[] = "30 15 0A 01 00 A0 10 30 0E 06 09 2B 06 01 05 05 07 30 01 01 04 01 41";

const std::string kShow = MIRVANE_OCSP_TOOL " show ";

std::size_t lines(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST(Show, PrintsStatusTypeAndSize) {
    test::TemporaryFolder folder;
    const std::string path = folder.write("a.der", test::octets(kUnauthorized));
    const Outcome outcome = test::run(kShow + path);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "OCSP response\n  status:        unauthorized (6)\n  response:      none\n");
    EXPECT_EQ(outcome.errors, "");
}

TEST(Show, JsonIsOneObjectPerFile) {
    test::TemporaryFolder folder;
    Octets longer = test::octets(kUnauthorized);
    longer.push_back(0);
    folder.write("a.der", longer);
    const Outcome outcome = test::run("cd " + folder.path("") + " && " + kShow + "--json a.der - <a.der");
    EXPECT_EQ(outcome.status, 0);
    const std::string rest =
        R"("kind":"OCSPResponse","status":{"value":6,"name":"unauthorized"},"responseType":null,"responseSize":null,"trailingOctets":1})"
        "\n";
    EXPECT_EQ(outcome.output, R"({"file":"a.der",)" + rest + R"({"file":"standard input",)" + rest);
}

TEST(Show, TakesPem) {
    test::TemporaryFolder folder;
    const std::string good = folder.write("a.pem",
                                          "text before\n-----BEGIN OCSP RESPONSE-----\nMAMKAQY=\n"
                                          "-----END OCSP RESPONSE-----\n");
    EXPECT_EQ(test::run(kShow + good).status, 0);
    const std::string broken = folder.write("b.pem", "-----BEGIN OCSP RESPONSE-----\nMAMKAQY=\n");
    const Outcome outcome = test::run(kShow + broken);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "mirvane-ocsp: " + broken + ": the PEM block is broken or cut short\n");
}

TEST(Show, SaysInOneLineWhatIsWrongAndGoesOn) {
    test::TemporaryFolder folder;
    const std::string good = folder.write("good", test::octets(kUnauthorized));
    const struct {
        const char* name;
        const char* octets;
        const char* problem;
    } rows[] = {
        {"empty", "", "is empty"},
        {"cut", "30 15 0A 01 00", "is cut short: the message says 23 octets, 5 are there"},
        {"huge", "30 84 7F FF FF FF 00",
         "is no OCSP request or response: its first element does not fit into 7 octets"},
        {"text", "48 65 6C 6C 6F",
         "is no OCSP request or response: it begins with octet 48, not with a SEQUENCE"},
        {"other", "30 03 02 01 05", "is no OCSP request or response: RTS_TAG_MISMATCH at octet 2"},
        {"certificate", "30 07 30 05 A0 03 02 01 02",
         "is no OCSP request or response: RTS_MISSING_ELEMENT at octet 9"},
        {"inside", "30 15 0A 01 00 A0 10 30 0E 06 09 2B 06 01 05 05 07 30 01 01 04 01 41",
         "is no OCSP request or response: RTS_END_OF_BUFFER at octet 22"},
        {"requestor", "30 0C 30 0A A1 06 87 04 01 02 03 04 30 00",
         "is malformed (0x80070057): its requestorName is no directory name"},
        {"entry",
         "30720A0100A06D306B06092B0601050507300101045E305C3051A2020400180F323032363031303130303030"
         "30305A303A3022300D300406022A03040004000201018000180F32303236303130313030303030305A301430"
         "0D300406022A03040004000201018000180158300406022A03030100",
         "the response inside is malformed (0x80004005): its thisUpdate in entry 2 is no time"},
    };
    for (const auto& row : rows) {
        const std::string path = folder.write(row.name, test::octets(row.octets));
        const Outcome outcome = test::run(kShow + path + " " + good);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errors, "mirvane-ocsp: " + path + ": " + row.problem + "\n");
        EXPECT_NE(outcome.output.find("unauthorized"), std::string::npos);
    }
    const Outcome missing = test::run(kShow + folder.path("nothing"));
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.errors, "mirvane-ocsp: " + folder.path("nothing") + ": No such file or directory\n");
    EXPECT_EQ(test::run(kShow + folder.path("")).status, 1) << "a folder";
}

// A request about nothing, with a CRL identifier that is none and a critical extension that nobody knows.
constexpr char kOddExtensions[] =
    "30 26 30 24 30 00 A2 20 30 1E 30 10 06 09 2B 06 01 05 05 07 30 01 03 04 03 02 01 05"
    "30 0A 06 02 2A 03 01 01 FF 04 01 41";

TEST(Show, SaysThatAnExtensionOfAKnownTypeDoesNotDecode) {
    test::TemporaryFolder folder;
    const Outcome outcome = test::run(kShow + folder.write("a", test::octets(kOddExtensions)));
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_NE(outcome.output.find("name: crlID\n      critical: false\n      value: 020105\n"
                                  "      problem: the value is no crlID\n"),
              std::string::npos)
        << outcome.output;
    EXPECT_NE(outcome.output.find("name: unknown\n      critical: true\n      value: 41\n"),
              std::string::npos);
}

TEST(CommandLine, WrongUsageIsTwoAndHelpIsSuccess) {
    const struct {
        const char* arguments;
        const char* problem;
    } rows[] = {
        {"", "A subcommand is required (see mirvane-ocsp --help)"},
        {" show", "FILE is required (see mirvane-ocsp show --help)"},
        {" show --nonsense x", "unexpected argument --nonsense (see mirvane-ocsp show --help)"},
        {" verify --isuer x", "unexpected argument --isuer (see mirvane-ocsp verify --help)"},
        {" requst --issuer x", "there is no command requst (see mirvane-ocsp --help)"},
        {" show --max-size -1 x",
         "--max-size: -1 is no size; give octets, 64k, 16m or 1g (see mirvane-ocsp show --help)"},
        {" show --max-size 18446744073709551616 x",
         "--max-size: 18446744073709551616 is no size; give octets, 64k, 16m or 1g (see mirvane-ocsp show "
         "--help)"},
        {" show --max-size 16e x",
         "--max-size: 16e is no size; give octets, 64k, 16m or 1g (see mirvane-ocsp show --help)"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = test::run(std::string(MIRVANE_OCSP_TOOL) + row.arguments);
        EXPECT_EQ(outcome.status, 2) << row.arguments;
        EXPECT_EQ(outcome.errors, std::string("mirvane-ocsp: ") + row.problem + "\n");
        EXPECT_EQ(outcome.output, "");
    }
    for (const char* arguments : {" --help", " show --help", " --version", " show --version"}) {
        const Outcome outcome = test::run(std::string(MIRVANE_OCSP_TOOL) + arguments);
        EXPECT_EQ(outcome.status, 0) << arguments;
        EXPECT_NE(outcome.output, "");
    }
}

TEST(Show, ThousandsOfDamagedFilesGiveAnAnswerEach) {
    test::TemporaryFolder folder;
    std::mt19937 random(42);
    constexpr int kFiles = 3000;
    for (int i = 0; i < kFiles; ++i) {
        Octets octets = test::octets(i % 2 ? kBasic : kUnauthorized);
        octets.resize(1 + random() % octets.size());
        for (int hits = i % 4; hits > 0; --hits)
            octets[random() % octets.size()] = static_cast<unsigned char>(random());
        folder.write(std::to_string(i), octets);
    }
    const Outcome outcome = test::run("cd " + folder.path("") + " && " + kShow + "--json *");
    EXPECT_TRUE(outcome.status == 0 || outcome.status == 1) << outcome.errors.substr(0, 2000);
    EXPECT_EQ(lines(outcome.output) + lines(outcome.errors), static_cast<std::size_t>(kFiles));
}

}  // namespace
