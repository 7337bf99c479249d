#include <map>

#include "asn1gen/cpp_types.h"
#include "asn1gen/emit.h"
#include "asn1gen/text_template.h"

namespace asn1gen {
namespace {

constexpr std::string_view kTypes = R"(
namespace types {
@descriptors@
}  // namespace types

@records@
@classes@
)";

constexpr std::string_view kSets = R"(
namespace sets {
@sets@
}  // namespace sets
)";

// Structures by name alone; what is no structure is another name for something, which may be said again
// elsewhere.
std::string forwardRecord(const Type& type) {
    if (base(type).kind == Kind::Null) return {};
    if (!type.aliasOf && hasStructure(type.kind)) return "struct ASN1T_" + type.name + ";\n";
    const std::string declared = type.aliasOf ? forwardRecord(base(type)) : "";
    return (hasStructure(base(type).kind) ? declared : "") + "using ASN1T_" + type.name + " = " +
           underlyingType(type) + ";\n";
}

}  // namespace

std::string forwardTypes(const std::set<const Type*>& types) {
    std::map<std::string, const Type*> sorted;
    for (const Type* type : types)
        sorted.emplace(type->name, type);
    std::string descriptors, records, classes;
    for (const auto& [name, type] : sorted) {
        if (!type->aliasOf) descriptors += "extern const TypeDescriptor " + name + ";\n";
        records += forwardRecord(*type);
        classes += "class ASN1C_" + name + ";\n";
    }
    if (sorted.empty()) return {};
    return fill(kTypes, {{"descriptors", descriptors}, {"records", records}, {"classes", classes}});
}

std::string forwardSets(const std::set<const ObjectSet*>& sets) {
    std::set<std::string> sorted;
    for (const ObjectSet* set : sets)
        sorted.insert("extern const ObjectSet " + set->name + ";\n");
    std::string lines;
    for (const std::string& line : sorted)
        lines += line;
    return lines.empty() ? lines : fill(kSets, {{"sets", lines}});
}

}  // namespace asn1gen
