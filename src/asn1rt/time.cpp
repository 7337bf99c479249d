#include "asn1rt/time.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

#include "asn1rt/allocate.h"
#include "asn1rt/cursor.h"

namespace {

// Fewer octets than this are no buffer to write a time to.
constexpr std::int32_t leastCapacity = 30;
constexpr std::int64_t millisPerDay = 86'400'000;

std::int64_t floorDivide(std::int64_t value, std::int64_t divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// 1 for the first of January of the year 1. An unset month counts no days.
std::int64_t dayNumber(int year, int month, int day) {
    const std::int64_t before = std::int64_t{year} - 1;
    std::int64_t number =
        day + 365 * before + floorDivide(before, 4) - floorDivide(before, 100) + floorDivide(before, 400);
    if (month >= 1 && month <= 12) number += ASN1CTime::daysAfterMonth[month - 1];
    return number + (month > 2 && asn1rt::isLeapYear(year) ? 1 : 0);
}

std::int64_t millisOfDay(int hour, int minute, int second, int fraction) {
    return ((std::int64_t{hour} * 60 + minute) * 60 + second) * 1000 + std::int64_t{fraction} * 100;
}

std::string_view viewOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

}  // namespace

const std::int16_t ASN1CTime::daysInMonth[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
const std::int16_t ASN1CTime::daysAfterMonth[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

// A constant text is only ever replaced, never written to: its capacity is 0.
ASN1CTime::ASN1CTime(ASN1MessageBufferIF& buffer, char*& text, int capacity, bool derRules)
    : ASN1CType(buffer), utcFlag(derRules), derRules(derRules), timeStr(&text), strSize(capacity) {}

ASN1CTime::ASN1CTime(ASN1MessageBufferIF& buffer, const char*& text, bool derRules)
    : ASN1CTime(buffer, const_cast<char*&>(text), 0, derRules) {}

ASN1CTime::ASN1CTime(ASN1Context& context, char*& text, int capacity, bool derRules)
    : ASN1CType(context), utcFlag(derRules), derRules(derRules), timeStr(&text), strSize(capacity) {}

ASN1CTime::ASN1CTime(ASN1Context& context, const char*& text, bool derRules)
    : ASN1CTime(context, const_cast<char*&>(text), 0, derRules) {}

ASN1CTime::ASN1CTime(char*& text, int capacity, bool derRules)
    : utcFlag(derRules), derRules(derRules), timeStr(&text), strSize(capacity) {}

ASN1CTime::ASN1CTime(const char*& text, bool derRules) : ASN1CTime(const_cast<char*&>(text), 0, derRules) {}

ASN1CTime::ASN1CTime(const ASN1CTime& other) : ASN1CType(other), timeStr(&ownStrPtr), strSize(0) {
    copyFields(other);
    if (const int status = storeText(viewOf(*other.timeStr)); status != RTS_OK)
        throw ASN1MessageBuffer::RTLError(status);
}

// What timeStr points at belongs to this object, whose text changes and not its place.
// cppcheck-suppress operatorEqVarError
ASN1CTime& ASN1CTime::operator=(const ASN1CTime& other) {
    if (this == &other) return *this;
    if (const int status = storeText(viewOf(*other.timeStr)); status != RTS_OK)
        throw ASN1MessageBuffer::RTLError(status);
    copyFields(other);
    return *this;
}

void ASN1CTime::copyFields(const ASN1CTime& other) {
    year = other.year;
    month = other.month;
    day = other.day;
    hour = other.hour;
    minute = other.minute;
    second = other.second;
    diffHour = other.diffHour;
    diffMinute = other.diffMinute;
    secFraction = other.secFraction;
    utcFlag = other.utcFlag;
    parsed = other.parsed;
    derRules = other.derRules;
}

int ASN1CTime::fail(int status) {
    return asn1rt::record(mpContext, status);
}

int ASN1CTime::getField(std::int16_t ASN1CTime::*field) {
    const int status = parseIfNeeded();
    return status != RTS_OK ? status : this->*field;
}

int ASN1CTime::getYear() {
    return getField(&ASN1CTime::year);
}
int ASN1CTime::getMonth() {
    return getField(&ASN1CTime::month);
}
int ASN1CTime::getDay() {
    return getField(&ASN1CTime::day);
}
int ASN1CTime::getHour() {
    return getField(&ASN1CTime::hour);
}
int ASN1CTime::getMinute() {
    return getField(&ASN1CTime::minute);
}
int ASN1CTime::getSecond() {
    return getField(&ASN1CTime::second);
}
int ASN1CTime::getDiffHour() {
    return getField(&ASN1CTime::diffHour);
}
int ASN1CTime::getDiffMinute() {
    return getField(&ASN1CTime::diffMinute);
}

int ASN1CTime::getFraction() {
    const int status = parseIfNeeded();
    return status != RTS_OK ? status : secFraction;
}

int ASN1CTime::getDiff() {
    const int status = parseIfNeeded();
    return status != RTS_OK ? status : diffHour * 60 + diffMinute;
}

int ASN1CTime::getUTC() {
    if (derRules) return 1;
    const int status = parseIfNeeded();
    return status != RTS_OK ? status : utcFlag;
}

std::time_t ASN1CTime::getTime() {
    if (const int status = parseIfNeeded(); status != RTS_OK) return status;
    std::tm local = {};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    return std::mktime(&local) + std::time_t{diffHour} * 3600 + std::time_t{diffMinute} * 60;
}

int ASN1CTime::setField(std::int16_t ASN1CTime::*field, int value, int lowest, int highest) {
    if (value < lowest || value > highest) return fail(RTS_BAD_DATETIME);
    parseIfNeeded();
    const std::int16_t former = std::exchange(this->*field, static_cast<std::int16_t>(value));
    if (!checkDate(day, month, year)) {
        this->*field = former;
        return fail(RTS_BAD_DATETIME);
    }
    return finishSetting();
}

int ASN1CTime::finishSetting() {
    parsed = 1;
    rewrite();
    return RTS_OK;
}

// A text that cannot be written yet is no failure of the operation that asks for it.
void ASN1CTime::rewrite() {
    const ASN1ErrInfo recorded = mpContext->errInfo;
    compileString();
    mpContext->errInfo = recorded;
}

int ASN1CTime::setUTC(bool utc) {
    if (derRules) return RTS_OK;
    parseIfNeeded();
    utcFlag = utc;
    return finishSetting();
}

int ASN1CTime::setYear(int value) {
    return setField(&ASN1CTime::year, value, 0, 9999);
}
int ASN1CTime::setMonth(int value) {
    return setField(&ASN1CTime::month, value, 1, 12);
}
int ASN1CTime::setDay(int value) {
    return setField(&ASN1CTime::day, value, 1, 31);
}
int ASN1CTime::setHour(int value) {
    return setField(&ASN1CTime::hour, value, 0, 23);
}
int ASN1CTime::setMinute(int value) {
    return setField(&ASN1CTime::minute, value, 0, 59);
}
int ASN1CTime::setSecond(int value) {
    return setField(&ASN1CTime::second, value, 0, 59);
}

int ASN1CTime::setFraction(int fraction) {
    parseIfNeeded();
    secFraction = fraction;
    return finishSetting();
}

int ASN1CTime::setDiffHour(int hours) {
    parseIfNeeded();
    return setDiff(hours, diffMinute);
}

int ASN1CTime::setDiff(int hours, int minutes) {
    if (hours < -12 || hours > 12 || minutes < -59 || minutes > 59) return fail(RTS_BAD_DATETIME);
    parseIfNeeded();
    if (hours != 0) minutes = hours < 0 ? -std::abs(minutes) : std::abs(minutes);
    diffHour = static_cast<std::int16_t>(hours);
    diffMinute = static_cast<std::int16_t>(minutes);
    return finishSetting();
}

int ASN1CTime::setDiff(int minutes) {
    if (minutes < -720 || minutes > 720) return fail(RTS_BAD_DATETIME);
    return setDiff(minutes / 60, minutes % 60);
}

void ASN1CTime::clear() {
    unsetFields();
    checkCapacity();
    **timeStr = '\0';
    parsed = 1;
}

void ASN1CTime::unsetFields() {
    year = month = day = hour = -3;
    minute = second = diffHour = diffMinute = 0;
    secFraction = 0;
    utcFlag = derRules;
}

int ASN1CTime::equals(ASN1CTime& other) {
    std::int64_t difference = getDaysNum() - other.getDaysNum();
    if (difference == 0) difference = getMillisNum() - other.getMillisNum();
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(difference, Limits::min(), Limits::max()));
}

bool ASN1CTime::operator==(ASN1CTime& other) {
    return equals(other) == 0;
}
bool ASN1CTime::operator!=(ASN1CTime& other) {
    return equals(other) != 0;
}
bool ASN1CTime::operator>(ASN1CTime& other) {
    return equals(other) > 0;
}
bool ASN1CTime::operator<(ASN1CTime& other) {
    return equals(other) < 0;
}
bool ASN1CTime::operator>=(ASN1CTime& other) {
    return equals(other) >= 0;
}
bool ASN1CTime::operator<=(ASN1CTime& other) {
    return equals(other) <= 0;
}

const char* ASN1CTime::getTimeStringPtr() {
    rewrite();
    return *timeStr;
}

int ASN1CTime::getTimeStringLen() {
    return static_cast<int>(viewOf(getTimeStringPtr()).size());
}

char* ASN1CTime::getTimeString(char* buffer, std::size_t size) {
    const std::string_view text = viewOf(getTimeStringPtr());
    if (text.size() >= size) return nullptr;
    text.copy(buffer, text.size());
    buffer[text.size()] = '\0';
    return buffer;
}

std::int64_t ASN1CTime::getDaysNum() {
    const int status = parseIfNeeded();
    return status != RTS_OK ? status : dayNumber(year, month, day);
}

std::int64_t ASN1CTime::getMillisNum() {
    if (const int status = parseIfNeeded(); status != RTS_OK) return status;
    return millisOfDay(hour, minute, second, secFraction) - millisOfDay(diffHour, diffMinute, 0, 0);
}

void ASN1CTime::checkCapacity() {
    if (strSize < leastCapacity || !*timeStr) *timeStr = innerStr;
}

bool ASN1CTime::checkDate(int day, int month, int year) {
    if (day < 1 || month < 1) return true;
    if (month > 12) return false;
    const bool leapDay = month == 2 && (year < 0 || asn1rt::isLeapYear(year));
    return day <= daysInMonth[month] + (leapDay ? 1 : 0);
}

void ASN1CTime::addMilliseconds(int count, int& year, int& month, int& day, int& hour, int& minute,
                                int& second, int& fraction) {
    const std::int64_t total = count + millisOfDay(hour, minute, second, fraction);
    const std::int64_t days = floorDivide(total, millisPerDay);
    const int rest = static_cast<int>(total - days * millisPerDay);
    if (days != 0) addDays(static_cast<int>(days), year, month, day);
    hour = rest / 3'600'000;
    minute = rest / 60'000 % 60;
    second = rest / 1000 % 60;
    fraction = rest / 100 % 10;
}

void ASN1CTime::addDays(int count, int& year, int& month, int& day) {
    std::int64_t rest = dayNumber(year, month, day) + count - 1;
    const std::int64_t cycles = floorDivide(rest, 146097);
    rest -= cycles * 146097;
    const std::int64_t centuries = std::min<std::int64_t>(rest / 36524, 3);
    rest -= centuries * 36524;
    const std::int64_t leapSpans = rest / 1461;
    rest -= leapSpans * 1461;
    const std::int64_t years = std::min<std::int64_t>(rest / 365, 3);
    rest -= years * 365;
    year = static_cast<int>(cycles * 400 + centuries * 100 + leapSpans * 4 + years + 1);
    month = 1;
    day = static_cast<int>(rest) + 1;
    while (!checkDate(day, month, year)) {
        day -= daysInMonth[month] + (month == 2 && asn1rt::isLeapYear(year) ? 1 : 0);
        ++month;
    }
}

void ASN1CTime::textReplaced() {
    unsetFields();
    parsed = 0;
    strSize = 0;
}

void ASN1CTime::storeFields(const asn1rt::TimeFields& fields, int fraction) {
    year = static_cast<std::int16_t>(fields.year);
    month = static_cast<std::int16_t>(fields.month);
    day = static_cast<std::int16_t>(fields.day);
    hour = static_cast<std::int16_t>(fields.hour);
    minute = static_cast<std::int16_t>(fields.minute);
    second = static_cast<std::int16_t>(fields.second);
    diffHour = static_cast<std::int16_t>(fields.diffHour);
    diffMinute = static_cast<std::int16_t>(fields.diffMinute);
    secFraction = fraction;
    utcFlag = fields.utc;
    parsed = 1;
}

// Memory that a longer text moved to is no smaller than the caller's capacity, so that may go on to stand for
// it.
int ASN1CTime::storeText(std::string_view text) {
    char* target = innerStr;
    if (strSize >= leastCapacity && text.size() < static_cast<std::size_t>(strSize) && *timeStr) {
        target = *timeStr;
    } else if (text.size() >= sizeof innerStr) {
        target = static_cast<char*>(asn1rt::allocate(mpContext, std::uint64_t{text.size()} + 1));
        if (!target) return fail(RTS_NO_MEMORY);
    }
    if (!text.empty()) std::memmove(target, text.data(), text.size());
    target[text.size()] = '\0';
    *timeStr = target;
    return RTS_OK;
}

int ASN1CTime::takeLocalTime(std::time_t seconds, bool withOffset) {
    std::tm local = {};
    std::tm utc = {};
    tzset();  // the zone may have changed since; localtime_r need not look
    if (!localtime_r(&seconds, &local) || local.tm_year < -1900 || local.tm_year > 9999 - 1900)
        return fail(RTS_BAD_DATETIME);
    asn1rt::TimeFields fields{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                              local.tm_hour,        local.tm_min,     local.tm_sec};
    if (withOffset && gmtime_r(&seconds, &utc)) {
        utc.tm_isdst = local.tm_isdst;
        const auto offset = static_cast<int>(std::mktime(&local) - std::mktime(&utc));
        fields.diffHour = offset / 3600;
        fields.diffMinute = offset % 3600 / 60;
    }
    fields.utc = utcFlag;
    storeFields(fields, 0);
    return RTS_OK;
}

ASN1CTime::ShownTime ASN1CTime::shownTime() const {
    ShownTime shown{year, month, day, hour, minute, second, secFraction};
    if (endsInZ() && hasOffset()) {
        addMilliseconds((diffHour * 60 + diffMinute) * -60'000, shown.year, shown.month, shown.day,
                        shown.hour, shown.minute, shown.second, shown.fraction);
    }
    return shown;
}

// An offset of less than an hour goes out with a minus sign, either way: kept so for the readers of such
// texts.
void ASN1CTime::writeOffset(asn1rt::TimeWriter* writer, bool minutesRequired) const {
    writer->put(diffHour > 0 ? '+' : '-');
    writer->number(std::abs(diffHour), 2);
    if (minutesRequired || diffMinute != 0) writer->number(std::abs(diffMinute), 2);
}
