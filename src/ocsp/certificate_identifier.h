// Names for a certificate that do not carry it whole: CCertID, the CertID of RFC 6960, 4.1.1, two hashes and
// the serial number; CCertIdWithSignature, which adds the hash of what was signed and the signature, so that
// two certificates of the same issuer and serial number are told apart.
//
// Both are plain values, and no field is ever checked: neither the length of a hash nor what is in a name.
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException; a last-error code is one by the rule of base/exception.h.
//
//     ASN1::CAlgorithmIdentifierEx sha256;
//     sha256.put_algorithm("2.16.840.1.101.3.4.2.1");
//     CCertID const question(sha256, certificate, issuerCertificate);
#ifndef MIRVANE_OCSP_CERTIFICATE_IDENTIFIER_H
#define MIRVANE_OCSP_CERTIFICATE_IDENTIFIER_H

#include "asn1/algorithm_identifier.h"
#include "asn1/big_integer.h"
#include "base/blob.h"

struct ASN1CTXT;
struct _CERT_CONTEXT;
class ASN1BERDecodeBuffer;
class ASN1BEREncodeBuffer;

namespace asn1data {
struct ASN1T_CertID;
struct ASN1T_CertIdWithSignature;
}  // namespace asn1data

namespace Mirvane::ASN1 {

// The serial number of a certificate that the platform has taken apart. Throws the last-error code if the
// platform does not encode it.
MIRVANE_API CBigInteger GetSerialFromCertContext(_CERT_CONTEXT const* certificate);

}  // namespace Mirvane::ASN1

namespace Mirvane::PKI::OCSP {

class CCertIdWithSignature;

// The steps of ASN1T_CertIdWithSignature_traits below, on their own.
MIRVANE_API void ASN1T_CertIdWithSignature_set(ASN1CTXT* ctxt, asn1data::ASN1T_CertIdWithSignature& record,
                                               CCertIdWithSignature const& value);
MIRVANE_API void ASN1T_CertIdWithSignature_get(asn1data::ASN1T_CertIdWithSignature const& record,
                                               CCertIdWithSignature& value);

class MIRVANE_API CCertID {
  public:
    // All fields empty.
    CCertID();
    CCertID(ASN1::CAlgorithmIdentifier const& hashAlgorithm, CBlob const& issuerNameHash,
            CBlob const& issuerKeyHash, ASN1::CBigInteger const& serialNumber);
    // The identifier of a certificate, from it and the certificate of its issuer, each in encoded form. The
    // name that is hashed is the issuer's as it stands in `certificate`, byte for byte; the subject of
    // `issuerCertificate` is not looked at, nor whether the one issued the other. The key is hashed without
    // tag, length and count of unused bits.
    //
    // Although it is const, `hashAlgorithm` keeps the platform's number that it is asked for. Two threads may
    // share it: see CAlgorithmIdentifierEx::get_algId.
    //
    // Throws the last-error code: of the platform for what is no certificate (0x80093102 for no bytes,
    // 0x80093103, 0x80093202), that of `issuerCertificate` first; 0x80090008 for an algorithm that is no hash
    // which the platform knows; that of the provider that does not hash. 0x80070057 for certificates above
    // 0x7FFFFFFF bytes.
    CCertID(ASN1::CAlgorithmIdentifierEx const& hashAlgorithm, CBlob const& certificate,
            CBlob const& issuerCertificate);
    CCertID(CCertID const& other);
    CCertID& operator=(CCertID const& other);
    ~CCertID();

    // The DER of CertID. Throws 0x80093101 for an algorithm that is no object identifier and for all that
    // does not encode, an empty serial number included; 0x80093106 if memory for a record fails.
    CBlob encode() const;
    // Reads the value at the start of the blob, in BER or DER. Throws 0x80093101 for what is no CertID; the
    // object is then as it was.
    void decode(CBlob const& encoded);

    // The algorithm of both hashes, with its parameters.
    ASN1::CAlgorithmIdentifier const& get_hashAlgorithm() const { return hashAlgorithm_; }
    CBlob const& get_issuerNameHash() const { return issuerNameHash_; }
    CBlob const& get_issuerKeyHash() const { return issuerKeyHash_; }
    ASN1::CBigInteger const& get_serialNumber() const { return serialNumber_; }

    void put_hashAlgorithm(ASN1::CAlgorithmIdentifier const& algorithm) { hashAlgorithm_ = algorithm; }
    void put_issuerNameHash(CBlob const& hash) { issuerNameHash_ = hash; }
    void put_issuerKeyHash(CBlob const& hash) { issuerKeyHash_ = hash; }
    void put_serialNumber(ASN1::CBigInteger const& number) { serialNumber_ = number; }

