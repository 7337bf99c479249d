// CReqCert, the certificate that a question or an answer is about, named in one of three ways: a CertID of
// RFC 6960, the whole certificate, or an identifier with the certificate's signature. All but the first make
// a message one of version 2.
//
// It holds exactly one choice. Copies are deep; a moved-from object is as after clear(). Distinct objects may
// be used from distinct threads; one object belongs to one thread while it is changed. What the getters
// return points into the object and is valid until its next change.
//
//     CReqCert const subject(CCertID(sha1, certificate, issuerCertificate));
//     if (CCertID const* identifier = subject.get_certID()) use(identifier->get_serialNumber());
#ifndef MIRVANE_OCSP_REQUEST_CERTIFICATE_H
#define MIRVANE_OCSP_REQUEST_CERTIFICATE_H

#include <cstdint>
#include <memory>

#include "ocsp/certificate_identifier.h"

namespace asn1data {
struct ASN1T_FullCertificate;
struct ASN1T_ReqCert;
}  // namespace asn1data

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CReqCert {
  public:
    // What the bytes of a full certificate are.
    enum fullCertificateType : std::uint32_t {
        certificate = 0,           // a Certificate of X.509
        attributeCertificate = 1,  // an AttributeCertificate of X.509 (1997), version 1; version 2 is refused
    };

    // An empty CCertID.
    CReqCert();
    CReqCert(CCertID const& certID);
    // The bytes are not looked at before the message is encoded.
    CReqCert(fullCertificateType type, CBlob const& fullCert);
    CReqCert(CCertIdWithSignature const& certIdWithSignature);
    CReqCert(CReqCert const& other);
    CReqCert(CReqCert&& other) noexcept;
    ~CReqCert();

    // When memory fails, the object is as after clear().
    CReqCert& operator=(CReqCert const& other);
    CReqCert& operator=(CReqCert&& other) noexcept;

    // Ends the choice. After it only put operations, assignment and destruction are allowed.
    void clear();

    // Null if another choice is held. The two of a full certificate answer together, also for empty bytes.
    CCertID const* get_certID() const;
    CBlob const* get_fullCert() const;
    fullCertificateType const* get_fullCertType() const;
    CCertIdWithSignature const* get_certIdWithSignature() const;

    // Each replaces the choice, whatever it was, by a copy of the argument, which may be a part of the
    // object. When memory fails, the object is as after clear().
    void put_certID(CCertID const& certID);
    void put_fullCert(fullCertificateType type, CBlob const& fullCert);
    void put_certIdWithSignature(CCertIdWithSignature const& certIdWithSignature);

  private:
    friend CReqCert readASN1T_ReqCert(asn1data::ASN1T_ReqCert const& record);

    class MIRVANE_HIDDEN Impl;
    class Impl_CertID;
    class Impl_FullCertificate;
    class Impl_CertIdWithSignature;

    MIRVANE_HIDDEN explicit CReqCert(std::unique_ptr<Impl> impl) noexcept;

    std::unique_ptr<Impl> impl_;  // null when cleared
};

// The tie between the choice and its record; a ReqCert has no encoding of its own. Each `_set` wants an empty
// record and fills it with memory of the context; 0x80093106 when there is none.

// Throws as the traits of the two identifiers do, and as ASN1T_FullCertificate_set does.
MIRVANE_API void ASN1T_ReqCert_set(ASN1CTXT* ctxt, asn1data::ASN1T_ReqCert& record, CReqCert const& value);
// A record without a known alternative leaves the value as it was. Throws as the traits of the two
// identifiers do, and as ASN1T_FullCertificate_get does.
MIRVANE_API void ASN1T_ReqCert_get(asn1data::ASN1T_ReqCert const& record, CReqCert& value);
// The same as a new value, a certificate of no bytes for a record without a known alternative. Not exported.
CReqCert readASN1T_ReqCert(asn1data::ASN1T_ReqCert const& record);

// Takes the certificate apart: 0x80093101 if the blob does not start with one of the type. Another type than
// the two leaves the record as it is, and then that does not encode.
MIRVANE_API void ASN1T_FullCertificate_set(ASN1CTXT* ctxt, asn1data::ASN1T_FullCertificate& record,
                                           CReqCert::fullCertificateType const& type, CBlob const& fullCert);
// The certificate encoded anew: its own bytes if those were DER. Throws 0x80093101 if the record has no known
// alternative or does not encode.
MIRVANE_API void ASN1T_FullCertificate_get(asn1data::ASN1T_FullCertificate const& record,
                                           CReqCert::fullCertificateType& type, CBlob& fullCert);

}  // namespace Mirvane::PKI::OCSP

#endif
