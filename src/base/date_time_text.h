// Dates in the dateTime form of XML Schema (part 2, 3.2.7). The form of ASN.1 stands in base/date_time.h.
//
// The functions share nothing and may be called from any thread. Failures are ATL::CAtlException.
#ifndef MIRVANE_BASE_DATE_TIME_TEXT_H
#define MIRVANE_BASE_DATE_TIME_TEXT_H

#include "asn1rt/export.h"
#include "base/date_time.h"
#include "base/text_holders.h"

namespace Mirvane {

// YYYY-MM-DDTHH:MM:SSZ or, with a millisecond and more, YYYY-MM-DDTHH:MM:SS.mmmZ; what is below the
// millisecond is dropped. A date outside the calendar ENDS THE PROCESS, which is meant: year() tells.
MIRVANE_API CStringProxy toXsdDateTimeString(CDateTime const& value);

// Reads YYYY-MM-DDTHH:MM:SS with a fraction, a zone or both behind it, of which one has to be there: Z, or an
// offset +HH:MM or -HH:MM of up to 14 hours, or a fraction alone, which is UTC. White space ends the text,
// and fields may be shorter or signed where scanf takes them. Throws 0x8007076D for what has not this form,
// 0x80004005 if there is no such date or the offset takes it before 1601, 0x8009000E if memory fails while
// the zone is split off, 0x80070057 for null.
MIRVANE_API CDateTime fromXsdDateTimeString(char const* text);

}  // namespace Mirvane

#endif
