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
};

inline void PrintTo(KeyKind const& kind, std::ostream* stream) {
    *stream << kind.name;
}

inline constexpr char kIndex[] =
    "V\t351231235959Z\t\t1001\tunknown\t/CN=good\n"
    "R\t351231235959Z\t260101000000Z,keyCompromise\tF002\tunknown\t/CN=revoked\n";

class OcspAuthority {
  public:
    explicit OcspAuthority(KeyKind const& kind = {"EC", "ec -pkeyopt ec_paramgen_curve:P-256", ""}) {
        const std::string request = std::string("openssl req -nodes -newkey ") + kind.newKey;
        folder_.write("index.txt", std::string(kIndex));
        folder_.write("ocsp.ext", std::string("extendedKeyUsage=OCSPSigning\n"));
        for (const char* name : {"ca", "stranger"}) {
            make(request + " -x509 -days 30 -subj /CN=" + name + " -keyout " + name + ".key -out " + name +
                 ".pem");
        }
        issue(request, "good", "0x1001", "");
        issue(request, "revoked", "0xF002", "");
        issue(request, "ocsp", "0x2001", " -extfile ocsp.ext");
    }

    // Runs a shell command line in the folder, in which $T is the tool.
    Outcome run(const std::string& command) const {
        return test::run("cd " + folder_.path("") + " && T=" MIRVANE_OCSP_TOOL " && " + command);
    }

    TemporaryFolder const& folder() const { return folder_; }

  private:
    void make(const std::string& command) const {
        const Outcome outcome = run(command);
        EXPECT_EQ(outcome.status, 0) << command << "\n" << outcome.errors;
    }

    void issue(const std::string& request, const std::string& name, const std::string& serial,
               const std::string& extensions) const {
        make(request + " -subj /CN=" + name + " -keyout " + name + ".key -out " + name + ".csr");
        make("openssl x509 -req -days 30 -in " + name + ".csr -CA ca.pem -CAkey ca.key -set_serial " +
             serial + extensions + " -out " + name + ".pem");
    }

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
