// Distinguished names (RFC 5280, 4.1.2.4): CName, a sequence of relative distinguished names, each of one or
// more attributes.
//
//   CName name(L"C=RU,O=Example,CN=Ivan+E=ivan@example.org");
//   CBlob const encoded = name.encode();
//
//   CName received;
//   received.decode(encoded);
//   received.toString();  // L"C=RU,O=Example,CN=Ivan+E=ivan@example.org"
//
// The text form is plain: parts in the order of the encoding, not the other way round as RFC 4514 has it,
// joined by "," and the attributes of a part by "+". There is no quoting, and blanks count: a value with a
// comma or a plus sign in it is shown as it is and cannot be read back. Short names are those of
// CATAVRegister.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException unless told otherwise, and leave the object as it was; only an assignment
// that memory fails may have replaced a part of it.
#ifndef MIRVANE_ASN1_NAME_H
#define MIRVANE_ASN1_NAME_H

#include <list>

#include "asn1/attribute_type_and_value.h"
#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CRelativeDistinguishedName : public CAttributeTypeAndValueSet {
  public:
    // No attributes.
    CRelativeDistinguishedName();
    // As fromString.
    CRelativeDistinguishedName(wchar_t const* text);

    // Appends the attributes that the text tells: what was there stays, which is meant. The empty text tells
    // none. Throws 0x80070057 for null and for a piece without "="; for one that does not encode what
    // CATAVRegister::makeATAV throws, which may be std::out_of_range.
    void fromString(wchar_t const* text);
    // The empty text for no attributes. Throws 0x80093101 for a value of a registered type that is no string.
    CWStringProxy toString() const;

    // The DER form, sorted as a SET OF is. Throws 0x80093101 for no attributes, and what the encoding of an
    // attribute throws.
    CBlob encode() const;
    // Takes what stands at the start of the blob instead of what was there. Throws 0x80093101 for what is
    // none.
    void decode(CBlob const& encoded);

    // Equal attributes in the same order: another order is another name, which is meant.
    bool operator==(CRelativeDistinguishedName const& other) const;
    bool operator!=(CRelativeDistinguishedName const& other) const { return !(*this == other); }
};

class MIRVANE_API CRDNSequence : public std::list<CRelativeDistinguishedName> {
  public:
    using std::list<CRelativeDistinguishedName>::list;
};

class MIRVANE_API CName : public CRDNSequence {
  public:
    // The empty name.
    CName();
    // As fromString.
    CName(wchar_t const* text);

    // Appends the parts that the text tells: what was there stays, which is meant. The empty text tells none.
    // Throws as the function of CRelativeDistinguishedName does; no piece may be empty.
    void fromString(wchar_t const* text);
    // The empty text for the empty name. Throws as the function of CRelativeDistinguishedName does.
    CWStringProxy toString() const;

    // The DER form of Name. Throws 0x80093101 for a part without attributes, and what the encoding of an
    // attribute throws.
    CBlob encode() const;
    // Takes the name at the start of the blob instead of what was there. Throws 0x80093101 for what is none.
    void decode(CBlob const& encoded);
};

// What the members fromString call. The pointer is one to wchar_t text all the same: 16-bit units are not
// read, which is meant.
MIRVANE_API void fromString(CRelativeDistinguishedName& name, unsigned short const* text);
MIRVANE_API void fromString(CName& name, unsigned short const* text);

}  // namespace Mirvane::ASN1

#endif
