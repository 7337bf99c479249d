// How a certificate authority or a time-stamp authority answered (PKIStatusInfo of RFC 4210, 5.2.3, and
// RFC 3161, 2.4.2): PKIStatusEnum, the status; CPKIFailureInfo, the reasons of a refusal; CPKIStatusInfo,
// both with a text.
//
//   CPKIStatusInfo status(accepted);
//   status.decode(encoded);
//   if (status.get_pkiStatus() == rejection && status.get_failureInfo().get_bit(2)) resend();
//
// 2 being badRequest, the number of that name in PKIFailureInfo.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_PKI_STATUS_H
#define MIRVANE_ASN1_PKI_STATUS_H

#include <cstdint>

#include "asn1/free_text.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

// Other values are read and written as they are.
enum PKIStatusEnum : std::int32_t {
    accepted = 0,  // a time-stamp authority says granted
    grantedWithMods = 1,
    rejection = 2,
    waiting = 3,
    revocationWarning = 4,
    revocationNotification = 5,
    keyUpdateWarning = 6,
};

// 32 bits, of which bit 0 is the lowest and bit i is the named bit i of the BIT STRING.
class MIRVANE_API CPKIFailureInfo {
  public:
    explicit CPKIFailureInfo(unsigned int value) : value_(value) {}

    unsigned int get_value() const { return value_; }
    void put_value(unsigned int value) { value_ = value; }

    // A bit from 0 to 31; others throw 0x80070057.
    bool get_bit(unsigned int i) const;
    void put_bit(unsigned int i, bool set);

    // The DER form, which ends with the last bit that is set. Throws 0x80093106 for memory that an ASN.1
    // context does not have.
    CBlob encode() const;
    // Adds the bits at the start of the blob to those that are set, which is meant: put_value(0) before for
    // just these. Throws 0x80093101 for what is no BIT STRING of up to 32 bits; the object is then as it was.
    void decode(CBlob const& encoded);

    bool operator==(CPKIFailureInfo const& other) const { return value_ == other.value_; }
    bool operator!=(CPKIFailureInfo const& other) const { return !(*this == other); }

  private:
    std::uint32_t value_;
};

class MIRVANE_API CPKIStatusInfo {
  public:
    // No failure bits and no text.
    CPKIStatusInfo(PKIStatusEnum pkiStatus);
    CPKIStatusInfo(CPKIStatusInfo const& other);

    // A failure leaves the object as it was.
    CPKIStatusInfo& operator=(CPKIStatusInfo const& other);

    PKIStatusEnum get_pkiStatus() const { return pkiStatus_; }
    CPKIFailureInfo const& get_failureInfo() const { return failureInfo_; }
    CPKIFreeText const& get_statusString() const { return statusString_; }

    void put_pkiStatus(PKIStatusEnum pkiStatus) { pkiStatus_ = pkiStatus; }
    void put_failureInfo(CPKIFailureInfo const& failureInfo) { failureInfo_ = failureInfo; }
    void put_statusString(CPKIFreeText const& statusString);

    // The DER form; no failure bits and no text are left out. Throws 0x80093101 for a text that is not
    // Unicode, 0x80093106 for memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Reads the status at the start of the blob in place of all that the object held. Throws 0x80093101 for
    // what is none, 0x8009310E for a text that is no UTF-8, 0x80070057 for a text whose language does not
    // end; the object is then as it was.
    void decode(CBlob const& encoded);

  private:
    PKIStatusEnum pkiStatus_;
    CPKIFailureInfo failureInfo_;
    CPKIFreeText statusString_;
};

}  // namespace Mirvane::ASN1

#endif
