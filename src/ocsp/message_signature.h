// What signing and verifying have in common for requests and responses: the octets that are signed, and the
// work of the provider. A provider has signatures in the reverse byte order of their ASN.1 form; here they
// always are in ASN.1 order. Not part of the interface.
#ifndef MIRVANE_OCSP_MESSAGE_SIGNATURE_H
#define MIRVANE_OCSP_MESSAGE_SIGNATURE_H

#include "asn1/algorithm_identifier.h"
#include "base/blob.h"
#include "provider/handle_owners.h"

namespace Mirvane::PKI::OCSP {

// The first element inside the message's SEQUENCE, octet for octet as it was received, which is what its
// signature covers: encoding it anew need not give the same. Empty if it is no SEQUENCE, or has no end within
// the message, which the codec lets pass. Throws 0x80093101 for more octets than a message may have.
CBlob extractTbsBlob(CBlob const& message);

// One signature with the key of a caller's provider. Failures of the platform are soft: they throw the
// last-error code unless that is 0.
class TbsSigner {
  public:
    // Takes a reference of its own, which ends with the object. Of 0, or where the platform gives none, there
    // is none to end.
    explicit TbsSigner(HCRYPTPROV provider);

    // The signature of `tbs`. Throws 0x80070057 above 0x7FFFFFFF bytes.
    CBlob sign(ALG_ID hashAlgorithm, DWORD keySpecification, CBlob const& tbs);

    // Gives the reference back, and throws if that fails.
    void release();

  private:
    HCRYPTPROV provider_;
    ATL2::CCryptHashEx hash_;  // ends after the reference
    ATL::CCryptProv reference_;
};

// Whether `signature` is one of `tbs` by the key of the encoded certificate. Nothing else of the certificate
// is looked at, and false means only that the provider rejected the signature. Throws the last-error code for
// everything else, 0x80070057 for more than 0x7FFFFFFF bytes.
bool verifyTbs(CBlob const& tbs, ASN1::CAlgorithmIdentifierEx const& algorithm, CBlob const& signature,
               CBlob const& certificate);

}  // namespace Mirvane::PKI::OCSP

#endif
