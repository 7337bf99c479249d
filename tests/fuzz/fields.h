// Reads all that an object of the message model tells, down to the last octet, so that the sanitizers see it.
#ifndef MIRVANE_TESTS_FUZZ_FIELDS_H
#define MIRVANE_TESTS_FUZZ_FIELDS_H

#include <cwchar>
#include <string>

#include "fuzz/target.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"
#include "ocsp/response_message.h"

namespace fuzz {

namespace ocsp = Mirvane::PKI::OCSP;

// What was read goes here, so that no read is optimised away.
inline volatile unsigned seen;

inline void readOctets(std::span<const unsigned char> octets) {
    unsigned sum = 0;
    for (const unsigned char octet : octets)
        sum += octet;
    seen = seen + sum;
}
inline void read(const Mirvane::CBlob& blob) {
    readOctets({blob.pbData(), blob.cbData()});
}
inline void read(const char* text) {
    if (text) seen = seen + static_cast<unsigned>(std::char_traits<char>::length(text));
}
inline void read(const wchar_t* text) {
    if (text) seen = seen + static_cast<unsigned>(std::wcslen(text));
}
// A decoded time lies within the calendar, and so has texts.
inline void read(const Mirvane::CDateTime& time) {
    read(time.tostring().c_str());
    require(Mirvane::CDateTime(time.getGeneralizedTime().c_str()) == time,
            "the text of a time is read as the time");
}
inline void read(const Mirvane::ASN1::CAlgorithmIdentifier& algorithm) {
    read(algorithm.get_algorithm());
    read(algorithm.get_parameters());
}
inline void read(const Mirvane::ASN1::CExtensions& extensions) {
    for (const auto& extension : extensions) {
        seen = seen + extension.get_critical();
        read(extension.get_extnID());
        read(extension.get_extnValue());
    }
}
inline void read(const ocsp::CCertID& id) {
    read(id.get_hashAlgorithm());
    read(id.get_issuerNameHash());
    read(id.get_issuerKeyHash());
    read(id.get_serialNumber());
}
inline void read(const ocsp::CCertIdWithSignature& id) {
    read(id.get_issuer());
    read(id.get_serialNumber());
    read(id.get_tbsCertificateHash());
    read(id.get_signatureAlgorithm());
    read(id.get_signatureValue());
}
inline void read(const Mirvane::CBlobList& blobs) {
    for (const auto& blob : blobs)
        read(blob);
}

template <typename Field>
void readIfThere(const Field* field) {
    if (field) read(*field);
}

inline void read(const ocsp::CReqCert& subject) {
    readIfThere(subject.get_certID());
    readIfThere(subject.get_fullCert());
    readIfThere(subject.get_certIdWithSignature());
    require(!subject.get_fullCert() == !subject.get_fullCertType(), "a full certificate has its type");
}
inline void read(const ocsp::CCertStatus& status) {
    readIfThere(status.get_revocationTime());
    require(status.isGood() + status.isRevoked() + status.isUnknown() == 1, "a status is one of three");
    require(status.isRevoked() == (status.get_revocationTime() != nullptr),
            "who was revoked was so at a time");
}

inline void read(const ocsp::CRequestMessage& message) {
    seen = seen + message.get_version();
    readIfThere(message.get_requestorName());
    for (const auto& entry : message.get_requestList()) {
        read(entry.get_reqCert());
        readIfThere(entry.get_singleRequestExtensions());
    }
    readIfThere(message.get_requestExtensions());
    readIfThere(message.get_signatureAlgorithm());
    readIfThere(message.get_signature());
    readIfThere(message.get_signatureCerts());
}

inline void read(const ocsp::CBasicResponse& message) {
    seen = seen + message.get_version();
    read(message.get_producedAt());
    read(message.get_responderID().get_value());
    for (const auto& entry : message.get_responses()) {
        read(entry.get_reqCert());
        read(entry.get_certStatus());
        read(entry.get_thisUpdate());
        readIfThere(entry.get_nextUpdate());
        readIfThere(entry.get_singleExtensions());
    }
    readIfThere(message.get_responseExtensions());
    readIfThere(message.get_signatureAlgorithm());
    readIfThere(message.get_signature());
    readIfThere(message.get_certs());
}

inline void read(const ocsp::CResponseMessage& message) {
    seen = seen + message.get_responseStatus();
    read(message.get_responseType());
    readIfThere(message.get_response());
    require(!message.get_response() == !message.get_responseType(), "a response has its type");
}

}  // namespace fuzz

#endif
