// What is to be written: types, objects and identifiers with their C++ names, kinds and tags settled. The
// emitters read this and nothing else.
#ifndef MIRVANE_ASN1GEN_MODEL_H
#define MIRVANE_ASN1GEN_MODEL_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "asn1gen/kinds.h"
#include "asn1gen/source.h"

namespace asn1gen {

constexpr std::uint32_t kNoBound = 0xFFFFFFFF;

struct Type;
struct ObjectSet;

enum class Tagging : std::uint8_t { None, Explicit, Implicit };
enum class Presence : std::uint8_t { Required, Optional, DefaultNumber, DefaultInteger };

struct NamedConstant {
    std::string notation;  // as in the schema
    std::string name;      // in C++
    std::int64_t number;
};

struct Field {
    std::string notation;
    std::string name;
    Span span;
    const Type* type;  // an alias stays one here: it gives the C++ type
    std::uint32_t tag = kNoTag;
    Tagging tagging = Tagging::None;
    Presence presence = Presence::Required;
    std::uint32_t bit = 0;
    std::int64_t defaultNumber = 0;
};

// The tie between an identifier and an open value beside it.
struct Table {
    enum class Form : std::uint8_t { OpenType, OctetString, List };

    const ObjectSet* objects = nullptr;
    Form form = Form::OpenType;
    std::size_t typeField = 0;  // of the record's fields
    std::size_t valueField = 0;
};

struct Type {
    // Builtin types have their descriptor in the runtime; local ones are descriptors of one source file, for
    // a field whose type has no name; all others have a name, functions and a class.
    enum class Scope : std::uint8_t { Builtin, Local, Named };

    std::string name;   // in C++, without prefix
    std::string label;  // what tools show
    Scope scope = Scope::Named;
    const SourceFile* home = nullptr;
    Span span;
    const Type* aliasOf = nullptr;  // then only name, home and span count

    Kind kind = Kind::Null;
    std::uint32_t tag = kNoTag;
    std::uint32_t outerTag = kNoTag;
    bool setOf = false;
    bool takesEnd = false;
    bool extensible = false;
    bool isValue = false;  // of an information object, or inside such a value: its record can be copied
    bool hasBounds = false;
    bool endsOnly = false;
    std::uint32_t lowerBound = 0;
    std::uint32_t upperBound = kNoBound;
    std::uint32_t capacity = 0;
    std::vector<Field> fields;
    const Type* element = nullptr;
    std::optional<Table> table;
    std::vector<NamedConstant> names;
};

// The type that an alias ends at, or the type itself.
inline const Type& base(const Type& type) {
    return type.aliasOf ? base(*type.aliasOf) : type;
}

struct Identifier {
    std::string name;
    Span span;
    std::vector<std::uint32_t> arcs;
};

struct Object {
    std::string name;
    std::string objectClass;
    Span span;
    const Identifier* id = nullptr;
    bool ownId = false;           // the identifier has no name of its own and is written beside the object
    const Type* value = nullptr;  // null: known, without a value type
};

struct ObjectSet {
    std::string name;
    std::string objectClass;
    Span span;
    std::vector<const Object*> objects;
};

// What one generated pair of files holds, in the order of the schema.
struct FileModel {
    const SourceFile* source;
    std::vector<Type*> types;  // named and local ones
    std::vector<Identifier*> identifiers;
    std::vector<Object*> objects;
    std::vector<ObjectSet*> sets;
};

struct Model {
    std::vector<FileModel> files;

    // Owners of what the files and each other point at.
    std::vector<std::unique_ptr<Type>> types;
    std::vector<std::unique_ptr<Identifier>> identifiers;
    std::vector<std::unique_ptr<Object>> objects;
    std::vector<std::unique_ptr<ObjectSet>> sets;
};

}  // namespace asn1gen

#endif
