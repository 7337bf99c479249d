// From bytes to what a client asks for: each entry's status and times, and the certificates of a question.
#include "messages.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"
#include "ocsp/response_message.h"
#include "peers.h"
#include "works.h"

namespace bench {
namespace {

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;

constexpr const char* kReadSmall = "decode and read, small response";
constexpr const char* kReadTypical = "decode and read, typical response";

void readOurs(const CBlob& octets, std::size_t entries) {
    CResponseMessage message;
    message.decode(octets);
    CBasicResponse response;
    response.decode(*message.get_response());
    std::size_t good = 0;
    for (const CSingleResponse& entry : response.get_responses()) {
        good += entry.get_certStatus().isGood() && entry.get_nextUpdate() &&
                entry.get_thisUpdate() < *entry.get_nextUpdate();
    }
    require(good == entries);
}

// The times stay texts here, as OpenSSL gives them.
void readOpenssl(const Octets& octets, std::size_t entries) {
    const auto message = decoded<Response>(d2i_OCSP_RESPONSE, octets);
    const Basic response(OCSP_response_get1_basic(message.get()));
    std::size_t good = 0;
    for (int i = 0; i < OCSP_resp_count(response.get()); ++i) {
        int reason = 0;
        ASN1_GENERALIZEDTIME* revocation = nullptr;
        ASN1_GENERALIZEDTIME* thisUpdate = nullptr;
        ASN1_GENERALIZEDTIME* nextUpdate = nullptr;
        const int status = OCSP_single_get0_status(OCSP_resp_get0(response.get(), i), &reason, &revocation,
                                                   &thisUpdate, &nextUpdate);
        good += status == V_OCSP_CERTSTATUS_GOOD && thisUpdate && nextUpdate;
    }
    require(good == entries);
}

void addResponse(Works& works, const char* name, const Octets& octets, std::size_t entries) {
    works.push_back({name,
                     [blob = blobOf(octets), entries] { readOurs(blob, entries); },
                     [&octets, entries] { readOpenssl(octets, entries); },
                     {},
                     octets.size()});
}

void readRequestOurs(const CBlob& octets) {
    CRequestMessage message;
    message.decode(octets);
    for (const CSingleRequest& entry : message.get_requestList())
        require(entry.get_reqCert().get_certID()->get_serialNumber().cbData() == 8);
    require(message.get_requestExtensions()->size() == 1);
}

void readRequestOpenssl(const Octets& octets) {
    const auto message = decoded<Request>(d2i_OCSP_REQUEST, octets);
    for (int i = 0; i < OCSP_request_onereq_count(message.get()); ++i) {
        ASN1_INTEGER* serialNumber = nullptr;
        OCSP_CERTID* id = OCSP_onereq_get0_id(OCSP_request_onereq_get0(message.get(), i));
        require(OCSP_id_get0_info(nullptr, nullptr, nullptr, &serialNumber, id) == 1);
        require(ASN1_STRING_length(serialNumber) == 8);
    }
    require(OCSP_REQUEST_get_ext_count(message.get()) == 1);
}

}  // namespace

void addPeer(Works& works, const PeerReader& peer) {
    for (Work& work : works) {
        const Octets* const response = work.name == kReadSmall     ? &smallResponse()
                                       : work.name == kReadTypical ? &typicalResponse()
                                                                   : nullptr;
        if (response) work.peers.push_back({peer.name, [peer, response] { peer.read(*response); }});
    }
}

void addDecodeWorks(Works& works) {
    addResponse(works, kReadSmall, smallResponse(), 1);
    addResponse(works, kReadTypical, typicalResponse(), 1);
    addResponse(works, "decode and read, 100 entries", largeResponse(100), 100);
    addResponse(works, "decode and read, 1000 entries", largeResponse(1000), 1000);
    addResponse(works, "decode and read, 10000 entries", largeResponse(10000), 10000);
    works.push_back({"decode and read, request",
                     [blob = blobOf(typicalRequest())] { readRequestOurs(blob); },
                     [] { readRequestOpenssl(typicalRequest()); },
                     {},
                     typicalRequest().size()});
}

}  // namespace bench
