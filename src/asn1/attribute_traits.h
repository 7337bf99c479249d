// The traits of Attribute and of a set of attributes, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_ATTRIBUTE_TRAITS_H
#define MIRVANE_ASN1_ATTRIBUTE_TRAITS_H

#include "asn1/attributes.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/cms.h"
#include "asn1data/x509_certificate.h"

namespace Mirvane::ASN1 {

struct ASN1T_Attribute_traits
    : RecordTraits<asn1data::ASN1T_Attribute, asn1data::ASN1C_Attribute, asn1data::asn1Copy_Attribute> {
    // The record gets the values of a known attribute in decoded form too, and that is what is encoded.
    // Throws 0x80070057 for a text that is no object identifier, 0x80093101 for a value of a known attribute
    // that does not decode, 0x80093106 for memory that the context does not have.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CAttribute const& attribute);
    // A failure leaves `attribute` as it was.
    static void get(ASN1_T const& rec, CAttribute& attribute);
};

using AttributeSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_Attribute, ASN1T_Attribute_traits, CAttribute, CAttributes>;

// The record is that of the attributes that a signature covers.
struct ASN1T_Attributes_traits
    : RecordTraits<asn1data::ASN1T_SignedAttributes, asn1data::ASN1C_SignedAttributes,
                   asn1data::asn1Copy_SignedAttributes> {
    // Throws as for one attribute.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CAttributes const& attributes);
    // A failure leaves `attributes` as it was.
    static void get(ASN1_T const& rec, CAttributes& attributes);
};

}  // namespace Mirvane::ASN1

#endif
