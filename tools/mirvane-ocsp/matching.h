// Which certificate an entry of a message is about, and whose it is.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_MATCHING_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_MATCHING_H

#include <map>
#include <optional>
#include <string>

#include "certificate.h"
#include "ocsp/request_certificate.h"

namespace tools {

// One text for all forms of one identifier, whole: absent and NULL parameters of the hash are alike, and the
// serial number counts by value.
std::string identity(Mirvane::PKI::OCSP::CReqCert const& subject);

// Nothing for an attribute certificate, and for octets that are no certificate.
std::optional<Mirvane::ASN1::CBigInteger> serialOf(Mirvane::PKI::OCSP::CReqCert const& subject);

// What to call the entry in a line: the serial number, if there is one.
std::string entryName(Mirvane::PKI::OCSP::CReqCert const& subject);

// Whether two encoded names mean the same.
bool isSameName(Mirvane::CBlob const& one, Mirvane::CBlob const& other);

// An issuer, to hold entries against. Its hashes are made once for each algorithm.
class EntryIssuer {
  public:
    explicit EntryIssuer(Certificate const& certificate) : certificate_(certificate) {}

    Certificate const& certificate() const { return certificate_; }

    // Whether the entry is about a certificate of this issuer: by both hashes of a CertID, else by name and
    // signature.
    bool covers(Mirvane::PKI::OCSP::CReqCert const& subject);

  private:
    struct Hashes {
        std::optional<Mirvane::CBlob> name;
        std::optional<Mirvane::CBlob> key;
    };
    Hashes const& hashes(Mirvane::ASN1::CAlgorithmIdentifier const& algorithm);

    Certificate certificate_;
    std::map<std::string, Hashes> hashes_;
};

}  // namespace tools

#endif
