// CCertStatus, what an answer says about a certificate (CertStatus of RFC 6960, 4.2.1): good, revoked with
// the time and maybe the reason, or unknown.
//
// Copies are deep; a moved-from object is as after clear(). Distinct objects may be used from distinct
// threads; one object belongs to one thread while it is changed. What the getters return points into the
// object and is valid until its next change.
#ifndef MIRVANE_OCSP_CERTIFICATE_STATUS_H
#define MIRVANE_OCSP_CERTIFICATE_STATUS_H

#include <cstdint>
#include <memory>

#include "asn1/revocation_reason.h"
#include "base/date_time.h"

struct ASN1CTXT;

namespace asn1data {
struct ASN1T_CertStatus;
}

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CCertStatus {
  public:
    // Unknown: a status that nobody filled in claims nothing.
    CCertStatus();
    // Revoked. Null means that no reason is told.
    CCertStatus(CDateTime const& revocationTime, ASN1::CrlReason const* revocationReason);
    CCertStatus(CCertStatus const& other);
    CCertStatus(CCertStatus&& other) noexcept;
    ~CCertStatus();

    // A failure leaves the object as it was.
    CCertStatus& operator=(CCertStatus const& other);
    CCertStatus& operator=(CCertStatus&& other) noexcept;

    // Ends what the object holds. After it only assignment and destruction are allowed.
    void clear();

    bool isGood() const;
    bool isRevoked() const;
    bool isUnknown() const;
    // 0 good, 1 revoked, 2 unknown.
    std::uint32_t get_type() const;

    // Null unless revoked.
    CDateTime const* get_revocationTime() const;
    // Null unless revoked with a reason.
    ASN1::CrlReason const* get_revocationReason() const;

    // Time and reason stay stored, out of sight.
    void put_good();
    void put_unknown();
    // Copies both; null removes the reason. The arguments may be what the object holds. A failure leaves the
    // object as it was.
    void put_revoked(CDateTime const& revocationTime, ASN1::CrlReason const* revocationReason);

  private:
    class MIRVANE_HIDDEN Impl;
    std::unique_ptr<Impl> impl_;  // null when cleared
};

// The tie between the status and its record.
struct MIRVANE_API ASN1T_CertStatus_traits {
    using ASN1_T = asn1data::ASN1T_CertStatus;

    // Fills an empty record, with memory of the context. The revocation time is written in whole seconds, its
    // fraction cut off, whatever precision the rest of a response has. Throws 0x80093106 for memory that the
    // context does not have, and the last error for a time outside the calendar.
    static void set(ASN1CTXT* ctxt, ASN1_T& record, CCertStatus const& value);
    // A record without a known alternative leaves the value as it was. Throws what CDateTime(char const*)
    // throws for a time that is none; the value is then as it was.
    static void get(ASN1_T const& record, CCertStatus& value);
    // A deep copy. Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
};

}  // namespace Mirvane::PKI::OCSP

#endif
