// Who defines which name. All files share one space of types and sets and one of values and objects, whatever
// modules they are in: the C++ they become has no modules.
#ifndef MIRVANE_ASN1GEN_SYMBOLS_H
#define MIRVANE_ASN1GEN_SYMBOLS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "asn1gen/source.h"
#include "asn1gen/syntax.h"

namespace asn1gen {

class Symbols {
  public:
    // Collects the definitions of all files. Reports names that are defined twice, also as C++ names, and
    // imports of what is not there; the first definition of a name counts. `files` outlives the object.
    Symbols(const std::vector<syntax::File>& files, Diagnostics& diagnostics);

    // Null if there is none; reports nothing.
    const syntax::TypeAssignment* findType(std::string_view name) const { return find(mTypes, name); }
    const syntax::IntegerAssignment* findInteger(std::string_view name) const {
        return find(mIntegers, name);
    }
    const syntax::IdentifierAssignment* findIdentifier(std::string_view name) const {
        return find(mIdentifiers, name);
    }
    const syntax::ObjectAssignment* findObject(std::string_view name) const { return find(mObjects, name); }
    const syntax::SetAssignment* findSet(std::string_view name) const { return find(mSets, name); }

  private:
    template <class T>
    using Index = std::map<std::string, const T*, std::less<>>;

    template <class T>
    static const T* find(const Index<T>& index, std::string_view name) {
        const auto found = index.find(name);
        return found == index.end() ? nullptr : found->second;
    }

    // Adds all definitions of one kind, each once.
    template <class T>
    void add(const std::vector<T>& definitions, Index<T>& index);
    bool claim(const Name& name);
    void checkImports(const syntax::Module& module);
    bool isDefined(std::string_view name) const;

    Diagnostics& mDiagnostics;
    std::map<std::string, const syntax::Module*, std::less<>> mModules;
    std::map<std::string, Span> mClaimed;  // C++ names
    Index<syntax::TypeAssignment> mTypes;
    Index<syntax::IntegerAssignment> mIntegers;
    Index<syntax::IdentifierAssignment> mIdentifiers;
    Index<syntax::ObjectAssignment> mObjects;
    Index<syntax::SetAssignment> mSets;
};

}  // namespace asn1gen

#endif
