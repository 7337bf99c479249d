#include "asn1gen/model_builder.h"

#include <set>

#include "asn1gen/symbols.h"
#include "asn1gen/type_builder.h"
#include "asn1gen/value_builder.h"

namespace asn1gen {
namespace {

using Form = syntax::Type::Form;

bool hasComponents(const syntax::Type& type) {
    return type.form == Form::Sequence || type.form == Form::Set || type.form == Form::Choice || type.element;
}

// The record of a value type is copied by shallow copies, which takes that what it holds inline can be copied
// as well.
void addValue(const Type& type, std::set<const Type*>& values) {
    if (!values.insert(&type).second) return;
    if (type.kind != Kind::Sequence && type.kind != Kind::Set) return;
    for (const Field& field : type.fields)
        addValue(base(*field.type), values);
}

class ModelBuilder {
  public:
    ModelBuilder(const std::vector<syntax::File>& files, Diagnostics& diagnostics)
        : mFiles(files),
          mModel(emptyModel(files)),
          mSymbols(files, diagnostics),
          mTypes(mModel, mSymbols, diagnostics),
          mValues(mModel, mSymbols, mTypes, diagnostics) {}

    // Everything is declared before it is used, and simple types are defined before those that look into
    // them.
    Model build() {
        eachType([&](const auto& type, const auto& place) { mTypes.declare(type, *place.file); });
        eachModule([&](const syntax::Module& module, const auto& place) { declareValues(module, place); });
        eachType([&](const auto& type, const auto& place) {
            if (!hasComponents(type.type)) mTypes.define(type, place);
        });
        eachType([&](const auto& type, const auto& place) {
            if (hasComponents(type.type)) mTypes.define(type, place);
        });
        eachModule([&](const syntax::Module& module, const auto& place) { addObjects(module, place); });
        eachModule([&](const syntax::Module& module, const auto&) { defineSets(module); });
        markValues();
        return std::move(mModel);
    }

  private:
    static Model emptyModel(const std::vector<syntax::File>& files) {
        Model model;
        for (const syntax::File& file : files)
            model.files.push_back({file.source, {}, {}, {}, {}});
        return model;
    }

    template <class Step>
    void eachModule(const Step& step) {
        for (std::size_t i = 0; i < mFiles.size(); ++i) {
            for (const syntax::Module& module : mFiles[i].modules) {
                step(module, TypeBuilder::Place{&mModel.files[i], module.implicitTags, false});
            }
        }
    }

    // What is defined a second time is passed over, here and below.
    template <class Step>
    void eachType(const Step& step) {
        eachModule([&](const syntax::Module& module, const TypeBuilder::Place& place) {
            for (const syntax::TypeAssignment& type : module.types) {
                if (mSymbols.findType(type.name.text) == &type) step(type, place);
            }
        });
    }

    void declareValues(const syntax::Module& module, const TypeBuilder::Place& place) {
        for (const syntax::IdentifierAssignment& identifier : module.identifiers) {
            if (mSymbols.findIdentifier(identifier.name.text) == &identifier)
                mValues.add(identifier, *place.file);
        }
        for (const syntax::SetAssignment& set : module.sets) {
            if (mSymbols.findSet(set.name.text) == &set) mValues.declare(set, *place.file);
        }
    }

    void addObjects(const syntax::Module& module, const TypeBuilder::Place& place) {
        for (const syntax::ObjectAssignment& object : module.objects) {
            if (mSymbols.findObject(object.name.text) == &object) mValues.add(object, place);
        }
    }

    void defineSets(const syntax::Module& module) {
        for (const syntax::SetAssignment& set : module.sets) {
            if (mSymbols.findSet(set.name.text) == &set) mValues.define(set);
        }
    }

    void markValues() {
        std::set<const Type*> values;
        for (const auto& object : mModel.objects) {
            if (object->value) addValue(base(*object->value), values);
        }
        for (const auto& type : mModel.types)
            type->isValue = values.contains(type.get());
    }

    const std::vector<syntax::File>& mFiles;
    Model mModel;
    Symbols mSymbols;
    TypeBuilder mTypes;
    ValueBuilder mValues;
};

}  // namespace

Model buildModel(const std::vector<syntax::File>& files, Diagnostics& diagnostics) {
    return ModelBuilder(files, diagnostics).build();
}

}  // namespace asn1gen
