// The traits of the Time of X.509, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_TIME_CHOICE_TRAITS_H
#define MIRVANE_ASN1_TIME_CHOICE_TRAITS_H

#include "asn1/record_traits.h"
#include "asn1/time_choice.h"
#include "asn1data/x509_certificate.h"

namespace Mirvane::ASN1 {

struct ASN1T_Time_traits : RecordTraits<asn1data::ASN1T_Time, asn1data::ASN1C_Time, asn1data::asn1Copy_Time> {
    // Throws 0x80093101 for a date that the form cannot show, and for memory that the context does not have.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CTimeChoice const& value);
    // Throws 0x80093101 for a record that is neither form, the last error for a text or fields that are no
    // date; the value is then as it was.
    static void get(ASN1_T const& rec, CTimeChoice& value);
};

}  // namespace Mirvane::ASN1

#endif
