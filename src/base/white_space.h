// White space of the default locale, whatever the program's is; bytes above 0x7F are none. Not part of the
// interface.
#ifndef MIRVANE_BASE_WHITE_SPACE_H
#define MIRVANE_BASE_WHITE_SPACE_H

namespace Mirvane {

constexpr bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// The first character of a terminated text that is no white space.
constexpr char const* skipSpace(char const* text) {
    while (isSpace(*text))
        ++text;
    return text;
}

}  // namespace Mirvane

#endif
