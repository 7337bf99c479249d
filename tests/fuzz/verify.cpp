// Signatures of strangers: messages are checked with a certificate that is known, and with those that they
// bring along.
#include "fuzz/fields.h"
#include "fuzz/fixed_signer.h"
#include "fuzz/target.h"
#include "ocsp/responder_id.h"

namespace {

using fuzz::passes;
using fuzz::require;
using Mirvane::CBlob;
using Mirvane::failure::fromBits;
namespace ocsp = Mirvane::PKI::OCSP;

// The failures of the codec, and of the platform for keys and certificates.
constexpr ATL::HRESULT kStated[] = {
    Mirvane::failure::asn1, Mirvane::failure::invalidArgument, Mirvane::failure::general,
    fromBits(0x80090003),  // a key that cannot be read
    fromBits(0x80090008),  // algorithms that are not known or do not fit
    fromBits(0x80092004),  // not found
    fromBits(0x80093102),  // a certificate that is cut short
    fromBits(0x80093103),  // a certificate of another form
    fromBits(0x80093202),  // a certificate with a length that is wrong
};

template <typename Message>
void verifyWith(const Message& message, const CBlob& certificate) {
    bool first = false;
    if (!passes([&] { first = message.verify(certificate); }, kStated)) return;
    require(message.verify(certificate) == first, "a check has one result");
    // A copy checks a fresh encoding, which may differ from what was received, but not fail otherwise.
    passes([&] { Message(message).verify(certificate); }, kStated);
}

template <typename Message>
void verifyBy(const Message& message, const Mirvane::CBlobList* brought) {
    verifyWith(message, fuzz::fixedCertificate());
    if (brought && !brought->empty()) verifyWith(message, brought->front());
}

}  // namespace

MIRVANE_FUZZ_TARGET(verify_request, 0) {
    ocsp::CRequestMessage message;
    if (passes([&] { message.decode(input.rest()); })) verifyBy(message, message.get_signatureCerts());
}

MIRVANE_FUZZ_TARGET(verify_response, 0) {
    ocsp::CBasicResponse message;
    if (passes([&] { message.decode(input.rest()); })) verifyBy(message, message.get_certs());
}

// What identifies a certificate is taken from one that a stranger sent.
MIRVANE_FUZZ_TARGET(certificate, 0) {
    const CBlob certificate = input.rest();
    Mirvane::ASN1::CAlgorithmIdentifierEx sha1;
    sha1.put_algorithm("1.3.14.3.2.26");
    passes(
        [&] {
            const ocsp::CCertID id(sha1, certificate, certificate);
            fuzz::read(id);
            ocsp::CCertID again;
            again.decode(id.encode());
            require(again == id, "an identifier comes back");
        },
        kStated);
    for (const auto type : {ocsp::CResponderID::byName, ocsp::CResponderID::byKey}) {
        passes(
            [&] {
                const auto id = ocsp::CResponderID::fromCert(type, certificate);
                require(id == ocsp::CResponderID(id), "a responder equals its copy");
                passes([&] { id.encode(); });
            },
            kStated);
    }
    try {
        fuzz::read(ocsp::CCertIdWithSignature(certificate));
    } catch (const ATL::CAtlException&) {
        // Whatever stands in the last-error slot, which is meant.
    }
}
