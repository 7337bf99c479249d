#include "json_writer.h"

#include "number_text.h"
#include "overloaded.h"
#include "time_text.h"

namespace tools {
namespace {

using nlohmann::ordered_json;

ordered_json nameOrNull(std::string_view name) {
    return name.empty() ? ordered_json(nullptr) : ordered_json(name);
}

ordered_json named(ordered_json number, bool hasNames, std::string_view name) {
    if (!hasNames) return number;
    return {{"value", std::move(number)}, {"name", nameOrNull(name)}};
}

ordered_json textJson(const Characters& characters) {
    if (auto text = plainText(characters)) return *text;
    const std::string escaped = quoted(characters);
    return {{"escaped", escaped.substr(1, escaped.size() - 2)}};
}

ordered_json timeJson(const TimeValue& value) {
    const auto point = pointInTime(value);
    return {{"time", point ? ordered_json(point->date + 'T' + point->time + 'Z') : ordered_json(nullptr)},
            {"text", textJson(fromAscii(value.text))}};
}

ordered_json nameJson(const NameValue& value) {
    ordered_json result = {{"text", value.text ? ordered_json(*value.text) : ordered_json(nullptr)}};
    result.update(toJson(*value.parts));
    return result;
}

ordered_json bitsJson(const BitsValue& value) {
    ordered_json result = {{"bits", value.count}};
    if (value.hasNames) result["names"] = value.names;
    result["hex"] = hex(value.octets);
    return result;
}

ordered_json listJson(const ListValue& value) {
    ordered_json result = ordered_json::array();
    for (const Value& element : value.elements)
        result.push_back(toJson(element));
    return result;
}

ordered_json recordJson(const RecordValue& value) {
    ordered_json result = ordered_json::object();
    for (const Member& member : value.members)
        result[std::string(member.name)] = toJson(member.value);
    return result;
}

ordered_json openJson(const OpenValue& value) {
    const ordered_json inner = value.value ? toJson(*value.value) : ordered_json(nullptr);
    ordered_json result;
    if (value.type.empty()) {
        result = {{"hex", hex(value.octets)}, {"elements", inner}};
    } else {
        result = {{"type", value.type}, {"value", inner}};
    }
    if (value.trailing > 0) result["trailing"] = value.trailing;
    return result;
}

}  // namespace

ordered_json toJson(const Value& value) {
    const Overloaded visitor{
        [](const NullValue&) { return ordered_json(nullptr); },
        [](const BooleanValue& content) { return ordered_json(content.octet != 0); },
        [](const NumberValue& content) { return named(content.number, content.hasNames, content.name); },
        [](const BigNumberValue& content) {
            return named(hexadecimal(content), content.hasNames, content.name);
        },
        [](const IdentifierValue& content) {
            return ordered_json{{"oid", content.dotted}, {"name", nameOrNull(content.name)}};
        },
        [](const TextValue& content) { return textJson(content.characters); },
        [](const TimeValue& content) { return timeJson(content); },
        [](const OctetsValue& content) {
            return ordered_json{{"hex", hex(content.octets)}};
        },
        [](const NameValue& content) { return nameJson(content); },
        [](const BitsValue& content) { return bitsJson(content); },
        [](const RecordValue& content) { return recordJson(content); },
        [](const ListValue& content) { return listJson(content); },
        [](const ChoiceValue& content) {
            return ordered_json{{std::string(content.alternative), toJson(*content.value)}};
        },
        [](const ElementValue& content) {
            return ordered_json{{"tag", content.tag}, {"value", toJson(*content.value)}};
        },
        [](const OpenValue& content) { return openJson(content); },
    };
    return std::visit(visitor, value.content);
}

}  // namespace tools
