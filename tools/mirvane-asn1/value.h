// What a message holds, as a tree that can be shown: names and values, free of records and encodings.
//
// A tree points into the record and the octets that it was made from, and must not outlive them.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_VALUE_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_VALUE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "characters.h"

namespace tools {

using OctetSpan = std::span<const unsigned char>;

struct Value;
struct Member;

struct NullValue {};

struct BooleanValue {
    unsigned char octet;  // 00 is false, all others are true
};

// INTEGER and ENUMERATED of up to 32 bits. A type with named numbers shows the name even where it has none.
struct NumberValue {
    std::int64_t number;
    bool hasNames;
    std::string_view name;
};

// INTEGER of any size: a sign, and the magnitude in hexadecimal, two digits an octet and none in front that
// is 00 but for zero itself.
struct BigNumberValue {
    bool negative;
    std::string magnitude;
    bool hasNames;
    std::string_view name;
};

struct IdentifierValue {
    std::string dotted;
    std::string_view name;  // empty if it is unknown
};

struct TextValue {
    Characters characters;
};

struct TimeValue {
    std::string_view text;
    bool generalized;  // the year has four digits
};

struct NameValue {
    std::optional<std::string> text;  // as UTF-8; nothing if that would not tell all
    std::unique_ptr<Value> parts;
};

struct OctetsValue {
    OctetSpan octets;
    bool mayBeText = false;               // by no rule, but somebody looking at it would want to see the text
    std::unique_ptr<Value> content = {};  // the SEQUENCE that they are, as signatures often are
};

struct BitsValue {
    std::uint32_t count;
    OctetSpan octets;
    bool hasNames;
    std::vector<std::string> names;       // of the bits that are set
    std::unique_ptr<Value> content = {};  // as above
};

struct RecordValue {
    std::vector<Member> members;  // those that are present
};

struct ListValue {
    std::vector<Value> elements;
};

struct ChoiceValue {
    std::string_view alternative;
    std::unique_ptr<Value> value;
};

// An element whose type is not known, with its tag as ASN.1 writes it: a list of such elements, or a
// primitive.
struct ElementValue {
    std::string tag;
    std::unique_ptr<Value> value;
};

// An open type, or what an OCTET STRING holds encoded.
struct OpenValue {
    OctetSpan octets;
    bool inOctetString;
    std::string_view type;         // empty if it is not known
    std::unique_ptr<Value> value;  // a value of that type; else a list of elements, or null if they are none
    std::size_t trailing;          // octets behind the value
};

struct Value {
    std::string_view type;  // the name of its ASN.1 type, where that matters to the layout
    std::variant<NullValue, BooleanValue, NumberValue, BigNumberValue, IdentifierValue, TextValue, TimeValue,
                 NameValue, OctetsValue, BitsValue, RecordValue, ListValue, ChoiceValue, ElementValue,
                 OpenValue>
        content;
};

struct Member {
    std::string_view name;
    Value value;
    bool isDefault = false;
};

template <typename T>
Value makeValue(T content, std::string_view type = {}) {
    return Value{type, std::move(content)};
}

inline std::unique_ptr<Value> onHeap(Value value) {
    return std::make_unique<Value>(std::move(value));
}

}  // namespace tools

#endif
