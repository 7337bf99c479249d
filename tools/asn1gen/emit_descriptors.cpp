#include <algorithm>

#include "asn1gen/cpp_types.h"
#include "asn1gen/emit.h"
#include "asn1gen/text_template.h"

namespace asn1gen {
namespace {

constexpr std::string_view kField = R"(
{.name = "@name@",
 .type = &@type@,
 @settings@
},
)";

constexpr std::string_view kFields = R"(
constexpr FieldDescriptor k@name@Fields[] = {
    @fields@
};
)";

constexpr std::string_view kNames = R"(
constexpr NamedNumber k@name@Names[] = {
    @names@
};
)";

constexpr std::string_view kTable = R"(
constexpr TableConstraint k@name@Table = {
    @settings@
};
)";

constexpr std::string_view kTables = R"(
namespace {

@tables@

}  // namespace

)";

constexpr std::string_view kType = R"(
@linkage@ TypeDescriptor @descriptor@ = {
    @settings@
};
)";

// Lines `.name = value,`.
class Settings {
  public:
    void add(std::string_view name, const std::string& value) {
        mLines += "." + std::string(name) + " = " + value + ",\n";
    }
    void addIf(bool condition, std::string_view name, const std::string& value) {
        if (condition) add(name, value);
    }
    const std::string& lines() const { return mLines; }

  private:
    std::string mLines;
};

std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

std::string offsetOf(const Type& type, const std::string& member) {
    return "offsetof(ASN1T_" + type.name + ", " + member + ")";
}

std::string enumerator(Presence presence) {
    switch (presence) {
        case Presence::Required:
            return "Presence::Required";
        case Presence::Optional:
            return "Presence::Optional";
        case Presence::DefaultNumber:
            return "Presence::DefaultNumber";
        case Presence::DefaultInteger:
            break;
    }
    return "Presence::DefaultInteger";
}

std::string fieldTable(const Type& type, const Field& field) {
    const bool inRecord =
        type.kind != Kind::Choice && facts(base(*field.type).kind).holding != Holding::Nothing;
    Settings settings;
    settings.addIf(inRecord, "offset", offsetOf(type, field.name));
    if (field.tagging != Tagging::None) {
        settings.add("tag", hexTag(field.tag));
        settings.add("tagging",
                     field.tagging == Tagging::Explicit ? "Tagging::Explicit" : "Tagging::Implicit");
    }
    settings.addIf(field.presence != Presence::Required, "presence", enumerator(field.presence));
    settings.addIf(field.presence == Presence::Optional, "bit", std::to_string(field.bit));
    settings.addIf(field.presence == Presence::DefaultNumber, "defaultNumber",
                   std::to_string(field.defaultNumber));
    settings.addIf(field.presence == Presence::DefaultInteger, "defaultText",
                   quoted(std::to_string(field.defaultNumber)));
    return fill(kField,
                {{"name", field.name}, {"type", descriptor(*field.type)}, {"settings", settings.lines()}});
}

std::string fieldTables(const Type& type) {
    std::string fields;
    for (const Field& field : type.fields)
        fields += fieldTable(type, field);
    return fields.empty() ? fields : fill(kFields, {{"name", type.name}, {"fields", fields}});
}

std::string nameTable(const Type& type) {
    std::string names;
    for (const NamedConstant& constant : type.names) {
        names += "{" + quoted(constant.notation) + ", static_cast<std::uint32_t>(" +
                 std::to_string(constant.number) + ")},\n";
    }
    return names.empty() ? names : fill(kNames, {{"name", type.name}, {"names", names}});
}

std::string constraintTable(const Type& type) {
    if (!type.table) return {};
    const Table& table = *type.table;
    const Field& value = type.fields[table.valueField];
    const bool octets = table.form == Table::Form::OctetString;
    const std::string form = octets ? "OctetString" : table.form == Table::Form::List ? "List" : "OpenType";
    Settings settings;
    settings.add("objects", "&sets::" + table.objects->name);
    settings.add("form", "TableConstraint::Form::" + form);
    settings.add("typeOffset", offsetOf(type, type.fields[table.typeField].name));
    settings.add("objectOffset", offsetOf(type, octets ? value.name + "Object" : value.name));
    settings.addIf(octets, "octetsOffset", offsetOf(type, value.name));
    if (value.presence == Presence::Optional) {
        settings.add("bit", std::to_string(value.bit));
        settings.add("optional", "true");
    }
    return fill(kTable, {{"name", type.name}, {"settings", settings.lines()}});
}

