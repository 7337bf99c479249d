// The traits of names and their parts, in the form that asn1/bridge.h tells.
//
// `set` throws 0x80093106 for memory that the context does not have; what else is thrown stands with each.
#ifndef MIRVANE_ASN1_NAME_TRAITS_H
#define MIRVANE_ASN1_NAME_TRAITS_H

#include "asn1/attribute_type_and_value.h"
#include "asn1/name.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/x509_certificate.h"

namespace Mirvane::ASN1 {

struct ASN1T_AttributeTypeAndValue_traits
    : RecordTraits<asn1data::ASN1T_AttributeTypeAndValue, asn1data::ASN1C_AttributeTypeAndValue,
                   asn1data::asn1Copy_AttributeTypeAndValue> {
    // The record gets the value of a known identifier in decoded form too, and that is what is encoded.
    // Throws 0x80070057 for a text that is no object identifier, 0x80093101 for the value of a known
    // identifier that does not decode.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CAttributeTypeAndValue const& value);
    static void get(ASN1_T const& rec, CAttributeTypeAndValue& value);
};

using AttributeTypeAndValueSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_AttributeTypeAndValue, ASN1T_AttributeTypeAndValue_traits,
                          CAttributeTypeAndValue, CRelativeDistinguishedName>;

struct ASN1T_RelativeDistinguishedName_traits
    : RecordTraits<asn1data::ASN1T_RelativeDistinguishedName, asn1data::ASN1C_RelativeDistinguishedName,
                   asn1data::asn1Copy_RelativeDistinguishedName> {
    // Throws as for one attribute.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CRelativeDistinguishedName const& name);
    static void get(ASN1_T const& rec, CRelativeDistinguishedName& name);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
};

using RelativeDistinguishedNameSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_RelativeDistinguishedName, ASN1T_RelativeDistinguishedName_traits,
                          CRelativeDistinguishedName, CRDNSequence>;

// A name in its parts, or as the blob of its encoding.
struct ASN1T_Name_traits : RecordTraits<asn1data::ASN1T_Name, asn1data::ASN1C_Name, asn1data::asn1Copy_Name> {
    // Throws as for one attribute.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CName const& name);
    static void get(ASN1_T const& rec, CName& name);
    // Throws 0x80093101 if the blob does not start with a name.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& encoded);
    // Throws 0x80093101 for a record that does not encode; `encoded` is then as it was.
    static void get(ASN1_T const& rec, CBlob& encoded);
};

}  // namespace Mirvane::ASN1

#endif
