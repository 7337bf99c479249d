#include "asn1data/engine.h"
#include "asn1rt/object_identifier.h"

namespace asn1data {

const ObjectEntry* findObject(const ObjectSet& objects, const ASN1OBJID& id) {
    if (id.numids == 0) return nullptr;
    for (const ObjectEntry* entry = objects.entries; entry != objects.entries + objects.count; ++entry) {
        if (*entry->id == id) return entry;
    }
    return nullptr;
}

}  // namespace asn1data
