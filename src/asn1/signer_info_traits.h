// The traits of SignerInfo, in the form that asn1/bridge.h tells but for `set`: a value is only read.
#ifndef MIRVANE_ASN1_SIGNER_INFO_TRAITS_H
#define MIRVANE_ASN1_SIGNER_INFO_TRAITS_H

#include "asn1/record_traits.h"
#include "asn1/signer_info.h"
#include "asn1data/cms.h"

namespace Mirvane::ASN1 {

struct ASN1T_SignerInfo_traits
    : RecordTraits<asn1data::ASN1T_SignerInfo, asn1data::ASN1C_SignerInfo, asn1data::asn1Copy_SignerInfo> {
    // Throws 0x80093101 for a signer who is not told by issuer and serial number, which is meant: a subject
    // key identifier has no place in the value. `info` is then as it was.
    static void get(ASN1_T const& rec, CSignerInfo& info);
};

// As ASN1T_SignerInfo_traits::get.
void ASN1T_SignerInfo_get(CSignerInfo& info, asn1data::ASN1T_SignerInfo const& rec);

}  // namespace Mirvane::ASN1

#endif
