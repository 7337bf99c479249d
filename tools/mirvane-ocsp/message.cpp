#include "message.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include "asn1rt/ber_decode.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using namespace Mirvane::PKI::OCSP;

constexpr unsigned char kSequence = 0x30;
constexpr unsigned char kContext0 = 0xA0;
constexpr std::size_t kMostOctets = 0x7FFFFFFF;

// Walks over the elements of a message, into some of them and past others.
class Elements {
  public:
    Elements(unsigned char const* octets, std::size_t size) : octets_(octets) {
        status_ = size <= kMostOctets ? rtInitContext(&ctxt_, nullptr) : RTS_BAD_LENGTH;
        if (status_ == RTS_OK) status_ = xd_setp(&ctxt_, octets, static_cast<int>(size), nullptr, &length_);
    }
    ~Elements() { rtFreeContext(&ctxt_); }
    Elements(Elements const&) = delete;
    Elements& operator=(Elements const&) = delete;

    // The status of reading the outermost header.
    int status() const { return status_; }
    // The length that the outermost element claims, with its header; nothing for the indefinite form and for
    // octets that are no element at all.
    std::optional<std::size_t> length() const {
        if (length_ == ASN1_INDEFLEN) return std::nullopt;
        return static_cast<std::size_t>(length_);
    }

    bool isAt(unsigned char identifier) const {
        return status_ == RTS_OK && position() < ctxt_.buffer.size && octets_[position()] == identifier;
    }
    // Goes to the content of the element, which has to be there.
    Elements& enter(unsigned char identifier) {
        if (status_ == RTS_OK) status_ = xd_match1(&ctxt_, identifier, nullptr);
        return *this;
    }
    Elements& skip() {
        if (status_ == RTS_OK) status_ = xd_NextElement(&ctxt_);
        return *this;
    }
    // The element here, as it stands.
    CBlob take() {
        const std::size_t start = position();
        skip();
        return status_ == RTS_OK ? CBlob(octets_ + start, position() - start) : CBlob();
    }

  private:
    std::size_t position() const { return ctxt_.buffer.byteIndex; }

    unsigned char const* octets_;
    ASN1CTXT ctxt_;
    int length_ = ASN1_INDEFLEN;
    int status_;
};

std::vector<Certificate> takeCertificates(Elements& elements) {
    std::vector<Certificate> result;
    if (!elements.isAt(kContext0)) return result;
    elements.enter(kContext0).enter(kSequence);
    for (int number = 1; elements.isAt(kSequence); ++number) {
        const CBlob octets = elements.take();
        const auto certificate =
            Certificate::fromOctets(octets, fmt::format("certificate {} in the message", number));
        if (certificate) result.push_back(*certificate);
    }
    return result;
}

// Why octets that do not decode do not: in the words of somebody who looks at the file.
std::string problemOf(Octets const& octets, const char* kind) {
    if (octets.front() != kSequence) {
        return fmt::format("is no {}: it begins with octet {:02X}, not with a SEQUENCE", kind,
                           octets.front());
    }
    const Elements elements(octets.data(), octets.size());
    const auto length = elements.length();
    if (length && *length > octets.size()) {
        return fmt::format("is cut short: the message says {} octets, {} are there", *length, octets.size());
    }
    if (elements.status() == RTS_BAD_LENGTH || elements.status() == RTS_END_OF_BUFFER) {
        return fmt::format("is no {}: its first element does not fit into {} octets", kind, octets.size());
    }
    return fmt::format("is no {}", kind);
}

}  // namespace

void addSizeOption(CLI::App* command, std::size_t& limit) {
    command->add_option("--max-size", limit, "Refuse messages with more octets (16 MiB)")
        ->transform(CLI::AsSizeValue(false));
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
    } catch (ATL::CAtlException const&) {
        throw InputError(source, problemOf(octets, "OCSP request"));
    }
    return message;
}

CResponseMessage decodeResponse(Octets const& octets, std::string const& source) {
    CResponseMessage message;
    try {
        message.decode(CBlob(octets.data(), octets.size()));
    } catch (ATL::CAtlException const&) {
        throw InputError(source, problemOf(octets, "OCSP response"));
    }
    return message;
}

std::unique_ptr<CBasicResponse> decodeBasicResponse(CResponseMessage const& message,
                                                    std::string const& source) {
    if (!message.get_response() || std::strcmp(message.get_responseType(), kBasicResponseType) != 0) {
        return nullptr;
    }
    auto response = std::make_unique<CBasicResponse>();
    explained(source, "the response inside is malformed", [&] { response->decode(*message.get_response()); });
    return response;
}

std::size_t trailingOctets(unsigned char const* octets, std::size_t size) {
    const auto length = Elements(octets, size).length();
    return length && *length < size ? size - *length : 0;
}

std::vector<Certificate> certificatesInside(Octets const& request) {
    Elements elements(request.data(), request.size());
    elements.enter(kSequence).skip();
    if (!elements.isAt(kContext0)) return {};
    elements.enter(kContext0).enter(kSequence).skip().skip();
    return takeCertificates(elements);
}

std::vector<Certificate> certificatesInside(CBlob const& basicResponse) {
    Elements elements(basicResponse.pbData(), basicResponse.cbData());
    elements.enter(kSequence).skip().skip().skip();
    return takeCertificates(elements);
}

void writeOutput(std::string const& path, CBlob const& octets) {
    std::FILE* const file = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (!file) throw InputError(path, std::strerror(errno));
    bool isWritten = std::fwrite(octets.pbData(), 1, octets.cbData(), file) == octets.cbData();
    isWritten = (file == stdout ? std::fflush(file) : std::fclose(file)) == 0 && isWritten;
    if (!isWritten) throw InputError(path == "-" ? "standard output" : path, "cannot be written");
}

}  // namespace tools
