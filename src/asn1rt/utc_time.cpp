#include "asn1rt/utc_time.h"

using asn1rt::TimeScanner;
using asn1rt::TimeWriter;

void ASN1CUTCTime::unsetUtc() {
    hour = minute = -3;
    utcFlag = 1;
}

int ASN1CUTCTime::getFraction() {
    return 0;
}

int ASN1CUTCTime::setFraction(int) {
    secFraction = 0;
    return fail(RTS_NOT_SUPPORTED);
}

int ASN1CUTCTime::setUTC(bool utc) {
    parseIfNeeded();
    return utc || hasOffset() ? ASN1CTime::setUTC(utc) : RTS_OK;
}

int ASN1CUTCTime::setYear(int value) {
    if (value >= 0 && value < 100) {
        const int status = ASN1CTime::setYear(value + (value < 50 ? 2000 : 1900));
        if (status != RTS_OK) return status;
    }
    return ASN1CTime::setYear(value);
}

int ASN1CUTCTime::setTime(std::time_t seconds, bool withOffset) {
    if (const int status = takeLocalTime(seconds, withOffset); status != RTS_OK) return status;
    utcFlag = withOffset ? derRules : 1;
    return compileString();
}

int ASN1CUTCTime::parseString(const char* text) {
    TimeScanner scanner(text);
    if (!scanner.readDate(2) || !scanner.readClock(2) || !scanner.readStrictZone(derRules))
        return fail(RTS_BAD_DATETIME);
    storeFields(scanner.fields(), 0);
    return text == *timeStr ? RTS_OK : compileString();
}

void ASN1CUTCTime::clear() {
    ASN1CTime::clear();
    unsetUtc();
}

int ASN1CUTCTime::compileString() {
    if (year < 0 || month < 1 || day < 1 || hour < 0 || minute < 0) return fail(RTS_BAD_DATETIME);
    if (!endsInZ() && !hasOffset()) return fail(RTS_BAD_DATETIME);
    const ShownTime shown = shownTime();
    if (shown.year > 9999) return fail(RTS_BAD_DATETIME);
    TimeWriter writer;
    // The year before 0, which a shift to UTC may reach, shows as 99.
    writer.number((shown.year + 100) % 100, 2);
    for (const int part : {shown.month, shown.day, shown.hour, shown.minute, shown.second})
        writer.number(part, 2);
    if (endsInZ()) {
        writer.put('Z');
    } else {
        writeOffset(&writer, true);
    }
    return storeText(writer.view());
}
