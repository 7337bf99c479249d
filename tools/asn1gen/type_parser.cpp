#include "asn1gen/type_parser.h"

#include <algorithm>
#include <array>
#include <utility>

namespace asn1gen {
namespace {

using namespace syntax;

constexpr std::array<std::string_view, 11> kStringTypes = {
    "IA5String",  "PrintableString", "NumericString", "TeletexString", "T61String",      "VisibleString",
    "UTF8String", "GeneralizedTime", "UTCTime",       "BMPString",     "UniversalString"};

// Words that name something X.680 has and the schemas do without, and what to write instead.
constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kUnsupported = {{
    {"COMPONENTS", "write the components out"},
    {"EXTERNAL", "write ANY"},
    {"REAL", "no type of the system holds it"},
    {"GeneralString", "write another string type"},
    {"GraphicString", "write another string type"},
    {"ISO646String", "write VisibleString"},
}};

class TypeParser {
  public:
    explicit TypeParser(TokenReader& reader) : mReader(reader) {}

    Type parse() {
        std::optional<Tag> tag;
        if (mReader.isSymbol("[")) tag = parseTag();
        if (mReader.isSymbol("["))
            mReader.fail("a second tag: write one tag, over a type with a name if need be");
        Type type = parseForm();
        type.tag = tag;
        while (mReader.isSymbol("("))
            parseConstraint(type);
        return type;
    }

  private:
    Tag parseTag() {
        const Span span = mReader.next().span;
        Tag tag{TagClass::Context, 0, TagMode::Default, span};
        if (mReader.acceptWord("APPLICATION"))
            tag.tagClass = TagClass::Application;
        else if (mReader.acceptWord("PRIVATE"))
            tag.tagClass = TagClass::Private;
        else if (mReader.acceptWord("UNIVERSAL"))
            tag.tagClass = TagClass::Universal;
        if (mReader.peek().kind != TokenKind::Number) mReader.fail("expected the number of the tag");
        tag.number = mReader.next().number;
        tag.span.end = mReader.peek().span.end;
        mReader.takeSymbol("]");
        if (mReader.acceptWord("EXPLICIT"))
            tag.mode = TagMode::Explicit;
        else if (mReader.acceptWord("IMPLICIT"))
            tag.mode = TagMode::Implicit;
        return tag;
    }

    Type start(Type::Form form) {
        const Token& token = mReader.next();
        Type type;
        type.form = form;
        type.span = token.span;
        type.word = token.text;
        return type;
    }

    Type parseForm() {
        using Form = Type::Form;
        if (mReader.peek().kind != TokenKind::Upper) mReader.fail("expected a type");
        const std::string_view word = mReader.peek().text;
        if (word == "BOOLEAN") return start(Form::Boolean);
        if (word == "NULL") return start(Form::Null);
        if (word == "ANY") return start(Form::OpenType);
        if (word == "INTEGER") return parseNumbered(Form::Integer);
        if (word == "ENUMERATED") return parseNumbered(Form::Enumerated);
        if (word == "BIT") return parseNumbered(Form::BitString);
        if (word == "OBJECT") return parseTwoWords(Form::ObjectIdentifier, "IDENTIFIER");
        if (word == "OCTET") return parseTwoWords(Form::OctetString, "STRING");
        if (word == "INSTANCE") return parseInstanceOf();
        if (word == "SEQUENCE") return parseCollection(Form::Sequence, Form::SequenceOf);
        if (word == "SET") return parseCollection(Form::Set, Form::SetOf);
        if (word == "CHOICE") return parseChoice();
        if (std::find(kStringTypes.begin(), kStringTypes.end(), word) != kStringTypes.end()) {
            return start(Form::CharString);
        }
        return parseReference();
    }

    Type parseReference() {
        for (const auto& [word, remedy] : kUnsupported) {
            if (mReader.isWord(word))
                mReader.fail(std::string(word) + " is not supported: " + std::string(remedy));
        }
        if (mReader.isSymbol("::=", 1)) mReader.fail("expected a type");
        Type type = start(Type::Form::Reference);
        if (mReader.isSymbol(".")) mReader.fail("a field of a class: write ANY instead");
        return type;
    }

