// The example as a user would run it, with the openssl command as the responder.
#include <gtest/gtest.h>

#include "support/program.h"

namespace {

class Ask : public ::testing::Test {
  protected:
    Ask() {
        openssl(
            "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=Root "
            "-keyout ca.key -outform DER -out ca.der && openssl x509 -inform DER -in ca.der -out ca.pem");
        openssl(
            "req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Leaf -keyout leaf.key -out "
            "leaf.csr");
        openssl(
            "x509 -req -in leaf.csr -CA ca.pem -CAkey ca.key -set_serial 0x1001 -days 2 -outform DER -out "
            "leaf.der");
    }

    void openssl(const std::string& arguments) {
        const test::Outcome outcome = inFolder("openssl " + arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
    }
    test::Outcome inFolder(const std::string& command) {
        return test::run("cd " + mFolder.path("") + " && " + command);
    }

    // What the example says after openssl answered from this line of its database.
    std::string answerFrom(const std::string& line) {
        mFolder.write("index.txt", line);
        EXPECT_EQ(inFolder(kAsk + "question.der").status, 0);
        openssl(
            "ocsp -index index.txt -CA ca.pem -rsigner ca.pem -rkey ca.key -ndays 1 -reqin question.der "
            "-respout answer.der");
        return inFolder(kAsk + "question.der answer.der").output;
    }

    const std::string kAsk = MIRVANE_ASK_EXAMPLE " ca.der leaf.der ";
    test::TemporaryFolder mFolder;
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

}  // namespace
