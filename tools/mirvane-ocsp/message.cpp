#include "message.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "elements.h"
#include "malformed.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::CBlobList;
using namespace Mirvane::PKI::OCSP;

CBlobList octetsOf(std::vector<Piece> const& pieces) {
    CBlobList result;
    for (Piece const& piece : pieces)
        result.push_back(piece.octets);
    return result;
}

// CLI11's own units behind a number that is neither signed nor too large, which CLI11 would let pass.
std::string readSize(std::string& text) {
    const char* const end = text.data() + text.size();
    std::uint64_t number = 0;
    const auto [unit, error] = std::from_chars(text.data(), end, number);
    std::string size = std::to_string(number).append(unit, end);
    try {
        if (error == std::errc()) {
            CLI::AsSizeValue(false)(size);
            text = size;
            return {};
        }
    } catch (CLI::ValidationError const&) {
    }
    return text + " is no size; give octets, 64k, 16m or 1g";
}

}  // namespace

void addSizeOption(CLI::App* command, std::size_t& limit) {
    command->add_option("--max-size", limit, "Refuse messages with more octets (16 MiB)")
        ->transform(CLI::Validator(readSize, ""))
        ->type_name("SIZE");
}

bool looksLikeRequest(Octets const& octets) {
    if (octets.front() != kSequence) return false;
    Elements elements(octets.data(), octets.size());
    return elements.enter(kSequence).isAt(kSequence);
}

std::unique_ptr<CRequestMessage> decodeRequest(Octets const& octets, std::string const& source,
                                               std::string const& kind) {
    auto message = std::make_unique<CRequestMessage>();
    try {
        message->decode(CBlob(octets.data(), octets.size()));
    } catch (ATL::CAtlException const& failure) {
        throw InputError(source, requestProblem(octets, kind, failure.m_hr));
    }
    return message;
}

CResponseMessage decodeResponse(Octets const& octets, std::string const& source, std::string const& kind) {
    CResponseMessage message;
    try {
        message.decode(CBlob(octets.data(), octets.size()));
    } catch (ATL::CAtlException const& failure) {
        throw InputError(source, responseProblem(octets, kind, failure.m_hr));
    }
    return message;
}

std::unique_ptr<CBasicResponse> decodeBasicResponse(CResponseMessage const& message,
                                                    std::string const& source) {
    if (!message.get_response() || std::strcmp(message.get_responseType(), kBasicResponseType) != 0) {
        return nullptr;
    }
    auto response = std::make_unique<CBasicResponse>();
    try {
        response->decode(*message.get_response());
    } catch (ATL::CAtlException const& failure) {
        throw InputError(source, basicResponseProblem(*message.get_response(), failure.m_hr));
    }
    return response;
}

std::size_t trailingOctets(unsigned char const* octets, std::size_t size) {
    Elements elements(octets, size);
    return elements.skip().status() == RTS_OK ? size - elements.position() : 0;
}

CBlobList certificatesInside(Octets const& request) {
    return octetsOf(certificatesOfRequest(request.data(), request.size()));
}

CBlobList certificatesInside(CBlob const& basicResponse) {
    return octetsOf(certificatesOfResponse(basicResponse.pbData(), basicResponse.cbData()));
}

std::vector<Certificate> readable(CBlobList const& certificates) {
    std::vector<Certificate> result;
    int number = 0;
    for (CBlob const& octets : certificates) {
        const std::string name = fmt::format("certificate {} in the message", ++number);
        if (const auto certificate = Certificate::fromOctets(octets, name)) result.push_back(*certificate);
    }
    return result;
}

void writeOutput(std::string const& path, CBlob const& octets) {
    std::FILE* const file = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (!file) throw InputError(path, std::strerror(errno));
    bool isWritten = std::fwrite(octets.pbData(), 1, octets.cbData(), file) == octets.cbData();
    isWritten = (file == stdout ? std::fflush(file) : std::fclose(file)) == 0 && isWritten;
    if (!isWritten) throw InputError(path == "-" ? "standard output" : path, "cannot be written");
}

}  // namespace tools
