// Asks about a certificate, and reads the answer:
//
//     ask_about_certificate ISSUER CERTIFICATE REQUEST             writes the question to the file REQUEST
//     ask_about_certificate ISSUER CERTIFICATE REQUEST RESPONSE    says what the answer in RESPONSE means
//
// All files are DER. The answer must be signed by the issuer itself; how old it may be is not judged here.
#include <cstdio>
#include <cstring>

#include <mirvane/base/exception.h>
#include <mirvane/ocsp/basic_response.h>
#include <mirvane/ocsp/request_message.h>
#include <mirvane/ocsp/response_message.h>

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;

namespace {

CCertID identifierOf(const CBlob& certificate, const CBlob& issuer) {
    Mirvane::ASN1::CAlgorithmIdentifierEx sha1;
    sha1.put_algorithm("1.3.14.3.2.26");
    return CCertID(sha1, certificate, issuer);
}

CBlob question(const CBlob& certificate, const CBlob& issuer) {
    CSingleRequestList entries;
    entries.push_back(CReqCert(identifierOf(certificate, issuer)));
    CRequestMessage message;
    message.put_requestList(entries);
    return message.encode();
}

const char* meaning(const CBlob& answer, const CBlob& certificate, const CBlob& issuer) {
    CResponseMessage message;
    message.decode(answer);
    if (message.get_responseStatus() != successful || !message.get_response()) return "no answer";
    CBasicResponse response;
    response.decode(*message.get_response());
    if (!response.verify(issuer)) return "the signature is not the issuer's";
    for (const CSingleResponse& entry : response.get_responses()) {
        const CCertID* identifier = entry.get_reqCert().get_certID();
        if (!identifier || *identifier != identifierOf(certificate, issuer)) continue;
        const CCertStatus& status = entry.get_certStatus();
        return status.isRevoked() ? "revoked" : status.isUnknown() ? "unknown" : "good";
    }
    return "not mentioned";
}

CBlob contentOf(const char* path) {
    CBlob content;
    content.readFromFile(path);
    return content;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4 && argc != 5) return 2;
    try {
        const CBlob issuer = contentOf(argv[1]);
        const CBlob certificate = contentOf(argv[2]);
        if (argc == 4) {
            question(certificate, issuer).writeToFile(argv[3]);
            return 0;
        }
        const char* result = meaning(contentOf(argv[4]), certificate, issuer);
        std::puts(result);
        return std::strcmp(result, "good") == 0 ? 0 : 1;
    } catch (const ATL::CAtlException& failure) {
        std::fprintf(stderr, "failed with code %08X\n", static_cast<unsigned>(failure.m_hr));
        return 1;
    }
}
