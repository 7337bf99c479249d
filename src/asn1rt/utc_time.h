// ASN1CUTCTime, the calendar view on a text YYMMDDHHMM[SS] with Z or an offset (X.680, 47). Lifetimes and
// results are those of asn1rt/time.h. Years below 50 belong to 2000, the others to 1900.
#ifndef MIRVANE_ASN1RT_UTC_TIME_H
#define MIRVANE_ASN1RT_UTC_TIME_H

#include "asn1rt/time.h"

class ASN1CUTCTime : public ASN1CTime {
  public:
    ASN1CUTCTime(ASN1MessageBufferIF& buffer, char*& text, int capacity, bool derRules)
        : ASN1CTime(buffer, text, capacity, derRules) {
        unsetUtc();
    }
    ASN1CUTCTime(ASN1MessageBufferIF& buffer, const char*& text, bool derRules)
        : ASN1CTime(buffer, text, derRules) {
        unsetUtc();
    }
    ASN1CUTCTime(ASN1Context& context, char*& text, int capacity, bool derRules)
        : ASN1CTime(context, text, capacity, derRules) {
        unsetUtc();
    }
    ASN1CUTCTime(ASN1Context& context, const char*& text, bool derRules)
        : ASN1CTime(context, text, derRules) {
        unsetUtc();
    }
    ASN1CUTCTime(char*& text, int capacity, bool derRules) : ASN1CTime(text, capacity, derRules) {
        unsetUtc();
    }
    ASN1CUTCTime(const char*& text, bool derRules) : ASN1CTime(text, derRules) { unsetUtc(); }

    // 0: the form has no fraction.
    int getFraction() override;
    // RTS_NOT_SUPPORTED in any case.
    int setFraction(int fraction) override;

    // A time without offset stays UTC: as local time it would have no zone to show.
    int setUTC(bool utc) override;
    // A year below 100 is kept as it is given, and shown as its two digits.
    int setYear(int year) override;
    // Without the offset, the local time is shown as if it were UTC.
    int setTime(std::time_t seconds, bool withOffset) override;
    int parseString(const char* text) override;
    void clear() override;
    // A local time without offset is refused as well.
    int compileString() override;

  protected:
    void textReplaced() {
        ASN1CTime::textReplaced();
        unsetUtc();
    }

  private:
    void unsetUtc();
};

#endif
