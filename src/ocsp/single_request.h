// CSingleRequest, the question about one certificate (Request of RFC 6960, 4.1.1), and the list of them that
// a CRequestMessage carries. They are encoded as part of that only.
//
// Copies are deep; a moved-from object is as after clear(). Distinct objects may be used from distinct
// threads; one object belongs to one thread while it is changed. What the getters return points into the
// object and is valid until its next change.
#ifndef MIRVANE_OCSP_SINGLE_REQUEST_H
#define MIRVANE_OCSP_SINGLE_REQUEST_H

#include <list>
#include <memory>

#include "asn1/extensions.h"
#include "ocsp/request_certificate.h"

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CSingleRequest {
  public:
    // About the default CReqCert, an empty CCertID.
    CSingleRequest();
    CSingleRequest(CReqCert const& reqCert);
    // A deep copy. Of a cleared object it is a cleared one.
    CSingleRequest(CSingleRequest const& other);
    CSingleRequest(CSingleRequest&& other) noexcept;
    ~CSingleRequest();

    // A failure leaves the object as it was.
    CSingleRequest& operator=(CSingleRequest const& other);
    CSingleRequest& operator=(CSingleRequest&& other) noexcept;

    // Ends what the object holds. After it only assignment and destruction are allowed.
    void clear();

    CReqCert const& get_reqCert() const;
    // Null when absent.
    ASN1::CExtensions const* get_singleRequestExtensions() const;

    // A copy, which may be of what the object holds; null makes the field absent. An empty list is kept here
    // and left out when the request is encoded. A failure leaves the object as it was.
    void put_singleRequestExtensions(ASN1::CExtensions const* singleRequestExtensions);

  private:
    class MIRVANE_HIDDEN Impl;
    std::unique_ptr<Impl> impl_;  // null when cleared
};

class MIRVANE_API CSingleRequestList : public std::list<CSingleRequest> {
  public:
    using std::list<CSingleRequest>::list;

    CSingleRequestList();
    CSingleRequestList(CSingleRequestList const& other);
    CSingleRequestList(CSingleRequestList&& other);
    ~CSingleRequestList();

    CSingleRequestList& operator=(CSingleRequestList const& other);
    CSingleRequestList& operator=(CSingleRequestList&& other);
};

}  // namespace Mirvane::PKI::OCSP

#endif
