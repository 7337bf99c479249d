#include "asn1data/constraint.h"

#include <climits>
#include <cstring>

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

// What is measured of a value that is a structure.
const char* countName(Kind kind) {
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
            return nullptr;
    }
}

}  // namespace

bool meetsConstraint(const TypeDescriptor& type, const void* value) {
    if (!type.hasBounds) return true;
    const std::int64_t size = measure(type, value);
    if (size == kNothingToMeasure) return true;
    return size >= 0 && isWithinBounds(type, static_cast<std::uint64_t>(size));
}

std::string constraintText(const TypeDescriptor& type, const Place& place) {
    const char* count = countName(type.kind);
    // Lists and arrays are types of their own wherever they stand.
    if (type.kind == Kind::List || type.kind == Kind::Array) return std::string("pvalue->") + count;
    std::string path;
    switch (place.kind) {
        case Place::Kind::Alone:
            return count ? std::string("pvalue->") + count : "*pvalue";
        case Place::Kind::Field:
            path = std::string("pvalue->") + place.name;
            break;
        case Place::Kind::Alternative:
            path = std::string("pvalue->u.") + place.name;
            break;
        case Place::Kind::Element:
            path = "pvalue->elem[xx1]";
            break;
    }
    return count ? path + "." + count : path;
}

int recordConstraint(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* value, const Place& place) {
    const std::int64_t size = measure(type, value);
    rtErrAddStrParm(&ctxt->errInfo, constraintText(type, place).c_str());
    rtErrAddIntParm(&ctxt->errInfo, size > INT_MAX ? INT_MAX : static_cast<int>(size));
    return asn1rt::record(ctxt, RTS_CONSTRAINT);
}

}  // namespace asn1data
