// ASN1CTime, a calendar view on the text of a UTCTime or GeneralizedTime in a value record.
//
// The text stays where the record has it, behind a char pointer: it is parsed at the first access, and
// written anew after each change. Distinguished form (`derRules`) means UTC with a Z and with all seconds
// (X.690, 11.7 and 11.8).
//
// The text is written to the caller's buffer if that has room for at least 30 octets and for the text;
// otherwise the caller's variable is set to memory of this object, or of its context for a text above 35
// characters. So an object on a small or a constant text must outlive the use of the record.
//
// Getters of fields return the field or a negative status, which a negative offset looks like as well;
// setters return 0 or a status. Failures are recorded in the context's errInfo. An object belongs to one
// thread at a time.
#ifndef MIRVANE_ASN1RT_TIME_H
#define MIRVANE_ASN1RT_TIME_H

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string_view>

#include "asn1rt/control.h"
#include "asn1rt/time_scan.h"

class ASN1CTime : public ASN1CType {
  public:
    // The copy shares the context and has a text of its own; null copies as the empty text. Throws
    // ASN1MessageBuffer::RTLError when memory fails.
    ASN1CTime(const ASN1CTime& other);

    // Copies fields, form and text; the text goes where this object's text goes. Throws as the copy
    // constructor does, and then nothing has changed.
    ASN1CTime& operator=(const ASN1CTime& other);

    // A field that was never set is -3 (minutes and seconds 0, but for the minutes of a UTCTime).
    virtual int getYear();  // in full
    virtual int getMonth();
    virtual int getDay();
    virtual int getHour();
    virtual int getMinute();
    virtual int getSecond();
    virtual int getFraction();    // the digits behind the separator as a number
    virtual int getDiffHour();    // -12 to 12
    virtual int getDiffMinute();  // with the sign of the hours
    virtual int getDiff();        // the whole offset in minutes
    // 1 if the text ends in Z. Always 1 in distinguished form, whatever the text.
    virtual int getUTC();
    // The fields taken as the system's local time, in seconds since 1970, plus the offset: kept so for its
    // callers.
    virtual std::time_t getTime();

    // A setter refuses a value out of range, or a day that the month would not have, with RTS_BAD_DATETIME,
    // and then changes nothing. A text that does not parse does not stop it: it goes on with the fields as
    // they are. Until all fields that a text needs are set the text stays as it was, and that is no failure.
    virtual int setUTC(bool utc);   // without effect in distinguished form
    virtual int setYear(int year);  // 0 to 9999
    virtual int setMonth(int month);
    virtual int setDay(int day);
    virtual int setHour(int hour);
    virtual int setMinute(int minute);
    virtual int setSecond(int second);
    virtual int setFraction(int fraction);  // any; written if above 0
    // All fields from the system's local time at `seconds` since 1970; with `withOffset` the offset of that
    // local time too. Calls tzset(). RTS_BAD_DATETIME for a year outside 0 to 9999, or what compileString
    // gives.
    virtual int setTime(std::time_t seconds, bool withOffset) = 0;
    virtual int setDiffHour(int hours);  // -12 to 12; the minutes take its sign
    // -12 to 12 and below 60 either way; the minutes take the sign of the hours unless these are 0.
    virtual int setDiff(int hours, int minutes);
    virtual int setDiff(int minutes);  // -720 to 720

    // Reads the fields from `text`, and writes the object's own text if that is another one.
    // RTS_BAD_DATETIME, and then no field has changed.
    virtual int parseString(const char* text) = 0;

    // All fields unset, the text empty.
    virtual void clear();

    // The days between the two, or if they have the same date the milliseconds, positive if this one is
    // later. Only the milliseconds take the offset into account, so two offsets with two dates compare by
    // date. A fraction counts as tenths.
    virtual int equals(ASN1CTime& other);
    virtual bool operator==(ASN1CTime& other);
    virtual bool operator!=(ASN1CTime& other);
    virtual bool operator>(ASN1CTime& other);
    virtual bool operator<(ASN1CTime& other);
    virtual bool operator>=(ASN1CTime& other);
    virtual bool operator<=(ASN1CTime& other);

