#include "asn1gen/checker.h"

#include <algorithm>
#include <map>
#include <set>

namespace asn1gen {
namespace {

// The tags that a value of a type can begin with, class and number.
struct FirstTags {
    bool any = false;
    std::set<std::uint32_t> tags;

    bool overlaps(const FirstTags& other) const {
        return std::any_of(tags.begin(), tags.end(),
                           [&](std::uint32_t tag) { return other.tags.contains(tag); });
    }
    void add(const FirstTags& other) {
        any = any || other.any;
        tags.insert(other.tags.begin(), other.tags.end());
    }
};

FirstTags firstTags(const Field& field, std::set<const Type*>& seen);

FirstTags firstTags(const Type& alias, std::set<const Type*>& seen) {
    const Type& type = base(alias);
    FirstTags result;
    if (type.outerTag != kNoTag || type.tag != kNoTag) {
        result.tags.insert((type.outerTag != kNoTag ? type.outerTag : type.tag) & ~kConstructed);
    } else if (type.kind == Kind::Choice) {
        if (!seen.insert(&type).second) return result;
        for (const Field& field : type.fields)
            result.add(firstTags(field, seen));
    } else {
        result.any = true;
    }
    return result;
}

FirstTags firstTags(const Field& field, std::set<const Type*>& seen) {
    if (field.tag == kNoTag) return firstTags(*field.type, seen);
    FirstTags result;
    result.tags.insert(field.tag & ~kConstructed);
    return result;
}

FirstTags firstTags(const Field& field) {
    std::set<const Type*> seen;
    return firstTags(field, seen);
}

void reportSame(const Field& field, const Field& other, Diagnostics& diagnostics) {
    diagnostics.error(field.span,
                      field.notation + " has the same tag as " + other.notation + ": give one of them a tag");
}

// CHOICE and SET: every two differ, and there is one open type at most.
void checkAll(const Type& type, Diagnostics& diagnostics) {
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
        const FirstTags tags = firstTags(type.fields[i]);
        for (std::size_t j = 0; j < i; ++j) {
            const FirstTags other = firstTags(type.fields[j]);
            if (!tags.overlaps(other) && !(tags.any && other.any)) continue;
            reportSame(type.fields[i], type.fields[j], diagnostics);
            break;
        }
    }
}

// SEQUENCE: a required component differs from those right before it that may be absent. Two that may both be
// absent can be of one tag, as published modules have it: the first one takes the element.
void checkSequence(const Type& type, Diagnostics& diagnostics) {
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
        const Field& field = type.fields[i];
        const FirstTags tags = firstTags(field);
        for (std::size_t j = i; j-- > 0 && type.fields[j].presence != Presence::Required;) {
            const Field& before = type.fields[j];
            const FirstTags other = firstTags(before);
            if (other.any) {
                diagnostics.error(field.span, field.notation + " is never reached: the optional open type " +
                                                  before.notation + " takes it; put a tag on one of them");
            } else if (field.presence == Presence::Required && tags.overlaps(other)) {
                reportSame(field, before, diagnostics);
                break;
            }
        }
    }
}

// Depth first, so that what is needed comes first; otherwise in the order of the schema.
class Orderer {
  public:
    explicit Orderer(Diagnostics& diagnostics) : mDiagnostics(diagnostics) {}

    void visit(const Type& type) {
        if (mDone.contains(&type)) return;
        if (const auto open = std::find(mOpen.begin(), mOpen.end(), &type); open != mOpen.end()) {
            return reportCycle(open);
        }
        mOpen.push_back(&type);
        for (const Type* needed : neededTypes(type))
            visit(*needed);
        mOpen.pop_back();
        mDone.insert(&type);
        mOrder.push_back(&type);
    }

    const std::vector<const Type*>& order() const { return mOrder; }

  private:
    void reportCycle(std::vector<const Type*>::const_iterator open) {
        std::string path;
        for (auto at = open; at != mOpen.end(); ++at)
            path += (*at)->label + " holds ";
        mDiagnostics.error((*open)->span, "a record cannot hold itself (" + path + (*open)->label +
                                              "): put a CHOICE or a SEQUENCE OF between");
    }

    Diagnostics& mDiagnostics;
    std::set<const Type*> mDone;
    std::vector<const Type*> mOpen;
    std::vector<const Type*> mOrder;
};

using Includes = std::map<const SourceFile*, std::map<const SourceFile*, const Type*>>;

// Which file needs which, and a type that needs it so.
Includes includesOf(const Model& model) {
    Includes includes;
    for (const FileModel& file : model.files) {
        for (const Type* type : file.types) {
            for (const Type* needed : neededTypes(*type)) {
                if (needed->home != file.source) includes[file.source].emplace(needed->home, type);
            }
        }
    }
    return includes;
}

bool reaches(const Includes& includes, const SourceFile* from, const SourceFile* to,
             std::set<const SourceFile*>& seen) {
    if (!seen.insert(from).second) return false;
    const auto found = includes.find(from);
    if (found == includes.end()) return false;
    return std::any_of(found->second.begin(), found->second.end(), [&](const auto& next) {
        return next.first == to || reaches(includes, next.first, to, seen);
    });
}

}  // namespace

std::vector<const Type*> neededTypes(const Type& type) {
    std::vector<const Type*> needed;
    const auto add = [&](const Type& other) {
        if (other.scope == Type::Scope::Named && hasStructure(other.kind)) needed.push_back(&other);
    };
    if (type.aliasOf) {
        needed.push_back(type.aliasOf);
    } else if (type.kind == Kind::Array) {
        add(base(*type.element));
    } else if (type.kind == Kind::Sequence || type.kind == Kind::Set) {
        for (const Field& field : type.fields) {
            // Through an alias the record itself is needed; the alias is only another name, which may be
            // repeated.
            add(base(*field.type));
        }
    }
    return needed;
}

void checkTags(const Model& model, Diagnostics& diagnostics) {
    for (const FileModel& file : model.files) {
        for (const Type* type : file.types) {
            if (type->aliasOf) continue;
            if (type->kind == Kind::Choice || type->kind == Kind::Set) checkAll(*type, diagnostics);
            if (type->kind == Kind::Sequence) checkSequence(*type, diagnostics);
        }
    }
}

void orderTypes(Model& model, Diagnostics& diagnostics) {
    Orderer orderer(diagnostics);
    for (const FileModel& file : model.files) {
        for (const Type* type : file.types)
            orderer.visit(*type);
    }
    std::map<const Type*, std::size_t> rank;
    for (const Type* type : orderer.order())
        rank.emplace(type, rank.size());
    for (FileModel& file : model.files) {
        std::stable_sort(file.types.begin(), file.types.end(),
                         [&](const Type* left, const Type* right) { return rank[left] < rank[right]; });
    }
}

void checkIncludes(const Model& model, Diagnostics& diagnostics) {
    const Includes includes = includesOf(model);
    for (const auto& [file, others] : includes) {
        for (const auto& [other, type] : others) {
            std::set<const SourceFile*> seen;
            if (!reaches(includes, other, file, seen)) continue;
            diagnostics.error(type->span, type->label + " needs a type of " + other->path +
                                              ", which needs this file: move one of the types");
        }
    }
}

}  // namespace asn1gen
