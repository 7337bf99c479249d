#include "text_writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "line_text.h"
#include "number_text.h"
#include "overloaded.h"

namespace tools {
namespace {

constexpr std::size_t kMostOctets = 128;  // shown whole
constexpr std::size_t kFirstOctets = 64;  // shown of longer values

class Writer {
  public:
    void put(std::string_view label, const Value& value);
    std::string take() { return std::move(mText); }

  private:
    void body(const Value& value);
    void members(const RecordValue& record);
    void elements(const ListValue& list);
    void string(OctetSpan octets, const Value* content);
    void digits(std::string_view digits);
    void line(std::string_view text);

    std::string mText;
    std::string mLead;  // of the next line: blanks, and the dashes of elements that begin there
    std::size_t mIndent = 0;
};

void Writer::line(std::string_view text) {
    mText += mLead;
    mText += text;
    mText += '\n';
    mLead.assign(mIndent, ' ');
}

std::string labelled(std::string_view label, std::string_view text) {
    return fmt::format("{}{}{}", label, label.empty() || text.empty() ? "" : ": ", text);
}

void Writer::put(std::string_view label, const Value& value) {
    if (const auto text = lineText(value)) return line(labelled(label, *text));
    const std::string head = labelled(label, headText(value));
    // An element without a head begins on the line of its dash.
    if (head.empty()) return body(value);
    mIndent += 2;
    line(head);
    body(value);
    mIndent -= 2;
    mLead.assign(mIndent, ' ');
}

void Writer::body(const Value& value) {
    const Overloaded visitor{
        [this](const RecordValue& content) { members(content); },
        [this](const ListValue& content) { elements(content); },
        [this](const OctetsValue& content) { string(content.octets, content.content.get()); },
        [this](const BitsValue& content) { string(content.octets, content.content.get()); },
        [this](const NameValue& content) { body(*content.parts); },
        [this](const BigNumberValue& content) { digits(content.magnitude); },
        [this](const ChoiceValue& content) { body(*content.value); },
        [this](const ElementValue& content) { body(*content.value); },
        [this](const OpenValue& content) {
            content.value ? body(openContent(content)) : digits(hex(content.octets));
        },
        [](const auto&) {},  // always one line, so never a body
    };
    std::visit(visitor, value.content);
}

void Writer::members(const RecordValue& record) {
    for (const Member& member : record.members) {
        if (!member.isDefault) put(member.name, member.value);
    }
}

void Writer::elements(const ListValue& list) {
    for (const Value& element : list.elements) {
        mLead += "- ";
        mIndent += 2;
        put({}, element);
        mIndent -= 2;
        mLead.assign(mIndent, ' ');
    }
}

void Writer::string(OctetSpan octets, const Value* content) {
    content ? body(*content) : digits(hex(octets));
}

void Writer::digits(std::string_view digits) {
    const std::size_t octets = digits.size() / 2 <= kMostOctets ? kMostOctets : kFirstOctets;
    const std::string_view shown = digits.substr(0, 2 * octets);
    for (std::size_t i = 0; i < shown.size(); i += 2 * kOctetsOfLine)
        line(shown.substr(i, 2 * kOctetsOfLine));
    if (shown.size() < digits.size())
        line(fmt::format("... and {} octets more", (digits.size() - shown.size()) / 2));
}

}  // namespace

std::string toText(std::string_view name, const Value& value) {
    Writer writer;
    writer.put(name, value);
    return writer.take();
}

}  // namespace tools
