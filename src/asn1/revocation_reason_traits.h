// The traits of CRLReason and ReasonFlags, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_REVOCATION_REASON_TRAITS_H
#define MIRVANE_ASN1_REVOCATION_REASON_TRAITS_H

#include "asn1/record_traits.h"
#include "asn1/revocation_reason.h"
#include "asn1data/x509_extensions.h"

namespace Mirvane::ASN1 {

// The number passes through as it is, meant so: encode and decode are what refuses 11 and above.
struct ASN1T_CRLReason_traits
    : RecordTraits<asn1data::ASN1T_CRLReason, asn1data::ASN1C_CRLReason, asn1data::asn1Copy_CRLReason> {
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CrlReason reason);
    static void get(ASN1_T const& rec, CrlReason& reason);
};

struct ASN1T_ReasonFlags_traits
    : RecordTraits<asn1data::ASN1T_ReasonFlags, asn1data::ASN1C_ReasonFlags, asn1data::asn1Copy_ReasonFlags> {
    // Takes the bits 0 to 15. The record ends behind the last set bit, so that 0 makes a string of no bits.
    // The context is not used.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CReasonFlags const& flags);
    static void get(ASN1_T const& rec, CReasonFlags& flags);
};

}  // namespace Mirvane::ASN1

#endif
