// The tree of a schema file: what was written, before any name is looked up.
#ifndef MIRVANE_ASN1GEN_SYNTAX_H
#define MIRVANE_ASN1GEN_SYNTAX_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "asn1gen/source.h"

namespace asn1gen::syntax {

enum class TagClass : std::uint8_t { Universal, Application, Context, Private };
enum class TagMode : std::uint8_t { Default, Explicit, Implicit };

struct Tag {
    TagClass tagClass;
    std::uint64_t number;
    TagMode mode;
    Span span;
};

// One end of a range.
struct Bound {
    enum class Form : std::uint8_t { Number, Min, Max, Name };

    Form form;
    std::int64_t number;
    std::string name;  // of an INTEGER value
    Span span;
};

struct Range {
    Bound lower;
    Bound upper;
    Span span;
};

struct NamedNumber {
    Name name;
    std::int64_t number;
};

// ({Set}{@field})
struct TableReference {
    Name set;
    Name field;
};

// A value behind DEFAULT.
struct Value {
    enum class Form : std::uint8_t { Number, Boolean, Name, Other };

    Form form;
    std::int64_t number;  // Boolean: 0 or 1
    std::string name;
    Span span;
};

struct Field;

struct Type {
    enum class Form : std::uint8_t {
        Boolean,
        Null,
        Integer,
        Enumerated,
        ObjectIdentifier,
        OctetString,
        BitString,
        CharString,
        OpenType,
        InstanceOf,
        Sequence,
        Set,
        Choice,
        SequenceOf,
        SetOf,
        Reference,
    };

    Form form;
    Span span;         // of the words that name the type
    std::string word;  // Reference: the type's name; CharString: the string type
    std::optional<Tag> tag;
    std::vector<NamedNumber> names;
    bool extensible = false;
    std::vector<Range> sizes;  // alternatives of a SIZE constraint
    std::optional<Range> range;
    std::optional<TableReference> table;
    std::vector<Field> fields;
    std::unique_ptr<Type> element;
};

struct Field {
    Name name;
    Type type;
    bool optional = false;
    std::optional<Value> defaultValue;
};

struct TypeAssignment {
    Name name;
    Type type;
    bool takesEnd = false;    // under the note "end-of-contents"
    bool isSequence = false;  // under the note "sequence": an open type that holds nothing else
};

struct IntegerAssignment {
    Name name;
    std::int64_t number;
};

// { base arc arc(number) ... }
struct Arcs {
    struct Arc {
        std::string name;  // empty if only a number was written
        std::optional<std::uint64_t> number;
        Span span;
    };

    std::vector<Arc> arcs;
    Span span;
};

struct IdentifierAssignment {
    Name name;
    Arcs arcs;
};

// name CLASS ::= { ID id TYPE Type }
struct ObjectAssignment {
    Name name;
    Name objectClass;
    Arcs id;  // a reference is a list of one name
    std::optional<Type> value;
};

struct SetAssignment {
    Name name;
    Name objectClass;
    std::vector<Name> objects;
};

struct Import {
    std::vector<Name> symbols;
    Name module;
};

struct Module {
    Name name;
    bool implicitTags = false;
    std::vector<Import> imports;
    std::vector<TypeAssignment> types;
    std::vector<IntegerAssignment> integers;
    std::vector<IdentifierAssignment> identifiers;
    std::vector<ObjectAssignment> objects;
    std::vector<SetAssignment> sets;
};

struct File {
    const SourceFile* source;
    std::vector<Module> modules;
};

}  // namespace asn1gen::syntax

#endif
