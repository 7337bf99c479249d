#include "provider/hashing.h"

#include "provider/find_algorithm.h"
#include "provider/platform_call.h"

namespace Mirvane {
namespace {

// One reference more on the context that a search holds; 0 if it could not be taken.
HCRYPTPROV share(CFindAlgIdIn const& search) {
    HCRYPTPROV const provider = search.prov.GetHandle();
    return CryptContextAddRef(provider, nullptr, 0) ? provider : 0;
}

// The provider to work with, in an owner that holds exactly the reference that was taken here.
HCRYPTPROV takeProvider(unsigned long long provider, unsigned int algId, ATL::CCryptProv& reference) {
    if (provider == 0) {
        reference.Attach(MVGetDefaultCSPThrow(algId, 0));
        checkHard(static_cast<bool>(reference));
        return reference.GetHandle();
    }
    if (CryptContextAddRef(provider, nullptr, 0)) reference.Attach(provider);
    return provider;
}

}  // namespace

unsigned long long MVGetDefaultCSPThrow(unsigned int algId, unsigned int algId2) {
    if (algId == 0) return 0;
    if (HCRYPTPROV const chosen = MVCAPI_I_CryptGetDefaultCryptProv(algId, algId2)) return chosen;
    CFindAlgIdInDefaultProviders byType(algId, algId2);
    byType.Enumerate();
    // Whether a context is held decides, not whether the last search succeeded; that is meant.
    if (byType.prov) return share(byType);
    CFindAlgIdInProviders byName(algId, algId2);
    byName.Enumerate();
    return byName.prov ? share(byName) : 0;
}

CBlob MakeHash(unsigned long long provider, unsigned int algId, CBlob const& data, unsigned long long* hash) {
    DWORD const dataLength = platformLength(data.cbData());
    ATL::CCryptProv reference;
    HCRYPTPROV const used = takeProvider(provider, algId, reference);
    ATL2::CCryptHashEx object;
    checkSoft(CryptCreateHash(used, algId, 0, 0, object.Place()));
    checkSoft(CryptHashData(object.GetHandle(), data.pbData(), dataLength, 0));
    DWORD size = 0;
    DWORD length = sizeof size;
    checkSoft(CryptGetHashParam(object.GetHandle(), HP_HASHSIZE, reinterpret_cast<BYTE*>(&size), &length, 0));
    // The blob keeps this size, even if the value should turn out shorter.
    CBlob value(static_cast<unsigned long>(size));
    length = size;
    checkSoft(CryptGetHashParam(object.GetHandle(), HP_HASHVAL, value.pbData(), &length, 0));
    if (hash != nullptr) *hash = object.Detach();
    return value;
}

}  // namespace Mirvane