    // Writes the text from the fields. RTS_BAD_DATETIME if one is missing or the time in UTC leaves the years
    // 0 to 9999, or RTS_NO_MEMORY; the text then stays as it was.
    virtual int compileString() = 0;

    // The text, brought in step with the fields where these are complete. It belongs to the record or this
    // object.
    const char* getTimeStringPtr();
    int getTimeStringLen();
    // A copy in `buffer` of `size` octets, or null if the text is not shorter than that.
    char* getTimeString(char* buffer, std::size_t size);

    // The number of the day, 1 for the first of January of the year 1; or the status of a text that does not
    // parse.
    std::int64_t getDaysNum();
    // The time of day in milliseconds less the offset; or a status.
    std::int64_t getMillisNum();

    // Points the caller's variable at this object's buffer if its own has fewer than 30 octets. The text is
    // to be written next.
    void checkCapacity();

    // Whether the month has the day. A day or month below 1 is taken as unset, and passes; with a negative
    // year February has 29 days.
    static bool checkDate(int day, int month, int year);

    // Moves a point in time by milliseconds, or a date by days, either way. The fraction counts tenths of a
    // second.
    static void addMilliseconds(int count, int& year, int& month, int& day, int& hour, int& minute,
                                int& second, int& fraction);
    static void addDays(int count, int& year, int& month, int& day);

    static const std::int16_t daysInMonth[13];     // of a common year, from index 1; 0 at index 0
    static const std::int16_t daysAfterMonth[12];  // days of a common year before each month

  protected:
    // `text` is the record's variable, of which a reference is kept; `capacity` are the octets that it points
    // at. Without a buffer or context, a new context is made.
    ASN1CTime(ASN1MessageBufferIF& buffer, char*& text, int capacity, bool derRules);
    ASN1CTime(ASN1MessageBufferIF& buffer, const char*& text, bool derRules);
    ASN1CTime(ASN1Context& context, char*& text, int capacity, bool derRules);
    ASN1CTime(ASN1Context& context, const char*& text, bool derRules);
    ASN1CTime(char*& text, int capacity, bool derRules);
    ASN1CTime(const char*& text, bool derRules);

    // For a control class whose DecodeFrom or operator= gave the record another text: the fields are parsed
    // again, and the new text is not written over.
    void textReplaced();

    // What the descendants are built on. `fail` records a status and passes it on.
    int fail(int status);
    int parseIfNeeded() { return parsed ? RTS_OK : parseString(*timeStr); }
    void storeFields(const asn1rt::TimeFields& fields, int fraction);
    // Puts a finished text where the record sees it. 0 or RTS_NO_MEMORY, recorded.
    int storeText(std::string_view text);
    // The fields from the local time at `seconds`, with its offset if that is wanted and else with none; a
    // status.
    int takeLocalTime(std::time_t seconds, bool withOffset);
    bool endsInZ() const { return derRules || utcFlag; }
    bool hasOffset() const { return diffHour != 0 || diffMinute != 0; }
    void writeOffset(asn1rt::TimeWriter* writer, bool minutesRequired) const;

    // The fields as the text shows them, in UTC if it ends in Z. The year may be -1 or 10000.
    struct ShownTime {
        int year, month, day, hour, minute, second, fraction;
    };
    ShownTime shownTime() const;

    std::int16_t year = -3;
    std::int16_t month = -3;
    std::int16_t day = -3;
    std::int16_t hour = -3;
    std::int16_t minute = 0;
    std::int16_t second = 0;
    std::int16_t diffHour = 0;
    std::int16_t diffMinute = 0;
    std::int32_t secFraction = 0;
    std::uint8_t utcFlag;
    std::uint8_t parsed = 0;
    std::uint8_t derRules;
    char** timeStr;
    std::int32_t strSize;  // 0 for constant text
    char innerStr[36] = "";
    char* ownStrPtr = innerStr;

  private:
    int getField(std::int16_t ASN1CTime::*field);
    int setField(std::int16_t ASN1CTime::*field, int value, int lowest, int highest);
    int finishSetting();
    void unsetFields();
    void rewrite();
    void copyFields(const ASN1CTime& other);
};

#endif
