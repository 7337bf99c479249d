// The traits of GeneralName and GeneralNames, in the form that asn1/bridge.h tells.
//
// `set` throws 0x80093106 for memory that the context does not have; what else is thrown stands with each.
#ifndef MIRVANE_ASN1_GENERAL_NAME_TRAITS_H
#define MIRVANE_ASN1_GENERAL_NAME_TRAITS_H

#include "asn1/general_name.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/x509_extensions.h"

namespace Mirvane::ASN1 {

struct ASN1T_GeneralName_traits
    : RecordTraits<asn1data::ASN1T_GeneralName, asn1data::ASN1C_GeneralName, asn1data::asn1Copy_GeneralName> {
    // A text that is too long or does not convert leaves the record without one, which then does not encode.
    // Throws 0x80070057 for an empty name and for a registeredID that is no object identifier, 0x80093101 for
    // a directory name that does not decode.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CGeneralName const& name);
    // Takes an iPAddress as a directoryName with the octets of the address, which is meant. Throws 0x80070057
    // for an alternative that is not supported; `name` is then as it was.
    static void get(ASN1_T const& rec, CGeneralName& name);
};

using GeneralNameSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_GeneralName, ASN1T_GeneralName_traits, CGeneralName, CGeneralNames>;

struct ASN1T_GeneralNames_traits : RecordTraits<asn1data::ASN1T_GeneralNames, asn1data::ASN1C_GeneralNames,
                                                asn1data::asn1Copy_GeneralNames> {
    // Both throw as for one name; `names` is then as it was.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CGeneralNames const& names);
    static void get(ASN1_T const& rec, CGeneralNames& names);
};

}  // namespace Mirvane::ASN1

#endif
