#include "asn1rt/time_scan.h"

#include <charconv>

#include "asn1rt/character_class.h"
#include "asn1rt/time_parse.h"

namespace asn1rt {

namespace {

bool hasClass(char character, unsigned char classes) {
    return (rtCtypeTable[static_cast<unsigned char>(character)] & classes) != 0;
}

}  // namespace

bool isLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

bool isCalendarDate(int year, int month, int day) {
    if (year < 0 || month < 1 || month > 12 || day < 1) return false;
    return day <= OS_daysInMonth[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

bool TimeScanner::isDigit(std::size_t index) const {
    return hasClass(at(index), RT_CTYPE_DIGIT);
}

bool TimeScanner::readNumber(int width, int* value) {
    while (hasClass(next(), RT_CTYPE_SPACE))
        advance();
    const bool negative = next() == '-';
    if (negative || next() == '+') {
        advance();
        --width;
    }
    if (width < 1 || !nextIsDigit()) return false;
    int magnitude = 0;
    for (; width > 0 && nextIsDigit(); --width, advance())
        magnitude = magnitude * 10 + (next() - '0');
    *value = negative ? -magnitude : magnitude;
    return true;
}

bool TimeScanner::readDate(int yearWidth) {
    int year = 0;
    if (!readNumber(yearWidth, &year) || !readNumber(2, &fields_.month) || !readNumber(2, &fields_.day))
        return false;
    if (year < 0) return false;
    fields_.year = yearWidth > 2 ? year : year + (year < 50 ? 2000 : 1900);
    position_ = static_cast<std::size_t>(yearWidth) + 4;
    return isCalendarDate(fields_.year, fields_.month, fields_.day);
}

bool TimeScanner::readClock(int required) {
    int* const parts[] = {&fields_.hour, &fields_.minute, &fields_.second};
    const std::size_t start = position_;
    int count = 0;
    for (; count < 3 && nextIsDigit(); ++count) {
        readNumber(2, parts[count]);
        position_ = start + 2 * (static_cast<std::size_t>(count) + 1);
    }
    hasSeconds_ = count == 3;
    return count >= required && fields_.hour < 24 && fields_.minute < 60 && fields_.second < 60;
}

bool TimeScanner::openFraction(bool commaAllowed, bool* found) {
    *found = next() == '.' || (commaAllowed && next() == ',');
    if (!*found) return true;
    advance();
    return hasSeconds_ && nextIsDigit();
}

bool TimeScanner::readUtcMark() {
    fields_.utc = true;
    return position_ + 1 == text_.size();
}

bool TimeScanner::readOffset(bool minutesRequired) {
    const bool negative = next() == '-';
    const std::size_t hours = position_ + 1;
    const std::size_t minutes = position_ + 3;
    if (!isDigit(hours)) return false;
    if (minutesRequired && !(isDigit(hours + 1) && isDigit(minutes) && isDigit(minutes + 1))) return false;
    position_ = hours;
    readNumber(2, &fields_.diffHour);
    position_ = minutes;
    if (nextIsDigit()) readNumber(2, &fields_.diffMinute);
    if (fields_.diffHour > 12 || fields_.diffMinute > 59) return false;
    if (negative) {
        fields_.diffHour = -fields_.diffHour;
        fields_.diffMinute = -fields_.diffMinute;
    }
    return true;
}

bool TimeScanner::readZone(bool utcRequired) {
    if (next() == 'Z') return readUtcMark();
    if (utcRequired) return false;
    return next() == '+' || next() == '-' ? readOffset(false) : true;
}

bool TimeScanner::readStrictZone(bool utcRequired) {
    if (next() == 'Z') return readUtcMark();
    return !utcRequired && (next() == '+' || next() == '-') && readOffset(true);
}

void TimeWriter::put(char character) {
    if (length_ < sizeof characters_ - 1) characters_[length_++] = character;
}

void TimeWriter::number(int value, int width) {
    char digits[16];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
    for (auto missing = width - (end.ptr - digits); missing > 0; --missing)
        put('0');
    text({digits, static_cast<std::size_t>(end.ptr - digits)});
}

void TimeWriter::text(std::string_view characters) {
    for (const char character : characters)
        put(character);
}

}  // namespace asn1rt
