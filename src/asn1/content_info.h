// CContentInfo, the outermost layer of a CMS message (ContentInfo of RFC 5652, 3): an identifier that tells
// what the content is, and the content as it is encoded.
//
//   CContentInfo message;
//   message.decode(encoded);
//   if (std::strcmp(message.get_contentType(), "1.2.840.113549.1.7.2") == 0) {  // id-signedData
//       readSignedData(message.get_content());
//   }
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_CONTENT_INFO_H
#define MIRVANE_ASN1_CONTENT_INFO_H

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CContentInfo {
  public:
    // The empty text and an empty blob.
    CContentInfo();
    // The dotted text as it is, null as the empty text: what is no object identifier is found out when it is
    // encoded. The content is one whole encoded element.
    CContentInfo(char const* contentType, CBlob const& content);
    CContentInfo(CContentInfo const& other);
    // Leaves `other` as default construction does.
    CContentInfo(CContentInfo&& other);
    ~CContentInfo();

    // A failure leaves the object as it was.
    CContentInfo& operator=(CContentInfo const& other);
    CContentInfo& operator=(CContentInfo&& other);

    // Never null.
    char const* get_contentType() const { return contentType_.c_str(); }
    CBlob const& get_content() const { return content_; }
    // As for the constructor.
    void put_contentType(char const* contentType) { contentType_ = CStringProxy(contentType); }
    void put_content(CBlob const& content) { content_ = content; }

    // Content of a known type is written in DER, other content as it is. Throws 0x80070057 for a text that is
    // no object identifier; 0x80093101 for one that cannot be encoded, and for content that is not what its
    // type tells; 0x80093106 for memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Reads the message at the start of the blob; the content keeps the bytes that it came with. Throws
    // 0x80093101 for what is none, and for content as above; the object is then as it was.
    void decode(CBlob const& encoded);

  private:
    CStringProxy contentType_;
    CBlob content_;
};

}  // namespace Mirvane::ASN1

#endif
