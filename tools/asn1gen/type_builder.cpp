#include "asn1gen/type_builder.h"

#include <algorithm>
#include <set>

#include "asn1gen/names.h"

namespace asn1gen {
namespace {

using Form = syntax::Type::Form;

constexpr std::uint32_t kMaxInlineOctets = 128;
constexpr std::uint32_t kMaxInlineElements = 16;

bool isOpen(Kind kind) {
    return kind == Kind::OpenType || kind == Kind::TableOpenType;
}

bool isStructured(Form form) {
    return form == Form::Sequence || form == Form::Set || form == Form::Choice || form == Form::SequenceOf ||
           form == Form::SetOf;
}

bool isList(Form form) {
    return form == Form::SequenceOf || form == Form::SetOf;
}

bool hasConstraint(const syntax::Type& tree) {
    return !tree.sizes.empty() || tree.range || tree.table;
}

}  // namespace

TypeBuilder::TypeBuilder(Model& model, const Symbols& symbols, Diagnostics& diagnostics)
    : mModel(model), mSymbols(symbols), mDiagnostics(diagnostics), mConstraints(symbols, diagnostics) {
    for (FileModel& file : model.files)
        mFiles.emplace(file.source, &file);
}

// Declaring

void TypeBuilder::declare(const syntax::TypeAssignment& assignment, FileModel& file) {
    Type& type = addNamed(cppName(assignment.name.text), assignment.name.span, file);
    type.kind = kindOf(assignment.type);
}

const syntax::Type* TypeBuilder::follow(const syntax::Type& tree) {
    std::set<const syntax::Type*> seen;
    const syntax::Type* at = &tree;
    while (at->form == Form::Reference) {
        const syntax::TypeAssignment* next = mSymbols.findType(at->word);
        if (!next) {
            refuse(at->span, "no type is named " + at->word);
            return nullptr;
        }
        if (!seen.insert(at).second) {
            refuse(at->span, at->word + " is defined by itself");
            return nullptr;
        }
        at = &next->type;
    }
    return at;
}

Kind TypeBuilder::kindOf(const syntax::Type& tree) {
    const syntax::Type* type = follow(tree);
    if (!type) return Kind::Boolean;  // reported
    switch (type->form) {
        case Form::Boolean:
            return Kind::Boolean;
        case Form::Null:
            return Kind::Null;
        case Form::Integer:
            return mConstraints.integer(*type).kind;
        case Form::Enumerated:
            return Kind::Enumerated;
        case Form::ObjectIdentifier:
            return Kind::ObjectIdentifier;
        case Form::OctetString: {
            const std::optional<Limits> limits = mConstraints.sizes(*type);
            return limits && limits->upper <= kMaxInlineOctets ? Kind::InlineOctetString : Kind::OctetString;
        }
        case Form::BitString:
            return type->names.empty() ? Kind::BitString : Kind::InlineBitString;
        case Form::CharString:
            return findString(type->word)->kind;
        case Form::OpenType:
            return type->table ? Kind::TableOpenType : Kind::OpenType;
        case Form::InstanceOf:
            return Kind::RawContent;
        case Form::Sequence:
            return Kind::Sequence;
        case Form::Set:
            return Kind::Set;
        case Form::Choice:
            return Kind::Choice;
        case Form::SequenceOf:
        case Form::SetOf:
            return listKind(*type->element);
        case Form::Reference:
            break;
    }
    return Kind::Boolean;
}

Kind TypeBuilder::listKind(const syntax::Type& element) {
    const syntax::Type* type = follow(element);
    const bool pointers = !type || isStructured(type->form) || type->form == Form::OpenType;
    return pointers ? Kind::List : Kind::Array;
}

Type& TypeBuilder::add(Type type, FileModel& file) {
    type.home = file.source;
    mModel.types.push_back(std::make_unique<Type>(std::move(type)));
    file.types.push_back(mModel.types.back().get());
    return *mModel.types.back();
}

Type& TypeBuilder::addNamed(const std::string& name, const Span& span, FileModel& file) {
    Type type;
    type.name = type.label = name;
    type.span = span;
    Type& added = add(std::move(type), file);
    const auto [found, isNew] = mNamed.emplace(name, &added);
    if (!isNew)
        refuse(span, "the type here gets the name " + name + ", which is taken: give it a name of its own");
    return added;
}

const Type* TypeBuilder::builtin(const BuiltinType& facts) {
    const Type*& known = mBuiltin[std::string(facts.name)];
    if (known) return known;
    auto type = std::make_unique<Type>();
    type->scope = Type::Scope::Builtin;
    type->name = facts.name;
    type->label = facts.notation;
    type->kind = facts.kind;
    type->tag = facts.tag;
    known = type.get();
    mModel.types.push_back(std::move(type));
    return known;
}

const Type* TypeBuilder::unknown() {
    return builtin(*findBuiltin(Kind::Boolean));
}

// Defining

void TypeBuilder::define(const syntax::TypeAssignment& assignment, const Place& place) {
    Type& type = *mNamed.at(cppName(assignment.name.text));
    const syntax::Type& tree = assignment.type;
    if (tree.form == Form::Reference) {
        type.aliasOf = useReference(tree);
        if (type.aliasOf->scope == Type::Scope::Builtin) type.aliasOf = nullptr;  // unknown, reported
        if (tree.tag)
            refuse(tree.tag->span, "only a CHOICE is tagged as a whole: tag the components that use it");
        return;
    }
    if (tree.table || (tree.element && tree.element->table)) {
        refuse(tree.span, "a table stands in a component of a SEQUENCE, beside the identifier");
    }
    if (tree.form == Form::InstanceOf)
        refuse(tree.span, "INSTANCE OF stands in a component: [n] IMPLICIT INSTANCE OF");
    if (tree.tag && tree.form != Form::Choice) {
        refuse(tree.tag->span, "only a CHOICE is tagged as a whole: tag the components that use it");
    } else if (tree.tag) {
        type.outerTag = tagWord(*tree.tag, true);
    }
    Place inner = place;
    inner.takesEnd = type.takesEnd = assignment.takesEnd;
    fill(type, tree, inner);
    if (!assignment.isSequence) return;
    if (tree.form != Form::OpenType) refuse(tree.span, "the note \"sequence\" is for an ANY");
    type.tag = facts(Kind::Sequence).tag;
}

void TypeBuilder::fill(Type& type, const syntax::Type& tree, const Place& place) {
    type.kind = kindOf(tree);
    type.tag = facts(type.kind).tag;
    type.takesEnd = place.takesEnd;
    fillNames(type, tree);
    switch (tree.form) {
        case Form::Integer:
            fillLimits(type, mConstraints.integer(tree).limits);
            break;
        case Form::Enumerated:
            fillEnumerated(type, tree);
            break;
        case Form::BitString:
            fillNamedBits(type, tree);
            break;
        case Form::CharString:
            type.tag = findString(tree.word)->tag;
            break;
        case Form::SequenceOf:
        case Form::SetOf:
            fillList(type, tree, place);
            break;
        case Form::Sequence:
        case Form::Set:
        case Form::Choice:
            fillFields(type, tree, place);
            break;
        default:
            break;
    }
    if (type.kind != Kind::InlineBitString && type.kind != Kind::Enumerated && tree.form != Form::Integer) {
        fillLimits(type, mConstraints.sizes(tree));
    }
    if (type.kind == Kind::InlineOctetString) type.capacity = type.upperBound;
    if (type.kind == Kind::Array && type.upperBound <= kMaxInlineElements) type.capacity = type.upperBound;
}

void TypeBuilder::fillNames(Type& type, const syntax::Type& tree) {
    std::set<std::string> names;
    for (const syntax::NamedNumber& item : tree.names) {
        if (!names.insert(cppName(item.name.text)).second) {
            refuse(item.name.span, item.name.text + " stands twice among the names");
        }
        if (item.number < 0 && type.kind != Kind::Integer) {
            refuse(item.name.span, "the number of " + item.name.text + " is negative: write one from 0 on");
        }
        type.names.push_back({item.name.text, componentTypeName(type.name, item.name.text), item.number});
    }
}

void TypeBuilder::fillEnumerated(Type& type, const syntax::Type& tree) {
    std::set<std::int64_t> numbers;
    for (const syntax::NamedNumber& item : tree.names) {
        if (!numbers.insert(item.number).second) {
            refuse(item.name.span, "the number of " + item.name.text + " stands twice");
        }
    }
    const bool bounded = !tree.extensible && !numbers.empty();
    type.upperBound = bounded ? static_cast<std::uint32_t>(*numbers.rbegin() + 1) : kNoBound;
}

void TypeBuilder::fillNamedBits(Type& type, const syntax::Type& tree) {
    if (type.kind != Kind::InlineBitString) return;
    const std::optional<Limits> limits = mConstraints.sizes(tree);
    if (!limits || limits->upper == kNoBound) {
        refuse(tree.span, "named bits need a capacity: write (SIZE (0..number of bits)) behind them");
        return;
    }
    type.upperBound = limits->upper;
    type.capacity = (limits->upper + 7) / 8;
    for (const syntax::NamedNumber& item : tree.names) {
        if (item.number >= limits->upper)
            refuse(item.name.span, "bit " + item.name.text + " is outside of the SIZE");
    }
}

void TypeBuilder::fillLimits(Type& type, const std::optional<Limits>& limits) {
    if (!limits || !limits->tested()) return;
    type.hasBounds = true;
    type.endsOnly = limits->endsOnly;
    type.lowerBound = limits->lower;
    type.upperBound = limits->upper;
}

void TypeBuilder::fillList(Type& type, const syntax::Type& tree, const Place& place) {
    type.setOf = tree.form == Form::SetOf;
    type.tag = kConstructed | (type.setOf ? 17 : 16);
    const syntax::Type& element = *tree.element;
    type.element = useUnnamed(element, elementTypeName(type.name), place);
    const Kind kind = base(*type.element).kind;
    if (element.tag)
        refuse(element.tag->span, "elements have no tag of their own: put a CHOICE or SEQUENCE between");
    if (kind == Kind::Null || kind == Kind::RawContent)
        refuse(element.span, "a list of this type holds nothing");
}

void TypeBuilder::fillFields(Type& type, const syntax::Type& tree, const Place& place) {
    const bool choice = tree.form == Form::Choice;
    type.extensible = tree.extensible;
    if (tree.extensible && tree.form != Form::Sequence)
        refuse(tree.span, "only a SEQUENCE is extensible: leave ... out");
    if (choice && tree.fields.empty()) refuse(tree.span, "a CHOICE without alternatives");
    for (const syntax::Field& component : tree.fields) {
        const std::string& notation = component.name.text;
        Field field{notation, choice ? cppName(notation) : memberName(notation), component.name.span,
                    nullptr};
        field.type = this->component(component.type, componentTypeName(type.name, notation), place);
        tagField(field, component.type, place);
        setPresence(field, component, type);
        type.fields.push_back(std::move(field));
    }
    for (std::size_t i = 0; i < tree.fields.size(); ++i) {
        const syntax::Type& component = tree.fields[i].type;
        const bool octets = component.form == Form::OctetString;
        if (component.table) {
            addTable(type, tree, i, *component.table,
                     octets ? Table::Form::OctetString : Table::Form::OpenType);
        } else if (component.element && component.element->table) {
            addTable(type, tree, i, *component.element->table, Table::Form::List);
        }
    }
    checkMembers(type);
}

void TypeBuilder::checkMembers(const Type& type) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
        const Field& field = type.fields[i];
        if (!names.insert(field.name).second)
            refuse(field.span, field.notation + " stands twice in " + type.label);
    }
    if (type.table && type.table->form == Table::Form::OctetString) {
        const Field& field = type.fields[type.table->valueField];
        if (names.contains(field.name + "Object")) {
            refuse(field.span,
                   "the value of the table needs the name " + field.name + "Object: rename that component");
        }
    }
    const auto bits = std::count_if(type.fields.begin(), type.fields.end(),
                                    [](const Field& field) { return field.presence == Presence::Optional; });
    if (bits > 32) refuse(type.span, type.label + " has more than 32 components with a presence bit");
}

