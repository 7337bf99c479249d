// The traits of CertId and RevAnnContent, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_REVOCATION_ANNOUNCEMENT_TRAITS_H
#define MIRVANE_ASN1_REVOCATION_ANNOUNCEMENT_TRAITS_H

#include "asn1/record_traits.h"
#include "asn1/revocation_announcement.h"
#include "asn1data/certificate_requests.h"
#include "asn1data/cmp.h"

namespace Mirvane::ASN1 {

struct ASN1T_CertId_traits
    : RecordTraits<asn1data::ASN1T_CertId, asn1data::ASN1C_CertId, asn1data::asn1Copy_CertId> {
    // Both throw as the traits of GeneralName do; `get` also 0x80093101 for a number that is no hexadecimal
    // text, and leaves `id` as it was.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CCertId const& id);
    static void get(ASN1_T const& rec, CCertId& id);
};

struct ASN1T_RevAnnContent_traits : RecordTraits<asn1data::ASN1T_RevAnnContent, asn1data::ASN1C_RevAnnContent,
                                                 asn1data::asn1Copy_RevAnnContent> {
    // Throws as the traits of its fields do. Extensions that are an empty list are left out.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CRevAnnContent const& content);
    // Throws as the traits of its fields do; `content` is then as it was.
    static void get(ASN1_T const& rec, CRevAnnContent& content);
};

}  // namespace Mirvane::ASN1

#endif
