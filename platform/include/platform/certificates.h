// Certificates taken apart, names compared, integers encoded.
//
// Whatever a certificate context points to lives as long as the context does, and must not be written to.
#ifndef MIRVANE_PLATFORM_CERTIFICATES_H
#define MIRVANE_PLATFORM_CERTIFICATES_H

#include "platform/file_time.h"
#include "platform/provider.h"

enum : DWORD {
    X509_ASN_ENCODING = 0x00000001,
    PKCS_7_ASN_ENCODING = 0x00010000,
};

// Octets: their number and their place.
struct _CRYPTOAPI_BLOB {
    DWORD cbData;
    BYTE* pbData;
};
using CRYPT_INTEGER_BLOB = _CRYPTOAPI_BLOB;  // two's complement, least significant octet first
using CRYPT_OBJID_BLOB = _CRYPTOAPI_BLOB;
using CERT_NAME_BLOB = _CRYPTOAPI_BLOB;

// The octets of a bit string without the count of unused bits, which stands beside them.
struct _CRYPT_BIT_BLOB {
    DWORD cbData;
    BYTE* pbData;
    DWORD cUnusedBits;
};
using CRYPT_BIT_BLOB = _CRYPT_BIT_BLOB;

struct _CRYPT_ALGORITHM_IDENTIFIER {
    char* pszObjId;               // dotted text
    CRYPT_OBJID_BLOB Parameters;  // with tag and length; no octets if absent
};
using CRYPT_ALGORITHM_IDENTIFIER = _CRYPT_ALGORITHM_IDENTIFIER;

struct _CERT_PUBLIC_KEY_INFO {
    CRYPT_ALGORITHM_IDENTIFIER Algorithm;
    CRYPT_BIT_BLOB PublicKey;
};
using CERT_PUBLIC_KEY_INFO = _CERT_PUBLIC_KEY_INFO;

struct _CERT_EXTENSION {
    char* pszObjId;  // dotted text
    BOOL fCritical;
    CRYPT_OBJID_BLOB Value;  // the octets inside the OCTET STRING
};
using CERT_EXTENSION = _CERT_EXTENSION;

// The to-be-signed part of a certificate. Names are encoded, with tag and length.
struct _CERT_INFO {
    DWORD dwVersion;                                // 0 is v1, 2 is v3
    CRYPT_INTEGER_BLOB SerialNumber;                // all content octets of the INTEGER
    CRYPT_ALGORITHM_IDENTIFIER SignatureAlgorithm;  // the one inside the part that is signed
    CERT_NAME_BLOB Issuer;
    FILETIME NotBefore;  // a time before 1601 comes as the first file time, 0
    FILETIME NotAfter;
    CERT_NAME_BLOB Subject;
    CERT_PUBLIC_KEY_INFO SubjectPublicKeyInfo;
    CRYPT_BIT_BLOB IssuerUniqueId;  // no octets if absent
    CRYPT_BIT_BLOB SubjectUniqueId;
    DWORD cExtension;
    CERT_EXTENSION* rgExtension;
};
using CERT_INFO = _CERT_INFO;

struct _CERT_CONTEXT {
    DWORD dwCertEncodingType;
    BYTE* pbCertEncoded;  // a copy of the octets given
    DWORD cbCertEncoded;
    CERT_INFO* pCertInfo;
};
using CERT_CONTEXT = _CERT_CONTEXT;
using PCCERT_CONTEXT = const CERT_CONTEXT*;

// A structure type for CryptEncodeObject: a number in the place of a text, never read through.
#define X509_MULTI_BYTE_INTEGER (reinterpret_cast<const char*>(28))

extern "C" {

// Takes a certificate (RFC 5280, 4.1) apart; ended with CertFreeCertificateContext. BER is accepted, and
// nothing is encoded anew; algorithms may be unknown, and neither extensions nor keys are looked into. Null
// with CRYPT_E_ASN1_EOD for no octets, CRYPT_E_ASN1_NOEOD for octets behind the end, CRYPT_E_ASN1_CORRUPT for
// what is no certificate, has an arc of an object identifier above 128 bits, or a key, serial number or
// extension value in pieces.
MIRVANE_PLATFORM_API PCCERT_CONTEXT CertCreateCertificateContext(DWORD encodingType, const BYTE* encoded,
                                                                 DWORD length);

// Ends a context that CertCreateCertificateContext made; null is let pass. Always succeeds.
MIRVANE_PLATFORM_API BOOL CertFreeCertificateContext(PCCERT_CONTEXT certificate);

// Whether two encoded names are the same as RFC 5280, 7.1 compares them: without regard to the case of ASCII
// letters, to the amount of white space, and to the type of a string. The order of relative distinguished
// names matters. Equal octets are equal whatever they are; octets that are no name equal nothing else. Names
// that differ are no failure and leave the last error alone.
MIRVANE_PLATFORM_API BOOL CertCompareCertificateName(DWORD encodingType, const CERT_NAME_BLOB* one,
                                                     const CERT_NAME_BLOB* other);

// Encodes a CRYPT_INTEGER_BLOB as the shortest DER INTEGER; no octets are 0. `structureType` must be
// X509_MULTI_BYTE_INTEGER (ERROR_FILE_NOT_FOUND). `length` is the capacity of `encoded` in octets and
// afterwards the octets stored; with null `encoded` only the length is told. ERROR_MORE_DATA with the length
// wanted; E_INVALIDARG for a result above 0x7FFFFFFF octets.
MIRVANE_PLATFORM_API BOOL CryptEncodeObject(DWORD encodingType, const char* structureType,
                                            const void* structure, BYTE* encoded, DWORD* length);

// Hashes the to-be-signed part of a signed object, a certificate, as it stands, with the hash of the
// algorithm beside the signature; for RSASSA-PSS that is the hash of its parameters. `provider` is 0 or
// a live handle, which is not used (NTE_BAD_UID for another). `length` as above. The codes of
// CertCreateCertificateContext; NTE_BAD_ALGID for a signature without a hash of its own and for one that is
// not known or not installed; ERROR_MORE_DATA.
MIRVANE_PLATFORM_API BOOL CryptHashToBeSigned(HCRYPTPROV provider, DWORD encodingType, const BYTE* encoded,
                                              DWORD encodedLength, BYTE* hash, DWORD* length);

}  // extern "C"

#endif
