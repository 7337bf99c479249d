// The traits of the identifiers of signing certificates and their parts, in the form that asn1/bridge.h
// tells.
//
// `set` throws 0x80093106 for memory that the context does not have; what else is thrown stands with each.
// A `get` that throws leaves the value as it was.
#ifndef MIRVANE_ASN1_ESS_IDENTIFIER_TRAITS_H
#define MIRVANE_ASN1_ESS_IDENTIFIER_TRAITS_H

#include "asn1/ess_identifiers.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/signature_attributes.h"

namespace Mirvane::ASN1 {

// The hash algorithm of ESSCertIDv2 where none is written: SHA-256.
inline constexpr char kDefaultHashAlgorithm[] = "2.16.840.1.101.3.4.2.1";

struct ASN1T_IssuerSerial_traits : RecordTraits<asn1data::ASN1T_IssuerSerial, asn1data::ASN1C_IssuerSerial,
                                                asn1data::asn1Copy_IssuerSerial> {
    // Both throw 0x80070057 for a name of a kind that CGeneralName does not hold.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CIssuerSerial const& value);
    static void get(ASN1_T const& rec, CIssuerSerial& value);
};

struct ASN1T_OtherHashAlgAndValue_traits
    : RecordTraits<asn1data::ASN1T_OtherHashAlgAndValue, asn1data::ASN1C_OtherHashAlgAndValue,
                   asn1data::asn1Copy_OtherHashAlgAndValue> {
    // Throws as ASN1T_AlgorithmIdentifier_set does.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, COtherHashAlgAndValue const& value);
    static void get(ASN1_T const& rec, COtherHashAlgAndValue& value);
};

struct ASN1T_OtherHash_traits
    : RecordTraits<asn1data::ASN1T_OtherHash, asn1data::ASN1C_OtherHash, asn1data::asn1Copy_OtherHash> {
    // Throws as ASN1T_AlgorithmIdentifier_set does. An empty value leaves the record as it is, which is
    // meant: a new one then does not encode.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, COtherHash const& value);
    static void get(ASN1_T const& rec, COtherHash& value);
};

// The traits of the three identifiers throw what those of their parts throw.
struct ASN1T_ESSCertID_traits
    : RecordTraits<asn1data::ASN1T_ESSCertID, asn1data::ASN1C_ESSCertID, asn1data::asn1Copy_ESSCertID> {
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CESSCertID const& value);
    static void get(ASN1_T const& rec, CESSCertID& value);
};

struct ASN1T_ESSCertIDv2_traits
    : RecordTraits<asn1data::ASN1T_ESSCertIDv2, asn1data::ASN1C_ESSCertIDv2, asn1data::asn1Copy_ESSCertIDv2> {
    // Leaves the default algorithm out, whatever its parameters, which is meant.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CESSCertIDv2 const& value);
    static void get(ASN1_T const& rec, CESSCertIDv2& value);
};

struct ASN1T_OtherCertID_traits
    : RecordTraits<asn1data::ASN1T_OtherCertID, asn1data::ASN1C_OtherCertID, asn1data::asn1Copy_OtherCertID> {
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, COtherCertID const& value);
    static void get(ASN1_T const& rec, COtherCertID& value);
};

using ESSCertIDSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_ESSCertID, ASN1T_ESSCertID_traits, CESSCertID, CESSCertIDList>;
using ESSCertIDv2Sequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_ESSCertIDv2, ASN1T_ESSCertIDv2_traits, CESSCertIDv2,
                          CESSCertIDv2List>;
using OtherCertIDSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_OtherCertID, ASN1T_OtherCertID_traits, COtherCertID,
                          COtherCertIDList>;

}  // namespace Mirvane::ASN1

#endif
