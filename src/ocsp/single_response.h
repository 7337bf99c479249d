// CSingleResponse, the answer about one certificate (SingleResponse of RFC 6960, 4.2.1), and the list of them
// that a CBasicResponse carries. They are encoded as part of that only.
//
// Copies are deep; a moved-from object is as after clear(). Distinct objects may be used from distinct
// threads; one object belongs to one thread while it is changed. What the getters return points into the
// object and is valid until its next change.
#ifndef MIRVANE_OCSP_SINGLE_RESPONSE_H
#define MIRVANE_OCSP_SINGLE_RESPONSE_H

#include <list>
#include <memory>

#include "asn1/extensions.h"
#include "base/date_time.h"
#include "ocsp/certificate_status.h"
#include "ocsp/request_certificate.h"

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CSingleResponse {
  public:
    // Status unknown, the time CDateTime(0, 0), nothing optional. The certificate is meant to be a full one
    // of no bytes: a response with such an entry is one of version 2, and does not encode.
    CSingleResponse();
    CSingleResponse(CReqCert const& reqCert, CCertStatus const& certStatus, CDateTime const& thisUpdate);
    CSingleResponse(CReqCert&& reqCert, CCertStatus&& certStatus, CDateTime const& thisUpdate);
    CSingleResponse(CSingleResponse const& other);
    CSingleResponse(CSingleResponse&& other) noexcept;
    ~CSingleResponse();

    // A failure leaves the object as it was.
    CSingleResponse& operator=(CSingleResponse const& other);
    CSingleResponse& operator=(CSingleResponse&& other) noexcept;

    // Ends what the object holds. After it only assignment and destruction are allowed.
    void clear();

    CReqCert const& get_reqCert() const;
    CCertStatus const& get_certStatus() const;
    CDateTime const& get_thisUpdate() const;
    // Null when absent.
    CDateTime const* get_nextUpdate() const;
    ASN1::CExtensions const* get_singleExtensions() const;

    // A copy, which may be of what the object holds; null makes the field absent. A failure leaves the object
    // as it was.
    void put_nextUpdate(CDateTime const* nextUpdate);
    // As above. An empty list is kept here and left out when the response is encoded.
    void put_singleExtensions(ASN1::CExtensions const* singleExtensions);

  private:
    class MIRVANE_HIDDEN Impl;
    std::unique_ptr<Impl> impl_;  // null when cleared
};

class MIRVANE_API CSingleResponseList : public std::list<CSingleResponse> {
  public:
    using std::list<CSingleResponse>::list;

    CSingleResponseList();
    CSingleResponseList(CSingleResponseList const& other);
    CSingleResponseList(CSingleResponseList&& other);
    ~CSingleResponseList();

    CSingleResponseList& operator=(CSingleResponseList const& other);
    CSingleResponseList& operator=(CSingleResponseList&& other);
};

}  // namespace Mirvane::PKI::OCSP

#endif
