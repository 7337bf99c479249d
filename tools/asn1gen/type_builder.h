// Turns the types of the tree into those of the model: gives each a name, a kind and its tags, and looks up
// what it refers to.
#ifndef MIRVANE_ASN1GEN_TYPE_BUILDER_H
#define MIRVANE_ASN1GEN_TYPE_BUILDER_H

#include <map>
#include <string>
#include <vector>

#include "asn1gen/constraints.h"
#include "asn1gen/model.h"
#include "asn1gen/symbols.h"
#include "asn1gen/syntax.h"

namespace asn1gen {

class TypeBuilder {
  public:
    // Where a type stands.
    struct Place {
        FileModel* file;
        bool implicitTags;
        bool takesEnd;
    };

    TypeBuilder(Model& model, const Symbols& symbols, Diagnostics& diagnostics);

    // Makes the type of an assignment known under its name, with its kind. All are declared before one is
    // defined.
    void declare(const syntax::TypeAssignment& assignment, FileModel& file);
    void declare(ObjectSet& set) { mSets.emplace(set.name, &set); }
    void define(const syntax::TypeAssignment& assignment, const Place& place);

    // The value type of an information object.
    const Type* objectValue(const syntax::Type& tree, const syntax::ObjectAssignment& object,
                            const Place& place);

  private:
    // Follows references to the first type that is none; null, reported, if there is no such type.
    const syntax::Type* follow(const syntax::Type& tree);
    Kind kindOf(const syntax::Type& tree);
    Kind listKind(const syntax::Type& element);

    Type& add(Type type, FileModel& file);
    Type& addNamed(const std::string& name, const Span& span, FileModel& file);
    const Type* builtin(const BuiltinType& type);
    const Type* unknown();

    void fill(Type& type, const syntax::Type& tree, const Place& place);
    void fillNames(Type& type, const syntax::Type& tree);
    void fillEnumerated(Type& type, const syntax::Type& tree);
    void fillNamedBits(Type& type, const syntax::Type& tree);
    void fillLimits(Type& type, const std::optional<Limits>& limits);
    void fillList(Type& type, const syntax::Type& tree, const Place& place);
    void fillFields(Type& type, const syntax::Type& tree, const Place& place);

    // The type of a component or an element: one with a name, or one that takes `name`, or one without.
    const Type* use(const syntax::Type& tree, const std::string& name, const Place& place);
    const Type* useReference(const syntax::Type& tree);
    const Type* useUnnamed(const syntax::Type& tree, const std::string& name, const Place& place);
    const Type* component(const syntax::Type& tree, const std::string& name, const Place& place);
    const Type* sharedList(const syntax::Type& tree, const Type& element, const Place& place);
    bool takesName(const syntax::Type& tree);

    void tagField(Field& field, const syntax::Type& tree, const Place& place);
    std::uint32_t tagWord(const syntax::Tag& tag, bool constructed);
    void setPresence(Field& field, const syntax::Field& tree, Type& owner);
    void setDefault(Field& field, const syntax::Value& value);
    std::optional<std::int64_t> defaultNumber(const Type& type, const syntax::Value& value);
    void addTable(Type& type, const syntax::Type& tree, std::size_t index,
                  const syntax::TableReference& reference, Table::Form form);
    void checkMembers(const Type& type);
    void refuse(const Span& span, std::string message) { mDiagnostics.error(span, std::move(message)); }

    Model& mModel;
    const Symbols& mSymbols;
    Diagnostics& mDiagnostics;
    ConstraintReader mConstraints;
    std::map<std::string, Type*, std::less<>> mNamed;  // by C++ name
    std::map<std::string, const Type*, std::less<>> mBuiltin;
    std::map<std::string, ObjectSet*, std::less<>> mSets;
    std::map<const SourceFile*, FileModel*> mFiles;
};

}  // namespace asn1gen

#endif