// Using a type

const Type* TypeBuilder::useReference(const syntax::Type& tree) {
    if (hasConstraint(tree)) {
        refuse(tree.span, "a constraint stands on a builtin type: write the type that " + tree.word + " is");
    }
    if (!follow(tree)) return unknown();
    const auto found = mNamed.find(cppName(tree.word));
    return found == mNamed.end() ? unknown() : found->second;
}

// A component's list of a named type, or of a structure, is shared by all that hold such a list.
const Type* TypeBuilder::component(const syntax::Type& tree, const std::string& name, const Place& place) {
    if (!isList(tree.form) || !tree.sizes.empty()) return use(tree, name, place);
    const syntax::Type& element = *tree.element;
    if (element.form != Form::Reference && !isStructured(element.form)) return use(tree, name, place);
    if (element.tag)
        refuse(element.tag->span, "elements have no tag of their own: put a CHOICE or SEQUENCE between");
    const Type* type = useUnnamed(element, elementTypeName(name), place);
    return type->scope == Type::Scope::Named ? sharedList(tree, *type, place) : type;
}

const Type* TypeBuilder::sharedList(const syntax::Type& tree, const Type& element, const Place& place) {
    const bool setOf = tree.form == Form::SetOf;
    const std::string name = sharedListName(element.name, setOf);
    if (const auto known = mNamed.find(name); known != mNamed.end()) return known->second;
    const auto home = mFiles.find(element.home);
    Type& type = addNamed(name, tree.span, home == mFiles.end() ? *place.file : *home->second);
    type.kind = listKind(*tree.element);
    type.setOf = setOf;
    type.tag = kConstructed | (setOf ? 17 : 16);
    type.element = &element;
    if (base(element).kind == Kind::Null) refuse(tree.element->span, "a list of this type holds nothing");
    return &type;
}

