// Attributes of signatures whose value is known (RFC 5652, 11): each is a CAttrValue with a fixed identifier
// and a member that holds what the blob encodes. They are added to a CAttribute as they are, and are made
// again from the blob that comes back:
//
//   CAttrSigningTime const written(CDateTime("20240229120000Z"));
//   CAttribute attribute(written.get_oid());
//   attribute.add(written);
//   CDateTime const time = CAttrSigningTime(attribute.begin()->get_value()).get_time();
//
// All have these in common:
// - A new object without arguments has an empty blob, which is no encoding of its member.
// - The constructor from the member's type and each put_ store the member and then encode it. If that throws,
//   the member is the new one and the blob the old one.
// - The constructor from a blob decodes it, and the blob stays as it is given. The blob is the whole encoded
//   value.
// - encode() writes the member into the blob. It throws 0x80093101 for what cannot be encoded, 0x80093106 for
//   memory that an ASN.1 context does not have.
// - decode() reads the member from the blob. It throws 0x80093101 for what does not decode; the member is
//   then as it was.
// - An assignment that memory fails may have taken the blob and not the member, unless told otherwise.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_TYPED_ATTRIBUTES_H
#define MIRVANE_ASN1_TYPED_ATTRIBUTES_H

#include <memory>

#include "asn1/attribute_value.h"
#include "asn1/time_choice.h"
#include "base/date_time.h"

namespace Mirvane::ASN1 {

// The kind of content that is signed, 1.2.840.113549.1.9.3: an object identifier.
class MIRVANE_API CAttrContentType : public CAttrValue {
  public:
    // The dotted text. Throws 0x80070057 for a text that does not parse, null included.
    CAttrContentType(char const* contentType);
    explicit CAttrContentType(CBlob const& encoded);

    char const* get_contentType() const { return contentType_.c_str(); }
    void put_contentType(char const* contentType);

    void encode();
    void decode();

  private:
    CStringProxy contentType_;
};

// The hash of the content, 1.2.840.113549.1.9.4.
class MIRVANE_API CAttrMessageDigest : public CAttrValue {
  public:
    // No bytes.
    CAttrMessageDigest();
    // From the encoded value, an OCTET STRING in primitive form, and not from a digest: that enters by
    // put_messageDigest. An empty blob gives an empty digest.
    explicit CAttrMessageDigest(CBlob const& encoded);

    CBlob const& get_messageDigest() const { return messageDigest_; }
    void put_messageDigest(CBlob const& digest);

    void encode();
    void decode();

  private:
    CBlob messageDigest_;
};

// When the signer says to have signed, 1.2.840.113549.1.9.5. There is no construction without arguments.
class MIRVANE_API CAttrSigningTime : public CAttrValue {
  public:
    // Encodes whole seconds, as UTCTime up to the year 2049 and as GeneralizedTime after it, and keeps the
    // rest in the member. Throws the last error for a date outside the calendar.
    CAttrSigningTime(CDateTime const& time);
    // Reads either form, as CTimeChoice does: the last error for a text that is no date.
    explicit CAttrSigningTime(CBlob const& encoded);
    CAttrSigningTime(CAttrSigningTime const& other);
    ~CAttrSigningTime();
    // A failure leaves the object as it was.
    CAttrSigningTime& operator=(CAttrSigningTime const& other);

    CDateTime get_time() const;
    void put_time(CDateTime const& time);

    void encode();
    void decode();

  private:
    std::unique_ptr<CTimeChoice> time_;  // never null
};

}  // namespace Mirvane::ASN1

#endif
