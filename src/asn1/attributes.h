// Attributes of messages and directories (X.501; RFC 5652, 5.3): CAttribute, an identifier with a list of
// encoded values; CAttributes, a set of attributes such as a signature covers. Classes that know what is
// inside a value derive from CAttrValue: see asn1/typed_attributes.h.
//
//   CAttribute digest("1.2.840.113549.1.9.4");
//   CAttrMessageDigest value;
//   value.put_messageDigest(sha256OfContent);
//   digest.add(value.get_value());
//   CAttributes attributes{digest};
//   CBlob const encoded = attributes.encode();  // SET OF, in the order of DER
//
//   CAttributes received;
//   received.decode(encoded);
//   auto const found = received.find("1.2.840.113549.1.9.4");
//   if (found != received.end() && found->size() == 1) {
//       CBlob const hash = CAttrMessageDigest(found->begin()->get_value()).get_messageDigest();
//   }
//
// Copies are deep. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed. Failures are ATL::CAtlException. What a getter returns is valid until the object changes or
// dies.
#ifndef MIRVANE_ASN1_ATTRIBUTES_H
#define MIRVANE_ASN1_ATTRIBUTES_H

#include <list>
#include <memory>

#include "asn1/attribute_value.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class CAttributeImpl;

class MIRVANE_API CAttribute {
  public:
    using iterator = CAttrValueList::iterator;
    using const_iterator = CAttrValueList::const_iterator;

    // The empty text and no values.
    CAttribute();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out by
    // encode().
    explicit CAttribute(char const* oid);
    CAttribute(CAttribute const& other);
    ~CAttribute();
    // A failure leaves the object as it was.
    CAttribute& operator=(CAttribute const& other);

    // The dotted text, never null.
    char const* get_oid() const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    unsigned long size() const;

    // Appends a value with the attribute's identifier. The blob is one whole encoded element.
    void add(CBlob const& value);
    // Appends a copy that keeps its own identifier, whatever it is. What is encoded is the attribute's.
    void add(CAttrValue const& value);
    void erase(iterator position);

    // The DER form, with the values in the order of their encodings; without values the set is empty. Throws
    // 0x80070057 for a text that is no object identifier; 0x80093101 for one that cannot be encoded, and for
    // a value that is not what a known attribute with this identifier has; 0x80093106 for memory that an
    // ASN.1 context does not have. Values of unknown identifiers are not looked at; those of known ones are
    // written in DER.
    CBlob encode() const;
    // Reads the attribute at the start of the blob; each value gets the attribute's identifier. Throws
    // 0x80093101 for what is none, and for a value as above; the object is then as it was.
    void decode(CBlob const& encoded);

    // The same text, and equal values in the same order, each with its own identifier.
    bool operator==(CAttribute const& other) const;
    bool operator!=(CAttribute const& other) const { return !(*this == other); }

  private:
    std::unique_ptr<CAttributeImpl> impl_;  // never null
};

// In the order of the encoding. An identifier may stand several times: operations by identifier work on the
// first.
class MIRVANE_API CAttributes : public std::list<CAttribute> {
  public:
    using std::list<CAttribute>::list;
    using std::list<CAttribute>::erase;

    // The first attribute with exactly this text as identifier, or end(). Null is the empty text.
    iterator find(char const* oid);
    const_iterator find(char const* oid) const;
    // Removes that attribute, if there is one.
    void erase(char const* oid);

    // As for CAttribute, for all of them, as a SET OF in the order of their encodings. A list without
    // attributes throws 0x80093101, and what decodes holds at least one.
    CBlob encode() const;
    void decode(CBlob const& encoded);

    // Equal attributes in the same order.
    bool operator==(CAttributes const& other) const;
    bool operator!=(CAttributes const& other) const { return !(*this == other); }
};

}  // namespace Mirvane::ASN1

#endif
