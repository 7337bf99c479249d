// Reading and writing of the texts of UTCTime and GeneralizedTime (X.680, 46 and 47), shared by the time
// classes and the plain functions; not part of the interface.
#ifndef MIRVANE_ASN1RT_TIME_SCAN_H
#define MIRVANE_ASN1RT_TIME_SCAN_H

#include <cstddef>
#include <string_view>

namespace asn1rt {

// The Gregorian rule, carried on to the years before it.
bool isLeapYear(int year);

// Year not below 0, month 1 to 12, day within the month.
bool isCalendarDate(int year, int month, int day);

// What a time text says, before any of it is stored.
struct TimeFields {
    int year = 0;  // in full
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int diffHour = 0;  // both offsets are negative behind a minus sign
    int diffMinute = 0;
    bool utc = false;  // the text ends in Z
};

// A time text of either form. Each step reads one part of it, in the order of the functions, and is false for
// a part that is missing, malformed or out of range; `fields` then holds what was read before. A null text is
// empty, and no step looks behind the end of the text.
//
// Numbers of the date are read as scanf does, with blanks and a plus sign in front. Parts behind the date
// stand at fixed places, so a number there with one digit is followed by a character that nobody looks at.
// Both are accepted on purpose: such texts are on the wire.
class TimeScanner {
  public:
    explicit TimeScanner(const char* text) : text_(text ? text : "") {}

    // YYYYMMDD for a width of 4; YYMMDD for 2, where years below 50 belong to 2000 and the others to 1900.
    bool readDate(int yearWidth);

    // Hours, then minutes, then seconds, of which the first `required` must be there; none above 23, 59, 59.
    bool readClock(int required);

    // At a separator ('.', or ',' where it is allowed): steps onto the first digit of a fraction, which must
    // be there and needs seconds. Elsewhere it does nothing.
    bool openFraction(bool commaAllowed, bool* found);

    // Z as the last character, an offset of hours and perhaps minutes, or else (but not if `utcRequired`) a
    // local time with anything behind it.
    bool readZone(bool utcRequired);

    // Z as the last character, or (but not if `utcRequired`) an offset of two digits each for hours and
    // minutes.
    bool readStrictZone(bool utcRequired);

    // The character at the cursor, 0 at the end.
    char next() const { return at(position_); }
    bool nextIsDigit() const { return isDigit(position_); }
    void advance() { ++position_; }

    const TimeFields& fields() const { return fields_; }

  private:
    char at(std::size_t index) const { return index < text_.size() ? text_[index] : '\0'; }
    bool isDigit(std::size_t index) const;
    bool readNumber(int width, int* value);
    bool readUtcMark();
    bool readOffset(bool minutesRequired);

    std::string_view text_;
    std::size_t position_ = 0;
    bool hasSeconds_ = false;
    TimeFields fields_;
};

// A time text while it is written: at most 63 characters and a terminator, which is always there.
class TimeWriter {
  public:
    void put(char character);
    // A number that is not negative, in at least `width` digits.
    void number(int value, int width);
    void text(std::string_view characters);

    std::string_view view() const { return {characters_, length_}; }

  private:
    char characters_[64] = {};
    std::size_t length_ = 0;
};

}  // namespace asn1rt

#endif
