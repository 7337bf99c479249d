// Messages as files hold them: read with a bound, decoded with an account of what is wrong, written.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_MESSAGE_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_MESSAGE_H

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "base/exception.h"
#include "certificate.h"
#include "common/input.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"
#include "ocsp/response_message.h"

namespace tools {

inline constexpr char kBasicResponseType[] = "1.3.6.1.5.5.7.48.1.1";

// The option --max-size, which all commands that read messages have.
void addSizeOption(CLI::App* command, std::size_t& limit);
inline constexpr std::size_t kUsualLimit = 16u << 20;

// Whether the octets look like a request: a SEQUENCE in a SEQUENCE.
bool looksLikeRequest(Octets const& octets);

// Each throws InputError that says what is wrong with the octets, and where; `kind` is what they are said not
// to be. Requests and responses stay where they were decoded: a copy would have lost the octets that their
// signature covers.
std::unique_ptr<Mirvane::PKI::OCSP::CRequestMessage> decodeRequest(Octets const& octets,
                                                                   std::string const& source,
                                                                   std::string const& kind = "OCSP request");
Mirvane::PKI::OCSP::CResponseMessage decodeResponse(Octets const& octets, std::string const& source,
                                                    std::string const& kind = "OCSP response");
// The response inside; null if there is none or it has another type.
std::unique_ptr<Mirvane::PKI::OCSP::CBasicResponse> decodeBasicResponse(
    Mirvane::PKI::OCSP::CResponseMessage const& message, std::string const& source);

// How many octets stand behind the message.
std::size_t trailingOctets(unsigned char const* octets, std::size_t size);

// The certificates in a decodable message, octet for octet: the library encodes them anew, and their
// signatures need not fit that.
Mirvane::CBlobList certificatesInside(Octets const& request);
Mirvane::CBlobList certificatesInside(Mirvane::CBlob const& basicResponse);
// Those that OpenSSL reads.
std::vector<Certificate> readable(Mirvane::CBlobList const& certificates);

// Writes to the file, or to standard output for "-". Throws InputError.
void writeOutput(std::string const& path, Mirvane::CBlob const& octets);

// Runs `work`, and throws InputError with these words for a failure of the library.
template <typename Work>
auto explained(std::string const& source, std::string const& problem, Work work) {
    try {
        return work();
    } catch (ATL::CAtlException const& failure) {
        throw InputError(source, fmt::format("{} (0x{:08X})", problem, static_cast<unsigned>(failure.m_hr)));
    }
}

}  // namespace tools

#endif
