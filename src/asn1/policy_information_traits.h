// The traits of PolicyInformation, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_POLICY_INFORMATION_TRAITS_H
#define MIRVANE_ASN1_POLICY_INFORMATION_TRAITS_H

#include "asn1/policy_information.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/x509_extensions.h"

namespace Mirvane::ASN1 {

struct ASN1T_PolicyInformation_traits
    : RecordTraits<asn1data::ASN1T_PolicyInformation, asn1data::ASN1C_PolicyInformation,
                   asn1data::asn1Copy_PolicyInformation> {
    // Throws 0x80070057 for a text that is no object identifier.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CPolicyInformation const& value);
    // Drops the qualifiers, which is meant.
    static void get(ASN1_T const& rec, CPolicyInformation& value);
};

using PolicyInformationSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_PolicyInformation, ASN1T_PolicyInformation_traits,
                          CPolicyInformation, CPolicyInformationList>;

}  // namespace Mirvane::ASN1

#endif
