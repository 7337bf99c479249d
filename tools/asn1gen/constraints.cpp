#include "asn1gen/constraints.h"

namespace asn1gen {
namespace {

constexpr std::int64_t kMin = INT64_MIN;
constexpr std::int64_t kMax = INT64_MAX;

bool isSingle(const Limits& limits) {
    return limits.lower == limits.upper;
}

}  // namespace

std::optional<std::int64_t> ConstraintReader::value(const syntax::Bound& bound) const {
    switch (bound.form) {
        case syntax::Bound::Form::Number:
            return bound.number;
        case syntax::Bound::Form::Min:
            return kMin;
        case syntax::Bound::Form::Max:
            return kMax;
        case syntax::Bound::Form::Name:
            break;
    }
    if (const auto* integer = mSymbols.findInteger(bound.name)) return integer->number;
    mDiagnostics.error(bound.span, "no INTEGER is named " + bound.name + ": write `" + bound.name +
                                       " INTEGER ::= ...`, or the number");
    return std::nullopt;
}

std::optional<ConstraintReader::Ends> ConstraintReader::ends(const syntax::Range& range) const {
    const std::optional<std::int64_t> lower = value(range.lower);
    const std::optional<std::int64_t> upper = value(range.upper);
    if (!lower || !upper) return std::nullopt;
    if (*lower <= *upper) return Ends{*lower, *upper};
    mDiagnostics.error(range.span, "the range is empty: write the smaller bound first");
    return std::nullopt;
}

std::optional<Limits> ConstraintReader::limits(const syntax::Range& range) const {
    const std::optional<Ends> bounds = ends(range);
    if (!bounds) return std::nullopt;
    if (bounds->lower < 0 || (bounds->upper >= kNoBound && bounds->upper != kMax)) {
        mDiagnostics.error(range.span, "bounds that are tested go from 0 to 4294967294, or to MAX");
        return std::nullopt;
    }
    const bool unbounded = bounds->upper == kMax;
    return Limits{static_cast<std::uint32_t>(bounds->lower),
                  unbounded ? kNoBound : static_cast<std::uint32_t>(bounds->upper), false};
}

std::optional<Limits> ConstraintReader::sizes(const syntax::Type& type) const {
    if (type.sizes.empty()) return std::nullopt;
    const std::optional<Limits> first = limits(type.sizes.front());
    if (!first || type.sizes.size() == 1) return first;
    const std::optional<Limits> second = limits(type.sizes[1]);
    if (!second) return std::nullopt;
    if (type.sizes.size() > 2 || !isSingle(*first) || !isSingle(*second) || first->lower >= second->lower) {
        mDiagnostics.error(type.sizes[1].span,
                           "expected one range, or two single sizes, the smaller one first");
        return std::nullopt;
    }
    return Limits{first->lower, second->upper, true};
}

IntegerForm ConstraintReader::integer(const syntax::Type& type) const {
    if (!type.range) return {};
    const std::optional<Ends> bounds = ends(*type.range);
    if (!bounds) return {};
    const auto [lower, upper] = *bounds;
    if (lower == kMin && upper == kMax) return {Kind::BigInteger, std::nullopt};
    if (lower == 0 && upper == kMax) return {Kind::Unsigned, std::nullopt};
    if (lower == 0 && upper == UINT16_MAX) return {Kind::Uint16, std::nullopt};
    return {upper <= UINT16_MAX ? Kind::Uint16 : Kind::Unsigned, limits(*type.range)};
}

}  // namespace asn1gen
