// Turns object identifiers, information objects and object sets of the tree into those of the model.
#ifndef MIRVANE_ASN1GEN_VALUE_BUILDER_H
#define MIRVANE_ASN1GEN_VALUE_BUILDER_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "asn1gen/model.h"
#include "asn1gen/symbols.h"
#include "asn1gen/syntax.h"
#include "asn1gen/type_builder.h"

namespace asn1gen {

class ValueBuilder {
  public:
    ValueBuilder(Model& model, const Symbols& symbols, TypeBuilder& types, Diagnostics& diagnostics)
        : mModel(model), mSymbols(symbols), mTypes(types), mDiagnostics(diagnostics) {}

    void add(const syntax::IdentifierAssignment& assignment, FileModel& file);
    // Identifiers and types are there already.
    void add(const syntax::ObjectAssignment& assignment, const TypeBuilder::Place& place);
    // The set as such, so that tables can name it, and what it holds once objects are there.
    void declare(const syntax::SetAssignment& assignment, FileModel& file);
    void define(const syntax::SetAssignment& assignment);

  private:
    Identifier& newIdentifier(std::string name, const Span& span, const syntax::Arcs& arcs);
    // All arcs from the root. What is wrong is reported; the result is then of no use.
    std::vector<std::uint32_t> resolve(const syntax::Arcs& arcs);
    std::vector<std::uint32_t> resolveFirst(const syntax::Arcs::Arc& arc, bool alone);
    void checkArcs(const std::vector<std::uint32_t>& arcs, const Span& span);
    const Identifier* identifierOf(const syntax::ObjectAssignment& assignment, bool& own);
    bool checkClass(const Name& objectClass);

    Model& mModel;
    const Symbols& mSymbols;
    TypeBuilder& mTypes;
    Diagnostics& mDiagnostics;
    std::map<std::string, Identifier*> mIdentifiers;  // by name in the schema
    std::map<std::string, Object*> mObjects;
    std::map<std::string, ObjectSet*> mSets;
    std::set<std::string> mResolving;
};

}  // namespace asn1gen

#endif
