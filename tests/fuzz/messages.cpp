// The three messages: what a stranger sends is decoded, read, encoded and copied.
#include "fuzz/fields.h"
#include "fuzz/target.h"
#include "fuzz/whole_value.h"

namespace {

using fuzz::passes;
using fuzz::require;
using Mirvane::CBlob;
namespace failure = Mirvane::failure;

// What a message is, and what decoding and encoding it may end with.
struct Kind {
    const char* type;
    std::vector<ATL::HRESULT> stated;
};

const Kind kRequest = {"OCSPRequest", {failure::asn1, failure::invalidArgument, failure::emptyMessage}};
const Kind kBasicResponse = {
    "BasicOCSPResponse", {failure::asn1, failure::invalidArgument, failure::general, failure::invalidTime}};
const Kind kResponse = {"OCSPResponse", {failure::asn1, failure::invalidArgument}};

// Message through decode, encode and copy. False if it does not decode; what is left then is still an object
// of which everything can be read.
template <typename Message>
bool goesRound(const Kind& kind, const CBlob& received, Message& message) {
    if (!passes([&] { message.decode(received); }, kind.stated)) {
        fuzz::read(message);
        passes([&] { message.encode(); }, kind.stated);
        return false;
    }
    fuzz::read(message);
    const bool strict = fuzz::comesBack(kind.type, {received.pbData(), received.cbData()});
    CBlob first;
    if (!passes([&] { first = message.encode(); }, kind.stated)) {
        require(!strict, "what decodes encodes");
        return true;
    }
    require(Message(message).encode() == first, "a copy encodes as the original");
    Message assigned;
    assigned = message;
    Message again;
    if (!passes([&] { again.decode(first); }, kind.stated)) {
        require(!strict, "what was encoded decodes");
        return true;
    }
    fuzz::read(again);
    require(again.encode() == first, "what was encoded comes back to its own bytes");
    message.clear();
    message = again;
    require(assigned.encode() == message.encode(), "assignment copies all");
    return true;
}

}  // namespace

MIRVANE_FUZZ_TARGET(request_message, 0) {
    fuzz::ocsp::CRequestMessage message;
    goesRound(kRequest, input.rest(), message);
}

MIRVANE_FUZZ_TARGET(basic_response, 0) {
    fuzz::ocsp::CBasicResponse message;
    goesRound(kBasicResponse, input.rest(), message);
}

MIRVANE_FUZZ_TARGET(response_message, 0) {
    fuzz::ocsp::CResponseMessage message;
    if (!goesRound(kResponse, input.rest(), message) || !message.get_response()) return;
    fuzz::ocsp::CBasicResponse inside;
    goesRound(kBasicResponse, *message.get_response(), inside);
}
