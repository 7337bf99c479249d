// The traits of PKIFailureInfo and PKIStatusInfo, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_PKI_STATUS_TRAITS_H
#define MIRVANE_ASN1_PKI_STATUS_TRAITS_H

#include "asn1/pki_status.h"
#include "asn1/record_traits.h"
#include "asn1data/cmp.h"

namespace Mirvane::ASN1 {

struct ASN1T_PKIFailureInfo_traits
    : RecordTraits<asn1data::ASN1T_PKIFailureInfo, asn1data::ASN1C_PKIFailureInfo,
                   asn1data::asn1Copy_PKIFailureInfo> {
    // The string ends with the last bit that is set; a value of 0 is a string of no bits.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CPKIFailureInfo const& info);
    // Sets the bits of the record and clears none, which is meant.
    static void get(ASN1_T const& rec, CPKIFailureInfo& info);
};

struct ASN1T_PKIStatusInfo_traits : RecordTraits<asn1data::ASN1T_PKIStatusInfo, asn1data::ASN1C_PKIStatusInfo,
                                                 asn1data::asn1Copy_PKIStatusInfo> {
    // No failure bits and no text are left out. Throws as CPKIFreeText_Encode does.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CPKIStatusInfo const& info);
    // Throws as CPKIFreeText_Parse does; `info` is then as it was.
    static void get(ASN1_T const& rec, CPKIStatusInfo& info);
};

}  // namespace Mirvane::ASN1

#endif
