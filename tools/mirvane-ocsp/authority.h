// Who signed an answer, and whether that party may.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_AUTHORITY_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_AUTHORITY_H

#include <optional>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "certificate.h"
#include "ocsp/basic_response.h"

namespace tools {

// How many certificates of a message are tried on its signature: each is one verification, and a message may
// hold any number of them.
inline constexpr std::size_t kMostTrials = 64;

// Whether the responder identifier names this certificate.
bool names(Mirvane::PKI::OCSP::CResponderID const& responder, Certificate const& certificate);

// Why the signature is not one by this certificate's key; nothing if it is.
std::optional<std::string> signatureProblem(Mirvane::PKI::OCSP::CBasicResponse const& response,
                                            Certificate const& signer);

// The certificate whose key signed: of those that the responder identifier names or, if it names none, of the
// others. Nothing if the signature fits none.
std::optional<Certificate> findSigner(Mirvane::PKI::OCSP::CBasicResponse const& response,
                                      std::vector<Certificate> const& candidates);

// Why the certificate does not chain to the anchor, which need not be a root, at that time; nothing if it
// does.
std::optional<std::string> chainProblem(Certificate const& certificate, Certificate const& anchor,
                                        std::vector<Certificate> const& others, Mirvane::CDateTime const& at);

// Why this certificate may not sign answers as a delegate of anyone, by its own extensions; nothing if it
// may.
std::optional<std::string> delegationProblem(Certificate const& certificate);

}  // namespace tools

#endif
