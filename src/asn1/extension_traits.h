// The traits of Extension and Extensions, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_EXTENSION_TRAITS_H
#define MIRVANE_ASN1_EXTENSION_TRAITS_H

#include "asn1/extensions.h"
#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/x509_certificate.h"

namespace Mirvane::ASN1 {

struct ASN1T_Extension_traits
    : RecordTraits<asn1data::ASN1T_Extension, asn1data::ASN1C_Extension, asn1data::asn1Copy_Extension> {
    // The record gets the value of a known extension in decoded form too, and that is what is encoded. Throws
    // 0x80070057 for a text that is no object identifier, 0x80093101 for the value of a known extension that
    // does not decode, 0x80093106 for memory that the context does not have.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CExtension const& extension);
    static void get(ASN1_T const& rec, CExtension& extension);
};

using ExtensionSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_Extension, ASN1T_Extension_traits, CExtension, CExtensions>;

struct ASN1T_Extensions_traits
    : RecordTraits<asn1data::ASN1T_Extensions, asn1data::ASN1C_Extensions, asn1data::asn1Copy_Extensions> {
    // Throws as for one extension.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CExtensions const& extensions);
    // A failure leaves `extensions` as it was.
    static void get(ASN1_T const& rec, CExtensions& extensions);
    // Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
};

}  // namespace Mirvane::ASN1

#endif
