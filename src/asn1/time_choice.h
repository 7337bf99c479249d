// CTimeChoice, the Time of X.509 (RFC 5280, 4.1.2.5): a date that travels as UTCTime up to the year 2049 and
// as GeneralizedTime after it.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException.
#ifndef MIRVANE_ASN1_TIME_CHOICE_H
#define MIRVANE_ASN1_TIME_CHOICE_H

#include <memory>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/date_time.h"

namespace Mirvane::ASN1 {

class CTimeChoiceImpl;

class MIRVANE_API CTimeChoice {
  public:
    enum Type : unsigned int { utcTime = 1, generalTime = 2 };

    // The start of 1970, as utcTime: a new object is never empty.
    CTimeChoice();
    // As put_time.
    CTimeChoice(CDateTime const& date);
    CTimeChoice(CTimeChoice const& other);
    ~CTimeChoice();
    // A failure leaves the object as it was. What is assigned from a cleared object is cleared as well.
    CTimeChoice& operator=(CTimeChoice const& other);

    // Frees the date. The object may then only be assigned to, copied or destroyed.
    void clear();

    // A Type. It follows from the year alone and does not tell how the time was encoded.
    unsigned int get_type() const;
    // The date, never null. It is valid until the object changes or dies.
    CDateTime const* get_time() const;
    // Takes the date, as generalTime if its year is above 2049 and else as utcTime, for years before 1950
    // too, which is meant: only their last two digits are written, which are read back as of 1950 to 2049.
    // Throws the last error for a date outside the calendar.
    void put_time(CDateTime const& date);

    // The DER form, in whole seconds: a fraction is dropped. Throws 0x80093101 for a year above 9999, and for
    // memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Reads either form, and takes the date as put_time does: a GeneralizedTime of 2020 is then utcTime and
    // would be written as such, which is meant. An offset in the text is dropped. Throws 0x80093101 for what
    // is no Time, the last error for fields that are no date; the object is then as it was.
    void decode(CBlob const& encoded);

  private:
    std::unique_ptr<CTimeChoiceImpl> impl_;  // null when cleared
};

}  // namespace Mirvane::ASN1

#endif
