// CIssuerSerial, which names a certificate by its issuer's names and its serial number: the IssuerSerial of
// X.509 (RFC 5755, 4.1) and of the identifiers of signing certificates (RFC 5035, 5). The unique identifier
// that X.509 has beside them is not held.
//
// Comparison is by the loose rule of CGeneralName, which looks at the first character of a text only, so it
// may not decide about trust: compare the encodings.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_ISSUER_SERIAL_H
#define MIRVANE_ASN1_ISSUER_SERIAL_H

#include "asn1/big_integer.h"
#include "asn1/general_name.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CIssuerSerial {
  public:
    // No names, and a number without bytes: it does not encode.
    CIssuerSerial();
    CIssuerSerial(CGeneralNames const& issuer, CBigInteger const& serialNumber);
    CIssuerSerial(CIssuerSerial const& other);
    ~CIssuerSerial();
    // A failure leaves the object as it was.
    CIssuerSerial& operator=(CIssuerSerial const& other);

    CGeneralNames const& get_issuer() const { return issuer_; }
    CBigInteger const& get_serialNumber() const { return serialNumber_; }
    void put_issuer(CGeneralNames const& issuer) { issuer_ = issuer; }
    void put_serialNumber(CBigInteger const& serialNumber) { serialNumber_ = serialNumber; }

    // The DER form. Throws 0x80093101 if there is none, as without names or number; 0x80070057 for a name of
    // a kind that CGeneralName does not hold; 0x80093106 for memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Reads the value at the start of the blob; a unique identifier is read and dropped. Throws 0x80093101
    // for what is none, 0x80070057 as above; the object is then as it was.
    void decode(CBlob const& encoded);

    // As many names, equal in the same order, and numbers that CBigInteger::compare finds equal.
    bool operator==(CIssuerSerial const& other) const;
    bool operator!=(CIssuerSerial const& other) const { return !(*this == other); }

  private:
    CGeneralNames issuer_;
    CBigInteger serialNumber_;
};

}  // namespace Mirvane::ASN1

#endif
