#include "asn1rt/time_parse.h"

#include <cstdlib>
#include <cstring>

#include "asn1rt/cursor.h"
#include "asn1rt/text.h"
#include "asn1rt/time_scan.h"

using asn1rt::record;
using asn1rt::TimeScanner;

namespace {

constexpr std::size_t maxFraction = sizeof rtTimeRecord::fraction - 1;

void reset(rtTimeRecord* time) {
    *time = {};
    time->year = time->month = time->day = time->hour = -3;
}

// Takes all digits; those from the first that is not 0 are stored, as far as they fit.
void readFraction(TimeScanner* scanner, char* fraction) {
    std::size_t length = 0;
    for (; scanner->nextIsDigit(); scanner->advance()) {
        const bool leadingZero = length == 0 && scanner->next() == '0';
        if (!leadingZero && length < maxFraction) fraction[length++] = scanner->next();
    }
    fraction[length] = '\0';
}

bool readGeneralizedTime(TimeScanner* scanner, char* fraction) {
    bool hasFraction = false;
    if (!scanner->readDate(4) || !scanner->readClock(1) || !scanner->openFraction(true, &hasFraction))
        return false;
    if (hasFraction) readFraction(scanner, fraction);
    return scanner->readZone(false);
}

void store(const asn1rt::TimeFields& fields, rtTimeRecord* time) {
    time->year = static_cast<std::int16_t>(fields.year);
    time->month = static_cast<std::int16_t>(fields.month);
    time->day = static_cast<std::int16_t>(fields.day);
    time->hour = static_cast<std::int16_t>(fields.hour);
    time->minute = static_cast<std::int16_t>(fields.minute);
    time->second = static_cast<std::int16_t>(fields.second);
    time->diffHour = static_cast<std::int16_t>(fields.diffHour);
    time->diffMinute = static_cast<std::int16_t>(fields.diffMinute);
    time->utcFlag = fields.utc ? 1 : 0;
}

bool within(int value, int lowest, int highest) {
    return value >= lowest && value <= highest;
}

bool isValid(const rtTimeRecord& time) {
    return time.year <= 9999 && asn1rt::isCalendarDate(time.year, time.month, time.day) &&
           within(time.hour, 0, 23) && within(time.minute, 0, 59) && within(time.second, 0, 59) &&
           within(time.diffHour, -12, 12) && within(time.diffMinute, -59, 59);
}

void write(const rtTimeRecord& time, asn1rt::TimeWriter* writer) {
    writer->number(time.year, 4);
    for (const int part : {time.month, time.day, time.hour, time.minute, time.second})
        writer->number(part, 2);
    const std::string_view fraction(time.fraction, strnlen(time.fraction, maxFraction));
    if (!fraction.empty()) {
        writer->put('.');
        writer->text(fraction);
    }
    if (time.utcFlag) {
        writer->put('Z');
    } else if (time.diffHour != 0 || time.diffMinute != 0) {
        writer->put(time.diffHour < 0 || time.diffMinute < 0 ? '-' : '+');
        writer->number(std::abs(time.diffHour), 2);
        writer->number(std::abs(time.diffMinute), 2);
    }
}

}  // namespace

const std::uint8_t OS_daysInMonth[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

int rtParseGeneralizedTime(ASN1CTXT* ctxt, const char* text, rtTimeRecord* time) {
    reset(time);
    TimeScanner scanner(text);
    char fraction[sizeof time->fraction] = "";
    if (!readGeneralizedTime(&scanner, fraction)) return record(ctxt, RTS_BAD_DATETIME);
    store(scanner.fields(), time);
    std::memcpy(time->fraction, fraction, sizeof fraction);
    return RTS_OK;
}

int rtParseUTCTime(ASN1CTXT* ctxt, const char* text, rtTimeRecord* time) {
    reset(time);
    TimeScanner scanner(text);
    if (!scanner.readDate(2) || !scanner.readClock(2) || !scanner.readStrictZone(false))
        return record(ctxt, RTS_BAD_DATETIME);
    store(scanner.fields(), time);
    return RTS_OK;
}

int rtMakeGeneralizedTime(ASN1CTXT* ctxt, const rtTimeRecord* time, char** text, std::uint32_t bufferSize) {
    if (!isValid(*time)) return record(ctxt, RTS_BAD_DATETIME);
    asn1rt::TimeWriter writer;
    write(*time, &writer);
    const std::string_view written = writer.view();
    if (bufferSize > 0) {
        if (written.size() >= bufferSize) return record(ctxt, RTS_BUFFER_TOO_SMALL);
        std::memcpy(*text, written.data(), written.size() + 1);
        return RTS_OK;
    }
    char* const copy = rtUTF8Strdup(ctxt, written.data());
    if (!copy) return record(ctxt, RTS_NO_MEMORY);
    *text = copy;
    return RTS_OK;
}
