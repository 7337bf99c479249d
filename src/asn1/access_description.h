// Where an issuer answers (RFC 5280, 4.2.2.1): CAccessDescription, a method with the place of its service,
// and CAuthorityInfoAccessSyntax, the list of them.
//
//   CGeneralName responder;
//   responder.put_uniformResourceIdentifier(L"http://ocsp.example");
//   CAuthorityInfoAccessSyntax access;
//   access.push_back(CAccessDescription("1.3.6.1.5.5.7.48.1", responder));
//   CBlob const encoded = access.encode();
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_ACCESS_DESCRIPTION_H
#define MIRVANE_ASN1_ACCESS_DESCRIPTION_H

#include <list>

#include "asn1/general_name.h"
#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CAccessDescription {
  public:
    // The empty text and an empty name.
    CAccessDescription();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out by
    // encode().
    CAccessDescription(char const* accessMethod, CGeneralName const& accessLocation);

    char const* get_accessMethod() const { return accessMethod_.c_str(); }
    CGeneralName const& get_accessLocation() const { return accessLocation_; }
    void put_accessMethod(char const* accessMethod);
    void put_accessLocation(CGeneralName const& accessLocation);

    // The DER form. Throws 0x80070057 for a method that does not parse and for a location of a kind that
    // CGeneralName does not hold, 0x80093101 for what cannot be encoded, 0x80093106 for memory that an ASN.1
    // context does not have.
    CBlob encode() const;
    // Reads the description at the start of the blob. Throws 0x80093101 for what is none, 0x80070057 for a
    // location as above; the object is then as it was.
    void decode(CBlob const& encoded);

    // The same text, and locations that are equal by the loose rule of CGeneralName: of two URLs only the
    // first characters count.
    bool operator==(CAccessDescription const& other) const;
    bool operator!=(CAccessDescription const& other) const { return !(*this == other); }

  private:
    CStringProxy accessMethod_;
    CGeneralName accessLocation_;
};

class MIRVANE_API CAuthorityInfoAccessSyntax : public std::list<CAccessDescription> {
  public:
    using std::list<CAccessDescription>::list;

    // As for CAccessDescription, for all of them. A list without descriptions throws 0x80093101, and what
    // decodes holds at least one.
    CBlob encode() const;
    void decode(CBlob const& encoded);
};

}  // namespace Mirvane::ASN1

#endif
