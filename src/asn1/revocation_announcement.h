// CRevAnnContent, the notice that a certificate is or will be revoked (RevAnnContent of RFC 4210, 5.3.14),
// and CCertId, the name of that certificate: its issuer and serial number (CertId of RFC 4211, 5).
//
//   CRevAnnContent notice(revocationNotification, CCertId(issuer, serialNumber), revokedAt, badSince);
//   CBlob const encoded = notice.encode();
//
// Objects own what they hold and copies are deep. Distinct objects may be used from distinct threads; one
// object belongs to one thread while it is changed. Failures are ATL::CAtlException. What a getter returns is
// valid until the object changes or dies.
#ifndef MIRVANE_ASN1_REVOCATION_ANNOUNCEMENT_H
#define MIRVANE_ASN1_REVOCATION_ANNOUNCEMENT_H

#include <memory>

#include "asn1/big_integer.h"
#include "asn1/extensions.h"
#include "asn1/general_name.h"
#include "asn1/pki_status.h"
#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/date_time.h"

namespace Mirvane::ASN1 {

class CRevAnnContentImpl;

class MIRVANE_API CCertId {
  public:
    // An empty name and an empty number, which do not encode.
    CCertId();
    CCertId(CGeneralName const& issuer, CBigInteger const& serialNumber);
    CCertId(CCertId const& other);

    // A failure leaves the object as it was.
    CCertId& operator=(CCertId const& other);

    CGeneralName const& get_issuer() const { return issuer_; }
    CBigInteger const& get_serialNumber() const { return serialNumber_; }
    void put_issuer(CGeneralName const& issuer) { issuer_ = issuer; }
    void put_serialNumber(CBigInteger const& serialNumber) { serialNumber_ = serialNumber; }

  private:
    CGeneralName issuer_;
    CBigInteger serialNumber_;
};

class MIRVANE_API CRevAnnContent {
  public:
    // Status 0, an empty identifier, the start of 1970 twice and no extensions: an object to decode into.
    CRevAnnContent();
    // No extensions.
    CRevAnnContent(PKIStatusEnum const& status, CCertId const& certId, CDateTime const& willBeRevokedAt,
                   CDateTime const& badSinceDate);
    CRevAnnContent(CRevAnnContent const& other);
    ~CRevAnnContent();

    // A failure leaves the object as it was.
    CRevAnnContent& operator=(CRevAnnContent const& other);

    PKIStatusEnum const& get_status() const;
    CCertId const& get_certId() const;
    CDateTime const& get_willBeRevokedAt() const;
    CDateTime const& get_badSinceDate() const;
    // Null where absent.
    CExtensions const* get_crlDetails() const;

    void put_status(PKIStatusEnum const& status);
    void put_certId(CCertId const& certId);
    void put_willBeRevokedAt(CDateTime const& willBeRevokedAt);
    void put_badSinceDate(CDateTime const& badSinceDate);
    // Takes a copy; null makes the field absent. The argument may be what the object holds.
    void put_crlDetails(CExtensions const* crlDetails);

    // The DER form, with dates in whole seconds; extensions that are an empty list are left out. Throws what
    // CGeneralName, CBigInteger, CDateTime and CExtensions throw when they are encoded.
    CBlob encode() const;
    // Reads the notice at the start of the blob, and makes absent what it does not have. An issuer that is an
    // iPAddress becomes a directoryName, as in CGeneralName. Throws 0x80093101 for what is no notice,
    // 0x80070057 for an issuer of a kind that CGeneralName does not hold, what CDateTime(char const*) throws
    // for a date; the object is then as it was.
    void decode(CBlob const& encoded);

  private:
    std::unique_ptr<CRevAnnContentImpl> impl_;  // never null
};

}  // namespace Mirvane::ASN1

#endif
