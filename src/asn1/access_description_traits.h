// The traits of access descriptions, in the form that asn1/bridge.h tells. They throw what the traits of
// GeneralName throw, and 0x80093106 for memory that the context does not have.
#ifndef MIRVANE_ASN1_ACCESS_DESCRIPTION_TRAITS_H
#define MIRVANE_ASN1_ACCESS_DESCRIPTION_TRAITS_H

#include "asn1/access_description.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/x509_extensions.h"

namespace Mirvane::ASN1 {

struct ASN1T_AccessDescription_traits
    : RecordTraits<asn1data::ASN1T_AccessDescription, asn1data::ASN1C_AccessDescription,
                   asn1data::asn1Copy_AccessDescription> {
    // Throws 0x80070057 for a method that does not parse.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CAccessDescription const& description);
    static void get(ASN1_T const& rec, CAccessDescription& description);
};

using AccessDescriptionSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_AccessDescription, ASN1T_AccessDescription_traits,
                          CAccessDescription, CAuthorityInfoAccessSyntax>;

struct ASN1T_AuthorityInfoAccessSyntax_traits
    : RecordTraits<asn1data::ASN1T_AuthorityInfoAccessSyntax, asn1data::ASN1C_AuthorityInfoAccessSyntax,
                   asn1data::asn1Copy_AuthorityInfoAccessSyntax> {
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CAuthorityInfoAccessSyntax const& access);
    // A failure leaves `access` as it was.
    static void get(ASN1_T const& rec, CAuthorityInfoAccessSyntax& access);
};

}  // namespace Mirvane::ASN1

#endif
