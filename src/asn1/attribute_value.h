// CAttrValue, one value of an attribute (X.501) with the identifier of the attribute, and the list of such
// values. Classes that know what is inside the value derive from CAttrValue.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_ATTRIBUTE_VALUE_H
#define MIRVANE_ASN1_ATTRIBUTE_VALUE_H

#include <list>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CAttrValue {
  public:
    // The empty text and an empty blob.
    CAttrValue();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out when a
    // record is filled.
    explicit CAttrValue(char const* oid);
    CAttrValue(char const* oid, CBlob const& value);

    // The dotted text, never null.
    char const* get_oid() const { return oid_.c_str(); }
    // The complete encoding of the value, tag and length included.
    CBlob const& get_value() const { return value_; }
    // The same to write to. What a derived class holds in parsed form does not follow.
    CBlob& value() { return value_; }

    // The same text and the same bytes.
    bool operator==(CAttrValue const& other) const;
    bool operator!=(CAttrValue const& other) const { return !(*this == other); }

  private:
    CStringProxy oid_;
    CBlob value_;
};

class MIRVANE_API CAttrValueList : public std::list<CAttrValue> {
  public:
    using std::list<CAttrValue>::list;

    // Equal values in the same order.
    bool operator==(CAttrValueList const& other) const;
    bool operator!=(CAttrValueList const& other) const { return !(*this == other); }
};

}  // namespace Mirvane::ASN1

#endif
