// Narrow text of the platform's code page to wide text and back, and numbers as text.
//
// Malformed text is replaced and does not fail. What the platform refuses throws the last-error code as
// ATL::CAtlException. Null is taken as the empty text.
#ifndef MIRVANE_ASN1_TEXT_CONVERSION_H
#define MIRVANE_ASN1_TEXT_CONVERSION_H

#include <string>

namespace Mirvane::ASN1 {

std::string tostring(wchar_t const* text);
// Takes the pointer for one to wchar_t: 16-bit units are not converted, which is meant.
std::string tostring(unsigned short const* text);
std::wstring towstring(char const* text);

// Decimal text, whatever the locale.
std::string tostring(int value);
std::wstring towstring(int value);

}  // namespace Mirvane::ASN1

#endif
