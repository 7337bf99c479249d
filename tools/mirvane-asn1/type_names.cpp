#include "type_names.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <span>

#include "asn1data/builtin_types.h"
#include "nearest_names.h"

namespace tools {
namespace {

std::span<const asn1data::NamedType> allTypes() {
    return {asn1data::kAllTypes, asn1data::kAllTypesCount};
}

std::string nearestTypes(std::string_view name) {
    std::vector<std::string_view> names;
    for (const asn1data::NamedType& type : allTypes())
        names.push_back(type.name);
    return hint(name, names);
}

}  // namespace

const asn1data::TypeDescriptor* findType(std::string_view name) {
    const auto types = allTypes();
    const auto found = std::ranges::lower_bound(
        types, name, {}, [](const asn1data::NamedType& type) { return std::string_view(type.name); });
    return found != types.end() && found->name == name ? found->type : nullptr;
}

const asn1data::TypeDescriptor& requireType(const std::string& name) {
    if (name == asn1data::builtin::OpenType.name) return asn1data::builtin::OpenType;
    std::string written = name;
    std::ranges::replace(written, '-', '_');
    if (const asn1data::TypeDescriptor* type = findType(written)) return *type;
    throw CLI::ValidationError(fmt::format("there is no type {}{}", name, nearestTypes(written)));
}

}  // namespace tools
