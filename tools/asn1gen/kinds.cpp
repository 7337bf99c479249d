#include "asn1gen/kinds.h"

#include <array>

namespace asn1gen {
namespace {

constexpr std::uint32_t kSequence = kConstructed | 16;

// In the order of Kind.
constexpr std::array<KindFacts, 23> kFacts = {{
    {"Boolean", "unsigned char", Holding::Number, 1, false, false},
    {"Integer", "std::int32_t", Holding::Number, 2, false, false},
    {"Unsigned", "std::uint32_t", Holding::Number, 2, false, false},
    {"Uint16", "std::uint16_t", Holding::Number, 2, false, false},
    {"BigInteger", "const char*", Holding::Text, 2, true, false},
    {"Enumerated", "std::uint32_t", Holding::Number, 10, false, false},
    {"Null", "", Holding::Nothing, 5, false, false},
    {"ObjectIdentifier", "ASN1TObjId", Holding::Object, 6, false, false},
    {"OctetString", "ASN1TDynOctStr", Holding::Plain, 4, true, false},
    {"InlineOctetString", "", Holding::Object, 4, false, false},
    {"BitString", "ASN1TDynBitStr", Holding::Plain, 3, true, false},
    {"InlineBitString", "", Holding::Object, 3, false, false},
    {"CharString", "const char*", Holding::Text, kNoTag, true, false},
    {"BmpString", "Asn116BitCharString", Holding::Plain, 30, true, false},
    {"UniversalString", "Asn132BitCharString", Holding::Plain, 28, true, false},
    {"OpenType", "ASN1TOpenType", Holding::Plain, kNoTag, true, false},
    {"TableOpenType", "Asn1TObject", Holding::Object, kNoTag, true, false},
    {"RawContent", "ASN1TDynOctStr", Holding::Plain, kNoTag, true, false},
    {"Sequence", "", Holding::Object, kSequence, true, true},
    {"Set", "", Holding::Object, kConstructed | 17, true, true},
    {"Choice", "", Holding::Object, kNoTag, true, true},
    {"List", "", Holding::Object, kSequence, true, true},
    {"Array", "", Holding::Object, kSequence, true, true},
}};

constexpr std::array<BuiltinType, 11> kStrings = {{
    {"UTF8String", "Utf8String", Kind::CharString, 12},
    {"NumericString", "NumericString", Kind::CharString, 18},
    {"PrintableString", "PrintableString", Kind::CharString, 19},
    {"TeletexString", "TeletexString", Kind::CharString, 20},
    {"T61String", "TeletexString", Kind::CharString, 20},
    {"IA5String", "Ia5String", Kind::CharString, 22},
    {"UTCTime", "UtcTime", Kind::CharString, 23},
    {"GeneralizedTime", "GeneralizedTime", Kind::CharString, 24},
    {"VisibleString", "VisibleString", Kind::CharString, 26},
    {"UniversalString", "UniversalString", Kind::UniversalString, 28},
    {"BMPString", "BmpString", Kind::BmpString, 30},
}};

constexpr std::array<BuiltinType, 11> kBuiltins = {{
    {"BOOLEAN", "Boolean", Kind::Boolean, 1},
    {"INTEGER", "Integer", Kind::Integer, 2},
    {"INTEGER", "Unsigned", Kind::Unsigned, 2},
    {"INTEGER", "Uint16", Kind::Uint16, 2},
    {"INTEGER", "BigInteger", Kind::BigInteger, 2},
    {"NULL", "Null", Kind::Null, 5},
    {"OBJECT IDENTIFIER", "ObjectIdentifier", Kind::ObjectIdentifier, 6},
    {"OCTET STRING", "OctetString", Kind::OctetString, 4},
    {"BIT STRING", "BitString", Kind::BitString, 3},
    {"ANY", "OpenType", Kind::OpenType, kNoTag},
    {"ANY", "TableOpenType", Kind::TableOpenType, kNoTag},
}};

}  // namespace

const KindFacts& facts(Kind kind) {
    return kFacts[static_cast<std::size_t>(kind)];
}

const BuiltinType* findString(std::string_view notation) {
    for (const BuiltinType& type : kStrings) {
        if (type.notation == notation) return &type;
    }
    return nullptr;
}

const BuiltinType* findBuiltin(Kind kind) {
    for (const BuiltinType& type : kBuiltins) {
        if (type.kind == kind) return &type;
    }
    return nullptr;
}

}  // namespace asn1gen
