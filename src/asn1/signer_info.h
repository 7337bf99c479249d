// CSignerInfo, what a signed CMS message tells of one signer (SignerInfo of RFC 5652, 5.3), without the
// attributes. The library makes it from a record of the message (asn1/signer_info_traits.h, which is not
// installed), and does not encode it.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_SIGNER_INFO_H
#define MIRVANE_ASN1_SIGNER_INFO_H

#include <cstdint>

#include "asn1/algorithm_identifier.h"
#include "asn1/big_integer.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CSignerInfo {
  public:
    // Version 0, and everything else empty.
    CSignerInfo();
    CSignerInfo(CSignerInfo const& other);
    // If memory fails, some fields may be those of `other` already.
    CSignerInfo& operator=(CSignerInfo const& other);

    unsigned int get_version() const { return version_; }
    // The encoded Name of who issued the signer's certificate.
    CBlob const& get_issuer() const { return issuer_; }
    // That of the signer's certificate.
    CBigInteger const& get_serialNumber() const { return serialNumber_; }
    CAlgorithmIdentifier const& get_signatureAlgorithm() const { return signatureAlgorithm_; }
    CAlgorithmIdentifier const& get_digestAlgorithm() const { return digestAlgorithm_; }
    CBlob const& get_signature() const { return signature_; }

    void put_version(unsigned int version) { version_ = version; }
    void put_issuer(CBlob const& issuer) { issuer_ = issuer; }
    void put_serialNumber(CBigInteger const& serialNumber) { serialNumber_ = serialNumber; }
    void put_signatureAlgorithm(CAlgorithmIdentifier const& algorithm) { signatureAlgorithm_ = algorithm; }
    void put_digestAlgorithm(CAlgorithmIdentifier const& algorithm) { digestAlgorithm_ = algorithm; }
    void put_signature(CBlob const& signature) { signature_ = signature; }

    // All fields equal; serial numbers by CBigInteger::compare, which leading sign bytes do not matter to.
    bool operator==(CSignerInfo const& other) const;
    bool operator!=(CSignerInfo const& other) const { return !(*this == other); }

  private:
    std::uint32_t version_ = 0;
    CBlob issuer_;
    CBigInteger serialNumber_;
    CAlgorithmIdentifier signatureAlgorithm_;
    CAlgorithmIdentifier digestAlgorithm_;
    CBlob signature_;
};

}  // namespace Mirvane::ASN1

#endif
