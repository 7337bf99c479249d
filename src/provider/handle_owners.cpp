#include "provider/handle_owners.h"

namespace ATL {

constinit CCryptHash CCryptHash::EmptyHash;
constinit CCryptKey CCryptKey::EmptyKey;

}  // namespace ATL

namespace ATL2 {

constinit ATL::CCryptProv EmptyProv;

}  // namespace ATL2
