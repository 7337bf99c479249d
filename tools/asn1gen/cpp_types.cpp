#include "asn1gen/cpp_types.h"

#include <cstdio>

namespace asn1gen {
namespace {

constexpr std::uint32_t kUtcTime = 23;
constexpr std::uint32_t kGeneralizedTime = 24;

}  // namespace

std::string valueType(const Type& type) {
    return type.scope == Type::Scope::Named ? "ASN1T_" + type.name : std::string(facts(type.kind).cppType);
}

std::string underlyingType(const Type& type) {
    const Type& own = base(type);
    return hasStructure(own.kind) ? "ASN1T_" + own.name : std::string(facts(own.kind).cppType);
}

std::string memberDeclaration(const Type& type, const std::string& name) {
    const std::string declaration = valueType(type) + " " + name;
    switch (facts(base(type).kind).holding) {
        case Holding::Number:
            return declaration + " = 0;\n";
        case Holding::Text:
            return declaration + " = nullptr;\n";
        case Holding::Plain:
            return declaration + "{};\n";
        case Holding::Object:
            return declaration + ";\n";
        case Holding::Nothing:
            break;
    }
    return {};
}

std::string descriptor(const Type& alias) {
    const Type& type = base(alias);
    if (type.scope == Type::Scope::Builtin) return "builtin::" + type.name;
    return (type.scope == Type::Scope::Local ? "k" : "types::") + type.name;
}

std::string controlTemplateName(const Type& type) {
    switch (type.kind) {
        case Kind::Null:
            return "NullControl";
        case Kind::List:
            return "ListControl";
        case Kind::BitString:
        case Kind::InlineBitString:
            return "BitStringControl";
        case Kind::CharString:
            if (type.tag == kUtcTime) return "UtcTimeControl";
            if (type.tag == kGeneralizedTime) return "GeneralizedTimeControl";
            return "Control";
        default:
            return "Control";
    }
}

std::string controlTemplate(const Type& type) {
    const std::string record = type.kind == Kind::Null ? "" : valueType(type) + ", ";
    return controlTemplateName(type) + "<" + record + descriptor(type) + ">";
}

std::string controlClass(const Type& type) {
    return type.scope == Type::Scope::Named ? "ASN1C_" + type.name : controlTemplate(type);
}

std::string functionName(const Type& type) {
    return base(type).kind == Kind::Null ? type.name + "_" : type.name;
}

std::string hexTag(std::uint32_t tag) {
    char text[16];
    static_cast<void>(std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(tag)));
    return text;
}

std::string headerName(const SourceFile& file) {
    return file.stem() + ".h";
}

}  // namespace asn1gen
