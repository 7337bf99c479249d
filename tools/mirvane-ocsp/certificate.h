// Certificates as the commands take them: from files and from inside messages.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_CERTIFICATE_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_CERTIFICATE_H

#include <openssl/x509.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "asn1/big_integer.h"
#include "base/blob.h"
#include "common/input.h"

namespace tools {

class Certificate {
  public:
    // Nothing for octets that are not one whole certificate. `source` is what messages call it.
    static std::optional<Certificate> fromOctets(Mirvane::CBlob const& octets, std::string const& source);

    X509* get() const { return x509_.get(); }
    // As they were read.
    Mirvane::CBlob const& octets() const { return octets_; }
    std::string const& source() const { return source_; }

    // Encoded names, byte for byte.
    Mirvane::CBlob subject() const;
    Mirvane::CBlob issuer() const;
    Mirvane::ASN1::CBigInteger serialNumber() const;
    // The key without tag, length and count of unused bits: what identifiers hash.
    Mirvane::CBlob keyBits() const;
    // The key's algorithm in dotted form.
    std::string keyAlgorithm() const;

    // Whether the names say that this certificate issued the other one.
    bool namesItselfIssuerOf(Certificate const& other) const;
    // Whether it did: the names fit, and the signature.
    bool issued(Certificate const& other) const;
    // Whether its key made this signature (in the octet order of ASN.1) of this hash, by the signature
    // algorithm in dotted form.
    bool signedHash(Mirvane::CBlob const& hash, std::string const& algorithm,
                    Mirvane::CBlob const& signature) const;
    // The same subject and the same key.
    bool isSamePartyAs(Certificate const& other) const;

  private:
    Certificate() = default;

    std::shared_ptr<X509> x509_;
    Mirvane::CBlob octets_;
    std::string source_;
};

// The certificates of a file: one behind the other in DER, or all blocks of PEM. Throws InputError, also if
// there is none.
std::vector<Certificate> readCertificates(std::string const& path);
// The first of them.
Certificate readCertificate(std::string const& path);
// Those of several files, in order.
std::vector<Certificate> readCertificates(std::vector<std::string> const& paths);

// Whether the library takes the certificate apart; else it cannot go into a message, whatever OpenSSL says.
bool isEncodable(Certificate const& certificate);
// The same of a name alone.
bool isEncodableName(Mirvane::CBlob const& name);
// Throws InputError if not.
void demandEncodable(Certificate const& certificate);

// An encoded name as text for a reader, in UTF-8 and not escaped; octets that are none as hexadecimal digits.
std::string nameText(Mirvane::CBlob const& name);

// Upper-case hexadecimal digits.
std::string hexText(Mirvane::CBlob const& octets);

// The number in hexadecimal digits, without leading zeros but for one of "0A", with a minus if it is
// negative: one text for one number.
std::string serialText(Mirvane::ASN1::CBigInteger const& number);

// Reads that text; colons, blanks and "0x" are let pass. Throws InputError for anything else.
Mirvane::ASN1::CBigInteger parseSerial(std::string const& text);

}  // namespace tools

#endif
