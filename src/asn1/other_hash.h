// A hash of a certificate as electronic signatures carry it (RFC 5126, 5.7.3.3): COtherHashAlgAndValue, a
// hash with its algorithm; COtherHash, the choice between such a pair and a bare SHA-1 hash.
//
//   CAlgorithmIdentifier const sha256("2.16.840.1.101.3.4.2.1");
//   COtherHash const hash(COtherHashAlgAndValue(value, sha256));
//   if (CBlob const* sha1 = hash.get_sha1Hash()) { /* another alternative: null here */ }
//
// Nothing here hashes. Objects own what they hold and copies are deep. Distinct objects may be used from
// distinct threads; one object belongs to one thread while it is changed. Failures are ATL::CAtlException.
// What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_OTHER_HASH_H
#define MIRVANE_ASN1_OTHER_HASH_H

#include <memory>

#include "asn1/algorithm_identifier.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class COtherHashImpl;

class MIRVANE_API COtherHashAlgAndValue {
  public:
    // An empty algorithm, which does not encode, and no bytes.
    COtherHashAlgAndValue();
    COtherHashAlgAndValue(CBlob const& value, CAlgorithmIdentifier const& alg);
    COtherHashAlgAndValue(COtherHashAlgAndValue const& other);
    ~COtherHashAlgAndValue();
    // A failure leaves the object as it was.
    COtherHashAlgAndValue& operator=(COtherHashAlgAndValue const& other);

    CAlgorithmIdentifier const& get_hashAlgorithm() const { return hashAlgorithm_; }
    CBlob const& get_hashValue() const { return hashValue_; }
    void put_hashAlgorithm(CAlgorithmIdentifier const& alg) { hashAlgorithm_ = alg; }
    void put_hashValue(CBlob const& value) { hashValue_ = value; }

    // The DER form. Throws 0x80093101 for an algorithm that does not encode, 0x80093106 for memory that an
    // ASN.1 context does not have.
    CBlob encode() const;
    // Reads the value at the start of the blob. Throws 0x80093101 for what is none; the object is then as it
    // was.
    void decode(CBlob const& encoded);

    // The same algorithm, parameters included, and the same bytes.
    bool operator==(COtherHashAlgAndValue const& other) const;
    bool operator!=(COtherHashAlgAndValue const& other) const { return !(*this == other); }
    // The same bytes, whatever the algorithms.
    bool compare_hashValue(COtherHashAlgAndValue const& other) const;

  private:
    CAlgorithmIdentifier hashAlgorithm_;
    CBlob hashValue_;
};

class MIRVANE_API COtherHash {
  public:
    enum Type : unsigned int { sha1Hash = 1, otherHash = 2 };

    // Empty: type 0 and no value.
    COtherHash();
    // A SHA-1 hash; its length is not looked at.
    explicit COtherHash(CBlob const& hash);
    COtherHash(COtherHashAlgAndValue const& hash);
    // Of a cleared object a cleared one.
    COtherHash(COtherHash const& other);
    virtual ~COtherHash();
    // A failure leaves the object as it was. What is assigned from a cleared object is cleared as well.
    COtherHash& operator=(COtherHash const& other);

    // Frees the value. The object may then only be assigned to, copied or destroyed.
    void clear();

    // A Type, or 0.
    unsigned int get_type() const;
    // The value, or null if another alternative is held.
    CBlob const* get_sha1Hash() const;
    COtherHashAlgAndValue const* get_otherHash() const;
    // Make this the alternative, with a copy of the value, which may be the object's own. A failure leaves
    // the object as it was.
    void put_sha1Hash(CBlob const& hash);
    void put_otherHash(COtherHashAlgAndValue const& hash);

    // The DER form. Throws 0x80093101 for an empty object and for an algorithm that does not encode,
    // 0x80093106 for memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Reads the value at the start of the blob. Throws 0x80093101 for what is none; the object is then as it
    // was.
    void decode(CBlob const& encoded);

    // The same alternative with equal values; two empty objects are equal.
    bool operator==(COtherHash const& other) const;
    bool operator!=(COtherHash const& other) const { return !(*this == other); }
    // The same alternative and the same bytes of the hash, whatever the algorithms.
    bool compare_hashValue(COtherHash const& other) const;

  private:
    std::unique_ptr<COtherHashImpl> impl_;  // null when cleared
};

}  // namespace Mirvane::ASN1

#endif
