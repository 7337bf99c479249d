// The search for a provider that knows given algorithms.
//
// Nothing here is for other programs, but the type information of the classes is exported: their names are
// part of the library's binary interface.
#ifndef MIRVANE_PROVIDER_FIND_ALGORITHM_H
#define MIRVANE_PROVIDER_FIND_ALGORITHM_H

#include "platform/algorithms.h"
#include "provider/enumerators.h"
#include "provider/handle_owners.h"

#define MIRVANE_INTERNAL __attribute__((visibility("hidden")))

namespace Mirvane {

// The state of a search. A search that did not succeed keeps the context tried last, which is meant: see
// MVGetDefaultCSPThrow.
class MIRVANE_API CFindAlgIdIn {
  public:
    CFindAlgIdIn(ALG_ID id, ALG_ID id2) : algId(id), algId2(id2) {}

    // Gives up the context held and acquires the provider that type and name tell, or the type's default one
    // for a null name. Whether that provider lists the algorithms. Throws the last-error code if either step
    // fails (soft), or if listing fails otherwise than by the end of the list (hard).
    MIRVANE_INTERNAL bool TryNextProv(unsigned int type, char const* name);

    ALG_ID algId;          // must be there; never 0
    ALG_ID algId2;         // must be there too, unless it is 0
    ATL::CCryptProv prov;  // the context tried last

  private:
    MIRVANE_INTERNAL bool lists(ALG_ID id);
};

class MIRVANE_API CFindAlgIdInDefaultProviders : public ATL2::CCryptProviderTypesEnumT<char>,
                                                 public CFindAlgIdIn {
  public:
    using CFindAlgIdIn::CFindAlgIdIn;
    // Found means stop.
    bool OnType(unsigned int type, char const*) override { return !TryNextProv(type, nullptr); }
};

class MIRVANE_API CFindAlgIdInProviders : public ATL2::CCryptProvidersEnumT<char>, public CFindAlgIdIn {
  public:
    using CFindAlgIdIn::CFindAlgIdIn;
    bool OnProv(char const* name, unsigned int type) override { return !TryNextProv(type, name); }
};

}  // namespace Mirvane

#endif
