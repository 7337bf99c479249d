#include "message.h"

#include <fmt/format.h>

#include <cerrno>
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

}  // namespace

void addSizeOption(CLI::App* command, std::size_t& limit) {
    command->add_option("--max-size", limit, "Refuse messages with more octets (16 MiB)")
        ->transform(CLI::AsSizeValue(false).description(""))
        ->type_name("SIZE");
}

bool looksLikeRequest(Octets const& octets) {
    if (octets.front() != kSequence) return false;
    Elements elements(octets.data(), octets.size());
    return elements.enter(kSequence).isAt(kSequence);
}

std::unique_ptr<CRequestMessage> decodeRequest(Octets const& octets, std::string const& source) {
    auto message = std::make_unique<CRequestMessage>();
    try {
        message->decode(CBlob(octets.data(), octets.size()));
    } catch (ATL::CAtlException const& failure) {
        throw InputError(source, requestProblem(octets, failure.m_hr));
    }
    return message;
}

CResponseMessage decodeResponse(Octets const& octets, std::string const& source) {
    CResponseMessage message;
    try {
        message.decode(CBlob(octets.data(), octets.size()));
    } catch (ATL::CAtlException const& failure) {
        throw InputError(source, responseProblem(octets, failure.m_hr));
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
