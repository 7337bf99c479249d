// Conversion between wide text (one wchar_t a character, UTF-32) and narrow text of a code page. Code page 0,
// the system's own, is UTF-8, and there is no other.
//
// Nothing malformed makes a conversion fail: what is no Unicode scalar value is replaced by U+FFFD. Each of
// these counts as one: a surrogate or a value above 0x10FFFF, wide or encoded (in the forms of five and six
// bytes too), a sequence longer than its value needs, a sequence that was cut short, and a byte that begins
// none.
#ifndef MIRVANE_PLATFORM_TEXT_H
#define MIRVANE_PLATFORM_TEXT_H

#include "platform/export.h"
#include "platform/types.h"

enum : UINT { CP_ACP = 0 };

extern "C" {

// Wide text to bytes of the code page. `wideLength` is in characters, and -1 means up to and with the
// terminator, which is then converted too; otherwise no terminator is looked for or written. With
// `narrowCapacity` 0 nothing is written and the result is the size wanted in bytes; else it is the bytes
// written to `narrow`. The two texts may not overlap.
//
// 0 is failure, with the reason in the last-error slot: ERROR_INSUFFICIENT_BUFFER if the text does not fit
// (what then stands in `narrow` is not specified); ERROR_INVALID_FLAGS for flags other than 0;
// ERROR_INVALID_PARAMETER for a code page other than CP_ACP, a null text, a length of 0 or below -1, a
// negative capacity, a null buffer with a capacity, a size above 0x7FFFFFFF, and for a default character or
// its flag, which must be null.
MIRVANE_PLATFORM_API int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* wide, int wideLength,
                                             char* narrow, int narrowCapacity, const char* defaultCharacter,
                                             BOOL* usedDefaultCharacter);

// Bytes of the code page to wide text: the mirror of WideCharToMultiByte, with `narrowLength` in bytes,
// `wideCapacity` and the result in characters, and the same failures.
MIRVANE_PLATFORM_API int MultiByteToWideChar(UINT codePage, DWORD flags, const char* narrow, int narrowLength,
                                             wchar_t* wide, int wideCapacity);

}  // extern "C"

#endif
