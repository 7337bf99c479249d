#include "line_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "address_text.h"
#include "number_text.h"
#include "overloaded.h"
#include "time_text.h"

namespace tools {
namespace {

// Names of types that come from the place where a type stands say nothing that the place does not say.
bool isUnnamed(std::string_view type) {
    return type.starts_with('_');
}

std::string join(std::string_view front, std::string_view back) {
    if (front.empty() || back.empty()) return fmt::format("{}{}", front, back);
    return fmt::format("{} {}", front, back);
}

std::string number(std::string_view digits, std::string_view name) {
    return name.empty() ? std::string(digits) : fmt::format("{} ({})", name, digits);
}

std::string bigNumber(const BigNumberValue& value) {
    const auto digits = decimal(value);
    if (!digits) return hexadecimal(value);
    if (!value.name.empty() || value.magnitude.size() <= 2) return number(*digits, value.name);
    return fmt::format("{} ({})", *digits, hexadecimal(value));
}

std::string boolean(const BooleanValue& value) {
    if (value.octet == 0) return "FALSE";
    return value.octet == 0xFF ? "TRUE" : fmt::format("TRUE (octet {:02X})", value.octet);
}

std::string time(const TimeValue& value) {
    std::string text = quoted(fromAscii(value.text));
    const auto point = pointInTime(value);
    if (!point) return text;
    const std::string shown = fmt::format("{} {} UTC", point->date, point->time);
    return point->isAll ? shown : fmt::format("{} ({})", shown, text);
}

std::string count(std::uint64_t number, std::string_view what) {
    return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
}

bool isReadable(OctetSpan octets) {
    const auto isText = [](unsigned char c) { return (c >= 0x20 && c < 0x7F) || c == '\n' || c == '\r'; };
    return octets.size() >= 4 && std::ranges::all_of(octets, isText);
}

std::optional<std::string> octetsLine(const OctetsValue& value) {
    if (value.octets.size() > kOctetsOfLine || value.content) return std::nullopt;
    std::string result = join(count(value.octets.size(), "octet"), hex(value.octets));
    if (value.mayBeText && isReadable(value.octets)) {
        const std::string_view text(reinterpret_cast<const char*>(value.octets.data()), value.octets.size());
        result += ' ' + quoted(fromAscii(text));
    }
    return result;
}

// Of a string that several lines show.
std::string stringHead(const std::string& size, const std::unique_ptr<Value>& content) {
    return content ? join(size + " containing", headText(*content)) : size;
}

std::optional<std::string> bitsLine(const BitsValue& value) {
    if (value.hasNames) return value.names.empty() ? "none" : fmt::format("{}", fmt::join(value.names, ", "));
    if (value.octets.size() > kOctetsOfLine || value.content) return std::nullopt;
    return join(count(value.count, "bit"), hex(value.octets));
}

// Lines of all elements, if each has one.
std::optional<std::vector<std::string>> elementLines(const ListValue& list) {
    std::vector<std::string> lines;
    for (const Value& element : list.elements) {
        auto line = lineText(element);
        if (!line) return std::nullopt;
        lines.push_back(std::move(*line));
    }
    return lines;
}

std::optional<std::string> listLine(const ListValue& list, std::string_view type) {
    if (list.elements.empty()) return "{}";
    if (type != "RelativeDistinguishedName") return std::nullopt;
    const auto lines = elementLines(list);
    if (!lines) return std::nullopt;
    return fmt::format("{}", fmt::join(*lines, " + "));
}

// An identifier and what belongs to it, which may be absent.
std::optional<std::string> pairLine(const RecordValue& record, std::string_view separator) {
    if (record.members.empty() || record.members.size() > 2) return std::nullopt;
    auto identifier = lineText(record.members[0].value);
    if (!identifier || record.members.size() == 1) return identifier;
    const auto value = lineText(record.members[1].value);
    if (!value) return std::nullopt;
    return fmt::format("{}{}{}", *identifier, separator, *value);
}

// commonName (2.5.4.3) = "..."; without the prefix that the registry gives to all attributes of X.520.
std::optional<std::string> attributeLine(const RecordValue& record) {
    static constexpr std::string_view kPrefix = "id_at_";
    auto line = pairLine(record, " = ");
    if (line && line->starts_with(kPrefix)) line->erase(0, kPrefix.size());
    return line;
}

std::optional<std::string> recordLine(const RecordValue& record, std::string_view type) {
    if (type == "AlgorithmIdentifier") return pairLine(record, ", parameters ");
    if (type == "AttributeTypeAndValue") return attributeLine(record);
    const bool empty =
        std::ranges::all_of(record.members, [](const Member& member) { return member.isDefault; });
    return empty ? std::optional<std::string>("{}") : std::nullopt;
}

// What an open value says before its content: that octets hold it, and its type.
std::string openFront(const OpenValue& value) {
    const bool isPlain = value.value && (std::holds_alternative<NullValue>(value.value->content) ||
                                         std::holds_alternative<NameValue>(value.value->content));
    const std::string_view type = isUnnamed(value.type) || isPlain ? std::string_view() : value.type;
    const bool isGuess = value.inOctetString && value.type.empty() && value.value;
    std::string front = isGuess ? "containing" : std::string(type);
    if (value.trailing > 0)
        front = join(front, fmt::format("({} behind it)", count(value.trailing, "octet")));
    return front;
}

std::optional<std::string> openLine(const OpenValue& value) {
    if (!value.value) return octetsLine(OctetsValue{value.octets, value.inOctetString});
    auto line = lineText(openContent(value));
    if (line) line = join(openFront(value), *line);
    return line;
}

std::optional<std::string> choiceLine(const ChoiceValue& value) {
    if (std::holds_alternative<NullValue>(value.value->content)) return std::string(value.alternative);
    auto line = lineText(*value.value);
    if (line) line = join(value.alternative, *line);
    const auto* octets = std::get_if<OctetsValue>(&value.value->content);
    if (line && octets && value.alternative == "iPAddress") {
        if (const auto address = addressText(octets->octets)) *line += fmt::format(" ({})", *address);
    }
    return line;
}

std::optional<std::string> elementLine(const ElementValue& value) {
    if (std::holds_alternative<NullValue>(value.value->content)) return value.tag;
    auto line = lineText(*value.value);
    if (line) line = join(value.tag, *line);
    return line;
}

using Line = std::optional<std::string>;

}  // namespace

const Value& openContent(const OpenValue& value) {
    const auto* list = std::get_if<ListValue>(&value.value->content);
    return value.type.empty() && list && list->elements.size() == 1 ? list->elements.front() : *value.value;
}

Line lineText(const Value& value) {
    const Overloaded visitor{
        [](const NullValue&) -> Line { return "NULL"; },
        [](const BooleanValue& content) -> Line { return boolean(content); },
        [](const NumberValue& content) -> Line {
            return number(std::to_string(content.number), content.name);
        },
        [](const BigNumberValue& content) -> Line {
            if (content.magnitude.size() > 2 * kOctetsOfLine) return std::nullopt;
            return bigNumber(content);
        },
        [](const IdentifierValue& content) -> Line { return number(content.dotted, content.name); },
        [](const TextValue& content) -> Line { return quoted(content.characters); },
        [](const TimeValue& content) -> Line { return time(content); },
        [](const NameValue& content) -> Line {
            return content.text ? quoted(fromUtf8(*content.text)) : lineText(*content.parts);
        },
        [](const OctetsValue& content) { return octetsLine(content); },
        [](const BitsValue& content) { return bitsLine(content); },
        [&value](const RecordValue& content) { return recordLine(content, value.type); },
        [&value](const ListValue& content) { return listLine(content, value.type); },
        [](const ChoiceValue& content) { return choiceLine(content); },
        [](const ElementValue& content) { return elementLine(content); },
        [](const OpenValue& content) { return openLine(content); },
    };
    return std::visit(visitor, value.content);
}

std::string headText(const Value& value) {
    const Overloaded visitor{
        [](const OctetsValue& content) {
            return stringHead(count(content.octets.size(), "octet"), content.content);
        },
        [](const BitsValue& content) { return stringHead(count(content.count, "bit"), content.content); },
        [](const NameValue& content) { return headText(*content.parts); },
        [](const BigNumberValue& content) {
            return fmt::format("{}number of {}", content.negative ? "negative " : "",
                               count(content.magnitude.size() / 2, "octet"));
        },
        [](const ChoiceValue& content) { return join(content.alternative, headText(*content.value)); },
        [](const ElementValue& content) { return join(content.tag, headText(*content.value)); },
        [](const OpenValue& content) {
            if (!content.value) return count(content.octets.size(), "octet");
            return join(openFront(content), headText(openContent(content)));
        },
        [](const auto&) { return std::string(); },
    };
    return std::visit(visitor, value.content);
}

}  // namespace tools
