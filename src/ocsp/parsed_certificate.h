// A certificate taken apart by the platform, on the stack. Not part of the interface.
#ifndef MIRVANE_OCSP_PARSED_CERTIFICATE_H
#define MIRVANE_OCSP_PARSED_CERTIFICATE_H

#include "base/blob.h"
#include "provider/handle_owners.h"
#include "provider/platform_call.h"

namespace Mirvane::PKI::OCSP {

// What the platform's functions on certificates are always asked for.
inline constexpr DWORD kCertificateEncoding = X509_ASN_ENCODING | PKCS_7_ASN_ENCODING;

// The context of an encoded certificate, which keeps no pointer to the blob. Throws the last-error code of a
// platform that refuses it; 0x80070057 where that gives no reason, and for more than 0x7FFFFFFF bytes.
inline ATL2::CCertContext parsedCertificate(CBlob const& encoded) {
    PCCERT_CONTEXT const context = CertCreateCertificateContext(kCertificateEncoding, encoded.pbData(),
                                                                platformLength(encoded.cbData()));
    if (context == nullptr) {
        failure::raiseLastErrorIfAny();
        failure::raise(failure::invalidArgument);
    }
    return ATL2::CCertContext(context);
}

// The octets of one field of a context.
template <typename Octets>
CBlob copyOf(Octets const& field) {
    return CBlob(field.pbData, field.cbData);
}

}  // namespace Mirvane::PKI::OCSP

#endif