  private:
    friend struct ASN1T_CertID_traits;

    ASN1::CAlgorithmIdentifier hashAlgorithm_;
    CBlob issuerNameHash_;
    CBlob issuerKeyHash_;
    ASN1::CBigInteger serialNumber_;
};

// All four fields: one certificate has unequal identifiers under two hash algorithms, or under one with and
// without parameters. Serial numbers compare as CBigInteger.
MIRVANE_API bool operator==(CCertID const& left, CCertID const& right);
MIRVANE_API bool operator!=(CCertID const& left, CCertID const& right);

class MIRVANE_API CCertIdWithSignature {
  public:
    // All fields empty.
    CCertIdWithSignature();
    CCertIdWithSignature(CBlob const& issuer, ASN1::CBigInteger const& serialNumber,
                         CBlob const& tbsCertificateHash,
                         ASN1::CAlgorithmIdentifier const& signatureAlgorithm, CBlob const& signatureValue);
    // The identifier of an encoded certificate. The hash is the one that its signature algorithm has; the
    // algorithm is the one inside the part that is signed.
    //
    // Throws the last-error code: for what is no certificate as CCertID, 0x80090008 for a signature algorithm
    // without a known hash. A certificate that the platform reads but this library's codec refuses also
    // throws what stands in the last-error slot, which is meant and may be 0. 0x80070057 for more than
    // 0x7FFFFFFF bytes.
    explicit CCertIdWithSignature(CBlob const& certificate);
    CCertIdWithSignature(CCertIdWithSignature const& other);
    CCertIdWithSignature& operator=(CCertIdWithSignature const& other);
    ~CCertIdWithSignature();

    // The DER of CertIdWithSignature, in which `issuer` stands as it is. Throws as CCertID::encode does.
    CBlob encode() const;
    // As CCertID::decode. Bits of the two bit strings come as whole octets.
    void decode(CBlob const& encoded);

    // The encoded name.
    CBlob const& get_issuer() const { return issuer_; }
    ASN1::CBigInteger const& get_serialNumber() const { return serialNumber_; }
    CBlob const& get_tbsCertificateHash() const { return tbsCertificateHash_; }
    ASN1::CAlgorithmIdentifier const& get_signatureAlgorithm() const { return signatureAlgorithm_; }
    // In the byte order of the certificate.
    CBlob const& get_signatureValue() const { return signatureValue_; }

    void put_issuer(CBlob const& name) { issuer_ = name; }
    void put_serialNumber(ASN1::CBigInteger const& number) { serialNumber_ = number; }
    void put_tbsCertificateHash(CBlob const& hash) { tbsCertificateHash_ = hash; }
    void put_signatureAlgorithm(ASN1::CAlgorithmIdentifier const& algorithm) {
        signatureAlgorithm_ = algorithm;
    }
    void put_signatureValue(CBlob const& value) { signatureValue_ = value; }

  private:
    friend void ASN1T_CertIdWithSignature_get(asn1data::ASN1T_CertIdWithSignature const& record,
                                              CCertIdWithSignature& value);

    CBlob issuer_;
    ASN1::CBigInteger serialNumber_;
    CBlob tbsCertificateHash_;
    ASN1::CAlgorithmIdentifier signatureAlgorithm_;
    CBlob signatureValue_;
};

// All five fields; the issuer by its bytes, not as a name.
MIRVANE_API bool operator==(CCertIdWithSignature const& left, CCertIdWithSignature const& right);
MIRVANE_API bool operator!=(CCertIdWithSignature const& left, CCertIdWithSignature const& right);

// The ties between the values and their records, for the library's own code: records are not installed. `set`
// throws 0x80093101 for an algorithm that does not parse, 0x80093106 for memory that the context does not
// have; so does `copy`. `get` throws 0x80093101 for a serial number that is none.
struct MIRVANE_API ASN1T_CertID_traits {
    using ASN1_T = asn1data::ASN1T_CertID;

    static void set(ASN1CTXT* ctxt, ASN1_T& record, CCertID const& value);
    static void get(ASN1_T const& record, CCertID& value);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record);
};

struct MIRVANE_API ASN1T_CertIdWithSignature_traits {
    using ASN1_T = asn1data::ASN1T_CertIdWithSignature;

    static void set(ASN1CTXT* ctxt, ASN1_T& record, CCertIdWithSignature const& value);
    static void get(ASN1_T const& record, CCertIdWithSignature& value);
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record);
};

}  // namespace Mirvane::PKI::OCSP

#endif
