#include "asn1rt/generalized_time.h"

#include <algorithm>
#include <limits>

using asn1rt::TimeScanner;
using asn1rt::TimeWriter;

namespace {

// The number that starts at the cursor, of which one digit is stepped over: this class knows tenths only.
int readFraction(TimeScanner* scanner) {
    TimeScanner ahead = *scanner;
    std::int64_t value = 0;
    for (; ahead.nextIsDigit(); ahead.advance())
        value = std::min<std::int64_t>(value * 10 + (ahead.next() - '0'), std::numeric_limits<int>::max());
    scanner->advance();
    return static_cast<int>(value);
}

}  // namespace

int ASN1CGeneralizedTime::parseString(const char* text) {
    TimeScanner scanner(text);
    bool hasFraction = false;
    if (!scanner.readDate(4) || !scanner.readClock(1) || !scanner.openFraction(!derRules, &hasFraction))
        return fail(RTS_BAD_DATETIME);
    const int fraction = hasFraction ? readFraction(&scanner) : 0;
    if (!scanner.readZone(derRules)) return fail(RTS_BAD_DATETIME);
    storeFields(scanner.fields(), fraction);
    return text == *timeStr ? RTS_OK : compileString();
}

int ASN1CGeneralizedTime::compileString() {
    if (year < 0 || month < 1 || day < 1 || hour < 0) return fail(RTS_BAD_DATETIME);
    const ShownTime shown = shownTime();
    if (shown.year < 0 || shown.year > 9999) return fail(RTS_BAD_DATETIME);
    TimeWriter writer;
    writer.number(shown.year, 4);
    for (const int part : {shown.month, shown.day, shown.hour})
        writer.number(part, 2);
    const bool withSeconds = derRules || shown.second > 0 || shown.fraction > 0;
    if (withSeconds || shown.minute > 0) writer.number(shown.minute, 2);
    if (withSeconds) writer.number(shown.second, 2);
    if (shown.fraction > 0) {
        writer.put('.');
        writer.number(shown.fraction, 1);
    }
    if (endsInZ()) {
        writer.put('Z');
    } else if (hasOffset()) {
        writeOffset(&writer, false);
    }
    return storeText(writer.view());
}

int ASN1CGeneralizedTime::setTime(std::time_t seconds, bool withOffset) {
    const bool offsetTaken = withOffset || derRules;
    if (const int status = takeLocalTime(seconds, offsetTaken); status != RTS_OK) return status;
    if (!offsetTaken) utcFlag = 0;
    return compileString();
}

int ASN1CGeneralizedTime::getCentury() {
    const int value = getYear();
    return value < 0 ? value : value / 100;
}

int ASN1CGeneralizedTime::setCentury(int century) {
    if (century < 0 || century > 99) return fail(RTS_BAD_DATETIME);
    parseIfNeeded();
    return setYear(century * 100 + std::max<int>(year, 0) % 100);
}
