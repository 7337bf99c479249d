#include "asn1gen/cpp_types.h"
#include "asn1gen/emit.h"
#include "asn1gen/names.h"
#include "asn1gen/text_template.h"

namespace asn1gen {
namespace {

constexpr std::string_view kRecord = R"(
struct ASN1T_@name@ : @base@ {
    @members@
    @gap@
    ASN1T_@name@() = default;
    explicit ASN1T_@name@(ASN1C_@name@& control);
    ASN1T_@name@(const ASN1T_@name@&) = @copying@;
    ASN1T_@name@& operator=(const ASN1T_@name@&) = @copying@;
    ~ASN1T_@name@() {
        if (mpContext) release(types::@name@, this);
    }
};
)";

constexpr std::string_view kInlineString = R"(
struct ASN1T_@name@ {
    std::uint32_t @count@ = 0;
    unsigned char data[@capacity@]{};
};
)";

constexpr std::string_view kPresence = R"(
struct {
    @bits@
} m{};
)";

constexpr std::string_view kChoice = R"(
std::uint32_t t = 0;
union {
    @alternatives@
} u{};
)";

constexpr std::string_view kConstants = R"(
enum : @type@ {
    @constants@
};
)";

constexpr std::string_view kConstructor = R"(
ASN1T_@name@::ASN1T_@name@(ASN1C_@name@& control) { control.getCopy(this); }

)";

std::string presence(const Type& type) {
    std::string bits;
    for (const Field& field : type.fields) {
        if (field.presence == Presence::Optional) bits += "unsigned " + field.name + "Present : 1;\n";
    }
    return bits.empty() ? bits : fill(kPresence, {{"bits", bits}});
}

std::string fieldMembers(const Type& type) {
    std::string members = presence(type);
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
        const Field& field = type.fields[i];
        members += memberDeclaration(*field.type, field.name);
        const bool resolved =
            type.table && type.table->form == Table::Form::OctetString && type.table->valueField == i;
        if (resolved) members += "Asn1TObject " + field.name + "Object;\n";
    }
    if (type.extensible) members += "ASN1TSeqOfList extElem1{};\n";
    return members;
}

std::string choiceMembers(const Type& type) {
    std::string alternatives;
    for (const Field& field : type.fields) {
        const Holding holding = facts(base(*field.type).kind).holding;
        if (holding == Holding::Nothing) continue;
        const std::string star = holding == Holding::Text ? " " : "* ";
        alternatives += valueType(*field.type) + star + field.name + ";\n";
    }
    if (alternatives.empty()) alternatives = "void* nothing;  // no alternative has a value\n";
    return fill(kChoice, {{"alternatives", alternatives}});
}

std::string arrayMembers(const Type& type) {
    const std::string element = valueType(*type.element);
    if (type.capacity == 0) return "std::uint32_t n = 0;\n" + element + "* elem = nullptr;\n";
    return "std::uint32_t n = 0;\n" + element + " elem[" + std::to_string(type.capacity) + "]{};\n";
}

std::string members(const Type& type) {
    switch (type.kind) {
        case Kind::Choice:
            return choiceMembers(type);
        case Kind::Array:
            return arrayMembers(type);
        case Kind::List:
            return {};
        default:
            return fieldMembers(type);
    }
}

std::string enumeration(const std::string& type, const std::string& constants) {
    return constants.empty() ? constants
                             : fill(kConstants, {{"type", type}, {"constants", constants}}) + "\n";
}

std::string constants(const Type& type) {
    std::string lines;
    for (const NamedConstant& constant : type.names) {
        lines += constant.name + " = " + std::to_string(constant.number) + ",\n";
    }
    return enumeration(type.kind == Kind::Integer ? "std::int32_t" : "std::uint32_t", lines);
}

std::string alternativeNumbers(const Type& type) {
    if (type.kind != Kind::Choice) return {};
    std::string lines;
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
        lines += "T_" + componentTypeName(type.name, type.fields[i].notation) + " = " +
                 std::to_string(i + 1) + ",\n";
    }
    return enumeration("std::uint32_t", lines);
}

std::string inlineString(const Type& type) {
    return fill(kInlineString, {{"name", type.name},
                                {"count", type.kind == Kind::InlineBitString ? "numbits" : "numocts"},
                                {"capacity", std::to_string(type.capacity)}});
}

}  // namespace

std::string record(const Type& type) {
    if (type.aliasOf) return {};
    if (!hasStructure(type.kind)) return constants(type);
    if (!facts(type.kind).isPdu) return constants(type) + inlineString(type) + "\n";
    const std::string body = members(type);
    return alternativeNumbers(type) +
           fill(kRecord, {{"name", type.name},
                          {"base", type.kind == Kind::List ? "ASN1TPDUSeqOfList" : "ASN1TPDU"},
                          {"members", body},
                          {"gap", body.empty() ? "" : "\n"},
                          {"copying", type.isValue ? "default" : "delete"}}) +
           "\n";
}

std::string recordConstructor(const Type& type) {
    return !type.aliasOf && facts(type.kind).isPdu ? fill(kConstructor, {{"name", type.name}}) : "";
}

}  // namespace asn1gen
