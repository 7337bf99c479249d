// Reads SIZE constraints and ranges of numbers.
#ifndef MIRVANE_ASN1GEN_CONSTRAINTS_H
#define MIRVANE_ASN1GEN_CONSTRAINTS_H

#include <cstdint>
#include <optional>

#include "asn1gen/kinds.h"
#include "asn1gen/model.h"
#include "asn1gen/symbols.h"
#include "asn1gen/syntax.h"

namespace asn1gen {

struct Limits {
    std::uint32_t lower = 0;
    std::uint32_t upper = kNoBound;
    bool endsOnly = false;  // two sizes, and none between them

    // Whether anything is ruled out.
    bool tested() const { return lower != 0 || upper != kNoBound; }
    bool fits(std::int64_t number) const { return number >= lower && (upper == kNoBound || number <= upper); }
};

// How an INTEGER is held, and its limits if its value is tested.
struct IntegerForm {
    Kind kind = Kind::Integer;
    std::optional<Limits> limits;
};

class ConstraintReader {
  public:
    ConstraintReader(const Symbols& symbols, Diagnostics& diagnostics)
        : mSymbols(symbols), mDiagnostics(diagnostics) {}

    // The SIZE of a type; empty if it has none. What cannot be held is reported.
    std::optional<Limits> sizes(const syntax::Type& type) const;

    IntegerForm integer(const syntax::Type& type) const;

  private:
    struct Ends {
        std::int64_t lower;
        std::int64_t upper;
    };

    // Numbers as they are, MIN as INT64_MIN, MAX as INT64_MAX.
    std::optional<std::int64_t> value(const syntax::Bound& bound) const;
    std::optional<Ends> ends(const syntax::Range& range) const;
    std::optional<Limits> limits(const syntax::Range& range) const;

    const Symbols& mSymbols;
    Diagnostics& mDiagnostics;
};

}  // namespace asn1gen

#endif
