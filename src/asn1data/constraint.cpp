#include "asn1data/constraint.h"

#include <climits>
#include <cstring>
#include <initializer_list>
#include <string_view>

#include "asn1data/record_access.h"
#include "asn1rt/char_string.h"
#include "asn1rt/cursor.h"
#include "asn1rt/text.h"
#include "asn1rt/universal_tags.h"

namespace asn1data {
namespace {

constexpr std::int64_t kUnmeasurable = -1;
constexpr std::int64_t kNothingToMeasure = -2;

std::int64_t textSize(const TypeDescriptor& type, const char* text) {
    if (!text) return kNothingToMeasure;
    if (type.tag != TAG_UTF8_STRING) return static_cast<std::int64_t>(std::strlen(text));
    const int characters = rtUTF8Len(text);
    return characters < 0 ? kUnmeasurable : characters;
}

std::int64_t measure(const TypeDescriptor& type, const void* value) {
    switch (type.kind) {
        case Kind::Integer:
            return *static_cast<const std::int32_t*>(value);
        case Kind::Unsigned:
            return *static_cast<const std::uint32_t*>(value);
        case Kind::Uint16:
            return *static_cast<const std::uint16_t*>(value);
        case Kind::OctetString:
        case Kind::InlineOctetString:
        case Kind::BitString:
        case Kind::BmpString:
        case Kind::UniversalString:
            return *static_cast<const std::uint32_t*>(value);  // their count stands first
        case Kind::CharString:
            return textSize(type, *static_cast<const char* const*>(value));
        case Kind::List:
            return member<_Asn1RTDList>(value, type.headOffset).count;
        case Kind::Array:
            return member<std::uint32_t>(value, type.headOffset);
        default:
            return kNothingToMeasure;
    }
}

// What is measured of a value that is a structure; empty if it is none.
std::string_view countName(Kind kind) {
    switch (kind) {
        case Kind::OctetString:
        case Kind::InlineOctetString:
            return "numocts";
        case Kind::BitString:
            return "numbits";
        case Kind::BmpString:
        case Kind::UniversalString:
            return "nchars";
        case Kind::List:
            return "count";
        case Kind::Array:
            return "n";
        default:
            return {};
    }
}

ConstraintText composed(std::initializer_list<std::string_view> parts) {
    ConstraintText text{};
    std::size_t used = 0;
    for (const std::string_view part : parts)
        used += part.copy(text.data() + used, text.size() - 1 - used);
    return text;
}

}  // namespace

bool meetsConstraint(const TypeDescriptor& type, const void* value) {
    if (!type.hasBounds) return true;
    const std::int64_t size = measure(type, value);
    if (size == kNothingToMeasure) return true;
    return size >= 0 && isWithinBounds(type, static_cast<std::uint64_t>(size));
}

ConstraintText constraintText(const TypeDescriptor& type, const Place& place) {
    const std::string_view count = countName(type.kind);
    const std::string_view dot = count.empty() ? "" : ".";
    // Lists and arrays are types of their own wherever they stand.
    const bool isOwnType = type.kind == Kind::List || type.kind == Kind::Array;
    switch (isOwnType ? Place::Kind::Alone : place.kind) {
        case Place::Kind::Field:
            return composed({"pvalue->", place.name, dot, count});
        case Place::Kind::Alternative:
            return composed({"pvalue->u.", place.name, dot, count});
        case Place::Kind::Element:
            return composed({"pvalue->elem[xx1]", dot, count});
        case Place::Kind::Alone:
            break;
    }
    return count.empty() ? composed({"*pvalue"}) : composed({"pvalue->", count});
}

int recordConstraint(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* value, const Place& place) {
    const std::int64_t size = measure(type, value);
    rtErrAddStrParm(&ctxt->errInfo, constraintText(type, place).data());
    rtErrAddIntParm(&ctxt->errInfo, size > INT_MAX ? INT_MAX : static_cast<int>(size));
    return asn1rt::record(ctxt, RTS_CONSTRAINT);
}

}  // namespace asn1data
