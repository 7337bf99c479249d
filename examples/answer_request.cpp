// Answers a request as the issuer itself, from what it knows about two of its certificates:
//
//     answer_request ISSUER KEY GOOD REVOKED REQUEST RESPONSE
//
// KEY is the issuer's key, which is one for P-256: a file, or a URI that an installed store of OpenSSL reads.
// The certificates GOOD and REVOKED and all other files are DER. Any other certificate's status is unknown. A
// request that does not decode gets the answer malformedRequest, which nobody signs.
#include <cstdio>
#include <ctime>

#include <mirvane/base/exception.h>
#include <mirvane/ocsp/basic_response.h>
#include <mirvane/ocsp/request_message.h>
#include <mirvane/ocsp/response_message.h>
#include <mirvane/provider/handle_owners.h>

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;
using Mirvane::CDateTime;
using Mirvane::ASN1::CAlgorithmIdentifier;

namespace {

struct Records {
    CBlob issuer;
    CBlob good;
    CBlob revoked;
};

CCertStatus statusOf(const CReqCert& asked, const Records& records) {
    const CCertID* identifier = asked.get_certID();
    const auto names = [&](const CBlob& certificate) {
        return identifier &&
               *identifier == CCertID(identifier->get_hashAlgorithm(), certificate, records.issuer);
    };
    CCertStatus status;  // unknown
    if (names(records.good)) status.put_good();
    if (names(records.revoked)) status.put_revoked("20260101000000Z", nullptr);
    return status;
}

CBlob answer(const CRequestMessage& request, const Records& records, HCRYPTPROV key) {
    const CDateTime now(std::time(nullptr), 0);
    CSingleResponseList entries;
    for (const CSingleRequest& asked : request.get_requestList())
        entries.emplace_back(asked.get_reqCert(), statusOf(asked.get_reqCert(), records), now);
    CBasicResponse response(now, CResponderID::fromCert(CResponderID::byName, records.issuer));
    response.put_clockPrecisionDigits(0);
    response.put_responses(entries);
    response.sign(key, AT_SIGNATURE, CAlgorithmIdentifier("1.2.840.10045.4.3.2"));  // ecdsa-with-SHA256
    const CBlob encoded = response.encode();
    CResponseMessage message;
    message.put_responseStatus(successful);
    message.put_response("1.3.6.1.5.5.7.48.1.1", &encoded);
    return message.encode();
}

CBlob contentOf(const char* path) {
    CBlob content;
    content.readFromFile(path);
    return content;
}

bool decodes(CRequestMessage& request, const CBlob& question) {
    try {
        request.decode(question);
        return true;
    } catch (const ATL::CAtlException&) {
        return false;
    }
}

CBlob malformed() {
    CResponseMessage message;
    message.put_responseStatus(malformedRequest);
    return message.encode();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 7) return 2;
    try {
        ATL::CCryptProv key;
        if (!CryptAcquireContextA(key.Place(), argv[2], nullptr, 0, 0)) {
            std::fprintf(stderr, "%s holds no key\n", argv[2]);
            return 1;
        }
        const Records records{contentOf(argv[1]), contentOf(argv[3]), contentOf(argv[4])};
        CRequestMessage request;
        const bool isRequest = decodes(request, contentOf(argv[5]));
        (isRequest ? answer(request, records, key.GetHandle()) : malformed()).writeToFile(argv[6]);
        return 0;
    } catch (const ATL::CAtlException& failure) {
        std::fprintf(stderr, "failed with code %08X\n", static_cast<unsigned>(failure.m_hr));
        return 1;
    }
}
