// A small certificate authority of the openssl command, for tests that run mirvane-ocsp in its folder: the
// issuer `ca`, `good` (serial number 1001) and `revoked` (F002), the delegate `ocsp`, and `stranger`, another
// authority. Each is NAME.pem with NAME.key; index.txt is their database.
#ifndef MIRVANE_TESTS_TOOLS_OCSP_AUTHORITY_H
#define MIRVANE_TESTS_TOOLS_OCSP_AUTHORITY_H

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "support/program.h"

namespace test {

struct KeyKind {
    const char* name;
    const char* newKey;     // arguments of `openssl req`
    const char* signature;  // the algorithm that mirvane-ocsp names
    bool isGost = false;
};

inline void PrintTo(KeyKind const& kind, std::ostream* stream) {
    *stream << kind.name;
}

inline constexpr KeyKind kUsualKind = {"EC", "ec -pkeyopt ec_paramgen_curve:P-256", "ecdsa-with-SHA256"};

inline constexpr char kIndex[] =
    "V\t351231235959Z\t\t1001\tunknown\t/CN=good\n"
    "R\t351231235959Z\t260101000000Z,keyCompromise\tF002\tunknown\t/CN=revoked\n";

class OcspAuthority {
  public:
    explicit OcspAuthority(KeyKind const& kind = kUsualKind) : isGost_(kind.isGost) {
        folder_.write("index.txt", std::string(kIndex));
        folder_.write("ocsp.ext", std::string("extendedKeyUsage=OCSPSigning\n"));
        folder_.write("openssl.cnf",
                      std::string("[req]\ndistinguished_name=name\nx509_extensions=ca\n[name]\n"
                                  "[ca]\nbasicConstraints=critical,CA:true\n"));
        // Not every openssl command has an option for the engine.
        folder_.write("gost.cnf", std::string("openssl_conf=init\n.include openssl.cnf\n[init]\n"
                                              "engines=engines\n[engines]\ngost=gost\n[gost]\n"
                                              "default_algorithms=ALL\n"));
        const Outcome outcome = run(std::string("new='openssl req -nodes -newkey ") + kind.newKey + "'" + R"(
            issue() {
                $new -subj /CN=$1 -keyout $1.key -out $1.csr && openssl x509 -req -days 30 -in $1.csr \
                    -CA ca.pem -CAkey ca.key -set_serial $2 $3 $4 -out $1.pem
            }
            for name in ca stranger; do
                $new -x509 -days 30 -subj /CN=$name -keyout $name.key -out $name.pem
            done && issue good 0x1001 && issue revoked 0xF002 && issue ocsp 0x2001 -extfile ocsp.ext)");
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
    }

    // Runs a shell command line in the folder, in which $T is the tool.
    Outcome run(const std::string& command) const {
        const std::string configuration =
            isGost_ ? "export OPENSSL_CONF=gost.cnf" : "export OPENSSL_CONF=openssl.cnf";
        return test::run("cd " + folder_.path("") + " && " + configuration +
                         " && T='env -u OPENSSL_CONF " MIRVANE_OCSP_TOOL "' && " + command);
    }

    TemporaryFolder const& folder() const { return folder_; }

  private:
    bool isGost_;
    TemporaryFolder folder_;
};

// One for all tests of a program that do not change it.
inline OcspAuthority const& commonAuthority() {
    static const OcspAuthority authority;
    return authority;
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace test

#endif