    Type parseTwoWords(Type::Form form, std::string_view second) {
        Type type = start(form);
        type.span.end = mReader.peek().span.end;
        mReader.takeWord(second);
        return type;
    }

    Type parseInstanceOf() {
        Type type = parseTwoWords(Type::Form::InstanceOf, "OF");
        mReader.takeUpper("the class of the instance");
        return type;
    }

    Type parseNumbered(Type::Form form) {
        Type type = form == Type::Form::BitString ? parseTwoWords(form, "STRING") : start(form);
        if (!mReader.isSymbol("{")) {
            if (form == Type::Form::Enumerated) mReader.fail("expected { and the values");
            return type;
        }
        mReader.next();
        do {
            if (mReader.acceptSymbol("...")) {
                type.extensible = true;
                continue;
            }
            NamedNumber item{mReader.takeLower("a name"), 0};
            mReader.takeSymbol("(", "expected ( and the number of " + item.name.text);
            item.number = mReader.takeSignedNumber();
            mReader.takeSymbol(")");
            type.names.push_back(std::move(item));
        } while (mReader.acceptSymbol(","));
        mReader.takeSymbol("}", "expected , and another name, or }");
        return type;
    }

    // SEQUENCE { }, SEQUENCE OF and SEQUENCE SIZE () OF, with or without parentheses around SIZE (); the same
    // of SET.
    Type parseCollection(Type::Form structure, Type::Form list) {
        Type type = start(structure);
        if (mReader.isSymbol("{")) {
            parseFields(type, true);
            return type;
        }
        type.form = list;
        if (mReader.isWord("SIZE"))
            parseSize(type);
        else if (mReader.isSymbol("("))
            parseConstraint(type);
        if (!mReader.acceptWord("OF")) mReader.fail("expected {, SIZE or OF behind " + type.word);
        type.element = std::make_unique<Type>(parse());
        return type;
    }

    Type parseChoice() {
        Type type = start(Type::Form::Choice);
        if (!mReader.isSymbol("{")) mReader.fail("expected { and the alternatives");
        parseFields(type, false);
        return type;
    }

    void parseFields(Type& type, bool withPresence) {
        mReader.next();
        if (mReader.acceptSymbol("}")) return;
        do {
            if (mReader.isSymbol("...")) {
                type.extensible = true;
                mReader.next();
                if (!mReader.isSymbol("}")) mReader.fail("the extension marker ... stands last: expected }");
                break;
            }
            type.fields.push_back(parseField(withPresence));
        } while (mReader.acceptSymbol(","));
        mReader.takeSymbol("}", "expected , and another component, or }");
    }

    Field parseField(bool withPresence) {
        if (mReader.isWord("COMPONENTS")) parseReference();
        Field field{mReader.takeLower("the name of a component"), parse(), false, {}};
        if (!withPresence && (mReader.isWord("OPTIONAL") || mReader.isWord("DEFAULT"))) {
            mReader.fail("an alternative of a CHOICE is not optional: expected , or }");
        }
        if (mReader.acceptWord("OPTIONAL"))
            field.optional = true;
        else if (mReader.acceptWord("DEFAULT"))
            field.defaultValue = parseDefault();
        return field;
    }

    Value parseDefault() {
        Value value{Value::Form::Other, 0, {}, mReader.peek().span};
        if (mReader.isWord("TRUE") || mReader.isWord("FALSE")) {
            value.form = Value::Form::Boolean;
            value.number = mReader.next().text == "TRUE" ? 1 : 0;
        } else if (mReader.peek().kind == TokenKind::Number || mReader.isSymbol("-")) {
            value.form = Value::Form::Number;
            value.number = mReader.takeSignedNumber();
        } else if (mReader.peek().kind == TokenKind::Lower) {
            value.form = Value::Form::Name;
            value.name = mReader.next().text;
        } else if (mReader.isSymbol("{")) {
            skipBraces();
        } else {
            mReader.fail("expected a value behind DEFAULT");
        }
        return value;
    }

