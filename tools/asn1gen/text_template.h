// Text with named holes: templates look like the code that they make.
#ifndef MIRVANE_ASN1GEN_TEXT_TEMPLATE_H
#define MIRVANE_ASN1GEN_TEXT_TEMPLATE_H

#include <initializer_list>
#include <string>
#include <string_view>

namespace asn1gen {

struct Hole {
    std::string_view name;
    std::string value;
};

// Puts the values into the holes, written @name@. A hole that stands alone on a line takes any number of
// lines, each with that line's indentation, and with an empty value the line goes. A line break right at the
// start of the text doesn't count. Throws std::logic_error for a hole without a value, and for a value
// without a hole: both are faults of this program.
std::string fill(std::string_view text, std::initializer_list<Hole> holes);

}  // namespace asn1gen

#endif
