// CInfoTypeAndValue, an identifier with a value that it gives the type of: the pieces of general information
// in certificate management messages (InfoTypeAndValue of RFC 4210, 5.3.19), and the list of such pieces.
//
//   CInfoTypeAndValueList wanted;
//   wanted.insert(CInfoTypeAndValue("1.3.6.1.5.5.7.4.1"));  // no value: the certificate of the CA is asked
//   for
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_INFO_TYPE_AND_VALUE_H
#define MIRVANE_ASN1_INFO_TYPE_AND_VALUE_H

#include <list>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CInfoTypeAndValue {
  public:
    // The empty text and no value.
    CInfoTypeAndValue();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out when it is
    // encoded.
    CInfoTypeAndValue(char const* infoType);
    // The value is one whole encoded element, or empty where it is absent.
    CInfoTypeAndValue(char const* infoType, CBlob const& infoValue);
    CInfoTypeAndValue(CInfoTypeAndValue const& other);
    // Leaves `other` as default construction does.
    CInfoTypeAndValue(CInfoTypeAndValue&& other);
    ~CInfoTypeAndValue();

    // A failure leaves the object as it was.
    CInfoTypeAndValue& operator=(CInfoTypeAndValue const& other);
    CInfoTypeAndValue& operator=(CInfoTypeAndValue&& other);

    // Never null.
    char const* get_infoType() const { return infoType_.c_str(); }
    CBlob const& get_infoValue() const { return infoValue_; }

    // The same text and the same bytes.
    bool operator==(CInfoTypeAndValue const& other) const;
    bool operator!=(CInfoTypeAndValue const& other) const { return !(*this == other); }

  private:
    CStringProxy infoType_;
    CBlob infoValue_;
};

// Only insert() keeps identifiers apart: what was received or appended may have one several times, and
// operations by identifier work on the first.
class MIRVANE_API CInfoTypeAndValueList : public std::list<CInfoTypeAndValue> {
  public:
    using std::list<CInfoTypeAndValue>::list;
    using std::list<CInfoTypeAndValue>::insert;

    // The first element with exactly this text as identifier, or end(). Null is the empty text.
    iterator find(char const* infoType);
    const_iterator find(char const* infoType) const;

    // Appends a copy. If the identifier is there, that element takes the value instead and keeps its place.
    void insert(CInfoTypeAndValue const& info);

    // Removes the first element with this identifier, if there is one.
    void remove(char const* infoType);
};

}  // namespace Mirvane::ASN1

#endif
