// CBasicResponse, the signed answer of the protocol (BasicOCSPResponse, RFC 6960, 4.2.1): who answers and
// when, an entry for each certificate, extensions, a signature and certificates to check it with. Its bytes
// travel in a CResponseMessage, under the type 1.3.6.1.5.5.7.48.1.1.
//
//     CBasicResponse answer(CDateTime::Now(), CResponderID::fromCert(CResponderID::byKey, certificate));
//     answer.put_responses(entries);
//     answer.put_clockPrecisionDigits(0);
//     answer.sign(provider, AT_SIGNATURE, sha256WithRsa);
//     CBlob const bytes = answer.encode();
//
//     CBasicResponse received;
//     received.decode(*envelope.get_response());
//     if (received.verify(signerCertificate)) use(received.get_responses());
//
// Only encode() demands a signature. A response that is changed after it was signed keeps its signature,
// which then does not fit any more; nothing tells.
//
// Copies are deep. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed. What the getters return points into the object and is valid until its next change. Failures
// are ATL::CAtlException; a last-error code is what the platform left, a plain system error number (above 0)
// under 0x80070000. Memory that an ASN.1 context does not have is 0x80093106 or 0x80093101; std::bad_alloc
// from operator new passes through.
#ifndef MIRVANE_OCSP_BASIC_RESPONSE_H
#define MIRVANE_OCSP_BASIC_RESPONSE_H

#include <cstdint>
#include <memory>

#include "asn1/algorithm_identifier.h"
#include "asn1/extensions.h"
#include "base/blob.h"
#include "base/date_time.h"
#include "base/exception.h"
#include "base/lists.h"
#include "ocsp/responder_id.h"
#include "ocsp/single_response.h"

namespace asn1data {
struct ASN1T_BasicOCSPResponse;
}

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CBasicResponse {
  public:
    // Version 0, the time CDateTime(0, 0), a default responder, no entries, all else absent, six digits.
    CBasicResponse();
    CBasicResponse(CDateTime const& producedAt, CResponderID const& responderID);
    // All but the octets that were received, if the response was decoded: see verify(). Of a cleared object
    // it is a cleared one.
    CBasicResponse(CBasicResponse const& other);
    // If memory fails, the object is as after clear().
    CBasicResponse& operator=(CBasicResponse const& other);
    ~CBasicResponse();

    // Ends what the object holds. After it only assignment and destruction are allowed.
    void clear();

    // The DER of the response. Certificates, names and extensions are taken apart and written anew, so that
    // bytes of one that was not DER change. Several threads may encode one object.
    //
    // Throws 0x80004005 without a signature, before anything else; 0x80093101 for a name or a certificate
    // that does not decode, and for all that does not encode; 0x80070057 for a responder of another type and
    // for an extension whose identifier is none; the last error for a time outside the calendar; 0x80093106
    // if memory for a record fails.
    CBlob encode() const;

    // Takes a response from BER or DER; bytes behind it are ignored. Everything is replaced but the
    // precision, which no encoding tells.
    //
    // Throws 0x80070057 for a blob without bytes, 0x80093101 for what is no BasicOCSPResponse; the object is
    // then as it was. Throws what CDateTime(char const*) throws for a time that is none, and 0x80093101 for a
    // name or a certificate that does not encode again, and for a part that is signed whose end the response
    // does not have: it is then read, at least in part, and has no signature, or one whose check hashes a
    // fresh encoding.
    void decode(CBlob const& blob);

    // Signs the response as it is now, with the key of the provider context and key specification, which the
    // platform defines. The context may be shared: a reference to it is held meanwhile. The hash is the
    // platform's number for the algorithm, which the argument then keeps: unlike in
    // CRequestMessage::sign the identifier of a hash will do, which is meant. What was decoded is encoded
    // anew, and verify() keeps to the octets received: sign a copy of a decoded response.
    //
    // Throws what encode() throws for the part that is signed; the last-error code if the provider does not
    // sign (0x80090008 for an algorithm that is not known or does not fit the key, 0x80090001 for a stale
    // handle, 0x8009000D without a private key), unless it is 0. The response is then as it was, but for a
    // failure to give the reference back, which comes after the signature is stored.
    void sign(unsigned long long provider, unsigned int keySpecification,
              ASN1::CAlgorithmIdentifierEx const& signatureAlgorithm);

    // Whether the signature is one by the key of this encoded certificate. Nothing else is judged: neither
    // its validity, nor its purpose, nor whether it is that of the responder. A decoded response is checked
    // over the octets that were received, whatever was changed since; one that was built here, and a copy of
    // a decoded one, over a fresh encoding.
    //
    // False means only that the provider rejected the signature. Throws 0x80004005 for a response that is not
    // signed; what encode() throws for a fresh encoding; the last-error code for a certificate that does not
    // parse, algorithms that are not known or do not fit (0x80090008), a key that cannot be read
    // (0x80090003).
    bool verify(CBlob const& certificate) const;

    // 0 is v1, 1 is v2; a received response may say anything else.
    std::uint32_t get_version() const;
    // In full, whatever the precision is.
    CDateTime const& get_producedAt() const;
    CResponderID const& get_responderID() const;
    CSingleResponseList const& get_responses() const;
    // Null when absent.
    ASN1::CAlgorithmIdentifierEx const* get_signatureAlgorithm() const;
    // In the byte order of the message.
    CBlob const* get_signature() const;
    // The certificates that came with the response. Those of a decoded one are encoded anew: one that is not
    // DER, or has such extensions (a BasicConstraints that says FALSE is common), comes with other bytes than
    // were received, and its own signature then does not fit them. Whoever checks that takes the
    // certificate's octets from the message.
    CBlobList const* get_certs() const;
    ASN1::CExtensions const* get_responseExtensions() const;

    // Replaces the entries and sets the version: 1 if one of them names its certificate in another way than
    // by a CertID, else 0. Nothing else has a bearing on the version. If memory fails, the entries are
    // replaced in part.
    void put_responses(CSingleResponseList const& responses);
    // Copies, which may be of what the object holds; null makes the field absent. Certificates are looked at
    // when the response is encoded. An empty list is left out then.
    void put_certs(CBlobList const* certificates);
    void put_responseExtensions(ASN1::CExtensions const* extensions);
    // How many digits of a second producedAt, thisUpdate and nextUpdate have on the wire: see
    // CClockPrecision. The signature covers the times as they are written, so this comes before sign(). Whole
    // seconds, digits 0, are what RFC 6960 asks for; the initial six are not. Throws 0x80070057 for a number
    // other than 0 to 6; the former precision stays.
    void put_clockPrecisionDigits(int digits);

  private:
    class MIRVANE_HIDDEN Impl;
    std::unique_ptr<Impl> impl_;  // null when cleared
};

// The tie between a whole encoded response and its record, for a type that has one as a field; for the
// library's own code: records are not installed.
struct MIRVANE_API ASN1T_BasicOCSPResponse_traits {
    using ASN1_T = asn1data::ASN1T_BasicOCSPResponse;

    // Throws 0x80093101 if the blob does not start with a response.
    static void set(ASN1CTXT* ctxt, ASN1_T& record, CBlob const& response);
    // Throws 0x80093101 for a record that does not encode; `response` is then as it was.
    static void get(ASN1_T const& record, CBlob& response);
    // A deep copy. Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record);
};

}  // namespace Mirvane::PKI::OCSP

#endif
