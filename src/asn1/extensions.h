// The extensions of X.509 (RFC 5280, 4.2) and of the messages that carry them: CExtValue, an identifier with
// the encoded value; CExtension, which adds the critical flag; CExtensions, the list. Classes that know what
// is inside the value derive from CExtValue: see asn1/typed_extensions.h.
//
//   CExtensions extensions;
//   extensions.insert(CExtension(CExtCRLReason(keyCompromise), false));
//   CBlob const encoded = extensions.encode();
//
//   CExtensions received;
//   received.decode(encoded);
//   auto const found = received.find("2.5.29.21");
//   if (found != received.end()) {
//       CrlReason const reason = CExtCRLReason(found->get_extnValue()).get_reason();
//   }
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_EXTENSIONS_H
#define MIRVANE_ASN1_EXTENSIONS_H

#include <list>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CExtValue {
  public:
    // The empty text and an empty blob.
    CExtValue();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out when the
    // extension is encoded.
    CExtValue(char const* oid);
    CExtValue(char const* oid, CBlob const& value);
    CExtValue(CExtValue const& other);
    // Leaves `other` with the empty text and an empty blob.
    CExtValue(CExtValue&& other);
    ~CExtValue();

    // A failure leaves the object as it was.
    CExtValue& operator=(CExtValue const& other);
    CExtValue& operator=(CExtValue&& other);

    // The dotted text, never null.
    char const* get_oid() const { return oid_.c_str(); }
    // The content of extnValue: the encoded value, without the OCTET STRING around it.
    CBlob const& get_value() const { return value_; }
    // The same to write to. A typed extension's member does not follow: call its decode().
    CBlob& value() { return value_; }

  private:
    CStringProxy oid_;
    CBlob value_;
};

class MIRVANE_API CExtension : public CExtValue {
  public:
    // The empty text, an empty blob, not critical.
    CExtension();
    // Of a typed extension the identifier and the blob.
    CExtension(CExtValue const& value, bool critical);

    char const* get_extnID() const { return get_oid(); }
    CBlob const& get_extnValue() const { return get_value(); }
    bool get_critical() const { return critical_; }

    // The DER form of Extension. Throws 0x80070057 for a text that is no object identifier; 0x80093101 for
    // one that cannot be encoded, and for a value that is not what an extension of X.509 with this identifier
    // has. Values of unknown identifiers are not looked at; those of known ones are written in DER.
    CBlob encode() const;
    // Reads the extension at the start of the blob. Throws 0x80093101 for what is none, and for a value as
    // above; the object is then as it was.
    void decode(CBlob const& encoded);

    // The same flag, the same text, the same bytes.
    bool operator==(CExtension const& other) const;
    bool operator!=(CExtension const& other) const { return !(*this == other); }

  private:
    bool critical_ = false;
};

// In the order of the encoding. Only insert() keeps identifiers apart: what was decoded or appended may have
// one several times, and operations by identifier work on the first.
class MIRVANE_API CExtensions : public std::list<CExtension> {
  public:
    using std::list<CExtension>::list;
    using std::list<CExtension>::insert;
    using std::list<CExtension>::erase;

    // The first extension with exactly this text as identifier, or end(). Null is the empty text.
    iterator find(char const* oid);
    const_iterator find(char const* oid) const;

    // Appends a copy. If the identifier is there, that extension takes the value and the flag instead, and
    // keeps its place.
    void insert(CExtension const& extension);

    // Removes the first extension with this identifier, if there is one.
    void erase(char const* oid);

    // As for CExtension, for all of them. A list without extensions throws 0x80093101, and what decodes holds
    // at least one.
    CBlob encode() const;
    void decode(CBlob const& encoded);

    // Equal extensions in the same order.
    bool operator==(CExtensions const& other) const;
    bool operator!=(CExtensions const& other) const { return !(*this == other); }
};

}  // namespace Mirvane::ASN1

#endif
