#include "asn1data/engine.h"
#include "asn1rt/object_identifier.h"

namespace asn1data {

const ObjectEntry* findObject(const ObjectSet& objects, const ASN1OBJID& id) {
    if (id.numids == 0 || id.numids > ASN1_K_MAXSUBIDS) return nullptr;
    // Most of the others differ in their last arc.
    const std::uint32_t last = id.numids - 1;
    for (const ObjectEntry* entry = objects.entries; entry != objects.entries + objects.count; ++entry) {
        if (entry->id->subid[last] == id.subid[last] && *entry->id == id) return entry;
    }
    return nullptr;
}

}  // namespace asn1data