const Type* TypeBuilder::use(const syntax::Type& tree, const std::string& name, const Place& place) {
    return tree.form == Form::Reference ? useReference(tree) : useUnnamed(tree, name, place);
}

const Type* TypeBuilder::useUnnamed(const syntax::Type& tree, const std::string& name, const Place& place) {
    if (tree.form == Form::Reference) return useReference(tree);
    if (takesName(tree)) {
        Type& type = addNamed(name, tree.span, *place.file);
        fill(type, tree, place);
        return &type;
    }
    Type local;
    local.name = name;
    local.scope = Type::Scope::Local;
    local.span = tree.span;
    fill(local, tree, {place.file, place.implicitTags, false});
    const BuiltinType* plain =
        tree.form == Form::CharString ? findString(tree.word) : findBuiltin(local.kind);
    if (!local.hasBounds) return builtin(*plain);
    local.label = plain->notation;
    return &add(std::move(local), *place.file);
}

bool TypeBuilder::takesName(const syntax::Type& tree) {
    if (isStructured(tree.form) || !tree.names.empty()) return true;
    const Kind kind = kindOf(tree);
    return kind == Kind::Enumerated || kind == Kind::RawContent || kind == Kind::InlineOctetString;
}

const Type* TypeBuilder::objectValue(const syntax::Type& tree, const syntax::ObjectAssignment& object,
                                     const Place& place) {
    if (tree.tag) refuse(tree.tag->span, "the value of an object has no tag");
    if (tree.table) refuse(tree.span, "a table stands in a component of a SEQUENCE, beside the identifier");
    if (tree.form == Form::Reference) return useReference(tree);
    if (tree.form == Form::Null) return builtin(*findBuiltin(Kind::Null));
    Type& type = addNamed(objectTypeName(object.name.text, object.objectClass.text), tree.span, *place.file);
    fill(type, tree, place);
    return &type;
}

