#include "asn1gen/value_builder.h"

#include <algorithm>
#include <array>
#include <utility>

#include "asn1gen/names.h"

namespace asn1gen {
namespace {

constexpr std::size_t kMaxArcs = 128;

constexpr std::array<std::string_view, 9> kClasses = {
    "ATTRIBUTE",        "ALGORITHM-ID",       "CONTENT-TYPE", "ECONTENT-TYPE", "CERT-POLICY-QUALIFIER",
    "INFOTYPEANDVALUE", "OCSP-RESPONSE-TYPE", "EXTENSION",    "MATCHING-RULE"};

// The arcs at the root that may stand without their number (X.660, clause 7).
constexpr std::array<std::pair<std::string_view, std::uint32_t>, 5> kRoots = {
    {{"itu-t", 0}, {"ccitt", 0}, {"iso", 1}, {"joint-iso-itu-t", 2}, {"joint-iso-ccitt", 2}}};

}  // namespace

void ValueBuilder::add(const syntax::IdentifierAssignment& assignment, FileModel& file) {
    Identifier& identifier =
        newIdentifier(cppName(assignment.name.text), assignment.name.span, assignment.arcs);
    mIdentifiers.emplace(assignment.name.text, &identifier);
    file.identifiers.push_back(&identifier);
}

Identifier& ValueBuilder::newIdentifier(std::string name, const Span& span, const syntax::Arcs& arcs) {
    mModel.identifiers.push_back(
        std::make_unique<Identifier>(Identifier{std::move(name), span, resolve(arcs)}));
    Identifier& identifier = *mModel.identifiers.back();
    checkArcs(identifier.arcs, arcs.span);
    return identifier;
}

std::vector<std::uint32_t> ValueBuilder::resolve(const syntax::Arcs& arcs) {
    std::vector<std::uint32_t> resolved;
    for (std::size_t i = 0; i < arcs.arcs.size(); ++i) {
        const syntax::Arcs::Arc& arc = arcs.arcs[i];
        if (i == 0 && !arc.number) {
            resolved = resolveFirst(arc, arcs.arcs.size() == 1);
        } else if (!arc.number) {
            mDiagnostics.error(arc.span, "expected the number of the arc: write " + arc.name + "(number)");
            resolved.push_back(0);
        } else {
            if (*arc.number > UINT32_MAX) mDiagnostics.error(arc.span, "an arc has at most 32 bits");
            resolved.push_back(static_cast<std::uint32_t>(*arc.number));
        }
    }
    return resolved;
}

// The name of another identifier, or of a root.
std::vector<std::uint32_t> ValueBuilder::resolveFirst(const syntax::Arcs::Arc& arc, bool alone) {
    if (const auto* other = mSymbols.findIdentifier(arc.name)) {
        if (!mResolving.insert(arc.name).second) {
            mDiagnostics.error(arc.span, arc.name + " is defined by itself");
            return {1, 0};
        }
        std::vector<std::uint32_t> resolved = resolve(other->arcs);
        mResolving.erase(arc.name);
        return resolved;
    }
    for (const auto& [name, number] : kRoots) {
        if (!alone && name == arc.name) return {number};
    }
    mDiagnostics.error(arc.span, "no OBJECT IDENTIFIER is named " + arc.name);
    return {1, 0};
}

// X.660: the root has the arcs 0 to 2, and below 0 and 1 there are 40.
void ValueBuilder::checkArcs(const std::vector<std::uint32_t>& arcs, const Span& span) {
    if (arcs.size() < 2 || arcs.size() > kMaxArcs) {
        mDiagnostics.error(span, "an OBJECT IDENTIFIER has 2 to 128 arcs");
    } else if (arcs[0] > 2 || (arcs[0] < 2 && arcs[1] > 39)) {
        mDiagnostics.error(span, "the first arc is 0, 1 or 2, and the second below 40 under 0 and 1");
    }
}

bool ValueBuilder::checkClass(const Name& objectClass) {
    if (std::find(kClasses.begin(), kClasses.end(), objectClass.text) != kClasses.end()) return true;
    std::string known;
    for (std::string_view name : kClasses)
        known += (known.empty() ? "" : ", ") + std::string(name);
    mDiagnostics.error(objectClass.span,
                       "no object class is named " + objectClass.text + ": there are " + known);
    return false;
}

const Identifier* ValueBuilder::identifierOf(const syntax::ObjectAssignment& assignment, bool& own) {
    const std::vector<syntax::Arcs::Arc>& arcs = assignment.id.arcs;
    own = arcs.size() != 1 || arcs.front().number;
    if (own) {
        const std::string name = "k_" + cppName(assignment.name.text) + "_id";
        return &newIdentifier(name, assignment.name.span, assignment.id);
    }
    const auto known = mIdentifiers.find(arcs.front().name);
    if (known != mIdentifiers.end()) return known->second;
    mDiagnostics.error(arcs.front().span, "no OBJECT IDENTIFIER is named " + arcs.front().name);
    return nullptr;
}

void ValueBuilder::add(const syntax::ObjectAssignment& assignment, const TypeBuilder::Place& place) {
    auto object = std::make_unique<Object>();
    object->name = cppName(assignment.name.text);
    object->objectClass = assignment.objectClass.text;
    object->span = assignment.name.span;
    checkClass(assignment.objectClass);
    object->id = identifierOf(assignment, object->ownId);
    if (assignment.value) object->value = mTypes.objectValue(*assignment.value, assignment, place);
    mObjects.emplace(assignment.name.text, object.get());
    place.file->objects.push_back(object.get());
    mModel.objects.push_back(std::move(object));
}

void ValueBuilder::declare(const syntax::SetAssignment& assignment, FileModel& file) {
    auto set = std::make_unique<ObjectSet>();
    set->name = cppName(assignment.name.text);
    set->objectClass = assignment.objectClass.text;
    set->span = assignment.name.span;
    checkClass(assignment.objectClass);
    mTypes.declare(*set);
    mSets.emplace(assignment.name.text, set.get());
    file.sets.push_back(set.get());
    mModel.sets.push_back(std::move(set));
}

void ValueBuilder::define(const syntax::SetAssignment& assignment) {
    ObjectSet& set = *mSets.at(assignment.name.text);
    for (const Name& name : assignment.objects) {
        const auto found = mObjects.find(name.text);
        if (found == mObjects.end()) {
            mDiagnostics.error(name.span, "no object is named " + name.text);
            continue;
        }
        const Object& object = *found->second;
        const bool taken = std::any_of(set.objects.begin(), set.objects.end(), [&](const Object* other) {
            return other->id && object.id && other->id->arcs == object.id->arcs;
        });
        if (object.objectClass != set.objectClass) {
            mDiagnostics.error(name.span, name.text + " is of class " + object.objectClass +
                                              ", the set of class " + set.objectClass);
        } else if (taken) {
            mDiagnostics.error(name.span, "the identifier of " + name.text + " stands in the set already");
        }
        set.objects.push_back(&object);
    }
}

}  // namespace asn1gen
