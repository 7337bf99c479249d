// The traits of GeneralizedTime over CDateTime, in the form that asn1/bridge.h tells, and the text that the
// records of the messages hold. On the wire a time is in UTC, and texts with an offset are not converted: see
// CDateTime(char const*) for what is read.
#ifndef MIRVANE_ASN1_TIME_TRAITS_H
#define MIRVANE_ASN1_TIME_TRAITS_H

#include "asn1rt/message_buffer.h"
#include "base/date_time.h"

namespace Mirvane::ASN1 {

// The GeneralizedTime text of the date, in the memory of the context. With `trimFraction` the fraction of the
// second is cut off and never rounded. Throws 0x80093106 for memory that the context does not have; with
// `trimFraction` the last error for a date outside the calendar, which without it ENDS THE PROCESS.
char const* DateToASN1GeneralizedTime(ASN1CTXT* ctxt, CDateTime const& date, bool trimFraction);

struct ASN1GeneralizedTime_traits {
    using ASN1_T = char const*;

    // Whole seconds: the fraction is cut off. Throws as DateToASN1GeneralizedTime does.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CDateTime const& date);
    // Throws what CDateTime(char const*) throws, and `date` is then as it was.
    static void get(ASN1_T const& rec, CDateTime& date);
    // Reads the text and writes it anew, in whole seconds.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec);
};

}  // namespace Mirvane::ASN1

#endif