void addOffsets(const Type& type, Settings& settings) {
    const bool bits = std::any_of(type.fields.begin(), type.fields.end(),
                                  [](const Field& field) { return field.presence == Presence::Optional; });
    switch (type.kind) {
        case Kind::Choice:
            settings.add("headOffset", offsetOf(type, "t"));
            settings.add("bodyOffset", offsetOf(type, "u"));
            break;
        case Kind::Array:
            settings.add("headOffset", offsetOf(type, "n"));
            settings.add("bodyOffset", offsetOf(type, "elem"));
            break;
        case Kind::List:
            settings.add("headOffset", "0");
            break;
        default:
            settings.addIf(bits, "headOffset", offsetOf(type, "m"));
            settings.addIf(type.extensible && type.kind == Kind::Sequence, "bodyOffset",
                           offsetOf(type, "extElem1"));
    }
}

void addContents(const Type& type, Settings& settings) {
    if (!type.fields.empty()) {
        const auto required = std::count_if(type.fields.begin(), type.fields.end(), [](const Field& field) {
            return field.presence == Presence::Required;
        });
        settings.add("fields", "k" + type.name + "Fields");
        settings.add("fieldCount", std::to_string(type.fields.size()));
        settings.addIf(type.kind != Kind::Choice, "requiredCount", std::to_string(required));
    }
    if (type.element) settings.add("element", "&" + descriptor(*type.element));
    if (type.table) settings.add("table", "&k" + type.name + "Table");
    if (!type.names.empty()) {
        settings.add("names", "k" + type.name + "Names");
        settings.add("nameCount", std::to_string(type.names.size()));
    }
}

bool hasDefaults(const Type& type) {
    return std::any_of(type.fields.begin(), type.fields.end(), [](const Field& field) {
        return field.presence == Presence::DefaultNumber || field.presence == Presence::DefaultInteger;
    });
}

std::string typeTable(const Type& type) {
    const std::string value = type.kind == Kind::Null ? "char" : valueType(type);
    Settings settings;
    settings.add("name", quoted(type.label));
    settings.add("kind", "Kind::" + std::string(facts(type.kind).name));
    settings.addIf(type.setOf, "setOf", "true");
    settings.addIf(type.takesEnd, "cmsEnd", "true");
    settings.addIf(type.hasBounds, "hasBounds", "true");
    settings.addIf(type.endsOnly, "endsOnly", "true");
    settings.addIf(hasDefaults(type), "hasDefaults", "true");
    settings.addIf(type.tag != kNoTag, "tag", hexTag(type.tag));
    settings.addIf(type.outerTag != kNoTag, "outerTag", hexTag(type.outerTag));
    settings.add("size", "sizeof(" + value + ")");
    settings.add("alignment", "alignof(" + value + ")");
    settings.addIf(type.lowerBound != 0, "lowerBound", std::to_string(type.lowerBound));
    settings.addIf(type.upperBound != kNoBound, "upperBound", std::to_string(type.upperBound));
    settings.addIf(type.capacity != 0, "capacity", std::to_string(type.capacity));
    addOffsets(type, settings);
    addContents(type, settings);
    const bool local = type.scope == Type::Scope::Local;
    return fill(kType, {{"linkage", local ? "constexpr" : "constinit const"},
                        {"descriptor", descriptor(type)},
                        {"settings", settings.lines()}});
}

}  // namespace

std::string descriptorDefinition(const Type& type) {
    if (type.aliasOf) return {};
    const std::string tables = nameTable(type) + constraintTable(type) + fieldTables(type);
    if (type.scope == Type::Scope::Local) return tables + typeTable(type);
    return (tables.empty() ? "" : fill(kTables, {{"tables", tables}})) + typeTable(type) + "\n";
}

}  // namespace asn1gen
