// The algorithms that the commands name, choose and hold against keys.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_ALGORITHMS_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_ALGORITHMS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "asn1/algorithm_identifier.h"
#include "certificate.h"

namespace tools {

// What --digest says of itself.
inline constexpr char kDigestPurpose[] = "Hash to sign with (the usual one of the key; sha256 for RSA)";

// The names that --hash and --digest take.
std::vector<std::string> hashNames();

// A hash by one of these names, with NULL parameters, as most clients and responders write it. Throws
// InputError if the platform does not have it.
Mirvane::ASN1::CAlgorithmIdentifierEx hashByName(std::string const& name);

// A short name for a hash, key or signature algorithm in dotted form, or "unknown".
std::string_view algorithmName(std::string_view identifier);

// The hash of the octets; nothing for an identifier that is no hash which the platform has.
std::optional<Mirvane::CBlob> hashOf(Mirvane::ASN1::CAlgorithmIdentifier const& hash,
                                     Mirvane::CBlob const& octets);

// The algorithm to sign with by the key of this certificate: with the hash that is named, or the usual one of
// the key for an empty name. Throws InputError if there is none.
Mirvane::ASN1::CAlgorithmIdentifierEx signatureAlgorithmFor(Certificate const& signer,
                                                            std::string const& hashName);

// Why the platform does not work with the key of this certificate; nothing if it does.
std::optional<std::string> unservedProblem(Certificate const& certificate);

// Whether this signature algorithm is one of the certificate's key.
bool fitsKey(std::string_view signatureAlgorithm, Certificate const& signer);

}  // namespace tools

#endif
