// Traits of whole objects that values hold as the blob of their encoding: certificates, revocation lists, and
// values whose type an identifier beside them tells. In the form that asn1/bridge.h tells.
//
// `set` and `copy` throw 0x80093106 for memory that the context does not have, and for blobs above 0x7FFFFFCF
// bytes; what else is thrown stands with each.
#ifndef MIRVANE_ASN1_CERTIFICATE_TRAITS_H
#define MIRVANE_ASN1_CERTIFICATE_TRAITS_H

#include "asn1/record_traits.h"
#include "asn1/sequence_traits.h"
#include "asn1data/table_object.h"
#include "asn1data/x509_certificate.h"
#include "base/lists.h"

namespace Mirvane::ASN1 {

// The raw octets only: the decoded form beside them is neither made nor copied, and null afterwards.
struct Asn1TObject_traits {
    using ASN1_T = asn1data::Asn1Object;

    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& value);
    static void get(ASN1_T const& rec, CBlob& value);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

// The record is the certificate in its parts, so that encoding writes it anew. A certificate that is not
// DER, or has such extensions, comes back with other bytes than it was made from.
struct ASN1T_Certificate_traits
    : RecordTraits<asn1data::ASN1T_Certificate, asn1data::ASN1C_Certificate, asn1data::asn1Copy_Certificate> {
    // Throws 0x80093101 if the blob does not start with a certificate.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& certificate);
    // Throws 0x80093101 for a record that does not encode; `certificate` is then as it was.
    static void get(ASN1_T const& rec, CBlob& certificate);
};

// The record holds the whole list as octets, as it came: of the blob no more is looked at than the size of
// its first element. No bytes make an empty record, and the other way round.
struct ASN1T_CertificateList_traits
    : RecordTraits<asn1data::ASN1T_CertificateList, asn1data::ASN1C_CertificateList,
                   asn1data::asn1Copy_CertificateList> {
    // Throws 0x80093101 if the blob holds no whole element.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& list);
    static void get(ASN1_T const& rec, CBlob& list);
};

using CertificateSequence_traits =
    ASN1TSeqOfList_traits<asn1data::ASN1T_Certificate, ASN1T_Certificate_traits, CBlob, CBlobList>;
using Asn1TObjectSequence_traits =
    ASN1TSeqOfList_traits<asn1data::Asn1Object, Asn1TObject_traits, CBlob, CBlobList>;

}  // namespace Mirvane::ASN1

#endif
