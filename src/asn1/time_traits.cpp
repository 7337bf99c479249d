#include "asn1/time_traits.h"

#include "asn1/context_memory.h"
#include "asn1rt/char_string.h"
#include "asn1rt/universal_tags.h"
#include "base/last_error.h"
#include "base/time_fields.h"

namespace Mirvane::ASN1 {
char const* DateToASN1GeneralizedTime(ASN1CTXT* ctxt, CDateTime const& date, bool trimFraction) {
    if (!trimFraction) return copyText(ctxt, date.getGeneralizedTime().c_str());
    // Meant not to round: 999 milliseconds do not carry into the next second.
    const _SYSTEMTIME fields = date.getSystemTime();
    _FILETIME inCalendar{};
    if (SystemTimeToFileTime(&fields, &inCalendar) == 0) failure::raiseLastError();
    return copyText(ctxt, GeneralizedTimeText(fields, 0).c_str());
}

void ASN1GeneralizedTime_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CDateTime const& date) {
    rec = DateToASN1GeneralizedTime(ctxt, date, true);
}

void ASN1GeneralizedTime_traits::get(ASN1_T const& rec, CDateTime& date) {
    date = CDateTime(rec);
}

void ASN1GeneralizedTime_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    dst = DateToASN1GeneralizedTime(ctxt, CDateTime(src), true);
}

int ASN1GeneralizedTime_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    buffer.init();
    return xe_charstr(buffer.getCtxtPtr(), rec, ASN1EXPL, TAG_GENERALIZED_TIME);
}

int ASN1GeneralizedTime_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    buffer.init();
    return xd_charstr(buffer.getCtxtPtr(), &rec, ASN1EXPL, TAG_GENERALIZED_TIME, 0);
}

}  // namespace Mirvane::ASN1
