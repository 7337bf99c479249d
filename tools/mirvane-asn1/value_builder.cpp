#include "value_builder.h"

#include <algorithm>
#include <string>

#include "asn1data/engine.h"
#include "asn1data/record_access.h"
#include "asn1rt/char_string.h"
#include "asn1rt/universal_tags.h"
#include "elements.h"
#include "identifier_names.h"
#include "known_contents.h"
#include "message.h"
#include "name_text.h"
#include "number_text.h"

namespace tools {
namespace {

using asn1data::FieldDescriptor;
using asn1data::Kind;
using asn1data::member;
using asn1data::memberAt;
using asn1data::ObjectEntry;
using asn1data::Presence;
using asn1data::TableConstraint;
using asn1data::TypeDescriptor;

// Raw values inside raw values: each such level is decoded once more by the next.
constexpr int kMostRawLevels = 8;

std::string_view nameOfNumber(const TypeDescriptor& type, std::uint32_t number) {
    for (std::uint32_t i = 0; i < type.nameCount; ++i) {
        if (type.names[i].number == number) return type.names[i].name;
    }
    return {};
}

Value numberValue(const TypeDescriptor& type, std::int64_t number) {
    return makeValue(
        NumberValue{number, type.nameCount > 0, nameOfNumber(type, static_cast<std::uint32_t>(number))});
}

Value bigNumberValue(const TypeDescriptor& type, const char* text) {
    BigNumberValue number = fromHexText(text ? text : "");
    number.hasNames = type.nameCount > 0;
    const bool isShort = !number.negative && number.magnitude.size() <= 8;
    if (number.hasNames && isShort)
        number.name =
            nameOfNumber(type, static_cast<std::uint32_t>(std::stoul(number.magnitude, nullptr, 16)));
    return makeValue(std::move(number));
}

Value identifierValue(const ASN1OBJID& identifier) {
    std::string text = dotted(identifier);
    const std::string_view name = nameOf(text);
    return makeValue(IdentifierValue{std::move(text), name});
}

Value charStringValue(const TypeDescriptor& type, const char* text) {
    const std::string_view octets = text ? text : "";
    const std::uint32_t number = type.tag & TM_NUMBER;
    if (number == TAG_UTC_TIME || number == TAG_GENERALIZED_TIME)
        return makeValue(TimeValue{octets, number == TAG_GENERALIZED_TIME});
    return makeValue(TextValue{number == TAG_UTF8_STRING ? fromUtf8(octets) : fromAscii(octets)});
}

OctetSpan octetsOf(const ASN1TDynOctStr& value) {
    return {value.data, value.data ? value.numocts : 0};
}
OctetSpan octetsOf(const ASN1OpenType& value) {
    return {value.data, value.data ? value.numocts : 0};
}

Value octetsValue(OctetSpan octets) {
    return makeValue(OctetsValue{octets, false, sequenceIn(octets)});
}

Value bitsValue(const TypeDescriptor& type, std::uint32_t count, const unsigned char* data,
                std::size_t room) {
    const std::size_t octets = data ? std::min<std::size_t>((std::uint64_t{count} + 7) / 8, room) : 0;
    BitsValue bits{count, {data, octets}, type.nameCount > 0, {}, {}};
    for (std::uint32_t bit = 0; bits.hasNames && bit < count && bit / 8 < octets; ++bit) {
        if ((data[bit / 8] >> (7 - bit % 8) & 1) == 0) continue;
        const std::string_view name = nameOfNumber(type, bit);
        bits.names.push_back(name.empty() ? "bit " + std::to_string(bit) : std::string(name));
    }
    if (!bits.hasNames && count == std::uint64_t{octets} * 8) bits.content = sequenceIn(bits.octets);
    return makeValue(std::move(bits));
}

// Primitives; the caller takes care of all that is built of other values.
Value leafValue(const TypeDescriptor& type, const void* value) {
    switch (type.kind) {
        case Kind::Boolean:
            return makeValue(BooleanValue{member<unsigned char>(value, 0)});
        case Kind::Integer:
            return numberValue(type, member<std::int32_t>(value, 0));
        case Kind::Unsigned:
        case Kind::Enumerated:
            return numberValue(type, member<std::uint32_t>(value, 0));
        case Kind::Uint16:
            return numberValue(type, member<std::uint16_t>(value, 0));
        case Kind::BigInteger:
            return bigNumberValue(type, member<const char*>(value, 0));
        case Kind::ObjectIdentifier:
            return identifierValue(member<ASN1OBJID>(value, 0));
        case Kind::OctetString:
            return octetsValue(octetsOf(member<ASN1TDynOctStr>(value, 0)));
        case Kind::InlineOctetString: {
            const auto& text = member<asn1data::InlineString>(value, 0);
            return octetsValue({text.data, std::min(text.count, type.capacity)});
        }
        case Kind::BitString: {
            const auto& bits = member<ASN1TDynBitStr>(value, 0);
            return bitsValue(type, bits.numbits, bits.data, SIZE_MAX);
        }
        case Kind::InlineBitString: {
            const auto& bits = member<asn1data::InlineString>(value, 0);
            return bitsValue(type, bits.count, bits.data, type.capacity);
        }
        case Kind::CharString:
            return charStringValue(type, member<const char*>(value, 0));
        case Kind::BmpString: {
            const auto& text = member<Asn116BitCharString>(value, 0);
            return makeValue(TextValue{fromUtf16({text.data, text.data ? text.nchars : 0})});
        }
        case Kind::UniversalString: {
            const auto& text = member<Asn132BitCharString>(value, 0);
            return makeValue(TextValue{fromUtf32({text.data, text.data ? text.nchars : 0})});
        }
        default:
            return makeValue(NullValue{});
    }
}

// What is known about an open value before it is looked at.
struct OpenPlace {
    std::string_view record = {};
    std::string_view field = {};
    const ASN1OBJID* identifier = nullptr;
    bool inOctetString = false;
};

class Builder {
  public:
    explicit Builder(ASN1CTXT* owner) : mOwner(owner) {}

