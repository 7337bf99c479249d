// CResponseMessage, the envelope of a certificate status answer (OCSPResponse, RFC 6960, 4.2.1): a status
// and, if there is one, the answer itself as bytes with the identifier of its type.
//
// The status is carried and never interpreted: bytes may go with any status or be missing with any. Distinct
// objects may be used from distinct threads; one object belongs to one thread while it is changed. What the
// getters return points into the object and is valid until its next change.
//
//     CResponseMessage answer;
//     answer.put_responseStatus(successful);
//     answer.put_response("1.3.6.1.5.5.7.48.1.1", &basicResponse);  // what CBasicResponse::encode gave
//     CBlob const bytes = answer.encode();
//
//     CResponseMessage message;
//     message.decode(received);
//     if (message.get_responseStatus() == successful && message.get_response()) {
//         // message.get_responseType() tells what *message.get_response() holds
//     }
//
// Failures are ATL::CAtlException. Memory that an ASN.1 context does not have is 0x80093106 or 0x80093101;
// std::bad_alloc from operator new passes through.
#ifndef MIRVANE_OCSP_RESPONSE_MESSAGE_H
#define MIRVANE_OCSP_RESPONSE_MESSAGE_H

#include <cstdint>
#include <memory>

#include "base/blob.h"
#include "base/exception.h"

struct ASN1CTXT;

namespace asn1data {
struct ASN1T_OCSPResponse;
}

namespace Mirvane::PKI::OCSP {

struct ASN1T_OCSPResponse_traits;

// OCSPResponseStatus of RFC 6960; 4 is not assigned.
enum ResponseStatus : std::uint32_t {
    successful = 0,
    malformedRequest = 1,
    internalError = 2,
    tryLater = 3,
    sigRequired = 5,
    unauthorized = 6,
};

class MIRVANE_API CResponseMessage {
  public:
    // Status internalError and no response: what nobody filled in says that the responder failed.
    CResponseMessage();
    // A deep copy. Of a cleared object it is a cleared one.
    CResponseMessage(CResponseMessage const& other);
    // If memory fails, the object is as after clear().
    CResponseMessage& operator=(CResponseMessage const& other);
    ~CResponseMessage();

    // Ends what the object holds. After it only assignment and destruction are allowed.
    void clear();

    // The DER of the message. Throws 0x80070057 if the response type is no object identifier, 0x80093101 for
    // a status of 9 or more and for all that does not encode, 0x80093106 if memory for the response fails.
    CBlob encode() const;

    // Takes status and response from BER or DER; bytes behind the message are ignored. Throws 0x80070057 for
    // a blob without bytes and 0x80093101 for one that is no OCSPResponse; the object then stays as it was.
    void decode(CBlob const& blob);

    ResponseStatus get_responseStatus() const;
    // Any value is stored; encode() refuses 9 and more.
    void put_responseStatus(ResponseStatus status);

    // The type's object identifier in dotted decimal, null if there is no response.
    char const* get_responseType() const;
    // The octets of the response, null if there is none.
    CBlob const* get_response() const;
    // Copies both, or with two null pointers removes them. Throws 0x80070057 if only one is null, with
    // nothing changed, as a failure of memory does. The type is not looked at before encode().
    void put_response(char const* type, CBlob const* response);
    // The same with octets that are moved in, not copied; the blob is empty afterwards. Throws 0x80070057 for
    // a null type. On that and on a failure of memory nothing is changed, nor is the blob.
    void put_response(char const* type, CBlob&& response);

  private:
    friend struct ASN1T_OCSPResponse_traits;

    class MIRVANE_HIDDEN Impl;
    std::unique_ptr<Impl> impl_;
};

// The tie between the message and its record.
struct MIRVANE_API ASN1T_OCSPResponse_traits {
    using ASN1_T = asn1data::ASN1T_OCSPResponse;

    // Fills the record, with memory of the context. Throws as CResponseMessage::encode.
    static void set(ASN1CTXT* ctxt, ASN1_T& record, CResponseMessage const& value);
    // Replaces status and response of `value`, which keeps no pointer into the record.
    static void get(ASN1_T const& record, CResponseMessage& value);
    // A deep copy into the context. Throws 0x80093106 for memory that it does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
};

}  // namespace Mirvane::PKI::OCSP

#endif
