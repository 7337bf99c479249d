#include "provider/find_algorithm.h"

#include "provider/platform_call.h"

namespace Mirvane {

bool CFindAlgIdIn::TryNextProv(unsigned int type, char const* name) {
    checkSoft(prov.Close());
    HCRYPTPROV acquired = 0;
    checkSoft(CryptAcquireContextA(&acquired, nullptr, name, type, CRYPT_VERIFYCONTEXT));
    prov.Attach(acquired);
    return lists(algId) && (algId2 == 0 || lists(algId2));
}

// Walks the whole list from its first record, so the order of the two algorithms in it does not matter.
bool CFindAlgIdIn::lists(ALG_ID id) {
    for (DWORD flags = CRYPT_FIRST;; flags = 0) {
        PROV_ENUMALGS_EX record = {};
        DWORD length = sizeof record;
        auto* const octets = reinterpret_cast<BYTE*>(&record);
        if (CryptGetProvParam(prov.GetHandle(), PP_ENUMALGS_EX, octets, &length, flags)) {
            if (record.aiAlgid == id) return true;
        } else if (GetLastError() == ERROR_NO_MORE_ITEMS) {
            return false;
        } else {
            failure::raiseLastError();
        }
    }
}

}  // namespace Mirvane