// Tags and presence

std::uint32_t TypeBuilder::tagWord(const syntax::Tag& tag, bool constructed) {
    if (tag.number > kMaxTagNumber) refuse(tag.span, "tag numbers go from 0 to 30");
    if (tag.tagClass == syntax::TagClass::Universal)
        refuse(tag.span, "the universal class is taken: leave UNIVERSAL out");
    const auto tagClass = static_cast<std::uint32_t>(tag.tagClass) << 30;
    return tagClass | (constructed ? kConstructed : 0) | static_cast<std::uint32_t>(tag.number & 31);
}

void TypeBuilder::tagField(Field& field, const syntax::Type& tree, const Place& place) {
    const Kind kind = base(*field.type).kind;
    if (!tree.tag) {
        if (kind == Kind::RawContent)
            refuse(tree.span, "INSTANCE OF needs a tag: write [n] IMPLICIT INSTANCE OF");
        return;
    }
    const bool open = kind == Kind::Choice || isOpen(kind);
    const bool implicit = tree.tag->mode == syntax::TagMode::Implicit ||
                          (tree.tag->mode == syntax::TagMode::Default && place.implicitTags && !open);
    if (implicit && open)
        refuse(tree.tag->span, "a CHOICE or an open type has no tag to replace: write EXPLICIT");
    if (!implicit && kind == Kind::RawContent) refuse(tree.tag->span, "write [n] IMPLICIT INSTANCE OF");
    const bool structure =
        kind == Kind::RawContent || (facts(kind).tag != kNoTag && (facts(kind).tag & kConstructed));
    field.tagging = implicit ? Tagging::Implicit : Tagging::Explicit;
    field.tag = tagWord(*tree.tag, !implicit || structure);
}

