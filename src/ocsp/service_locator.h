// CExtServiceLocator, by which a client tells a responder where the one in charge of a certificate is
// (RFC 6960, 4.4.6): the certificate's issuer and what the certificate says about access to it.
//
//   CExtServiceLocator service;
//   service.put_issuer(issuerName);  // the DER of a Name
//   service.put_locator(&access);
//   ASN1::CExtension const extension(service, false);
//
// Copies are deep. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed. Failures are ATL::CAtlException. What a getter returns is valid until the object changes or
// dies.
#ifndef MIRVANE_OCSP_SERVICE_LOCATOR_H
#define MIRVANE_OCSP_SERVICE_LOCATOR_H

#include <memory>

#include "asn1/access_description.h"
#include "asn1/extensions.h"

struct ASN1CTXT;
class ASN1BERDecodeBuffer;
class ASN1BEREncodeBuffer;

namespace asn1data {
struct ASN1T_ServiceLocator;
}

namespace Mirvane::PKI::OCSP {

class CExtServiceLocatorImpl;

// 1.3.6.1.5.5.7.48.1.7.
class MIRVANE_API CExtServiceLocator : public ASN1::CExtValue {
  public:
    // Empty: no issuer, no locator, and an empty blob.
    CExtServiceLocator();
    // As decode().
    explicit CExtServiceLocator(CBlob const& encoded);
    CExtServiceLocator(CExtServiceLocator const& other);
    // Afterwards `other` may only be assigned to or destroyed.
    CExtServiceLocator(CExtServiceLocator&& other);
    ~CExtServiceLocator();

    // A failure leaves the object as it was.
    CExtServiceLocator& operator=(CExtServiceLocator const& other);
    CExtServiceLocator& operator=(CExtServiceLocator&& other);

    // The DER of a Name.
    CBlob const& get_issuer() const;
    // Null if absent.
    ASN1::CAuthorityInfoAccessSyntax const* get_locator() const;

    // Both store a copy and encode the extension. The argument may be what the object holds. If encoding
    // throws, the member is the new one and the blob the old one.
    void put_issuer(CBlob const& issuer);
    // Null removes the locator. Without an issuer there is no encoding: the blob then stays as it is until
    // put_issuer(), which is meant.
    void put_locator(ASN1::CAuthorityInfoAccessSyntax const* locator);

    // Writes the members into the blob; a locator without descriptions is left out. Throws 0x80093101 if the
    // issuer does not start with a Name, what the locator's own encode() throws, and 0x80093106 for memory
    // that an ASN.1 context does not have.
    void encode();
    // Reads the members from the blob and encodes them anew, so that the blob becomes DER and loses what
    // stood behind the value. Throws 0x80093101 for what does not decode, with nothing changed, and for an
    // issuer from put_issuer() that did not encode. Throws 0x80070057 for a locator with a name of a kind
    // that CGeneralName does not hold: members and blob are then the issuer alone.
    void decode();

  private:
    std::unique_ptr<CExtServiceLocatorImpl> impl_;  // null when moved from
};

// The tie between the extension and its record, for the library's own code: records are not installed.
struct MIRVANE_API ASN1T_ServiceLocator_traits {
    using ASN1_T = asn1data::ASN1T_ServiceLocator;

    // Wants an empty record. Throws as CExtServiceLocator::encode does.
    static void set(ASN1CTXT* ctxt, ASN1_T& record, CExtServiceLocator const& value);
    // Goes through the put_ operations, and so replaces the blob of `value`: the record must not be a view of
    // it. Throws as CExtServiceLocator::decode does.
    static void get(ASN1_T const& record, CExtServiceLocator& value);
    // A deep copy. Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record);
};

}  // namespace Mirvane::PKI::OCSP

#endif
