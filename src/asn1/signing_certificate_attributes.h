// The attributes by which a signature says whose certificate it is to be verified with, each a CAttrValue
// with a fixed identifier: the certificates, the signer's first, by the identifiers of asn1/ess_identifiers.h
// and, where the signer wants it, the policies under which they are meant.
//
//   CESSCertIDv2List const certs{CESSCertIDv2(sha256OfCertificate)};
//   CAttrSigningCertificateV2 const written(certs);
//   CAttribute attribute(written.get_oid());
//   attribute.add(written);
//
//   CAttrSigningCertificateV2 const read(attribute.begin()->get_value());
//   bool const same = read.get_certs().front().get_certHash() == sha256OfCertificate;
//
// Objects own what they hold and copies are deep. Distinct objects may be used from distinct threads; one
// object belongs to one thread while it is changed. Failures are ATL::CAtlException. What a getter returns is
// valid until the object changes or dies.
#ifndef MIRVANE_ASN1_SIGNING_CERTIFICATE_ATTRIBUTES_H
#define MIRVANE_ASN1_SIGNING_CERTIFICATE_ATTRIBUTES_H

#include <memory>

#include "asn1/attribute_value.h"
#include "asn1/ess_identifiers.h"
#include "asn1/policy_information.h"

namespace Mirvane::ASN1 {

// What the three attributes have in common; `Certs` is the list of their identifiers.
template <typename Certs>
class MIRVANE_API SigningCertificateAttribute : public CAttrValue {
  public:
    SigningCertificateAttribute(SigningCertificateAttribute const& other);
    ~SigningCertificateAttribute();
    // A failure leaves the object as it was.
    SigningCertificateAttribute& operator=(SigningCertificateAttribute const& other);

    Certs const& get_certs() const;
    // Null where absent.
    CPolicyInformationList const* get_policies() const;

    // Stores the list and then encodes. If that throws, the list is the new one and the blob the old one.
    void put_certs(Certs const& certs);
    // Stores a copy; null makes the list absent. The argument may be what the object holds. The blob stays as
    // it is until encode() or put_certs is called, which is meant, but for CAttrOtherSigningCertificate,
    // which encodes at once.
    void put_policies(CPolicyInformationList const* policies);

    // Writes the members into the blob; policies without an element are left out. Throws what encode() of the
    // identifiers and of CPolicyInformation throw; the blob is then as it was.
    void encode();
    // Reads the members from the blob, which stays as it is. Throws 0x80093101 for what does not decode, and
    // for identifiers that do not encode again; 0x80070057 for an issuer's name of a kind that CGeneralName
    // does not hold. The members are then as they were.
    void decode();

  protected:
    // No certificates, no policies, an empty blob.
    explicit SigningCertificateAttribute(char const* oid);

  private:
    struct MIRVANE_HIDDEN Impl;

    std::unique_ptr<Impl> impl_;  // never null
};

extern template class SigningCertificateAttribute<CESSCertIDList>;
extern template class SigningCertificateAttribute<CESSCertIDv2List>;
extern template class SigningCertificateAttribute<COtherCertIDList>;

// signingCertificate, 1.2.840.113549.1.9.16.2.12 (RFC 2634, 5.4): SHA-1 hashes.
class MIRVANE_API CAttrSigningCertificate : public SigningCertificateAttribute<CESSCertIDList> {
  public:
    // No certificates, no policies, and an empty blob.
    CAttrSigningCertificate();
    // As decode(), of this blob.
    explicit CAttrSigningCertificate(CBlob const& encoded);
    // As put_certs.
    CAttrSigningCertificate(CESSCertIDList const& certs);
};

// signingCertificateV2, 1.2.840.113549.1.9.16.2.47 (RFC 5035, 3): any hashes.
class MIRVANE_API CAttrSigningCertificateV2 : public SigningCertificateAttribute<CESSCertIDv2List> {
  public:
    // As above.
    CAttrSigningCertificateV2();
    explicit CAttrSigningCertificateV2(CBlob const& encoded);
    CAttrSigningCertificateV2(CESSCertIDv2List const& certs);
};

// otherSigningCertificate, 1.2.840.113549.1.9.16.2.19 (RFC 5126, 5.7.3.3).
class MIRVANE_API CAttrOtherSigningCertificate : public SigningCertificateAttribute<COtherCertIDList> {
  public:
    // As above.
    CAttrOtherSigningCertificate();
    explicit CAttrOtherSigningCertificate(CBlob const& encoded);
    CAttrOtherSigningCertificate(COtherCertIDList const& certs);
};

}  // namespace Mirvane::ASN1

#endif
