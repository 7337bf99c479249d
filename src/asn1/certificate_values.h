// Whole certificates as values (RFC 5126, 6.3.3): CCertificateValue, one encoded certificate;
// CCertificateValues, the list of those that are needed to verify a signature.
//
//   CCertificateValues chain;
//   chain.push_back(signerCertificate);
//   chain.push_back(issuerCertificate);
//   CBlob const encoded = chain.encode();
//
// A certificate is taken apart and written anew on the way: one that is not DER comes back with other bytes
// than it was made from, and its signature need not fit any more.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException.
#ifndef MIRVANE_ASN1_CERTIFICATE_VALUES_H
#define MIRVANE_ASN1_CERTIFICATE_VALUES_H

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/lists.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CCertificateValue : public CBlob {
  public:
    // Empty.
    CCertificateValue() = default;
    // The bytes as they are.
    explicit CCertificateValue(CBlob const& encoded) : CBlob(encoded) {}

    // The certificate in DER. Throws 0x80093101 if the bytes do not start with a certificate, 0x80093106 for
    // memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Takes the certificate at the start of the blob. Throws as above; the object is then as it was.
    void decode(CBlob const& encoded);
};

class MIRVANE_API CCertificateValues : public CBlobList {
  public:
    using CBlobList::CBlobList;

    // A SEQUENCE OF the certificates, which may be none. Throws as for one certificate.
    CBlob encode() const;
    // Reads such a sequence at the start of the blob. Throws as for one certificate; the object is then as it
    // was.
    void decode(CBlob const& encoded);
};

}  // namespace Mirvane::ASN1

#endif
