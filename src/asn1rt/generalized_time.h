// ASN1CGeneralizedTime, the calendar view on a text YYYYMMDDHH[MM[SS[.F]]] with Z, an offset or, as local
// time, nothing behind it (X.680, 46). Lifetimes and results are those of asn1rt/time.h.
#ifndef MIRVANE_ASN1RT_GENERALIZED_TIME_H
#define MIRVANE_ASN1RT_GENERALIZED_TIME_H

#include "asn1rt/time.h"

class ASN1CGeneralizedTime : public ASN1CTime {
  public:
    ASN1CGeneralizedTime(ASN1MessageBufferIF& buffer, char*& text, int capacity, bool derRules)
        : ASN1CTime(buffer, text, capacity, derRules) {}
    ASN1CGeneralizedTime(ASN1MessageBufferIF& buffer, const char*& text, bool derRules)
        : ASN1CTime(buffer, text, derRules) {}
    ASN1CGeneralizedTime(ASN1Context& context, char*& text, int capacity, bool derRules)
        : ASN1CTime(context, text, capacity, derRules) {}
    ASN1CGeneralizedTime(ASN1Context& context, const char*& text, bool derRules)
        : ASN1CTime(context, text, derRules) {}
    ASN1CGeneralizedTime(char*& text, int capacity, bool derRules) : ASN1CTime(text, capacity, derRules) {}
    ASN1CGeneralizedTime(const char*& text, bool derRules) : ASN1CTime(text, derRules) {}

    // Distinguished form takes the offset in any case, to show the time in UTC.
    int setTime(std::time_t seconds, bool withOffset) override;
    // Distinguished form takes neither a comma nor anything but Z at the end. Of a fraction only the first
    // digit is stepped over, so one of several digits ends the text as a local time; above 2147483647 it is
    // that number.
    int parseString(const char* text) override;
    int compileString() override;

    // The hundreds of the year, or what getYear gave below 0.
    int getCentury();
    int setCentury(int century);  // 0 to 99; an unset year counts as 0
};

#endif
