// Owners of the platform's handles, for use on the stack: what was acquired is given back when an exception
// passes. 0 is no handle and never reaches the platform. An owner belongs to one thread at a time.
#ifndef MIRVANE_PROVIDER_HANDLE_OWNERS_H
#define MIRVANE_PROVIDER_HANDLE_OWNERS_H

#include <utility>

#include "asn1rt/export.h"
#include "platform/certificates.h"
#include "platform/hash.h"
#include "platform/keys.h"
#include "platform/last_error.h"

namespace ATL2 {

// One handle, which `close` ends; it tells whether it could. Neither copied nor moved.
template <typename HandleType, bool (*close)(HandleType)>
class MIRVANE_API CHandleOwner {
  public:
    constexpr CHandleOwner() noexcept = default;
    // Takes the handle over.
    constexpr explicit CHandleOwner(HandleType handle) noexcept : m_handle(handle) {}
    ~CHandleOwner() { Close(); }
    CHandleOwner(CHandleOwner const&) = delete;
    CHandleOwner& operator=(CHandleOwner const&) = delete;

    HandleType GetHandle() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != HandleType{}; }

    // For a platform function to put a handle into; the owner must be empty.
    HandleType* Place() noexcept { return &m_handle; }
    // Takes a handle over; the owner must be empty.
    void Attach(HandleType handle) noexcept { m_handle = handle; }
    // Gives the handle away.
    HandleType Detach() noexcept { return std::exchange(m_handle, HandleType{}); }

    // Ends the handle, if there is one. False if the platform could not, with the reason in the last-error
    // slot; the handle then stays.
    bool Close() noexcept {
        if (m_handle == HandleType{}) return true;
        if (!close(m_handle)) return false;
        m_handle = HandleType{};
        return true;
    }

  private:
    HandleType m_handle{};
};

inline bool closeProvider(HCRYPTPROV provider) {
    return CryptReleaseContext(provider, 0) != 0;
}

// Nobody asks whether a hash, a key or a certificate context could be ended: the owner is empty afterwards.
inline bool closeHash(HCRYPTHASH hash) {
    CryptDestroyHash(hash);
    return true;
}

inline bool closeKey(HCRYPTKEY key) {
    CryptDestroyKey(key);
    return true;
}

inline bool closeCertificate(PCCERT_CONTEXT certificate) {
    CertFreeCertificateContext(certificate);
    return true;
}

}  // namespace ATL2

namespace ATL {

class MIRVANE_API CCryptProv : public ATL2::CHandleOwner<HCRYPTPROV, ATL2::closeProvider> {
  public:
    using CHandleOwner::CHandleOwner;
};

class MIRVANE_API CCryptHash : public ATL2::CHandleOwner<HCRYPTHASH, ATL2::closeHash> {
  public:
    using CHandleOwner::CHandleOwner;
    static CCryptHash EmptyHash;  // of handle 0
};

class CCryptSHAHash : public ATL2::CHandleOwner<HCRYPTHASH, ATL2::closeHash> {
  public:
    using CHandleOwner::CHandleOwner;
};

class MIRVANE_API CCryptKey : public ATL2::CHandleOwner<HCRYPTKEY, ATL2::closeKey> {
  public:
    using CHandleOwner::CHandleOwner;
    static CCryptKey EmptyKey;  // of handle 0
};

}  // namespace ATL

namespace ATL2 {

class CCryptHashEx : public CHandleOwner<HCRYPTHASH, closeHash> {
  public:
    using CHandleOwner::CHandleOwner;
};

class CCertContext : public CHandleOwner<PCCERT_CONTEXT, closeCertificate> {
  public:
    using CHandleOwner::CHandleOwner;
    CERT_INFO const& Info() const noexcept { return *GetHandle()->pCertInfo; }
};

extern ATL::CCryptProv EmptyProv;  // of handle 0

}  // namespace ATL2

#endif
