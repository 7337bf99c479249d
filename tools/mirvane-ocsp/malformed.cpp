#include "malformed.h"

#include <fmt/format.h>

#include <optional>

#include "asn1data/ocsp.h"
#include "asn1rt/message_buffer.h"
#include "base/date_time.h"
#include "certificate.h"
#include "common/status_name.h"
#include "elements.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::CDateTime;
using namespace asn1data;

constexpr unsigned char kEnumerated = 0x0A;
constexpr unsigned char kContext0 = 0xA0;
constexpr unsigned char kObjectIdentifier = 0x06;
constexpr unsigned char kOctetString = 0x04;

// A part of a file.
struct Span {
    unsigned char const* octets;
    std::size_t size;
    std::size_t start = 0;  // where it stands in the file
};

struct Stop {
    int status;
    std::size_t octet;  // of the file
};

// What a decode comes to.
struct Verdict {
    std::optional<Stop> stop;          // where the codec itself stops; nothing if it takes the octets
    std::optional<std::string> field;  // else the one that the message class refuses, where that is known
};

std::optional<std::string> timeProblem(std::string const& field, char const* text) {
    try {
        CDateTime{text};
    } catch (ATL::CAtlException const&) {
        return fmt::format("its {} is no time", field);
    }
    return std::nullopt;
}

std::optional<std::string> refusedField(ASN1T_OCSPRequest const& record) {
    ASN1T_TBSRequest const& request = record.tbsRequest;
    if (!request.m.requestorNamePresent || request.requestorName.t == T_GeneralName_directoryName) {
        return std::nullopt;
    }
    return "its requestorName is no directory name";
}

std::optional<std::string> refusedField(ASN1T_SingleResponse const& entry, std::size_t number) {
    const std::string place = fmt::format(" in entry {}", number);
    if (entry.certStatus.t == T_CertStatus_revoked) {
        auto problem = timeProblem("revocationTime" + place, entry.certStatus.u.revoked->revocationTime);
        if (problem) return problem;
    }
    if (auto problem = timeProblem("thisUpdate" + place, entry.thisUpdate)) return problem;
    // An empty one reads as none.
    const bool hasEnd = entry.m.nextUpdatePresent && *entry.nextUpdate != 0;
    return hasEnd ? timeProblem("nextUpdate" + place, entry.nextUpdate) : std::nullopt;
}

std::optional<std::string> refusedField(ASN1T_BasicOCSPResponse const& record) {
    ASN1T_ResponseData const& response = record.tbsResponseData;
    if (auto problem = timeProblem("producedAt", response.producedAt)) return problem;
    std::size_t number = 0;
    for (auto const* node = response.responses.head; node != nullptr; node = node->next) {
        auto const& entry = *static_cast<ASN1T_SingleResponse const*>(node->data);
        if (auto problem = refusedField(entry, ++number)) return problem;
    }
    return std::nullopt;
}

// The class of the message takes whatever the codec takes.
std::optional<std::string> refusedField(ASN1T_OCSPResponse const&) {
    return std::nullopt;
}

template <typename Control, typename Record>
Verdict verdictOn(Span const& span) {
    if (span.size == 0) return {Stop{RTS_END_OF_BUFFER, span.start}, {}};
    try {
        ASN1BERDecodeBuffer buffer(span.octets, static_cast<int>(span.size));
        Record record;
        Control control(buffer, record);
        const int status = control.Decode();
        if (status >= 0) return {std::nullopt, refusedField(record)};
        return {Stop{status, span.start + buffer.getCtxtPtr()->buffer.byteIndex}, {}};
    } catch (ASN1RTLException const& failure) {
        // The outermost header.
        return {Stop{failure.getStatus(), span.start}, {}};
    }
}

