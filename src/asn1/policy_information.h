// CPolicyInformation, the identifier of a certificate policy (RFC 5280, 4.2.1.4), and the list of such: what
// the attributes of signing certificates may name. Qualifiers of a policy are not held: they are dropped on
// decoding and never written.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException.
#ifndef MIRVANE_ASN1_POLICY_INFORMATION_H
#define MIRVANE_ASN1_POLICY_INFORMATION_H

#include <list>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CPolicyInformation {
  public:
    // The empty text.
    CPolicyInformation();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out by
    // encode().
    CPolicyInformation(char const* policyIdentifier);

    // The dotted text, never null; valid until the object changes or dies.
    char const* get_policyIdentifier() const { return policyIdentifier_.c_str(); }
    // As the constructor.
    void put_policyIdentifier(char const* policyIdentifier);

    // The DER form. Throws 0x80070057 for a text that is no object identifier, 0x80093101 for one that cannot
    // be encoded.
    CBlob encode() const;
    // Reads the value at the start of the blob, without its qualifiers. Throws 0x80093101 for what is none;
    // the object is then as it was.
    void decode(CBlob const& encoded);

  private:
    CStringProxy policyIdentifier_;
};

class MIRVANE_API CPolicyInformationList : public std::list<CPolicyInformation> {
  public:
    using std::list<CPolicyInformation>::list;
};

}  // namespace Mirvane::ASN1

#endif
