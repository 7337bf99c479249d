// The examples as a user would run them, with the openssl command at the other end.
#include <gtest/gtest.h>

#include <vector>

#include "support/program.h"

namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

class Examples : public ::testing::Test {
  protected:
    Examples() {
        openssl(
            "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=Root "
            "-keyout ca.key -out ca.pem");
        openssl("x509 -in ca.pem -outform DER -out ca.der");
        makeCertificate("leaf", "0x1001");
    }

    void makeCertificate(const std::string& name, const std::string& serial) {
        openssl("req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=" + name + " -keyout " +
                name + ".key -out " + name + ".csr");
        openssl("x509 -req -in " + name + ".csr -CA ca.pem -CAkey ca.key -set_serial " + serial +
                " -days 2 -out " + name + ".pem");
        openssl("x509 -in " + name + ".pem -outform DER -out " + name + ".der");
    }

    void openssl(const std::string& arguments) {
        const test::Outcome outcome = inFolder("openssl " + arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
    }
    test::Outcome inFolder(const std::string& command) {
        return test::run("cd " + mFolder.path("") + " && " + command);
    }

    test::TemporaryFolder mFolder;
};

class Ask : public Examples {
  protected:
    // What the example says after openssl answered from this line of its database.
    std::string answerFrom(const std::string& line) {
        mFolder.write("index.txt", line);
        EXPECT_EQ(inFolder(kAsk + "question.der").status, 0);
        openssl(
            "ocsp -index index.txt -CA ca.pem -rsigner ca.pem -rkey ca.key -ndays 1 -reqin question.der "
            "-respout answer.der");
        return inFolder(kAsk + "question.der answer.der").output;
    }

    const std::string kAsk = MIRVANE_EXAMPLES_BUILT "/ask_about_certificate ca.der leaf.der ";
};

TEST_F(Ask, TellsTheStatusThatTheResponderHas) {
    EXPECT_EQ(answerFrom("V\t351231235959Z\t\t1001\tunknown\t/CN=Leaf\n"), "good\n");
    EXPECT_EQ(answerFrom("R\t351231235959Z\t260101000000Z,keyCompromise\t1001\tunknown\t/CN=Leaf\n"),
              "revoked\n");
    EXPECT_EQ(answerFrom("V\t351231235959Z\t\t1002\tunknown\t/CN=Other\n"), "unknown\n");
}

TEST_F(Ask, TakesNoAnswerThatTheIssuerDidNotSign) {
    answerFrom("V\t351231235959Z\t\t1001\tunknown\t/CN=Leaf\n");
    openssl(
        "ocsp -index index.txt -CA ca.pem -rsigner ca.pem -rkey ca.key -ndays 1 -reqin question.der -respout "
        "answer.der "
        "-badsig");
    const test::Outcome outcome = inFolder(kAsk + "question.der answer.der");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "the signature is not the issuer's\n");
}

class Answer : public Examples {
  protected:
    test::Outcome answer() {
        return inFolder(MIRVANE_EXAMPLES_BUILT
                        "/answer_request ca.der ca.key leaf.der revoked.der question.der answer.der");
    }
};

TEST_F(Answer, IsVerifiedByOpensslWithEachStatus) {
    makeCertificate("revoked", "0x1002");
    makeCertificate("other", "0x1003");
    const std::string certificates = " -issuer ca.pem -cert leaf.pem -cert revoked.pem -cert other.pem ";
    openssl("ocsp -sha256" + certificates + "-no_nonce -reqout question.der");
    ASSERT_EQ(answer().status, 0);
    const test::Outcome outcome = inFolder("openssl ocsp -sha256" + certificates +
                                           "-reqin question.der -respin answer.der -CAfile ca.pem 2>&1");
    for (const char* line : {"Response verify OK", "leaf.pem: good", "revoked.pem: revoked",
                             "other.pem: unknown", "Revocation Time: Jan  1 00:00:00 2026 GMT"}) {
        EXPECT_NE(outcome.output.find(line), std::string::npos) << line << " is not in\n" << outcome.output;
    }
}

TEST_F(Answer, ToNoRequestIsMalformedRequest) {
    makeCertificate("revoked", "0x1002");
    mFolder.write("question.der", std::string("\x30\x03\x02\x01"));
    ASSERT_EQ(answer().status, 0);
    EXPECT_EQ(contentOf(mFolder.path("answer.der")), std::string("\x30\x03\x0A\x01\x01"));
}

TEST(Readme, ShowsCodeOfTheExamplesAsItStands) {
    std::vector<std::string> programs;
    for (const auto& entry : std::filesystem::directory_iterator(MIRVANE_EXAMPLES_SOURCES)) {
        programs.push_back(contentOf(entry.path()));
    }
    const std::string readme = contentOf(MIRVANE_README);
    const std::string opening = "```cpp\n";
    int blocks = 0;
    for (auto at = readme.find(opening); at != std::string::npos; at = readme.find(opening, at)) {
        at += opening.size();
        const std::string block = readme.substr(at, readme.find("```", at) - at);
        bool isFound = false;
        for (const std::string& program : programs)
            isFound |= program.find(block) != std::string::npos;
        EXPECT_TRUE(isFound) << "in no example:\n" << block;
        ++blocks;
    }
    EXPECT_EQ(blocks, 2);
}

}  // namespace
