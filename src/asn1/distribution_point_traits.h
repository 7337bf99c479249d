// The traits of distribution points, in the form that asn1/bridge.h tells. All throw what the traits of
// GeneralName throw, and 0x80093106 for memory that the context does not have.
#ifndef MIRVANE_ASN1_DISTRIBUTION_POINT_TRAITS_H
#define MIRVANE_ASN1_DISTRIBUTION_POINT_TRAITS_H

#include "asn1/distribution_point.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/x509_extensions.h"

namespace Mirvane::ASN1 {

struct ASN1T_DistributionPointName_traits
    : RecordTraits<asn1data::ASN1T_DistributionPointName, asn1data::ASN1C_DistributionPointName,
                   asn1data::asn1Copy_DistributionPointName> {
    // An empty name makes a record without an alternative, which does not encode.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CDistributionPointName const& name);
    // Meant: any alternative but the full name leaves `name` as it is.
    static void get(ASN1_T const& rec, CDistributionPointName& name);
};

struct ASN1T_DistributionPoint_traits
    : RecordTraits<asn1data::ASN1T_DistributionPoint, asn1data::ASN1C_DistributionPoint,
                   asn1data::asn1Copy_DistributionPoint> {
    // An issuer without names is left out, which is meant.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CDistributionPoint const& point);
    // Makes absent what the record does not have. A failure leaves `point` as it was.
    static void get(ASN1_T const& rec, CDistributionPoint& point);
};

using DistributionPointSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_DistributionPoint, ASN1T_DistributionPoint_traits,
                          CDistributionPoint, CCRLDistPointsSyntax>;

struct ASN1T_CRLDistPointsSyntax_traits
    : RecordTraits<asn1data::ASN1T_CRLDistPointsSyntax, asn1data::ASN1C_CRLDistPointsSyntax,
                   asn1data::asn1Copy_CRLDistPointsSyntax> {
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CCRLDistPointsSyntax const& points);
    // A failure leaves `points` as it was.
    static void get(ASN1_T const& rec, CCRLDistPointsSyntax& points);
};

}  // namespace Mirvane::ASN1

#endif
