// Walks through the platform's lists of provider types and of providers. A class derived from an enumerator
// tells for each entry whether the walk goes on.
#ifndef MIRVANE_PROVIDER_ENUMERATORS_H
#define MIRVANE_PROVIDER_ENUMERATORS_H

#include <algorithm>
#include <cstdint>

#include "asn1rt/export.h"
#include "platform/last_error.h"
#include "platform/provider.h"
#include "provider/temp_buffer.h"

namespace ATL2 {

// The room for a name when the platform asks for `wanted` octets after `capacity` were too few: double of
// what it asks. 0 if it asks for no more than there were, or for more than the interface can count.
inline DWORD nameCapacity(DWORD wanted, DWORD capacity) {
    std::uint64_t const doubled = std::uint64_t{wanted} * 2;
    return wanted > capacity && doubled <= 0x7FFFFFFF ? static_cast<DWORD>(doubled) : 0;
}

template <typename Char>
class MIRVANE_API CCryptProviderTypesEnumT {
  public:
    // True to go on.
    virtual bool OnType(unsigned int type, Char const* name) = 0;
    virtual ~CCryptProviderTypesEnumT() = default;

    // Walks until OnType stops it, the list ends, or the platform fails in a way that a larger buffer does
    // not mend. Passes on what OnType throws; 0x8007000E without memory for a name.
    void Enumerate() {
        DWORD capacity = innerCapacity;
        bool isRetry = false;
        for (DWORD index = 0;;) {
            DWORD type = 0;
            DWORD length = capacity;
            Char* const name = m_name.Pointer();
            name[0] = 0;
            if (CryptEnumProviderTypesA(index, nullptr, 0, &type, name, &length)) {
                if (!OnType(type, name)) return;
                ++index;
                isRetry = false;
                continue;
            }
            if (isRetry || GetLastError() != ERROR_MORE_DATA) return;
            capacity = nameCapacity(length, capacity);
            if (capacity == 0) return;
            m_name.Reallocate(capacity);
            isRetry = true;
        }
    }

  private:
    static constexpr DWORD innerCapacity = 128;
    CTempBufferEx<Char, innerCapacity> m_name;
};

template <typename Char>
class MIRVANE_API CCryptProvidersEnumT {
  public:
    // True to go on.
    virtual bool OnProv(Char const* name, unsigned int type) = 0;
    virtual ~CCryptProvidersEnumT() = default;

    // As above, but a provider that cannot be listed is passed over, where the walk of types stops.
    void Enumerate() {
        // Ends the walk over a platform that never tells the end of its list.
        constexpr DWORD lastIndex = 0xFFFF;
        DWORD capacity = innerCapacity;
        bool isRetry = false;
        for (DWORD index = 0; index <= lastIndex;) {
            DWORD type = 0;
            DWORD length = capacity;
            Char* const name = m_name.Pointer();
            name[0] = 0;
            bool goesOn = true;
            if (CryptEnumProvidersA(index, nullptr, 0, &type, name, &length)) {
                goesOn = OnProv(name, type);
            } else if (DWORD const error = GetLastError(); error == ERROR_NO_MORE_ITEMS) {
                goesOn = false;
            } else if (!isRetry && error == ERROR_MORE_DATA) {
                capacity = nameCapacity(length, capacity);
                if (capacity == 0) return;
                m_name.Reallocate(capacity);
                isRetry = true;
                continue;
            }
            if (!goesOn) return;
            ++index;
            isRetry = false;
        }
    }

  private:
    static constexpr DWORD innerCapacity = 256;
    CTempBufferEx<Char, innerCapacity> m_name;
};

}  // namespace ATL2

#endif
