// Identifiers of the certificates that a signature speaks of: a hash of the whole encoded certificate and,
// where the signer wants it, the issuer's names with the serial number. CESSCertID hashes by SHA-1 (RFC 2634,
// 5.4.1), CESSCertIDv2 by an algorithm that stands in it (RFC 5035, 4), COtherCertID by either (RFC 5126,
// 5.7.3.3). They travel in the attributes of asn1/signing_certificate_attributes.h.
//
//   CESSCertIDv2 identifier(sha256OfCertificate);  // SHA-256 unless said otherwise
//   CIssuerSerial const issuerSerial(issuerNames, serialNumber);
//   identifier.put_issuerSerial(&issuerSerial);
//   CBlob const encoded = identifier.encode();
//
// Nothing here hashes, and no length is looked at. Two identifiers are compared by the loose rule of
// CIssuerSerial where it is present, so to find a certificate compare get_certHash() with a hash of it.
//
// All have these in common:
// - get_issuerSerial() gives null where it is absent. put_issuerSerial takes a copy; null makes it absent;
//   the argument may be what the object holds.
// - encode() gives the DER form. It throws 0x80093101 if there is none, as for an algorithm that is no object
//   identifier or does not take its parameters; 0x80070057 for an issuer's name of a kind that CGeneralName
//   does not hold; 0x80093106 for memory that an ASN.1 context does not have.
// - decode() reads the identifier at the start of the blob. It throws 0x80093101 for what is none, 0x80070057
//   as above; the object is then as it was.
// - A put_ or an assignment that fails leaves the object as it was.
//
// Objects own what they hold and copies are deep. Distinct objects may be used from distinct threads; one
// object belongs to one thread while it is changed. Failures are ATL::CAtlException. What a getter returns is
// valid until the object changes or dies.
#ifndef MIRVANE_ASN1_ESS_IDENTIFIERS_H
#define MIRVANE_ASN1_ESS_IDENTIFIERS_H

#include <list>
#include <memory>

#include "asn1/algorithm_identifier.h"
#include "asn1/issuer_serial.h"
#include "asn1/other_hash.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class CESSCertIDImpl;
class CESSCertIDv2Impl;
class COtherCertIDImpl;

class MIRVANE_API CESSCertID {
  public:
    // A hash without bytes, no issuerSerial.
    CESSCertID();
    explicit CESSCertID(CBlob const& hash);
    CESSCertID(CESSCertID const& other);
    ~CESSCertID();
    CESSCertID& operator=(CESSCertID const& other);

    CBlob const& get_certHash() const;
    CIssuerSerial const* get_issuerSerial() const;
    void put_certHash(CBlob const& hash);
    void put_issuerSerial(CIssuerSerial const* issuerSerial);

    CBlob encode() const;
    void decode(CBlob const& encoded);

    // Equal hashes, and the issuerSerials equal or both absent.
    bool operator==(CESSCertID const& other) const;
    bool operator!=(CESSCertID const& other) const { return !(*this == other); }

  private:
    std::unique_ptr<CESSCertIDImpl> impl_;  // never null
};

class MIRVANE_API CESSCertIDv2 {
  public:
    // SHA-256, a hash without bytes, no issuerSerial.
    CESSCertIDv2();
    // SHA-256.
    explicit CESSCertIDv2(CBlob const& hash);
    CESSCertIDv2(CBlob const& hash, CAlgorithmIdentifier const& alg);
    CESSCertIDv2(CESSCertIDv2 const& other);
    ~CESSCertIDv2();
    CESSCertIDv2& operator=(CESSCertIDv2 const& other);

    CAlgorithmIdentifier const& get_hashAlgorithm() const;
    CBlob const& get_certHash() const;
    CIssuerSerial const* get_issuerSerial() const;
    void put_hashAlgorithm(CAlgorithmIdentifier const& alg);
    void put_certHash(CBlob const& hash);
    void put_issuerSerial(CIssuerSerial const* issuerSerial);

    // SHA-256 is left out as the default, whatever its parameters, which is meant: they are then lost.
    CBlob encode() const;
    // An algorithm that is absent reads as SHA-256 without parameters.
    void decode(CBlob const& encoded);

    // Equal algorithms, parameters included, equal hashes, and the issuerSerials equal or both absent.
    bool operator==(CESSCertIDv2 const& other) const;
    bool operator!=(CESSCertIDv2 const& other) const { return !(*this == other); }

  private:
    std::unique_ptr<CESSCertIDv2Impl> impl_;  // never null
};

class MIRVANE_API COtherCertID {
  public:
    // An empty hash, which does not encode, no issuerSerial.
    COtherCertID();
    // A SHA-1 hash.
    explicit COtherCertID(CBlob const& hash);
    // A hash with its algorithm, be it SHA-1.
    COtherCertID(CBlob const& hash, CAlgorithmIdentifier const& alg);
    COtherCertID(COtherCertID const& other);
    ~COtherCertID();
    COtherCertID& operator=(COtherCertID const& other);

    COtherHash const& get_otherCertHash() const;
    CIssuerSerial const* get_issuerSerial() const;
    void put_otherCertHash(COtherHash const& hash);
    void put_issuerSerial(CIssuerSerial const* issuerSerial);

    CBlob encode() const;
    void decode(CBlob const& encoded);

    // Equal hashes, algorithm included, and the issuerSerials equal or both absent.
    bool operator==(COtherCertID const& other) const;
    bool operator!=(COtherCertID const& other) const { return !(*this == other); }
    // The same by COtherHash::compare_hashValue: of two hashes with their algorithms only the bytes count.
    bool compare_noHashParam(COtherCertID const& other) const;

  private:
    std::unique_ptr<COtherCertIDImpl> impl_;  // never null
};

class MIRVANE_API CESSCertIDList : public std::list<CESSCertID> {
  public:
    using std::list<CESSCertID>::list;
};

class MIRVANE_API CESSCertIDv2List : public std::list<CESSCertIDv2> {
  public:
    using std::list<CESSCertIDv2>::list;
};

class MIRVANE_API COtherCertIDList : public std::list<COtherCertID> {
  public:
    using std::list<COtherCertID>::list;
};

}  // namespace Mirvane::ASN1

#endif