    Value build(const TypeDescriptor& type, const void* value, const OpenPlace& place = {});

  private:
    Value choice(const TypeDescriptor& type, const void* value);
    Value name(const TypeDescriptor& type, const void* value);
    Value record(const TypeDescriptor& type, const void* value);
    ListValue unknownElements(const TypeDescriptor& type, const void* value);
    Value list(const TypeDescriptor& type, const void* value, const OpenPlace& place);
    Value array(const TypeDescriptor& type, const void* value);
    Value constrained(const TypeDescriptor& type, const FieldDescriptor& field, const void* value);
    Value tabled(const ObjectEntry* entry, const asn1data::Asn1TObject& object, OctetSpan octets,
                 const OpenPlace& place);
    Value raw(OctetSpan octets, std::string_view openType, const OpenPlace& place);
    Value elements(OctetSpan octets, bool inOctetString);

    ASN1CTXT* mOwner;
    int mRawLevels = 0;
};

bool isConstrained(const TypeDescriptor& type, const FieldDescriptor& field) {
    if (!type.table) return false;
    const TableConstraint& table = *type.table;
    const bool octets = table.form == TableConstraint::Form::OctetString;
    return field.offset == (octets ? table.octetsOffset : table.objectOffset);
}

bool isPresent(const TypeDescriptor& type, const FieldDescriptor& field, const void* value) {
    return field.presence != Presence::Optional ||
           (asn1data::presenceBits(type, value) >> field.bit & 1) != 0;
}

bool isDefault(const FieldDescriptor& field, const Value& value) {
    if (field.presence == Presence::DefaultInteger) {
        const auto* number = std::get_if<BigNumberValue>(&value.content);
        return number && decimal(*number) == std::string(field.defaultText);
    }
    if (field.presence != Presence::DefaultNumber) return false;
    if (const auto* flag = std::get_if<BooleanValue>(&value.content))
        return (flag->octet != 0) == (field.defaultNumber != 0);
    const auto* number = std::get_if<NumberValue>(&value.content);
    return number && number->number == field.defaultNumber;
}

Value Builder::build(const TypeDescriptor& type, const void* value, const OpenPlace& place) {
    if (!value) return makeValue(NullValue{}, type.name);
    switch (type.kind) {
        case Kind::Sequence:
        case Kind::Set:
            return record(type, value);
        case Kind::Choice:
            return std::string_view(type.name) == "Name" ? name(type, value) : choice(type, value);
        case Kind::List:
            return list(type, value, place);
        case Kind::Array:
            return array(type, value);
        case Kind::OpenType:
        case Kind::TableOpenType:
            return raw(octetsOf(member<ASN1OpenType>(value, 0)), type.name, place);
        case Kind::RawContent:
            return elements(octetsOf(member<ASN1TDynOctStr>(value, 0)), false);
        default:
            return leafValue(type, value);
    }
}

Value Builder::choice(const TypeDescriptor& type, const void* value) {
    const FieldDescriptor* chosen = asn1data::chosenAlternative(type, value);
    if (!chosen) return makeValue(NullValue{}, type.name);
    const OpenPlace place{.record = type.name, .field = chosen->name};
    Value inner = build(*chosen->type, asn1data::alternativeValue(type, value, *chosen->type), place);
    return makeValue(ChoiceValue{chosen->name, onHeap(std::move(inner))}, type.name);
}

Value Builder::name(const TypeDescriptor& type, const void* value) {
    if (!asn1data::chosenAlternative(type, value)) return choice(type, value);
    return makeValue(
        NameValue{nameText(*static_cast<const asn1data::ASN1T_Name*>(value)), onHeap(choice(type, value))},
        type.name);
}

Value Builder::record(const TypeDescriptor& type, const void* value) {
    RecordValue result;
    OpenPlace place;
    place.record = type.name;
    for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
        const FieldDescriptor& field = type.fields[i];
        if (!isPresent(type, field, value)) continue;
        place.field = field.name;
        const void* at = memberAt(value, field.offset);
        Member shown{field.name, isConstrained(type, field) ? constrained(type, field, value)
                                                            : build(*field.type, at, place)};
        shown.isDefault = isDefault(field, shown.value);
        result.members.push_back(std::move(shown));
        if (field.type->kind == Kind::ObjectIdentifier) place.identifier = static_cast<const ASN1OBJID*>(at);
    }
    if (asn1data::isExtensible(type)) {
        ListValue unknown = unknownElements(type, value);
        if (!unknown.elements.empty()) result.members.push_back({"extElem1", makeValue(std::move(unknown))});
    }
    return makeValue(std::move(result), type.name);
}

// What an extensible type holds behind the fields that it knows.
ListValue Builder::unknownElements(const TypeDescriptor& type, const void* value) {
    ListValue result;
    const auto& nodes = member<_Asn1RTDList>(value, type.bodyOffset);
    for (const _Asn1RTDListNode* node = nodes.head; node; node = node->next) {
        const OctetSpan octets = octetsOf(*static_cast<const ASN1OpenType*>(node->data));
        result.elements.push_back(elements(octets, false));
    }
    return result;
}

Value Builder::list(const TypeDescriptor& type, const void* value, const OpenPlace& place) {
    ListValue result;
    const auto& nodes = member<_Asn1RTDList>(value, type.headOffset);
    for (const _Asn1RTDListNode* node = nodes.head; node; node = node->next)
        result.elements.push_back(build(*type.element, node->data, place));
    return makeValue(std::move(result), type.name);
}

Value Builder::array(const TypeDescriptor& type, const void* value) {
    ListValue result;
    const auto count = member<std::uint32_t>(value, type.headOffset);
    const void* first = asn1data::arrayElements(type, value);
    for (std::uint32_t i = 0; first && i < count; ++i) {
        const std::size_t offset = std::size_t{i} * type.element->size;
        result.elements.push_back(leafValue(*type.element, static_cast<const char*>(first) + offset));
    }
    return makeValue(std::move(result), type.name);
}

// The field that a table of the record gives a type to.
Value Builder::constrained(const TypeDescriptor& type, const FieldDescriptor& field, const void* value) {
    const TableConstraint& table = *type.table;
    OpenPlace place{
        .record = type.name, .field = field.name, .identifier = &asn1data::typeIdentifier(table, value)};
    const ObjectEntry* entry = asn1data::findObject(*table.objects, *place.identifier);
    if (table.form == TableConstraint::Form::List) {
        ListValue result;
        const auto& nodes = member<_Asn1RTDList>(value, table.objectOffset);
        for (const _Asn1RTDListNode* node = nodes.head; node; node = node->next) {
            const auto& object = *static_cast<const asn1data::Asn1TObject*>(node->data);
            result.elements.push_back(tabled(entry, object, octetsOf(object), place));
        }
        return makeValue(std::move(result));
    }
    const auto& object = member<asn1data::Asn1TObject>(value, table.objectOffset);
    place.inOctetString = table.form == TableConstraint::Form::OctetString;
    const OctetSpan octets =
        place.inOctetString ? octetsOf(member<ASN1TDynOctStr>(value, table.octetsOffset)) : octetsOf(object);
    return tabled(entry, object, octets, place);
}

std::size_t octetsBehind(OctetSpan octets) {
    const std::size_t length = elementLength(octets);
    return length > 0 ? octets.size() - length : 0;
}

Value Builder::tabled(const ObjectEntry* entry, const asn1data::Asn1TObject& object, OctetSpan octets,
                      const OpenPlace& place) {
    if (!asn1data::isResolved(entry, object)) return raw(octets, {}, place);
    return makeValue(OpenValue{octets, place.inOctetString, entry->value->name,
                               onHeap(build(*entry->value, object.decoded)), octetsBehind(octets)});
}

// An open value that the library did not decode.
Value Builder::raw(OctetSpan octets, std::string_view openType, const OpenPlace& place) {
    const TypeDescriptor* type = contentByPlace(place.record, place.field, openType);
    if (!type && place.identifier) type = contentByIdentifier(*place.identifier);
    if (!type || mRawLevels == kMostRawLevels) return elements(octets, place.inOctetString);
    const void* value = decodeWhole(mOwner, *type, octets);
    if (!value) return elements(octets, place.inOctetString);
    ++mRawLevels;
    Value inner = build(*type, value);
    --mRawLevels;
    return makeValue(OpenValue{octets, place.inOctetString, type->name, onHeap(std::move(inner)), 0});
}

Value Builder::elements(OctetSpan octets, bool inOctetString) {
    OpenValue result{octets, inOctetString, {}, nullptr, 0};
    if (auto found = readElements(octets)) result.value = onHeap(makeValue(ListValue{std::move(*found)}));
    return makeValue(std::move(result));
}

}  // namespace

Value buildValue(const TypeDescriptor& type, const void* record, ASN1CTXT* owner) {
    return Builder(owner).build(type, record);
}

}  // namespace tools
