// The traits of AlgorithmIdentifier, in the form that asn1/bridge.h tells, and the steps of them that the
// message model takes on its own.
#ifndef MIRVANE_ASN1_ALGORITHM_IDENTIFIER_TRAITS_H
#define MIRVANE_ASN1_ALGORITHM_IDENTIFIER_TRAITS_H

#include "asn1/algorithm_identifier.h"
#include "asn1/record_traits.h"
#include "asn1data/algorithms.h"

namespace Mirvane::ASN1 {

// A record in memory of the context; null or empty `parameters` are absent ones. Throws 0x80093101 for an
// identifier that does not parse, null included, and for parameters that a known algorithm does not take;
// 0x80093106 for memory that the context does not have.
asn1data::ASN1T_AlgorithmIdentifier* ASN1T_AlgorithmIdentifier_set(ASN1CTXT* ctxt, char const* oid,
                                                                   CBlob const* parameters);

// Overwrites the value, whose put_algorithm gets the identifier.
void ASN1T_AlgorithmIdentifier_get(CAlgorithmIdentifier& value,
                                   asn1data::ASN1T_AlgorithmIdentifier const& rec);

struct ASN1T_AlgorithmIdentifier_traits
    : RecordTraits<asn1data::ASN1T_AlgorithmIdentifier, asn1data::ASN1C_AlgorithmIdentifier,
                   asn1data::asn1Copy_AlgorithmIdentifier> {
    // Throws as ASN1T_AlgorithmIdentifier_set does.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CAlgorithmIdentifier const& value);
    static void get(ASN1_T const& rec, CAlgorithmIdentifier& value);
};

}  // namespace Mirvane::ASN1

#endif