// The response inside a message, as far as it is one octet string in one piece.
std::optional<Span> responseInside(Span const& message) {
    Elements elements(message.octets, message.size);
    elements.enter(kSequence);
    if (!elements.isAt(kEnumerated)) return std::nullopt;
    elements.skip().enter(kContext0).enter(kSequence);
    if (!elements.isAt(kObjectIdentifier)) return std::nullopt;
    const std::size_t place = elements.skip().position();
    const Elements octetString(message.octets + place, message.size - place);
    const auto length = octetString.length();
    elements.enter(kOctetString);
    if (elements.status() != RTS_OK || octetString.status() != RTS_OK || !length) return std::nullopt;
    const std::size_t start = elements.position();
    return Span{message.octets + start, place + *length - start, message.start + start};
}

// Octets that do not even begin as a message; nothing if they do.
std::optional<std::string> outermostProblem(Span const& span, std::string const& kind) {
    if (span.octets[0] != kSequence) {
        return fmt::format("is no {}: it begins with octet {:02X}, not with a SEQUENCE", kind,
                           span.octets[0]);
    }
    const Elements elements(span.octets, span.size);
    const auto length = elements.length();
    if (length && *length > span.size) {
        return fmt::format("is cut short: the message says {} octets, {} are there", *length, span.size);
    }
    if (elements.status() == RTS_BAD_LENGTH || elements.status() == RTS_END_OF_BUFFER) {
        return fmt::format("is no {}: its first element does not fit into {} octets", kind, span.size);
    }
    return std::nullopt;
}

// The certificate at the place, or without a place the first that the library does not take.
std::string certificateRemark(std::vector<Piece> const& pieces, Span const& span, Verdict const& verdict) {
    if (verdict.field) return {};
    std::optional<Stop> const& stop = verdict.stop;
    std::size_t number = 0;
    for (Piece const& piece : pieces) {
        ++number;
        const std::size_t start = span.start + piece.start;
        const bool isThere = stop && stop->octet >= start && stop->octet <= start + piece.octets.cbData();
        if (stop && !isThere) continue;
        const auto certificate = Certificate::fromOctets(piece.octets, "");
        if (!stop && certificate && isEncodable(*certificate)) continue;
        return fmt::format(", in its certificate {}{}", number,
                           certificate ? " of " + nameText(certificate->subject()) : "");
    }
    return {};
}

std::string problemText(std::string const& kind, Verdict const& verdict, ATL::HRESULT failure) {
    if (verdict.stop) {
        return fmt::format("is no {}: {} at octet {}", kind, statusName(verdict.stop->status),
                           verdict.stop->octet);
    }
    return fmt::format("is malformed (0x{:08X}){}", static_cast<unsigned>(failure),
                       verdict.field ? ": " + *verdict.field : "");
}

std::string basicProblem(Span const& span, std::string const& kind, ATL::HRESULT failure) {
    const auto verdict = verdictOn<ASN1C_BasicOCSPResponse, ASN1T_BasicOCSPResponse>(span);
    return problemText(kind, verdict, failure) +
           certificateRemark(certificatesOfResponse(span.octets, span.size), span, verdict);
}

}  // namespace

std::string requestProblem(Octets const& octets, std::string const& kind, ATL::HRESULT failure) {
    const Span span{octets.data(), octets.size()};
    if (auto problem = outermostProblem(span, kind)) return *problem;
    const auto verdict = verdictOn<ASN1C_OCSPRequest, ASN1T_OCSPRequest>(span);
    return problemText(kind, verdict, failure) +
           certificateRemark(certificatesOfRequest(span.octets, span.size), span, verdict);
}

std::string responseProblem(Octets const& octets, std::string const& kind, ATL::HRESULT failure) {
    const Span span{octets.data(), octets.size()};
    if (auto problem = outermostProblem(span, kind)) return *problem;
    const auto verdict = verdictOn<ASN1C_OCSPResponse, ASN1T_OCSPResponse>(span);
    const auto inside = responseInside(span);
    if (verdict.stop && inside && verdictOn<ASN1C_BasicOCSPResponse, ASN1T_BasicOCSPResponse>(*inside).stop) {
        return basicProblem(*inside, kind, failure);
    }
    return problemText(kind, verdict, failure);
}

std::string basicResponseProblem(CBlob const& response, ATL::HRESULT failure) {
    const Span span{response.pbData(), response.cbData()};
    return "the response inside " + basicProblem(span, "basic OCSP response", failure);
}

}  // namespace tools
