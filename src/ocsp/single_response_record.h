// The tie between CSingleResponse and its record, for CBasicResponse, which alone encodes and decodes the
// entries. Not part of the interface.
#ifndef MIRVANE_OCSP_SINGLE_RESPONSE_RECORD_H
#define MIRVANE_OCSP_SINGLE_RESPONSE_RECORD_H

#include "asn1data/ocsp.h"
#include "ocsp/clock_precision.h"
#include "ocsp/single_response.h"

namespace Mirvane::PKI::OCSP {

// A time of an answer as GeneralizedTime text, no finer than the precision, in memory of the context. Throws
// 0x80093106 for memory that the context does not have, and the last error for a time outside the calendar.
char const* preciseTimeText(ASN1CTXT* ctxt, CDateTime const& time, CClockPrecision const& precision);

// Fills an empty record with memory of the context. The precision is that of thisUpdate and nextUpdate; the
// revocation time is in whole seconds regardless. Throws as preciseTimeText and as the `set` functions of the
// entry's parts do.
void fillASN1T_SingleResponse(ASN1CTXT* ctxt, asn1data::ASN1T_SingleResponse& record,
                              CSingleResponse const& entry, CClockPrecision const& precision);

// The entry that a record tells, without pointers into it. A nextUpdate without text counts as absent. Throws
// what CDateTime(char const*) throws for a time that is none, and what the parts of the entry throw.
CSingleResponse readASN1T_SignleResponse(asn1data::ASN1T_SingleResponse const& record);

}  // namespace Mirvane::PKI::OCSP

#endif
