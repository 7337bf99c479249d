#include "asn1gen/emit.h"
#include "asn1gen/text_template.h"

namespace asn1gen {
namespace {

constexpr std::string_view kDefinition = R"(
constinit const ASN1OBJID @name@ = {@count@, {@arcs@}};
)";

}  // namespace

std::string identifierDeclaration(const Identifier& identifier) {
    return "extern const ASN1OBJID " + identifier.name + ";\n";
}

std::string identifierDefinition(const Identifier& identifier) {
    std::string arcs;
    for (std::uint32_t arc : identifier.arcs)
        arcs += (arcs.empty() ? "" : ", ") + std::to_string(arc);
    return fill(
        kDefinition,
        {{"name", identifier.name}, {"count", std::to_string(identifier.arcs.size())}, {"arcs", arcs}});
}

}  // namespace asn1gen
