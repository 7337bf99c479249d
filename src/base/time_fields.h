// Steps between texts, the platform's calendar and the C library's, which the parts of date and time share.
// Not part of the interface.
#ifndef MIRVANE_BASE_TIME_FIELDS_H
#define MIRVANE_BASE_TIME_FIELDS_H

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

#include "platform/file_time.h"

namespace Mirvane {

class CDateTime;

// The fields of YYYYMMDDHHMMSS[.F][Z]; see CDateTime(char const*). None is held against a range. With
// `asSpan` month and year stay as they are written, as counts; else they get the form that a tm has.
// `microseconds` gets the fraction. Throws 0x8007076D if a field has a character other than a digit.
std::tm GeneralizedTimeToTm(std::string_view text, unsigned int& microseconds, bool asSpan);

// The form in which strftime takes the fields; tm_yday is 0.
std::tm toTm(_SYSTEMTIME const& time);

// The date's fields, for texts: for a count outside the calendar it re-raises the exception that is handled
// just then, and ends the process if there is none, which is meant.
_SYSTEMTIME fieldsForText(CDateTime const& date);

// YYYYMMDDHHMMSS[.F]Z, the fraction without trailing zeros and absent if there is none. Of a year from 10000
// on the first digit is lost, which is meant.
class GeneralizedTimeText {
  public:
    GeneralizedTimeText(_SYSTEMTIME const& fields, std::uint64_t microseconds);
    char const* c_str() const { return text_; }

  private:
    char text_[24];
};

// Adds the number with zeros in front up to the width.
void appendNumber(std::string& text, std::uint64_t number, std::size_t width);

}  // namespace Mirvane

#endif
