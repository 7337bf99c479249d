#include "asn1gen/cpp_types.h"
#include "asn1gen/emit.h"
#include "asn1gen/text_template.h"

namespace asn1gen {
namespace {

constexpr std::string_view kDeclarations = R"(
int asn1E_@function@(ASN1CTXT* ctxt, const @value@* value, ASN1TagType tagging);
int asn1D_@function@(ASN1CTXT* ctxt, @value@* value, ASN1TagType tagging, int length);
void asn1Copy_@function@(ASN1CTXT* ctxt, const @value@* source, @value@* target);
@more@
)";

constexpr std::string_view kFreeDeclaration = R"(
void asn1Free_@function@(ASN1CTXT* ctxt, @value@* value);
)";

constexpr std::string_view kTableDeclarations = R"(
int asn1ETC_@function@(ASN1CTXT* ctxt, @value@* value);
int asn1DTC_@function@(ASN1CTXT* ctxt, @value@* value);
)";

constexpr std::string_view kDefinitions = R"(
int asn1E_@function@(ASN1CTXT* ctxt, const @value@* value, ASN1TagType tagging) {
    return encode(ctxt, types::@name@, value, tagging);
}
int asn1D_@function@(ASN1CTXT* ctxt, @value@* value, ASN1TagType tagging, int length) {
    return decode(ctxt, types::@name@, value, tagging, length);
}
void asn1Copy_@function@(ASN1CTXT* ctxt, const @value@* source, @value@* target) {
    copy(ctxt, types::@name@, source, target);
}
@more@
)";

constexpr std::string_view kFreeDefinition = R"(
void asn1Free_@function@(ASN1CTXT* ctxt, @value@* value) { freeValue(ctxt, types::@name@, value); }
)";

constexpr std::string_view kTableDefinitions = R"(
int asn1ETC_@function@(ASN1CTXT* ctxt, @value@* value) { return encodeTable(ctxt, types::@name@, value); }
int asn1DTC_@function@(ASN1CTXT* ctxt, @value@* value) { return decodeTable(ctxt, types::@name@, value); }
)";

constexpr std::string_view kAliasDefinitions = R"(
int asn1E_@function@(ASN1CTXT* ctxt, const @value@* value, ASN1TagType tagging) {
    const int result = asn1E_@base@(ctxt, value, tagging);
    return result < 0 ? asn1rt::record(ctxt, result) : result;
}
int asn1D_@function@(ASN1CTXT* ctxt, @value@* value, ASN1TagType tagging, int length) {
    const int result = asn1D_@base@(ctxt, value, tagging, length);
    return result < 0 ? asn1rt::record(ctxt, result) : result;
}
void asn1Copy_@function@(ASN1CTXT* ctxt, const @value@* source, @value@* target) {
    asn1Copy_@base@(ctxt, source, target);
}
@more@
)";

constexpr std::string_view kAliasFree = R"(
void asn1Free_@function@(ASN1CTXT* ctxt, @value@* value) { asn1Free_@base@(ctxt, value); }
)";

constexpr std::string_view kControl = R"(
class ASN1C_@name@ : public @base@ {
  public:
    using @constructors@::@constructors@;
};
)";

std::string functionValue(const Type& type) {
    return base(type).kind == Kind::Null ? "void" : "ASN1T_" + type.name;
}

bool hasTable(const Type& type) {
    return !type.aliasOf && type.table;
}

std::string aliasDefinitions(const Type& type) {
    const std::string function = functionName(type), value = functionValue(type);
    const std::string target = functionName(*type.aliasOf);
    std::string more;
    if (facts(base(type).kind).ownsMemory) {
        more = fill(kAliasFree, {{"function", function}, {"value", value}, {"base", target}});
    }
    return fill(kAliasDefinitions,
                {{"function", function}, {"value", value}, {"base", target}, {"more", more}});
}

}  // namespace

std::string functionDeclarations(const Type& type) {
    const std::string function = functionName(type), value = functionValue(type);
    std::string more;
    if (facts(base(type).kind).ownsMemory)
        more += fill(kFreeDeclaration, {{"function", function}, {"value", value}});
    if (hasTable(type)) more += fill(kTableDeclarations, {{"function", function}, {"value", value}});
    return fill(kDeclarations, {{"function", function}, {"value", value}, {"more", more}}) + "\n";
}

std::string functionDefinitions(const Type& type) {
    if (type.aliasOf) return aliasDefinitions(type);
    const std::string function = functionName(type), value = functionValue(type);
    std::string more;
    if (facts(type.kind).ownsMemory) {
        more += fill(kFreeDefinition, {{"function", function}, {"value", value}, {"name", type.name}});
    }
    if (hasTable(type)) {
        more += fill(kTableDefinitions, {{"function", function}, {"value", value}, {"name", type.name}});
    }
    return fill(kDefinitions,
                {{"function", function}, {"value", value}, {"name", type.name}, {"more", more}});
}

std::string controlClassDefinition(const Type& type) {
    const std::string base = type.aliasOf ? "ASN1C_" + type.aliasOf->name : controlTemplate(type);
    const std::string constructors = type.aliasOf ? base : controlTemplateName(type);
    return fill(kControl, {{"name", type.name}, {"base", base}, {"constructors", constructors}}) + "\n";
}

}  // namespace asn1gen