    void skipBraces() {
        int depth = 0;
        do {
            if (mReader.atEnd()) mReader.fail("expected } behind the value");
            if (mReader.isSymbol("{")) ++depth;
            if (mReader.isSymbol("}")) --depth;
            mReader.next();
        } while (depth > 0);
    }

    void parseConstraint(Type& type) {
        mReader.next();
        if (mReader.isWord("SIZE")) {
            parseSize(type);
        } else if (mReader.isSymbol("{")) {
            parseTable(type);
        } else {
            parseValueRange(type);
        }
        mReader.takeSymbol(")");
    }

    void parseSize(Type& type) {
        const Span span = mReader.next().span;
        if (!type.sizes.empty()) mReader.report(span, "a second SIZE: write one");
        type.sizes.clear();
        mReader.takeSymbol("(", "expected ( behind SIZE");
        do {
            type.sizes.push_back(parseRange());
        } while (mReader.acceptSymbol("|"));
        mReader.takeSymbol(")");
    }

    void parseValueRange(Type& type) {
        const Token& token = mReader.peek();
        const bool bound = token.kind == TokenKind::Number || token.kind == TokenKind::Lower ||
                           mReader.isSymbol("-") || mReader.isWord("MIN");
        if (!bound)
            mReader.fail("expected SIZE, a range of numbers or a table: other constraints are not supported");
        type.range = parseRange();
    }

    void parseTable(Type& type) {
        mReader.next();
        TableReference table;
        table.set = mReader.takeUpper("the name of an object set");
        mReader.takeSymbol("}");
        mReader.takeSymbol("{", "expected {@ and the name of the identifier's component");
        mReader.takeSymbol("@", "expected @ and the name of the identifier's component");
        table.field = mReader.takeLower("the name of the identifier's component");
        mReader.takeSymbol("}");
        type.table = std::move(table);
    }

    Range parseRange() {
        const Bound lower = parseBound();
        const Bound upper = mReader.acceptSymbol("..") ? parseBound() : lower;
        return {lower, upper, {lower.span.file, lower.span.begin, upper.span.end}};
    }

    Bound parseBound() {
        Bound bound{Bound::Form::Number, 0, {}, mReader.peek().span};
        if (mReader.acceptWord("MIN"))
            bound.form = Bound::Form::Min;
        else if (mReader.acceptWord("MAX"))
            bound.form = Bound::Form::Max;
        else if (mReader.peek().kind == TokenKind::Lower) {
            bound.form = Bound::Form::Name;
            bound.name = mReader.next().text;
        } else if (mReader.peek().kind == TokenKind::Number || mReader.isSymbol("-")) {
            bound.number = mReader.takeSignedNumber();
        } else {
            mReader.fail("expected a number, MIN or MAX");
        }
        return bound;
    }

    TokenReader& mReader;
};

Arcs::Arc parseArc(TokenReader& reader) {
    Arcs::Arc arc{{}, std::nullopt, reader.peek().span};
    if (reader.peek().kind == TokenKind::Number) {
        arc.number = reader.next().number;
        return arc;
    }
    arc.name = reader.takeLower("an arc: a number, a name or name(number)").text;
    if (!reader.acceptSymbol("(")) return arc;
    if (reader.peek().kind != TokenKind::Number) reader.fail("expected the number of the arc");
    arc.number = reader.next().number;
    reader.takeSymbol(")");
    return arc;
}

}  // namespace

Type parseType(TokenReader& reader) {
    return TypeParser(reader).parse();
}

Arcs parseArcs(TokenReader& reader) {
    Arcs arcs{{}, reader.peek().span};
    reader.takeSymbol("{", "expected { and the arcs");
    while (!reader.isSymbol("}")) {
        arcs.arcs.push_back(parseArc(reader));
    }
    arcs.span.end = reader.next().span.end;
    return arcs;
}

}  // namespace asn1gen