void TypeBuilder::setPresence(Field& field, const syntax::Field& tree, Type& owner) {
    if (tree.optional) field.presence = Presence::Optional;
    if (tree.defaultValue) setDefault(field, *tree.defaultValue);
    if (field.presence != Presence::Optional) return;
    field.bit = static_cast<std::uint32_t>(
        std::count_if(owner.fields.begin(), owner.fields.end(),
                      [](const Field& other) { return other.presence == Presence::Optional; }));
}

// A default that is held by value is compared; any other is a presence bit, and its value is not looked at.
void TypeBuilder::setDefault(Field& field, const syntax::Value& value) {
    const Type& type = base(*field.type);
    field.presence = Presence::Optional;
    const bool number = type.kind == Kind::Boolean || type.kind == Kind::Integer ||
                        type.kind == Kind::Unsigned || type.kind == Kind::Uint16 ||
                        type.kind == Kind::BigInteger;
    if (!number && type.kind != Kind::Enumerated) return;
    const std::optional<std::int64_t> held = defaultNumber(type, value);
    if (!held || type.kind == Kind::Enumerated) return;
    field.presence = type.kind == Kind::BigInteger ? Presence::DefaultInteger : Presence::DefaultNumber;
    field.defaultNumber = *held;
}

std::optional<std::int64_t> TypeBuilder::defaultNumber(const Type& type, const syntax::Value& value) {
    using ValueForm = syntax::Value::Form;
    const bool boolean = type.kind == Kind::Boolean;
    std::optional<std::int64_t> number;
    if (value.form == ValueForm::Boolean && boolean) number = value.number;
    if (value.form == ValueForm::Number && !boolean && type.kind != Kind::Enumerated) number = value.number;
    for (const NamedConstant& constant : type.names) {
        if (value.form == ValueForm::Name && constant.notation == value.name) number = constant.number;
    }
    if (!number && value.form == ValueForm::Name && !boolean) {
        const auto* integer = mSymbols.findInteger(value.name);
        if (integer && type.kind != Kind::Enumerated) number = integer->number;
    }
    const std::int64_t lowest = type.kind == Kind::BigInteger || type.kind == Kind::Integer ? INT32_MIN : 0;
    const std::int64_t highest = type.kind == Kind::Uint16 ? UINT16_MAX : INT32_MAX;
    const bool fits = number && *number >= lowest && *number <= highest &&
                      (!type.hasBounds || Limits{type.lowerBound, type.upperBound}.fits(*number));
    if (fits) return number;
    refuse(value.span,
           "the default does not fit the type: " +
               std::string(boolean ? "write TRUE or FALSE" : "write a number or a name that the type has"));
    return std::nullopt;
}

void TypeBuilder::addTable(Type& type, const syntax::Type& tree, std::size_t index,
                           const syntax::TableReference& reference, Table::Form form) {
    if (tree.form != Form::Sequence) {
        return refuse(reference.set.span,
                      "a table stands in a component of a SEQUENCE, beside the identifier");
    }
    if (type.table) return refuse(reference.set.span, "a second table: a SEQUENCE has one");
    const auto set = mSets.find(cppName(reference.set.text));
    if (set == mSets.end()) return refuse(reference.set.span, "no object set is named " + reference.set.text);
    const syntax::Type& component = tree.fields[index].type;
    const Form written = form == Table::Form::List ? component.element->form : component.form;
    const bool octets = form == Table::Form::OctetString && component.sizes.empty();
    if (written != Form::OpenType && !octets) {
        return refuse(reference.set.span,
                      "a table stands on ANY, on an OCTET STRING without SIZE, or on a list of ANY");
    }
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
        if (type.fields[i].notation != reference.field.text) continue;
        if (base(*type.fields[i].type).kind != Kind::ObjectIdentifier) break;
        type.table = Table{set->second, form, i, index};
        return;
    }
    refuse(reference.field.span, "expected the name of an OBJECT IDENTIFIER component of " + type.label);
}

}  // namespace asn1gen
