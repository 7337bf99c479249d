#include "asn1gen/symbols.h"

#include "asn1gen/names.h"

namespace asn1gen {

Symbols::Symbols(const std::vector<syntax::File>& files, Diagnostics& diagnostics)
    : mDiagnostics(diagnostics) {
    for (const syntax::File& file : files) {
        for (const syntax::Module& module : file.modules) {
            if (!mModules.emplace(module.name.text, &module).second) {
                mDiagnostics.error(module.name.span, "module " + module.name.text + " is defined twice");
            }
            add(module.types, mTypes);
            add(module.sets, mSets);
            add(module.integers, mIntegers);
            add(module.identifiers, mIdentifiers);
            add(module.objects, mObjects);
        }
    }
    for (const auto& [name, module] : mModules)
        checkImports(*module);
}

template <class T>
void Symbols::add(const std::vector<T>& definitions, Index<T>& index) {
    for (const T& definition : definitions) {
        if (claim(definition.name)) index.emplace(definition.name.text, &definition);
    }
}

bool Symbols::claim(const Name& name) {
    const auto [found, isNew] = mClaimed.emplace(cppName(name.text), name.span);
    if (isNew) return true;
    const Span& first = found->second;
    const std::string written = first.file->text.substr(first.begin, first.end - first.begin);
    mDiagnostics.error(name.span,
                       name.text + " is defined twice" +
                           (written == name.text ? "" : ": " + written + " has the same name in C++") +
                           ", first in " + first.file->path);
    return false;
}

void Symbols::checkImports(const syntax::Module& module) {
    for (const syntax::Import& import : module.imports) {
        if (!mModules.contains(import.module.text)) {
            mDiagnostics.error(import.module.span, "no file has a module " + import.module.text +
                                                       ": name one that is there, or leave IMPORTS out");
            continue;
        }
        for (const Name& symbol : import.symbols) {
            if (!isDefined(symbol.text)) {
                mDiagnostics.error(symbol.span, symbol.text + " is imported and not defined anywhere");
            }
        }
    }
}

bool Symbols::isDefined(std::string_view name) const {
    return findType(name) || findSet(name) || findInteger(name) || findIdentifier(name) || findObject(name);
}

}  // namespace asn1gen
