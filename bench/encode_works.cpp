// From objects to bytes.
#include "messages.h"
#include "ocsp/basic_response.h"
#include "ocsp/ocsp_extensions.h"
#include "ocsp/request_message.h"
#include "works.h"

namespace bench {
namespace {

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;

void addResponse(Works& works, const char* name, const Octets& octets) {
    const Octets basic = basicOctets(octets);
    auto ours = std::make_shared<CBasicResponse>();
    ours->decode(blobOf(basic));
    ours->put_clockPrecisionDigits(0);
    const std::shared_ptr<OCSP_BASICRESP> theirs = decoded<Basic>(d2i_OCSP_BASICRESP, basic);
    require(ours->encode() == blobOf(basic));
    works.push_back({name,
                     [ours, length = basic.size()] { require(ours->encode().cbData() == length); },
                     [theirs, length = static_cast<int>(basic.size())] {
                         unsigned char* written = nullptr;
                         const int count = i2d_OCSP_BASICRESP(theirs.get(), &written);
                         OPENSSL_free(written);
                         require(count == length);
                     },
                     {}});
}

const unsigned char kNonce[kNonceOctets] = {0x5A, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};

void requestOurs(const CBlob& certificate, const CBlob& issuer) {
    const Mirvane::ASN1::CAlgorithmIdentifierEx sha1(Mirvane::ASN1::CAlgorithmIdentifier("1.3.14.3.2.26"));
    CSingleRequestList entries;
    entries.push_back(CReqCert(CCertID(sha1, certificate, issuer)));
    CBlob nonce(sizeof kNonce + 2);
    nonce.pbData()[0] = V_ASN1_OCTET_STRING;
    nonce.pbData()[1] = sizeof kNonce;
    std::copy_n(kNonce, sizeof kNonce, nonce.pbData() + 2);
    Mirvane::ASN1::CExtensions extensions;
    extensions.insert({CExtNonce(nonce), false});
    CRequestMessage message;
    message.put_requestList(entries);
    message.put_requestExtensions(&extensions);
    require(message.encode().cbData() > 100);
}

void requestOpenssl(const Octets& certificate, const Octets& issuer) {
    const auto subject = decoded<Certificate>(d2i_X509, certificate);
    const auto authority = decoded<Certificate>(d2i_X509, issuer);
    const Request request(OCSP_REQUEST_new());
    OCSP_CERTID* id = OCSP_cert_to_id(EVP_sha1(), subject.get(), authority.get());
    require(OCSP_request_add0_id(request.get(), id) != nullptr);
    require(OCSP_request_add1_nonce(request.get(), const_cast<unsigned char*>(kNonce), sizeof kNonce));
    unsigned char* written = nullptr;
    const int length = i2d_OCSP_REQUEST(request.get(), &written);
    OPENSSL_free(written);
    require(length > 100);
}

}  // namespace

void addEncodeWorks(Works& works) {
    addResponse(works, "encode, small response", smallResponse());
    addResponse(works, "encode, typical response", typicalResponse());
    addResponse(works, "encode, 100 entries", largeResponse(100));
    addResponse(works, "encode, 10000 entries", largeResponse(10000));
    works.push_back({"request from two encoded certificates, with nonce",
                     [certificate = blobOf(signer().encoded()), issuer = blobOf(authorityOctets())] {
                         requestOurs(certificate, issuer);
                     },
                     [] { requestOpenssl(signer().encoded(), authorityOctets()); },
                     {}});
}

}  // namespace bench
